#pragma once

#include "ObjectModel/ModelCall.h"

#include <xpsobjectmodel.h>

namespace OvPlatform {

/// A call on a page's objects that is refused: the result says it all.
class MarkupFailure {
public:
    explicit MarkupFailure(HRESULT result) noexcept : m_result(result) {}
    HRESULT Result() const noexcept { return m_result; }

private:
    HRESULT m_result;
};

inline void ThrowIfFailed(HRESULT result) {
    if (FAILED(result)) throw MarkupFailure(result);
}

/// The place for a result is null, or the object that is needed.
template <class T>
void RequirePlace(T* place) {
    if (place == nullptr) throw MarkupFailure(E_POINTER);
}

/// The body of a call on a page's objects. What returns has done it.
template <class Work>
HRESULT ElementCall(Work&& work) noexcept {
    return ModelCall([&]() -> HRESULT {
        try {
            work();
            return S_OK;
        } catch (const MarkupFailure& failure) {
            return failure.Result();
        }
    });
}

} // namespace OvPlatform
