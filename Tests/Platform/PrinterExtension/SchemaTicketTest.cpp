#include "Support/Growth.h"

#include <PrinterExtension/SchemaTicket.h>

#include <gtest/gtest.h>

#include <string>

using namespace OvPlatform;

namespace {

constexpr const wchar_t* vendor = L"http://example.com/vendor";

const std::string head =
    R"(<f:PrintTicket version="1" xmlns:f="http://schemas.microsoft.com/windows/2003/08/printing/printschemaframework"
 xmlns:k="http://schemas.microsoft.com/windows/2003/08/printing/printschemakeywords" xmlns:v="http://example.com/vendor"
 xmlns:xsi="http://www.w3.org/2001/XMLSchema-instance" xmlns:xsd="http://www.w3.org/2001/XMLSchema" xmlns="http://example.com/vendor">)";

const std::string sample = head + R"(
 <!-- a comment --> <k:Feature name="k:PageMediaType"/>
 <f:Feature name="Plain"/><f:Feature name="v:PageMediaSize"><f:Option name="v:Mine"/></f:Feature>
 <f:Feature name="k:PageMediaSize"><f:Option name="k:CustomMediaSize">
   <f:ScoredProperty name="k:MediaSizeWidth"><f:ParameterRef name="v:Width"/></f:ScoredProperty>
   <f:ScoredProperty name="k:MediaSizeHeight"><f:Value xsi:type="xsd:integer">297000</f:Value></f:ScoredProperty>
   <f:Property name="v:Lost"><f:ParameterRef name="v:Nowhere"/></f:Property></f:Option></f:Feature>
 <f:Feature name="k:JobDuplexAllDocumentsContiguously" xmlns:k="http://example.com/vendor"/>
 <f:Feature name="k:JobDuplexAllDocumentsContiguously"><f:Option name="k:OneSided"/><f:Option name="k:TwoSidedLongEdge"/></f:Feature>
 <f:ParameterInit name="k:JobCopiesAllDocuments"><f:Value xsi:type="xsd:integer">3</f:Value></f:ParameterInit>
 <f:ParameterInit name="v:Width"><f:Value xsi:type="xsd:integer">210000</f:Value></f:ParameterInit>
 <f:ParameterInit name="v:Words"><f:Value xsi:type="xsd:string">12</f:Value></f:ParameterInit>
 <f:ParameterInit name="v:Wrong"><f:Value xsi:type="xsd:integer">many</f:Value></f:ParameterInit>
</f:PrintTicket>)";

class Schema : public testing::Test {
protected:
    Schema() {
        CoInitialize(nullptr);
        CComPtr<IPrintSchemaTicket> ticket;
        EXPECT_EQ(S_OK, SchemaTicket::Create(sample, &ticket));
        m_ticket = CComQIPtr<IPrintSchemaTicket2>(ticket);
    }
    ~Schema() override {
        m_ticket.Release();
        CoUninitialize();
    }

    CComPtr<IPrintSchemaFeature> Feature(const wchar_t* name, const wchar_t* uri = L"") {
        CComPtr<IPrintSchemaFeature> feature;
        EXPECT_EQ(S_OK, m_ticket->GetFeature(CComBSTR(name), CComBSTR(uri), &feature));
        return feature;
    }

    CComPtr<IPrintSchemaTicket2> m_ticket;
};

// Name and namespace, or what the call said instead.
template <class Element>
std::wstring Named(HRESULT result, const CComPtr<Element>& element) {
    if (result != S_OK || !element) return std::to_wstring(result) + (element ? L" with an object" : L"");
    CComBSTR name, uri;
    EXPECT_EQ(S_OK, element->get_Name(&name));
    EXPECT_EQ(S_OK, element->get_NamespaceUri(&uri));
    return std::wstring(name) + L" " + (uri.Length() != 0 ? std::wstring(uri) : L"");
}

const std::wstring keywords = L" http://schemas.microsoft.com/windows/2003/08/printing/printschemakeywords";

TEST_F(Schema, FindsFeaturesByWhatTheirPrefixesMean) {
    const auto found = [&](const wchar_t* name, const wchar_t* uri) {
        CComPtr<IPrintSchemaFeature> feature;
        const HRESULT result = m_ticket->GetFeature(CComBSTR(name), CComBSTR(uri), &feature);
        return Named(result, feature);
    };
    EXPECT_EQ(L"PageMediaSize" + keywords, found(L"PageMediaSize", L""));
    EXPECT_EQ(L"PageMediaSize http://example.com/vendor", found(L"PageMediaSize", vendor));
    EXPECT_EQ(L"1", found(L"k:PageMediaSize", L"")) << "absent";
    EXPECT_EQ(L"1", found(L"PageMediaType", L"")) << "of another namespace than the framework's";
    EXPECT_EQ(L"1", found(L"Plain", vendor)) << "the default namespace is that of elements";
    EXPECT_EQ(L"1", found(L"", L""));
    // The first one's prefix means the vendor's namespace.
    EXPECT_EQ(L"JobDuplexAllDocumentsContiguously http://example.com/vendor",
              found(L"JobDuplexAllDocumentsContiguously", vendor));

    CComPtr<IPrintSchemaFeature> feature, absent;
    EXPECT_EQ(S_OK, m_ticket->GetFeatureByKeyName(CComBSTR(L"DocumentDuplex"), &feature));
    PrintSchemaSelectionType type{};
    EXPECT_EQ(S_OK, feature->get_SelectionType(&type));
    EXPECT_EQ(PrintSchemaSelectionType_PickMany, type);
    EXPECT_EQ(S_FALSE, m_ticket->GetFeatureByKeyName(CComBSTR(L"DocumentNUp"), &absent));

    CComPtr<IUnknown> node;
    EXPECT_EQ(S_OK, m_ticket->get_XmlNode(&node));
    const CComQIPtr<IXMLDOMElement> root(node);
    ASSERT_TRUE(root);
    CComBSTR text;
    EXPECT_EQ(S_OK, root->get_baseName(&text));
    EXPECT_EQ(L"PrintTicket", std::wstring(text));
    EXPECT_TRUE((CComQIPtr<IPrintSchemaElement>(m_ticket)));
    EXPECT_TRUE((CComQIPtr<IDispatch>(m_ticket)));
}

TEST_F(Schema, ReadsOptionsAndTheirProperties) {
    const auto feature = Feature(L"PageMediaSize");
    CComPtr<IPrintSchemaOption> option, same;
    HRESULT result = feature->get_SelectedOption(&option);
    EXPECT_EQ(L"CustomMediaSize" + keywords, Named(result, option));
    result = feature->GetOption(CComBSTR(L"CustomMediaSize"), nullptr, &same);
    EXPECT_EQ(L"CustomMediaSize" + keywords, Named(result, same));
    const auto text = [&](const wchar_t* name, const wchar_t* uri = L"") -> std::wstring {
        CComPtr<IUnknown> value;
        const HRESULT got = option->GetPropertyValue(CComBSTR(name), CComBSTR(uri), &value);
        const CComQIPtr<IXMLDOMNode> node(value);
        if (got != S_OK || !node) return std::to_wstring(got);
        CComBSTR words;
        node->get_text(&words);
        return std::wstring(words);
    };
    EXPECT_EQ(L"297000", text(L"MediaSizeHeight"));
    EXPECT_EQ(L"210000", text(L"MediaSizeWidth")) << "by way of the parameter";
    EXPECT_EQ(L"1", text(L"Lost", vendor)) << "there is no such parameter";
    EXPECT_EQ(L"1", text(L"MediaSizeDepth"));
}

TEST_F(Schema, ReadsParametersByTheirType) {
    const auto value = [&](const wchar_t* name) {
        CComPtr<IPrintSchemaParameterInitializer> parameter;
        CComVariant read;
        EXPECT_EQ(S_OK, m_ticket->GetParameterInitializer(CComBSTR(name), CComBSTR(vendor), &parameter));
        const HRESULT result = parameter->get_Value(&read);
        if (FAILED(result)) return std::wstring(L"failed");
        return read.vt == VT_I4 ? std::to_wstring(read.lVal) : L"'" + std::wstring(read.bstrVal) + L"'";
    };
    EXPECT_EQ(L"210000", value(L"Width"));
    EXPECT_EQ(L"'12'", value(L"Words"));
    EXPECT_EQ(L"failed", value(L"Wrong"));
    ULONG copies = 0;
    EXPECT_EQ(S_OK, m_ticket->get_JobCopiesAllDocuments(&copies));
    EXPECT_EQ(3u, copies);

    CComPtr<IPrintSchemaTicket> silent, broken;
    EXPECT_EQ(S_OK, SchemaTicket::Create(head + "</f:PrintTicket>", &silent));
    EXPECT_EQ(S_FALSE, silent->get_JobCopiesAllDocuments(&copies));
    EXPECT_EQ(0u, copies);
    EXPECT_TRUE(FAILED(SchemaTicket::Create("<f:PrintTicket", &broken)));
    EXPECT_FALSE(broken);
}

const GrowthCase cases[] = {
    {"FindsTheLastOfManyFeatures",
     [](std::size_t n) {
         const std::string bytes =
             head +
             Times(n, [](std::size_t i) { return "<f:Feature name='v:F" + std::to_string(i) + "'/>"; }) +
             "</f:PrintTicket>";
         return [bytes, last = L"F" + std::to_wstring(n - 1)] {
             CoInitialize(nullptr);
             CComPtr<IPrintSchemaTicket> ticket;
             CComPtr<IPrintSchemaFeature> feature;
             EXPECT_EQ(S_OK, SchemaTicket::Create(bytes, &ticket));
             EXPECT_EQ(S_OK, ticket->GetFeature(CComBSTR(last.c_str()), CComBSTR(vendor), &feature));
             feature.Release();
             ticket.Release();
             CoUninitialize();
         };
     }},
};

class SchemaTicketGrowth : public testing::TestWithParam<GrowthCase> {};

TEST_P(SchemaTicketGrowth, IsLinear) { ExpectLinearGrowth(GetParam()); }

INSTANTIATE_TEST_SUITE_P(, SchemaTicketGrowth, testing::ValuesIn(cases), GrowthName);

} // namespace
