#include "Support/ConfiguredQueue.h"
#include "Support/FailureSweep.h"
#include "Support/FilterJob.h"
#include "Support/Rows.h"
#include "Support/TicketText.h"

#include <ComSupport/MsSafeCoinit.h>
#include <LowLevelFacilities/Failures/CPExceptionOSApiError.h>
#include <Ticket/EnforcedValue.h>
#include <Ticket/PrintTicketManager.h>

#include <gtest/gtest.h>

#include <memory>
#include <optional>

namespace {

std::string Utf8(const CXString& text) { return std::string(CPString(text).view()); }

std::string ValueIn(IXMLDOMDocument2* document, const char* feature) {
    if (document == nullptr) return "(no ticket)";
    return Utf8(ReadEnforcedValue(PrintTicketXmlDocument(document), *TicketEnforcement::Find(feature)));
}

std::string NUp(const std::string& pages) {
    return "<psf:Feature name=\"psk:JobNUpAllDocumentsContiguously\"><psf:Option><psf:ScoredProperty "
           "name=\"psk:PagesPerSheet\">" +
           pages + "</psf:ScoredProperty></psf:Option></psf:Feature>";
}
std::string NUpOf(int pages) {
    return NUp("<psf:Value xsi:type=\"xsd:integer\">" + std::to_string(pages) + "</psf:Value>");
}

// A job of three levels on the sample queue, with a configuration.
struct SanitizedJob {
    MsSafeCoInit apartment;
    SampleQueue queue;
    PrintTicketManager manager;
    std::optional<NativeXmlConfigurationFeatureSet> features;
    NativeXmlConfigurationFeatureSet* configured = nullptr;
    CComPtr<FakeFixedDocumentSequence> job = MakeFake<FakeFixedDocumentSequence>();
    CComPtr<FakeFixedDocument> document = MakeFake<FakeFixedDocument>();
    CComPtr<FakeFixedPage> page = MakeFake<FakeFixedPage>();

    SanitizedJob() {
        std::wstring name = SampleQueue::name;
        EXPECT_EQ(manager.Initialize(MakeFake<MemoryReadStream>(queue.DefaultTicket()), name.data(), nullptr),
                  S_OK);
    }
    void Configure(const std::string& children) {
        features.emplace(ConfiguredFeatures(children));
        configured = &*features;
    }
    static CComPtr<IPartPrintTicket> Ticket(const wchar_t* uri, const std::string& elements) {
        return CComPtr<IPartPrintTicket>(new FakePrintTicketPart(uri, TicketText(elements)));
    }
    HRESULT MergeJob(bool sanitize = true) {
        return manager.MergeAndValidatePartPrintTicketAndSanitizeFromXmlConfig(job, configured, sanitize);
    }
    HRESULT MergeBelow() {
        const HRESULT hr =
            manager.MergeAndValidatePartPrintTicketAndSanitizeFromXmlConfig(document, configured, true);
        return hr != S_OK
                   ? hr
                   : manager.MergeAndValidatePartPrintTicketAndSanitizeFromXmlConfig(page, configured, true);
    }
    std::string State() {
        CComBSTR text;
        if (IXMLDOMDocument2* ticket = manager.GetPtrToJobPrintTicketForReading()) ticket->get_xml(&text);
        return Utf8(CXString(text));
    }
};

struct PrintTicketSanitizingTest : testing::Test, SanitizedJob {};

TEST_F(PrintTicketSanitizingTest, ConfiguredValueOverrulesTheTicketsByItsBehavior) {
    const std::string oneSided = Choice("psk:JobDuplexAllDocumentsContiguously", "psk:OneSided");
    const std::string shortEdge = Choice("psk:JobDuplexAllDocumentsContiguously", "psk:TwoSidedShortEdge");
    constexpr auto sides = "2-SidedPrinting";
    constexpr auto identification = "JobIdentification";
    constexpr auto nUp = "ImagesPerPage";
    const Rows<const char*, const char*, const char*, std::string, std::string> rows{
        {sides, "TwoSidedAny", "EnforcedDefault", oneSided, "TwoSidedLongEdge"},
        {sides, "TwoSidedAny", "EnforcedDefault", shortEdge, "TwoSidedShortEdge"},
        {sides, "TwoSidedAny", "Default", oneSided, "OneSided"},
        {sides, "TwoSidedAny", nullptr, oneSided, "TwoSidedLongEdge"},
        {sides, "OneSided", "EnforcedDefault", shortEdge, "TwoSidedShortEdge"},
        {sides, "OneSided", "EnforcedSetting", shortEdge, "OneSided"},
        {sides, "TwoSidedLongEdge", "EnforcedSetting", shortEdge, "TwoSidedLongEdge"},
        {sides, "TwoSidedShortEdge", "EnforcedSetting", oneSided, "TwoSidedShortEdge"},
        {sides, "NoSuchValue", "EnforcedSetting", shortEdge, "TwoSidedShortEdge"},
        {identification, "PrintIdOnABannerSheet", nullptr, "", "JobIdBannerOn"},
        {identification, "_custombannersheet_", nullptr, "", "JobIdCustomBanner"},
        {identification, "PrintIdInMarginsAllPages", "EnforcedDefault", "", "JobIdOff"},
        {nUp, "4", nullptr, NUpOf(2), "4"},
        {nUp, "16", nullptr, "", "16"},
        {nUp, "4", "EnforcedDefault", NUpOf(2), "2"},
    };
    for (const auto& [name, value, behavior, asked, expected] : rows) {
        Configure(ConfiguredFeature(name, value, behavior));
        job->ticket = Ticket(L"/j", asked);
        ASSERT_EQ(MergeJob(), S_OK);
        const std::string row = std::string(name) + " " + value + " " + (behavior ? behavior : "");
        EXPECT_EQ(ValueIn(manager.GetPtrToJobPrintTicketForReading(), name), expected) << row;
        // The level below, which has no ticket, is merged on what was enforced.
        ASSERT_EQ(MergeBelow(), S_OK);
        EXPECT_EQ(ValueIn(manager.GetPtrToDocPrintTicketForReading(), name), expected) << row;
        EXPECT_EQ(ValueIn(manager.GetPtrToPagePrintTicketForReading(), name), expected) << row;
    }
    EXPECT_EQ(ValueIn(manager.GetPtrToDefaultPrintTicketForReading(), nUp), "1");
}

TEST_F(PrintTicketSanitizingTest, OneBadFeatureDoesNotKeepTheOthersFromBeingEnforced) {
    Configure(ConfiguredFeature("2-SidedPrinting", "Nonsense") + ConfiguredFeature("ImagesPerPage", "9") +
              ConfiguredFeature("JobIdentification", "DisableJobId") + ConfiguredFeature("Staple", "x"));
    job->ticket = Ticket(L"/j", Choice("psk:JobDuplexAllDocumentsContiguously", "psk:TwoSidedShortEdge"));
    ASSERT_EQ(MergeJob(), S_OK);
    IXMLDOMDocument2* const ticket = manager.GetPtrToJobPrintTicketForReading();
    EXPECT_EQ(ValueIn(ticket, "ImagesPerPage"), "9");
    EXPECT_EQ(ValueIn(ticket, "2-SidedPrinting"), "TwoSidedShortEdge");
}

TEST_F(PrintTicketSanitizingTest, NothingIsEnforcedWithoutASetOrWithoutTheWish) {
    Configure(ConfiguredFeature("ImagesPerPage", "4"));
    job->ticket = Ticket(L"/j", NUpOf(2));
    ASSERT_EQ(MergeJob(false), S_OK);
    EXPECT_EQ(ValueIn(manager.GetPtrToJobPrintTicketForReading(), "ImagesPerPage"), "2");
    // A level that is asked to obey does so for itself and for those below.
    ASSERT_EQ(MergeBelow(), S_OK);
    EXPECT_EQ(ValueIn(manager.GetPtrToDocPrintTicketForReading(), "ImagesPerPage"), "4");
    ASSERT_EQ(manager.MergeAndValidatePartPrintTicket(page), S_OK);
    EXPECT_EQ(ValueIn(manager.GetPtrToPagePrintTicketForReading(), "ImagesPerPage"), "4");
    ASSERT_EQ(manager.MergeAndValidatePartPrintTicket(document), S_OK);
    ASSERT_EQ(manager.MergeAndValidatePartPrintTicketAndSanitizeFromXmlConfig(page, configured, true), S_OK);
    EXPECT_EQ(ValueIn(manager.GetPtrToDocPrintTicketForReading(), "ImagesPerPage"), "2");
    EXPECT_EQ(ValueIn(manager.GetPtrToPagePrintTicketForReading(), "ImagesPerPage"), "4");
    configured = nullptr;
    ASSERT_EQ(MergeJob(), S_OK);
    EXPECT_EQ(ValueIn(manager.GetPtrToJobPrintTicketForReading(), "ImagesPerPage"), "2");
    OvPlatform::QueueRegistry::Clear(); // the printer is opened all the same
    EXPECT_THROW(MergeJob(false), CPExceptionOSApiError);
}

TEST_F(PrintTicketSanitizingTest, WhatIsNotThereIsNotEnforced) {
    Configure(ConfiguredFeature("ImagesPerPage", "4") + ConfiguredFeature("2-SidedPrinting", "OneSided") +
              ConfiguredFeature("JobIdentification", "PrintIdOnABannerSheet"));
    const std::string nameless =
        TicketText("<psf:Feature name=\"psk:JobDuplexAllDocumentsContiguously\"><psf:Option/></psf:Feature>" +
                   Choice("psk:PageOrientation", "psk:Landscape"));
    PrintTicketXmlDocument ticket(CXString(nameless.c_str()));
    CComBSTR before;
    ticket.get_xml(&before);
    EXPECT_TRUE(EnforceConfiguration(ticket, *configured).empty());
    CComBSTR after;
    ticket.get_xml(&after);
    EXPECT_STREQ(after, before);

    // A level that could not be merged has no ticket to enforce anything in.
    job->ticket = SanitizedJob::Ticket(L"/j", "<psf:Unfinished");
    const ReportRecorder reports;
    EXPECT_EQ(MergeJob(), E_POINTER);
    EXPECT_FALSE(ReportRecorder::reports().empty());
}

TEST_F(PrintTicketSanitizingTest, NumberByReferenceIsWrittenWhereTheProviderFindsIt) {
    const std::string byReference =
        TicketText(NUp("<psf:ParameterRef name=\"psk:SomeNumber\"/>") +
                   "<psf:ParameterInit name=\"psk:SomeNumber\"><psf:Value xsi:type=\"xsd:integer\">2"
                   "</psf:Value></psf:ParameterInit>");
    PrintTicketXmlDocument ticket(CXString(byReference.c_str()));
    Configure(ConfiguredFeature("ImagesPerPage", "6"));
    const auto changes = EnforceConfiguration(ticket, *configured);
    ASSERT_EQ(changes.size(), 1u);
    EXPECT_EQ(changes.front().before, L"2");
    EXPECT_EQ(changes.front().configured->GetXmlConfigValue(), "6");
    EXPECT_EQ(ValueIn(ticket.GetDomDocPtr(), "ImagesPerPage"), "6");
    CComBSTR text;
    ticket.get_xml(&text);
    EXPECT_NE(
        Utf8(CXString(text)).find("<psf:Value xsi:type=\"xsd:integer\">6</psf:Value></psf:ParameterInit>"),
        std::string::npos);
    EXPECT_TRUE(EnforceConfiguration(ticket, *configured).empty()); // nothing is left to do
}

TEST_F(PrintTicketSanitizingTest, ValueIsWrittenIntoATicketThatDoesNotHaveIt) {
    const Rows<const char*, const wchar_t*> values{{"ImagesPerPage", L"4"},
                                                   {"2-SidedPrinting", L"TwoSidedLongEdge"},
                                                   {"JobIdentification", L"JobIdOff"}};
    for (const std::string& elements :
         {std::string(), Choice("psk:JobDuplexAllDocumentsContiguously", "psk:OneSided") + NUpOf(2),
          Choice("psk:JobDuplexAllDocumentsContiguously", "OneSided")}) {
        PrintTicketXmlDocument ticket(CXString(TicketText(elements).c_str()));
        for (const auto& [name, value] : values) {
            WriteEnforcedValue(ticket, *TicketEnforcement::Find(name), value);
            EXPECT_EQ(ReadEnforcedValue(ticket, *TicketEnforcement::Find(name)), value);
        }
        // The provider takes it.
        CComBSTR text;
        ticket.get_xml(&text);
        job->ticket = CComPtr<IPartPrintTicket>(new FakePrintTicketPart(L"/j", Utf8(CXString(text))));
        ASSERT_TRUE(SUCCEEDED(manager.MergeAndValidatePartPrintTicket(job)));
        for (const auto& [name, value] : values)
            EXPECT_EQ(ValueIn(manager.GetPtrToJobPrintTicketForReading(), name), Utf8(value)) << elements;
    }
}

// A ticket and what is enforced in it.
struct EnforcedTicket {
    MsSafeCoInit apartment;
    PrintTicketXmlDocument ticket{
        CXString(TicketText(NUp("<psf:ParameterRef name=\"psk:SomeNumber\"/>") +
                            "<psf:ParameterInit name=\"psk:SomeNumber\"><psf:Value xsi:type=\"xsd:integer\">2"
                            "</psf:Value></psf:ParameterInit>")
                     .c_str())};
    NativeXmlConfigurationFeatureSet features = ConfiguredFeatures(ConfiguredFeature("ImagesPerPage", "6"));

    std::string State() const {
        CComBSTR text;
        ticket.get_xml(&text);
        return Utf8(CXString(text));
    }
};

TEST(PrintTicketSanitizingSweepTest, FailingCallIsToldAndTheTicketIsAsItWasOrAsAsked) {
    FailureSweep<EnforcedTicket>([] { return std::make_unique<EnforcedTicket>(); },
                                 [](EnforcedTicket& world) -> SweptAnswer {
                                     EnforceConfiguration(world.ticket, world.features);
                                     return S_OK;
                                 })
        .Run("EnforceConfiguration");
}

} // namespace
