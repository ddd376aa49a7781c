#pragma once

// Tickets for the tests of this room, and what the tests ask of documents.

#include <LowLevelFacilities/Failures/CPComException.h>
#include <LowLevelFacilities/Strings/CPStringUtils.h>
#include <PrintSchema/PrintTicketXmlDocument.h>

#include <filterpipeline.h>
#include <gtest/gtest.h>
#include <libxml/parser.h>
#include <libxml/xpath.h>
#include <libxml/xpathInternals.h>
#include <objbase.h>

#include <functional>
#include <memory>
#include <string>
#include <string_view>

/// Documents are made in an apartment.
class Apartment : public ::testing::Environment {
    void SetUp() override { ASSERT_EQ(CoInitializeEx(nullptr, COINIT_MULTITHREADED), S_OK); }
    void TearDown() override { CoUninitialize(); }
};
inline ::testing::Environment* const apartment = ::testing::AddGlobalTestEnvironment(new Apartment);

inline constexpr char frameworkUri[] =
    "http://schemas.microsoft.com/windows/2003/08/printing/printschemaframework";
inline constexpr char keywordsUri[] =
    "http://schemas.microsoft.com/windows/2003/08/printing/printschemakeywords";
inline constexpr char keywordsV11Uri[] =
    "http://schemas.microsoft.com/windows/2013/05/printing/printschemakeywordsv11";

inline std::string Narrow(const wchar_t* text) { return CPStringUtils::narrowToStdString(text); }

inline std::string PrivateUri() { return Narrow(PrintSchema::USER_KEYWORDS_URI); }

inline std::string Declare(const std::string& prefix, const std::string& uri) {
    return " xmlns" + (prefix.empty() ? "" : ":" + prefix) + "='" + uri + "'";
}

/// A ticket with the usual declarations, those given, and content.
inline std::string Ticket(const std::string& content, const std::string& declarations = {}) {
    return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<psf:PrintTicket" + Declare("psf", frameworkUri) +
           Declare("psk", keywordsUri) + Declare("xsi", "http://www.w3.org/2001/XMLSchema-instance") +
           Declare("xsd", "http://www.w3.org/2001/XMLSchema") + declarations + " version='1'>" + content +
           "</psf:PrintTicket>";
}

inline std::string Feature(const std::string& name, const std::string& option,
                           const std::string& inOption = {}) {
    return "<psf:Feature name='" + name + "'><psf:Option" + (option.empty() ? "" : " name='" + option + "'") +
           ">" + inOption + "</psf:Option></psf:Feature>";
}

inline std::string ScoredProperty(const std::string& name, const std::string& content) {
    return "<psf:ScoredProperty name='" + name + "'>" + content + "</psf:ScoredProperty>";
}

inline std::string Value(const std::string& text) {
    return "<psf:Value xsi:type='xsd:integer'>" + text + "</psf:Value>";
}

inline CComPtr<IStream> StreamOf(std::string_view bytes) {
    CComPtr<IStream> stream;
    if (FAILED(CreateStreamOnHGlobal(nullptr, TRUE, &stream))) return nullptr;
    ULONG written = 0;
    stream->Write(bytes.data(), static_cast<ULONG>(bytes.size()), &written);
    return stream;
}

/// The library's document with what it keeps for its subclasses.
class OpenTicket : public PrintTicketXmlDocument {
public:
    using PrintTicketXmlDocument::PrintTicketXmlDocument;
    explicit OpenTicket(const std::string& bytes)
        : PrintTicketXmlDocument(static_cast<IStream*>(StreamOf(bytes))) {}

    using PrintSchemaXmlDocument::CreateCDATASectionXMLElement;
    using PrintSchemaXmlDocument::CreateProperty;
    using PrintSchemaXmlDocument::CreateRealScoredProperty;
    using PrintSchemaXmlDocument::CreateScoredProperty;
    using PrintSchemaXmlDocument::CreateStringScoredProperty;
    using PrintSchemaXmlDocument::GetNodes;
    using PrintSchemaXmlDocument::GetPrefixFromURI;
    using PrintSchemaXmlDocument::SetNodeValue;
};

inline std::string XmlOf(const PrintSchemaXmlDocument& document) {
    CComBSTR text;
    EXPECT_EQ(document.get_xml(&text), S_OK);
    return Narrow(text.m_str);
}

inline std::string TextOf(const CComBSTR& text) { return text.m_str ? Narrow(text.m_str) : "(null)"; }

/// The result of an operation, also of one that raises it.
inline HRESULT ResultOf(const std::function<HRESULT()>& operation) {
    try {
        return operation();
    } catch (const CPComException& failure) {
        return failure.GetHresult();
    }
}

/// That it raises, with this result and this operation's name.
inline void ExpectRaised(const std::function<void()>& operation, HRESULT result,
                         const std::string& function) {
    try {
        operation();
        ADD_FAILURE() << function << " should have raised";
    } catch (const CPComException& failure) {
        EXPECT_EQ(failure.GetHresult(), result) << failure.getExceptionMessage();
        EXPECT_EQ(failure.getDebugContext().function(), function);
    }
}

inline std::string MessageOf(const std::function<void()>& operation) {
    try {
        operation();
        return {};
    } catch (const CPException& failure) {
        return failure.getExceptionMessage();
    }
}

/// What an outside reader finds in a document's text, by an expression with the usual prefixes; "(malformed)"
/// if it cannot read it, with namespaces, at all.
inline std::string OutsideView(const std::string& text, const std::string& xpath) {
    const std::unique_ptr<xmlDoc, decltype(&xmlFreeDoc)> tree(
        xmlReadMemory(text.data(), static_cast<int>(text.size()), nullptr, "UTF-8",
                      XML_PARSE_NONET | XML_PARSE_NOERROR | XML_PARSE_NOWARNING | XML_PARSE_HUGE),
        xmlFreeDoc);
    const xmlError* error = xmlGetLastError();
    if (!tree || (error && error->domain == XML_FROM_NAMESPACE)) return "(malformed)";
    const std::unique_ptr<xmlXPathContext, decltype(&xmlXPathFreeContext)> context(
        xmlXPathNewContext(tree.get()), xmlXPathFreeContext);
    const auto bind = [&](const char* prefix, const std::string& uri) {
        xmlXPathRegisterNs(context.get(), reinterpret_cast<const xmlChar*>(prefix),
                           reinterpret_cast<const xmlChar*>(uri.c_str()));
    };
    bind("psf", frameworkUri);
    bind("xsi", "http://www.w3.org/2001/XMLSchema-instance");
    const std::unique_ptr<xmlXPathObject, decltype(&xmlXPathFreeObject)> found(
        xmlXPathEvalExpression(reinterpret_cast<const xmlChar*>(("string(" + xpath + ")").c_str()),
                               context.get()),
        xmlXPathFreeObject);
    return found ? reinterpret_cast<const char*>(found->stringval) : "(no such expression)";
}

inline std::string OutsideView(const PrintSchemaXmlDocument& document, const std::string& xpath) {
    return OutsideView(XmlOf(document), xpath);
}
