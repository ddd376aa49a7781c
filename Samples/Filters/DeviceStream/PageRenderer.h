#pragma once

#include <filterpipeline.h>

#include <functional>
#include <memory>
#include <string_view>

/// Images pages into PostScript, one at a time.
class PageRenderer {
public:
    /// In points, 72 to the inch.
    struct PageSize {
        double width = 0;
        double height = 0;
    };
    /// Takes the next bytes of an image. May throw.
    using Write = std::function<void(std::string_view bytes)>;

    virtual ~PageRenderer() = default;

    /// Takes the page and what it uses, and tells how large it is. The page need not live longer. Throws
    /// CPException, with words, for a page that cannot be read.
    virtual PageSize Open(IFixedPage& page) = 0;
    /// Writes the open page as encapsulated PostScript: its lower left corner is the origin, it ends with
    /// showpage, and it leaves the device as it was. The page is closed then. Throws CPException, with words,
    /// for a page that cannot be imaged, before anything is written.
    virtual void Image(const Write& write) = 0;
};

/// Throws CPException on a system without a renderer.
std::unique_ptr<PageRenderer> MakePageRenderer();
