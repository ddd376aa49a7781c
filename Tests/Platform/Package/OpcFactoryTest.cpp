#include "Support/InApartment.h"
#include "Support/Rows.h"

#include <atlcomcli.h>
#include <gtest/gtest.h>
#include <msopc.h>

namespace {

class OpcFactoryTest : public InApartment<> {
protected:
    void SetUp() override { ASSERT_EQ(m_factory.CoCreateInstance(__uuidof(OpcFactory)), S_OK); }

    CComPtr<IOpcPartUri> Part(const wchar_t* name) {
        CComPtr<IOpcPartUri> part;
        EXPECT_EQ(m_factory->CreatePartUri(name, &part), S_OK);
        return part;
    }

    static std::wstring Raw(IUri* uri) {
        CComBSTR text;
        EXPECT_EQ(uri->GetRawUri(&text), S_OK);
        return text.m_str ? text.m_str : L"";
    }

    CComPtr<IOpcFactory> m_factory;
};

} // namespace

TEST_F(OpcFactoryTest, MakesPartUris) {
    const Rows<const wchar_t*, const wchar_t*, HRESULT> rows{
        {L"/a/b.xml", L"/a/b.xml", S_OK},
        {L"a/b.xml", L"/a/b.xml", S_OK},
        {L"/%7Ea%c3%a9/\x00E9 \xD83D\xDDA8.xml", L"/~a%C3%A9/%C3%A9%20%F0%9F%96%A8.xml", S_OK},
        {L"", nullptr, OPC_E_NONCONFORMING_URI},
        {L"/", nullptr, OPC_E_PART_CANNOT_BE_DIRECTORY},
        {L"/a.xml#f", nullptr, OPC_E_NONCONFORMING_URI},
        {L"/a\xD83D.xml", nullptr, OPC_E_NONCONFORMING_URI}, // a lone surrogate
        {L"http://h/a.xml", nullptr, OPC_E_RELATIVE_URI_REQUIRED},
    };
    for (const auto& [text, name, result] : rows) {
        CComPtr<IOpcPartUri> part;
        EXPECT_EQ(m_factory->CreatePartUri(text, &part), result);
        EXPECT_EQ(part != nullptr, name != nullptr);
        if (part) {
            EXPECT_EQ(Raw(part), name);
        }
    }
    EXPECT_EQ(m_factory->CreatePartUri(nullptr, nullptr), E_POINTER);
}

TEST_F(OpcFactoryTest, RelatesParts) {
    const auto page = Part(L"/Documents/1/Pages/1.fpage"), font = Part(L"/Resources/f.odttf");
    CComPtr<IUri> relative;
    ASSERT_EQ(page->GetRelativeUri(font, &relative), S_OK);
    EXPECT_EQ(Raw(relative), L"../../../Resources/f.odttf");
    CComPtr<IOpcPartUri> combined, rels, none;
    ASSERT_EQ(page->CombinePartUri(relative, &combined), S_OK);
    INT32 order = 1;
    EXPECT_EQ(combined->ComparePartUri(font, &order), S_OK);
    EXPECT_EQ(order, 0);
    EXPECT_EQ(font->ComparePartUri(page, &order), S_OK);
    EXPECT_EQ(order, 1);

    ASSERT_EQ(page->GetRelationshipsPartUri(&rels), S_OK);
    EXPECT_EQ(Raw(rels), L"/Documents/1/Pages/_rels/1.fpage.rels");
    EXPECT_EQ(rels->GetRelationshipsPartUri(&none), OPC_E_NONCONFORMING_URI);
    CComPtr<IOpcUri> source, nothing;
    ASSERT_EQ(rels->GetSourceUri(&source), S_OK);
    BOOL is = FALSE;
    EXPECT_EQ(source->IsEqual(page, &is), S_OK);
    EXPECT_TRUE(is);
    EXPECT_EQ(page->GetSourceUri(&nothing), OPC_E_RELATIONSHIP_URI_REQUIRED);
}

TEST_F(OpcFactoryTest, DescribesAPath) {
    const auto part = Part(L"/a/b.xml");
    CComBSTR text, host, none;
    EXPECT_EQ(part->GetExtension(&text), S_OK);
    EXPECT_STREQ(text, L".xml");
    EXPECT_EQ(part->GetHost(&host), S_FALSE);
    EXPECT_EQ(part->GetPropertyBSTR(Uri_PROPERTY_PORT, &none, 0), E_INVALIDARG);
}
