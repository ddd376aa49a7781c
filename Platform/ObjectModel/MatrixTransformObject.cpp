#include "ObjectModel/MatrixTransformObject.h"

#include "ObjectModel/MarkupNumbers.h"

namespace OvPlatform {

namespace {

constexpr const char* matrixName = "Matrix";

void CheckMatrix(const XPS_MATRIX& matrix) {
    for (const FLOAT number : {matrix.m11, matrix.m12, matrix.m21, matrix.m22, matrix.m31, matrix.m32})
        CheckFinite(number);
}

} // namespace

MatrixTransformObject::MatrixTransformObject(const XPS_MATRIX& matrix)
    : ShareableObject(ElementKind::MatrixTransform) {
    CheckMatrix(matrix);
    SetAttribute(matrixName, FormatMatrix(matrix));
}

MatrixTransformObject::MatrixTransformObject(std::shared_ptr<const PageSource> source,
                                             const std::string& text)
    : ShareableObject(ElementKind::MatrixTransform, std::move(source), noElement) {
    if (!ParseMatrix(text)) throw MarkupFailure(XPS_E_INVALID_MARKUP);
    SetAttribute(matrixName, text);
    Settle();
}

std::optional<ReferringValue> MatrixTransformObject::AttributeForm() {
    if (IsInSource() || Attribute("x:Key")) return std::nullopt;
    return ReferringValue(Attribute(matrixName).value_or(""));
}

HRESULT MatrixTransformObject::GetMatrix(XPS_MATRIX* matrix) {
    return ElementCall([&] {
        const std::optional<XPS_MATRIX> read = ParseMatrix(Attribute(matrixName).value_or(""));
        if (!read) throw MarkupFailure(XPS_E_INVALID_MARKUP);
        Give(matrix, *read);
    });
}

HRESULT MatrixTransformObject::SetMatrix(const XPS_MATRIX* matrix) {
    return ElementCall([&] {
        RequirePlace(matrix);
        CheckMatrix(*matrix);
        SetAttribute(matrixName, FormatMatrix(*matrix));
    });
}

HRESULT MatrixTransformObject::Clone(IXpsOMMatrixTransform** transform) {
    return OvPlatform::Clone(*this, transform);
}

} // namespace OvPlatform
