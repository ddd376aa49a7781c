#include "PageStamps.h"

#include <Annotation/AnnotationNumbering.h>
#include <LowLevelFacilities/Failures/CPExceptionInvalidArgument.h>
#include <LowLevelFacilities/Failures/ThrowFailure.h>

#include <algorithm>

using namespace DataModelIds;

namespace {

constexpr std::size_t mostSizes = 16;            // that are kept; jobs have few
const Gdiplus::SizeF usualPage(793.7F, 1122.5F); // A4

} // namespace

PageStamps::PageStamps(std::unique_ptr<JobAnnotations> annotations) : m_annotations(std::move(annotations)) {}

PageStamps::Stamps& PageStamps::OfSize(Gdiplus::SizeF size) {
    if (m_stamps.size() == mostSizes) m_stamps.clear();
    const auto [found, isNew] = m_stamps.try_emplace({size.Width, size.Height});
    Stamps& stamps = found->second;
    if (!isNew) return stamps;
    for (PageAnnotation& annotation : m_annotations->OfPage(size))
        stamps.push_back({std::move(annotation), std::nullopt});
    for (Stamp& stamp : stamps) {
        const AnnotationElementSettings& element = stamp.annotation.element;
        if (!stamp.annotation.fontPartName.IsEmpty() && !IsNumberedAnnotation(element))
            stamp.layout = LayOutText(ShaperOf(element), element.text, element.sizeInPoints);
    }
    return stamps;
}

bool PageStamps::HasAny() { return !OfSize(usualPage).empty(); }

bool PageStamps::HasMoreThanFirstPage() {
    return std::ranges::any_of(OfSize(usualPage),
                               [](const Stamp& stamp) { return !stamp.annotation.element.isFirstPageOnly; });
}

const TextShaper& PageStamps::ShaperOf(const AnnotationElementSettings& element) {
    const std::pair<std::wstring, int> key(element.faceName.View(), element.charset);
    return m_shapers.try_emplace(key, element.faceName, element.charset).first->second;
}

PictureResource& PageStamps::PictureOf(const PageAnnotation& annotation) {
    const std::wstring key(annotation.picturePartName.View());
    return m_pictures.try_emplace(key, annotation.element.imageFileName, annotation.picturePartName)
        .first->second;
}

StampMarkup PageStamps::OfPage(const PageRoot& root, unsigned page, const Binder& bind) {
    const Stamps& stamps = OfSize(root.size);
    const AnnotationMarkup writer(root.size, root.prefix);
    StampMarkup markup;
    for (const bool isAfterImposition : {false, true}) {
        for (const Stamp& stamp : stamps) {
            const AnnotationElementSettings& element = stamp.annotation.element;
            if ((element.renderOrder == VAL_ANNOTATION_POST_IMPOSITION) != isAfterImposition) continue;
            if (page != 0 && element.isFirstPageOnly) continue;
            const bool isBehind = element.drawMode == VAL_ANNOTATION_IN_BACKGROUND;
            Append(isBehind ? markup.background : markup.foreground, writer, stamp, page, bind);
        }
    }
    return markup;
}

void PageStamps::Append(std::wstring& markup, const AnnotationMarkup& writer, const Stamp& stamp,
                        unsigned page, const Binder& bind) {
    const PageAnnotation& annotation = stamp.annotation;
    if (annotation.fontPartName.IsEmpty()) {
        PictureResource& picture = PictureOf(annotation);
        if (!(annotation.pictureSize.Width > 0 && annotation.pictureSize.Height > 0))
            ThrowFailure<CPExceptionInvalidArgument>([&] {
                return "The picture of an annotation has no size: " +
                       CPStringUtils::narrowToStdString(annotation.element.imageFileName);
            });
        bind(picture);
        writer.AppendPicture(markup, annotation, picture.Picture());
        return;
    }
    FontResource font(m_fonts, annotation);
    bind(font);
    if (stamp.layout) {
        writer.AppendText(markup, annotation, *stamp.layout);
        return;
    }
    const AnnotationElementSettings& element = annotation.element;
    const CXString text = AnnotationTextOfPage(element, page);
    writer.AppendText(markup, annotation, LayOutText(ShaperOf(element), text, element.sizeInPoints));
}
