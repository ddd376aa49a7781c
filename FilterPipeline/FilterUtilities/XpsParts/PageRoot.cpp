#include "XpsParts/PageRoot.h"

#include "XpsParts/PrintStreamSource.h"

#include <LowLevelFacilities/Failures/CPExceptionInvalidArgument.h>
#include <LowLevelFacilities/Failures/ThrowComException.h>
#include <LowLevelFacilities/Failures/ThrowFailure.h>
#include <Xml/SaxContentListener.h>

#include <atlcomcli.h>

#include <algorithm>
#include <charconv>
#include <cmath>
#include <exception>
#include <string>
#include <string_view>

namespace {

constexpr std::wstring_view xpsPages = L"http://schemas.microsoft.com/xps/2005/06";
constexpr std::wstring_view openXpsPages = L"http://schemas.openxps.org/oxps/v1.0";

std::wstring_view View(const wchar_t* text, int length) { return {text, static_cast<std::size_t>(length)}; }

/// As pages have numbers: there may be blanks around one, and a plus before it.
float Length(ISAXAttributes& attributes, std::wstring_view name) {
    const wchar_t* value = nullptr;
    int length = 0;
    std::string text;
    if (SUCCEEDED(attributes.getValueFromQName(name.data(), static_cast<int>(name.size()), &value, &length)))
        for (const wchar_t unit : View(value, length))
            text += unit < 0x80 ? static_cast<char>(unit) : '?';
    constexpr std::string_view blanks = " \t\r\n";
    std::string_view digits = text;
    digits.remove_prefix(std::min(digits.find_first_not_of(blanks), digits.size()));
    digits = digits.substr(0, digits.find_last_not_of(blanks) + 1);
    if (digits.starts_with('+')) digits.remove_prefix(1);
    float result = 0;
    const char* const end = digits.data() + digits.size();
    const auto [last, error] = std::from_chars(digits.data(), end, result);
    // What is below 1 is no size; the library reads "inf" and "nan", too.
    if (error != std::errc() || last != end || !(result >= 1) || !std::isfinite(result))
        ThrowFailure<CPExceptionInvalidArgument>([] { return "The page has no valid size"; });
    return result;
}

/// Ends the parse at the first element.
class RootReader final : public SaxContentListener {
public:
    PageRoot root;
    bool isFound = false;
    std::exception_ptr failure;

    HRESULT STDMETHODCALLTYPE startElement(const wchar_t* uri, int uriLength, const wchar_t* localName,
                                           int localNameLength, const wchar_t* qualifiedName,
                                           int qualifiedNameLength, ISAXAttributes* attributes) override {
        try {
            root = PageRoot::Of(View(uri, uriLength), View(localName, localNameLength),
                                View(qualifiedName, qualifiedNameLength), *attributes);
            isFound = true;
        } catch (...) {
            failure = std::current_exception();
        }
        return E_ABORT;
    }
};

} // namespace

PageRoot PageRoot::Of(std::wstring_view uri, std::wstring_view localName, std::wstring_view qualifiedName,
                      ISAXAttributes& attributes) {
    if (localName != L"FixedPage" || (uri != xpsPages && uri != openXpsPages))
        ThrowFailure<CPExceptionInvalidArgument>([] { return "The markup of a page is not that of one"; });
    PageRoot root{{Length(attributes, L"Width"), Length(attributes, L"Height")}};
    root.prefix = qualifiedName.substr(0, qualifiedName.size() - localName.size());
    return root;
}

PageRoot PageRoot::Read(IFixedPage& page) {
    CComPtr<IPrintReadStream> stream;
    ThrowIfFailed(page.GetStream(&stream));
    PrintStreamSource source(stream);
    RootReader listener;
    CComPtr<ISAXXMLReader> reader;
    ThrowIfFailed(reader.CoCreateInstance(__uuidof(SAXXMLReader60)));
    ThrowIfFailed(reader->putContentHandler(&listener));
    const HRESULT hr = reader->parse(CComVariant(static_cast<IUnknown*>(&source)));
    if (listener.failure) std::rethrow_exception(listener.failure);
    if (!listener.isFound) ThrowIfFailed(FAILED(hr) ? hr : E_FAIL, "The markup of a page cannot be read");
    return listener.root;
}
