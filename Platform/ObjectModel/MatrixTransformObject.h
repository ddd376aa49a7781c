#pragma once

#include "ObjectModel/ElementObject.h"

namespace OvPlatform {

/// A transform.
class MatrixTransformObject final : public ShareableObject<IXpsOMMatrixTransform> {
public:
    explicit MatrixTransformObject(const XPS_MATRIX& matrix);
    MatrixTransformObject(std::shared_ptr<const PageSource> source, std::uint32_t index) noexcept
        : ShareableObject(ElementKind::MatrixTransform, std::move(source), index) {}
    /// From its short form.
    MatrixTransformObject(std::shared_ptr<const PageSource> source, const std::string& text);

    std::optional<ReferringValue> AttributeForm() override;

    HRESULT STDMETHODCALLTYPE GetMatrix(XPS_MATRIX* matrix) override;
    HRESULT STDMETHODCALLTYPE SetMatrix(const XPS_MATRIX* matrix) override;
    HRESULT STDMETHODCALLTYPE Clone(IXpsOMMatrixTransform** transform) override;
};

} // namespace OvPlatform
