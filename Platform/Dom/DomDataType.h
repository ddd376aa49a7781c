#pragma once

#include <windows.h>
#include <libxml/tree.h>
#include <oleauto.h>

#include <string>
#include <string_view>

namespace OvPlatform {

/// Typed values: what the data type that an element carries makes of its text.
class DomDataType {
public:
    /// The attribute that names the type.
    static constexpr const char* attributeName = "dt";
    static constexpr const char* namespaceUri = "urn:schemas-microsoft-com:datatypes";

    /// The data type of a node, empty if it carries none.
    static std::string NameOf(const xmlNode* node);
    static bool IsKnown(std::string_view type) noexcept;

    /// The value of a text: a string where there is no type. E_FAIL if it is no value of the type.
    static HRESULT Typed(std::string_view type, std::string_view text, VARIANT* value);
    /// The text of a value.
    static HRESULT Untyped(std::string_view type, const VARIANT& value, std::string& text);

    /// A value in another automation type. E_INVALIDARG if it has none.
    static HRESULT Convert(const VARIANT& value, VARTYPE type, VARIANT* converted);

    /// Any value that can be a string, as UTF-8. E_INVALIDARG for characters that XML does not have.
    static HRESULT TextOf(const VARIANT& value, std::string& text);
};

} // namespace OvPlatform
