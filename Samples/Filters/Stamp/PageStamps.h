#pragma once

#include "AnnotationMarkup.h"
#include "PageResources.h"
#include "PageRewriter.h"

#include <Annotation/AnnotationTextLayout.h>
#include <FontsAndImages/TextShaper.h>
#include <JobContext/JobAnnotations.h>

#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

/// The annotations of a job as markup for its pages, with the fonts and pictures that they need.
class PageStamps {
public:
    /// Puts a resource on the page at hand. Throws what goes wrong.
    using Binder = std::function<void(IResWriter&)>;

    explicit PageStamps(std::unique_ptr<JobAnnotations> annotations);

    /// Whether any page of the job, or any behind the first one, has annotations.
    [[nodiscard]] bool HasAny();
    [[nodiscard]] bool HasMoreThanFirstPage();

    /// What a page gets; pages count from 0, over the job. Before imposition means below what comes after it:
    /// without imposition, a page is a sheet. Throws CPExceptionInvalidArgument, with words, for a font or
    /// picture that cannot be had.
    [[nodiscard]] StampMarkup OfPage(const PageRoot& root, unsigned page, const Binder& bind);

private:
    struct Stamp {
        PageAnnotation annotation;
        std::optional<AnnotationTextLayout> layout; // of a text that is the same on all pages
    };
    using Stamps = std::vector<Stamp>;

    Stamps& OfSize(Gdiplus::SizeF size);
    const TextShaper& ShaperOf(const AnnotationElementSettings& element);
    PictureResource& PictureOf(const PageAnnotation& annotation);
    void Append(std::wstring& markup, const AnnotationMarkup& writer, const Stamp& stamp, unsigned page,
                const Binder& bind);

    std::unique_ptr<JobAnnotations> m_annotations;
    std::map<std::pair<float, float>, Stamps> m_stamps;           // by page size
    std::map<std::pair<std::wstring, int>, TextShaper> m_shapers; // by face and charset
    std::map<std::wstring, PictureResource> m_pictures;           // by part name
    GdiDeviceContext m_fonts;
};
