#pragma once

#include "Dom/DomSettings.h"

#include <oleauto.h>

#include <string_view>

namespace OvPlatform {

/// The settings of a document that go by name. Names are told apart by case; an unknown one is E_FAIL.
class DomProperties {
public:
    /// E_NOTIMPL for a value that this platform does not support, such as a permission for DTDs.
    static HRESULT Set(DomSettings& settings, std::wstring_view name, const VARIANT& value);
    static HRESULT Get(const DomSettings& settings, std::wstring_view name, VARIANT* value);
};

} // namespace OvPlatform
