#pragma once

#include <atlcomcli.h>
#include <gtest/gtest.h>
#include <msxml6.h>

#include <concepts>
#include <string>
#include <string_view>
#include <tuple>
#include <type_traits>
#include <vector>

// What the tests of documents and of the reader that calls handlers share: texts go in and out as UTF-8 or,
// for ASCII, as they are.

/// Documents are made in an apartment.
class DocumentApartment : public ::testing::Environment {
public:
    void SetUp() override { ASSERT_EQ(S_OK, ::CoInitializeEx(nullptr, COINIT_MULTITHREADED)); }
    void TearDown() override { ::CoUninitialize(); }
};
inline const auto* const documentApartment = ::testing::AddGlobalTestEnvironment(new DocumentApartment);

inline CComBSTR Wide(std::string_view utf8) {
    const int length =
        ::MultiByteToWideChar(CP_UTF8, 0, utf8.data(), static_cast<int>(utf8.size()), nullptr, 0);
    CComBSTR text;
    text.m_str = ::SysAllocStringLen(nullptr, static_cast<UINT>(length));
    ::MultiByteToWideChar(CP_UTF8, 0, utf8.data(), static_cast<int>(utf8.size()), text.m_str, length);
    return text;
}

inline std::string Narrow(BSTR text) {
    const int units = static_cast<int>(::SysStringLen(text));
    std::string utf8(static_cast<std::size_t>(units) * 3, '\0');
    utf8.resize(static_cast<std::size_t>(
        units == 0 ? 0
                   : ::WideCharToMultiByte(CP_UTF8, 0, text, units, utf8.data(),
                                           static_cast<int>(utf8.size()), nullptr, nullptr)));
    return utf8;
}

inline CComVariant Value(std::string_view text) {
    CComVariant value;
    value.vt = VT_BSTR;
    value.bstrVal = Wide(text).Detach();
    return value;
}

namespace DomTestDetail {

template <typename T>
struct Held {
    using Type = T;
};
template <std::derived_from<IUnknown> T>
struct Held<T*> {
    using Type = CComPtr<T>;
};
template <>
struct Held<BSTR> {
    using Type = CComBSTR;
};
template <>
struct Held<VARIANT> {
    using Type = CComVariant;
};

} // namespace DomTestDetail

/// What a method gives by its last parameter, where it succeeds.
template <typename Object, typename Class, typename... Parameters, typename... Arguments>
auto Got(const Object& object, HRESULT (Class::*method)(Parameters...), const Arguments&... arguments) {
    using Last = std::tuple_element_t<sizeof...(Parameters) - 1, std::tuple<Parameters...>>;
    typename DomTestDetail::Held<std::remove_pointer_t<Last>>::Type given{};
    EXPECT_EQ(S_OK, ((*object).*method)(arguments..., &given));
    return given;
}

inline CComPtr<IXMLDOMDocument2> NewDocument() {
    CComPtr<IXMLDOMDocument2> document;
    EXPECT_EQ(S_OK, document.CoCreateInstance(__uuidof(DOMDocument60)));
    return document;
}

/// A document of this text.
inline CComPtr<IXMLDOMDocument2> Parsed(std::string_view xml) {
    auto document = NewDocument();
    EXPECT_EQ(VARIANT_TRUE, Got(document, &IXMLDOMDocument::loadXML, Wide(xml))) << xml;
    return document;
}

inline void SelectWith(IXMLDOMDocument2* document, std::string_view namespaces) {
    EXPECT_EQ(S_OK, document->setProperty(CComBSTR(L"SelectionNamespaces"), Value(namespaces)));
}

inline CComPtr<IXMLDOMNode> NewElement(IXMLDOMDocument* document, std::string_view name,
                                       std::string_view uri = "") {
    return Got(document, &IXMLDOMDocument::createNode, CComVariant(NODE_ELEMENT), Wide(name), Wide(uri));
}

inline CComPtr<IXMLDOMAttribute> NewAttribute(IXMLDOMDocument* document, std::string_view name,
                                              std::string_view uri, std::string_view value = "") {
    CComQIPtr<IXMLDOMAttribute> attribute(
        Got(document, &IXMLDOMDocument::createNode, CComVariant(NODE_ATTRIBUTE), Wide(name), Wide(uri)));
    EXPECT_EQ(S_OK, attribute->put_value(Value(value)));
    return attribute;
}

inline std::string XmlOf(IXMLDOMNode* node) { return Narrow(Got(node, &IXMLDOMNode::get_xml)); }
inline std::string NameOf(IXMLDOMNode* node) { return Narrow(Got(node, &IXMLDOMNode::get_nodeName)); }
inline std::string TextOf(IXMLDOMNode* node) { return Narrow(Got(node, &IXMLDOMNode::get_text)); }

inline CComPtr<IXMLDOMElement> RootOf(IXMLDOMDocument* document) {
    return Got(document, &IXMLDOMDocument::get_documentElement);
}

inline CComPtr<IXMLDOMNode> First(IXMLDOMNode* node, std::string_view query) {
    CComPtr<IXMLDOMNode> found;
    const HRESULT result = node->selectSingleNode(Wide(query), &found);
    EXPECT_EQ(found ? S_OK : S_FALSE, result) << query;
    return found;
}

/// The attributes and declarations of an element, `a=1 xmlns:p=urn:x`.
inline std::string AttributesOf(IXMLDOMNode* element) {
    const auto map = Got(element, &IXMLDOMNode::get_attributes);
    std::string all;
    CComPtr<IXMLDOMNode> attribute;
    while (map->nextNode(&attribute) == S_OK) {
        const CComVariant value = Got(attribute, &IXMLDOMNode::get_nodeValue);
        all += (all.empty() ? "" : " ") + NameOf(attribute) + "=" + Narrow(value.bstrVal);
        attribute.Release();
    }
    return all;
}

inline CComVariant Bytes(std::string_view bytes) {
    CComVariant value;
    value.vt = VT_ARRAY | VT_UI1;
    value.parray = ::SafeArrayCreateVector(VT_UI1, 0, static_cast<ULONG>(bytes.size()));
    void* data = nullptr;
    EXPECT_EQ(S_OK, ::SafeArrayAccessData(value.parray, &data));
    bytes.copy(static_cast<char*>(data), bytes.size());
    ::SafeArrayUnaccessData(value.parray);
    return value;
}

inline CComPtr<IStream> StreamOf(std::string_view bytes) {
    CComPtr<IStream> stream;
    EXPECT_EQ(S_OK, ::CreateStreamOnHGlobal(nullptr, TRUE, &stream));
    EXPECT_EQ(S_OK, stream->Write(bytes.data(), static_cast<ULONG>(bytes.size()), nullptr));
    EXPECT_EQ(S_OK, stream->Seek({}, STREAM_SEEK_SET, nullptr));
    return stream;
}

inline std::string Rest(ISequentialStream* stream) {
    std::string all;
    char block[100];
    ULONG read = 0;
    while (SUCCEEDED(stream->Read(block, sizeof block, &read)) && read != 0)
        all.append(block, read);
    return all;
}

inline HRESULT Load(IXMLDOMDocument* document, const VARIANT& source) {
    VARIANT_BOOL loaded = VARIANT_FALSE;
    const HRESULT result = document->load(source, &loaded);
    EXPECT_EQ(result == S_OK, loaded != VARIANT_FALSE);
    return result;
}

struct ParseFailure {
    HRESULT code = S_OK;
    std::string reason;
    std::string source;
    LONG line = 0;
    LONG column = 0;
};

inline ParseFailure FailureOf(IXMLDOMDocument* document) {
    CComPtr<IXMLDOMParseError> error;
    EXPECT_EQ(S_OK, document->get_parseError(&error));
    ParseFailure failure;
    CComBSTR reason, source;
    LONG code = 0;
    error->get_errorCode(&code);
    error->get_reason(&reason);
    error->get_srcText(&source);
    error->get_line(&failure.line);
    error->get_linepos(&failure.column);
    failure.code = code;
    failure.reason = Narrow(reason);
    failure.source = Narrow(source);
    return failure;
}
