#include "Annotation/AnnotationPlacement.h"

namespace {

constexpr float unitsPerInch = 96;

/// Where something begins on a page in one direction.
float Justified(int flags, int start, int end, float page, float size, int distance) {
    if ((flags & start) != 0) return static_cast<float>(distance);
    if ((flags & end) != 0) return page - size - static_cast<float>(distance);
    return (page - size) / 2 + static_cast<float>(distance);
}

float Centred(float page, float size, float inches) { return (page - size) / 2 + inches * unitsPerInch; }

} // namespace

AnnotationPlacement PlaceAnnotation(const AnnotationElementSettings& element, Gdiplus::SizeF page,
                                    Gdiplus::SizeF size) {
    using namespace AnnotationJustification;
    const int flags = element.justificationFlags;
    if (flags == 0)
        return {{Centred(page.Width, size.Width, element.offsetFromCenterX),
                 Centred(page.Height, size.Height, element.offsetFromCenterY), size.Width, size.Height},
                element.angle % 360};
    return {{Justified(flags, left, right, page.Width, size.Width, element.justificationX),
             Justified(flags, top, bottom, page.Height, size.Height, element.justificationY), size.Width,
             size.Height},
            0};
}
