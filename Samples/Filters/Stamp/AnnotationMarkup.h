#pragma once

#include <Annotation/AnnotationPlacement.h>
#include <Annotation/AnnotationTextLayout.h>
#include <JobContext/JobAnnotations.h>

#include <string>

/// Writes annotations as the elements of a page. Part names stand as they are given, which must be those of
/// parts: they need no escaping. Everything else that clients wrote is escaped, or replaced where it is not
/// what it should be.
class AnnotationMarkup {
public:
    /// The prefix of the page's own elements, with its colon; may be empty.
    AnnotationMarkup(Gdiplus::SizeF page, std::wstring prefix);

    /// Appends the text as the layout has it, in the font part.
    void AppendText(std::wstring& markup, const PageAnnotation& annotation,
                    const AnnotationTextLayout& layout) const;

    /// A picture as its part has it: of that size in XPS units by its own resolution.
    struct Picture {
        std::wstring partName;
        Gdiplus::SizeF size;
    };
    void AppendPicture(std::wstring& markup, const PageAnnotation& annotation, const Picture& picture) const;

private:
    void OpenCanvas(std::wstring& markup, const AnnotationElementSettings& element,
                    const AnnotationPlacement& placement) const;
    void CloseCanvas(std::wstring& markup) const;
    void AppendRun(std::wstring& markup, const PageAnnotation& annotation, const AnnotationTextLayout& layout,
                   const GlyphRun& run, float x, float y) const;

    Gdiplus::SizeF m_page;
    std::wstring m_prefix;
};
