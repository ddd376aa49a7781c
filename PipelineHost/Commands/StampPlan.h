#pragma once

#include "Arguments/CommandOptions.h"

#include <Package/PackageReader.h>

#include <windows.h>
#include <xpsobjectmodel.h>

#include <optional>
#include <string>

namespace OvPipeline {

/// A picture and where it goes. Rectangles are in 96ths of an inch, of the page and of the picture.
struct PlacedPicture {
    std::string file;
    XPS_RECT place;
    XPS_RECT whole;
};

/// What is to be stamped, as the options of the command say it, or sensibly where they do not.
struct StampPlan {
    std::string output;
    std::optional<PlacedPicture> picture; // otherwise a text
    std::string font;                     // empty: the best for the text
    int size = 24;                        // points
    XPS_COLOR color{};
    XPS_POINT at{}; // 96ths of an inch
    float opacity = 1;
};

/// Looks at the picture's file. Throws UsageError for options that mean nothing, InputError for a file that
/// is no picture that pages can hold.
StampPlan MakeStampPlan(const CommandOptions& options);

// Names that no part of the job has: of a font, by what it is made for; of a picture, still without its
// extension.
std::string FreeFontName(const OvPlatform::PackageReader& job, const std::string& purpose);
std::string FreePictureName(const OvPlatform::PackageReader& job);

} // namespace OvPipeline
