#include "FilterUtilities/PrintSchema/TicketSupport.h"

#include <Com/FaultInjection.h>
#include <PrintSchema/DomDocumentCache.h>

namespace {

CComPtr<IXMLDOMDocument2> Dom(const std::string& xml) {
    CComPtr<IXMLDOMDocument2> document;
    CreateIXMLDOMDocumentFromIStream(StreamOf(xml), &document);
    return document;
}

std::string OptionIn(IXMLDOMDocument2* document) {
    const PrintTicketXmlDocument ticket(document);
    CComBSTR option;
    ticket.GetFeatureOption(ticket.GetKeywordsNsPrefix(), L"PageMediaSize", &option, nullptr);
    return TextOf(option);
}

void SetOption(IXMLDOMDocument2* document, const wchar_t* option) {
    PrintTicketXmlDocument(document).SetFeatureOption(L"PageMediaSize", true, option, true);
}

const std::string a4Ticket = Ticket(Feature("psk:PageMediaSize", "psk:ISOA4"));

TEST(CreateCopyOfIXMLDOMDocument, MakesATreeOfItsOwnWithAllThatWasEdited) {
    const CComPtr<IXMLDOMDocument2> source = Dom(a4Ticket);
    ASSERT_TRUE(source);
    SetOption(source, L"ISOA5");
    CComPtr<IXMLDOMDocument2> copy;
    ASSERT_EQ(CreateCopyOfIXMLDOMDocument(source, &copy), S_OK);
    EXPECT_EQ(OptionIn(copy), "ISOA5");
    SetOption(copy, L"ISOA3");
    EXPECT_EQ(OptionIn(source), "ISOA5");
}

TEST(CreateCopyOfIXMLDOMDocument, ReportsByResults) {
    CComPtr<IXMLDOMDocument2> out;
    EXPECT_EQ(CreateCopyOfIXMLDOMDocument(nullptr, &out), E_POINTER);
    EXPECT_EQ(CreateCopyOfIXMLDOMDocument(Dom(a4Ticket), nullptr), E_POINTER);
    EXPECT_EQ(CreateIXMLDOMDocumentFromIStream(nullptr, &out), E_POINTER);
    EXPECT_EQ(CreateIXMLDOMDocumentFromIStream(StreamOf("<open>"), &out), E_FAIL);
    EXPECT_FALSE(out);
}

TEST(DomDocumentCache, LetsNobodyEditWhatItStores) {
    DomDocumentCache cache;
    const CComPtr<IXMLDOMDocument2> given = Dom(a4Ticket);
    ASSERT_EQ(cache.AddPrintSchemaDomToCache(L"key", given), S_OK);
    SetOption(given, L"ISOA3");
    for (int round = 0; round < 2; ++round) {
        CComPtr<IXMLDOMDocument2> taken;
        ASSERT_EQ(cache.TryGetPrintSchemaDomFromCache(L"key", &taken), S_OK);
        EXPECT_EQ(OptionIn(taken), "ISOA4");
        SetOption(taken, L"ISOA5");
    }
}

TEST(DomDocumentCache, KeepsTheFirstDocumentOfAKeyUntilItIsCleared) {
    const auto dom = [](const char* option) { return Dom(Ticket(Feature("psk:PageMediaSize", option))); };
    DomDocumentCache cache;
    CComPtr<IXMLDOMDocument2> taken;
    EXPECT_EQ(cache.TryGetPrintSchemaDomFromCache(L"key", &taken), E_FAIL);
    EXPECT_EQ(cache.AddPrintSchemaDomToCache(L"key", dom("psk:A")), S_OK);
    EXPECT_EQ(cache.AddPrintSchemaDomToCache(L"Key", dom("psk:B")), S_OK);
    EXPECT_EQ(cache.AddPrintSchemaDomToCache(L"key", dom("psk:C")), S_OK);
    DomDocumentCache copy(cache);
    EXPECT_EQ(cache.TryGetPrintSchemaDomFromCache(L"key", &taken), S_OK);
    EXPECT_EQ(OptionIn(taken), "A");
    EXPECT_EQ(cache.ClearCache(), S_OK);
    taken.Release();
    EXPECT_EQ(cache.TryGetPrintSchemaDomFromCache(L"Key", &taken), E_FAIL);
    EXPECT_EQ(copy.TryGetPrintSchemaDomFromCache(L"Key", &taken), S_OK);
    EXPECT_EQ(OptionIn(taken), "B");
    EXPECT_EQ(cache.TryGetPrintSchemaDomFromCache(L"key", nullptr), E_INVALIDARG);
    EXPECT_EQ(cache.AddPrintSchemaDomToCache(L"key", nullptr), E_INVALIDARG);
}

TEST(DomDocumentCache, AFailedCopyIsAHitWithoutContentButIsNeverStored) {
    DomDocumentCache cache;
    ASSERT_EQ(cache.AddPrintSchemaDomToCache(L"key", Dom(a4Ticket)), S_OK);
    CComPtr<IXMLDOMDocument2> taken;
    {
        const OvPlatform::FaultInjectionScope firstCallFails(1);
        EXPECT_EQ(cache.TryGetPrintSchemaDomFromCache(L"key", &taken), S_OK);
        EXPECT_FALSE(taken);
    }
    const CComPtr<IXMLDOMDocument2> other = Dom(a4Ticket);
    {
        const OvPlatform::FaultInjectionScope firstCallFails(1);
        EXPECT_EQ(cache.AddPrintSchemaDomToCache(L"other", other), E_OUTOFMEMORY);
    }
    EXPECT_EQ(cache.TryGetPrintSchemaDomFromCache(L"other", &taken), E_FAIL);
}

} // namespace
