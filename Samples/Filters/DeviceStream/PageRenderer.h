#pragma once

#include <filterpipeline.h>

#include <memory>
#include <string>

/// In points, 72 to the inch.
struct PageSize {
    double width = 0;
    double height = 0;
};

struct PageImage {
    PageSize size;
    /// Encapsulated PostScript: the page's lower left corner is the origin, it ends with showpage, and it
    /// leaves the device as it was.
    std::string postScript;
};

/// A page with all that its image needs.
class ReadPage {
public:
    virtual ~ReadPage() = default;

    /// On any thread, one page at a time, also while the next one is read. Throws CPException, with words,
    /// for a page that cannot be imaged.
    [[nodiscard]] virtual PageImage Image() const = 0;
};

/// Images pages into PostScript.
class PageRenderer {
public:
    virtual ~PageRenderer() = default;

    /// On the filter's thread. The page need not live longer than the call, and the renderer no longer than
    /// that. Throws CPException for a page that cannot be read.
    virtual std::unique_ptr<ReadPage> Read(IFixedPage& page) = 0;
};

/// Throws CPException on a system without a renderer.
std::unique_ptr<PageRenderer> MakePageRenderer();
