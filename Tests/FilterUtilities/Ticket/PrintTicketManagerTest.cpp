#include "Support/FailureSweep.h"
#include "Support/FilterJob.h"
#include "Support/ReportRecorder.h"
#include "Support/TicketText.h"
#include "Support/VirtualSlots.h"

#include <ComSupport/MsSafeCoinit.h>
#include <Ticket/PrintTicketManager.h>

#include <gtest/gtest.h>

#include <array>
#include <string>

namespace {

// The option of a feature of the keywords, "" if the ticket has none.
std::wstring OptionOf(IXMLDOMDocument2* document, const wchar_t* feature) {
    if (!document) return L"(no document)";
    const PrintTicketXmlDocument ticket(document);
    CComBSTR option;
    CComBSTR prefix;
    const CComBSTR keywords = ticket.GetKeywordsNsPrefix();
    return SUCCEEDED(ticket.GetFeatureOption(keywords, feature, &option, &prefix)) && option
               ? std::wstring(option)
               : L"";
}

bool HasPasscode(IXMLDOMDocument2* document) {
    const PrintTicketXmlDocument ticket(document);
    CComPtr<IXMLDOMNode> node;
    return ticket.GetFeatureNodeIfExists(ticket.GetKeywordsV11NsPrefix(), L"JobPasscode", &node) == S_OK;
}

std::wstring TextOf(IXMLDOMDocument2* document) {
    CComBSTR text;
    EXPECT_EQ(document->get_xml(&text), S_OK);
    return std::wstring(text, text.Length());
}

void Edit(IXMLDOMDocument2* document) {
    EXPECT_EQ(
        PrintTicketXmlDocument(document).SetFeatureOption(L"PageOrientation", true, L"ReversePortrait", true),
        S_OK);
}

CComPtr<IPartPrintTicket> Ticket(const wchar_t* uri, const std::string& elements) {
    return CComPtr<IPartPrintTicket>(new FakePrintTicketPart(uri, TicketText(elements)));
}

struct PrintTicketManagerTest : testing::Test {
    const MsSafeCoInit apartment;
    SampleQueue queue;
    PrintTicketManager manager;
    CComPtr<FakeFixedDocumentSequence> job = MakeFake<FakeFixedDocumentSequence>();
    CComPtr<FakeFixedDocument> document = MakeFake<FakeFixedDocument>();
    CComPtr<FakeFixedPage> page = MakeFake<FakeFixedPage>();

    HRESULT Initialize(PrintTicketManager& which, const std::string& ticket) {
        std::wstring name = SampleQueue::name;
        return which.Initialize(MakeFake<MemoryReadStream>(ticket), name.data(), nullptr);
    }
    void SetUp() override { ASSERT_EQ(Initialize(manager, queue.DefaultTicket()), S_OK); }

    HRESULT MergeAll() {
        HRESULT hr = manager.MergeAndValidatePartPrintTicket(job);
        if (SUCCEEDED(hr)) hr = manager.MergeAndValidatePartPrintTicket(document);
        if (SUCCEEDED(hr)) hr = manager.MergeAndValidatePartPrintTicket(page);
        return hr;
    }
    // For each level, the default's included, the option of the feature.
    std::vector<std::wstring> Options(const wchar_t* feature) {
        return {OptionOf(manager.GetPtrToDefaultPrintTicketForReading(), feature),
                OptionOf(manager.GetPtrToJobPrintTicketForReading(), feature),
                OptionOf(manager.GetPtrToDocPrintTicketForReading(), feature),
                OptionOf(manager.GetPtrToPagePrintTicketForReading(), feature)};
    }
    using Levels = std::vector<std::wstring>;
};

TEST_F(PrintTicketManagerTest, InitializeSaysWhatIsWrong) {
    std::wstring name = SampleQueue::name;
    std::wstring unknown = L"No such printer";
    std::wstring empty;
    const auto ticket = MakeFake<MemoryReadStream>(queue.DefaultTicket());
    EXPECT_EQ(manager.Initialize(nullptr, name.data(), nullptr), E_POINTER);
    EXPECT_EQ(manager.Initialize(ticket, empty.data(), nullptr), E_INVALIDARG);
    EXPECT_EQ(manager.Initialize(ticket, nullptr, nullptr), E_INVALIDARG);
    // The last one counts, and a failure leaves no other in its place.
    EXPECT_EQ(Initialize(manager, "<broken"), E_FAIL);
    EXPECT_EQ(manager.GetPtrToDefaultPrintTicketForReading(), nullptr);
    EXPECT_STREQ(manager.GetPrinterName(), SampleQueue::name);
    EXPECT_EQ(Initialize(manager, queue.DefaultTicket()), S_OK);
    EXPECT_EQ(manager.Initialize(ticket, unknown.data(), nullptr),
              HRESULT_FROM_WIN32(ERROR_INVALID_PRINTER_NAME));
    job->ticket = Ticket(L"/j", "");
    EXPECT_EQ(manager.MergeAndValidatePartPrintTicket(job), E_POINTER);
}

TEST_F(PrintTicketManagerTest, EachLevelLiesOverTheOneAbove) {
    job->ticket = Ticket(L"/Metadata/Job_PT.xml", Choice("psk:PageOrientation", "psk:Landscape") +
                                                      Choice("psk:PageMediaSize", "psk:ISOA3") +
                                                      Choice("psk:JobInputBin", "psk:Manual"));
    document->ticket = Ticket(L"/Metadata/Doc_PT.xml", Choice("psk:PageMediaSize", "psk:NorthAmericaLetter") +
                                                           Choice("psk:PageOutputColor", "psk:Monochrome") +
                                                           Choice("psk:DocumentCollate", "psk:Uncollated") +
                                                           Choice("psk:JobInputBin", "psk:AutoSelect"));
    page->ticket = Ticket(L"/Metadata/Page_PT.xml", Choice("psk:PageOutputColor", "psk:Color"));
    ASSERT_TRUE(SUCCEEDED(MergeAll()));
    EXPECT_EQ(Options(L"PageOrientation"), (Levels{L"Portrait", L"Landscape", L"Landscape", L"Landscape"}));
    EXPECT_EQ(Options(L"PageMediaSize"),
              (Levels{L"ISOA4", L"ISOA3", L"NorthAmericaLetter", L"NorthAmericaLetter"}));
    EXPECT_EQ(Options(L"PageOutputColor"), (Levels{L"Color", L"Color", L"Monochrome", L"Color"}));
    // What lies beyond the scope of a level is neither taken from its ticket nor kept.
    EXPECT_EQ(Options(L"JobInputBin"), (Levels{L"AutoSelect", L"Manual", L"", L""}));
    EXPECT_EQ(Options(L"DocumentCollate"), (Levels{L"Collated", L"Collated", L"Uncollated", L""}));

    // The next document is merged on the job, not on the document before it.
    document->ticket.Release();
    ASSERT_EQ(manager.MergeAndValidatePartPrintTicket(document), S_OK);
    EXPECT_EQ(manager.GetPtrToPagePrintTicketForReading(), nullptr);
    EXPECT_EQ(OptionOf(manager.GetPtrToDocPrintTicketForReading(), L"PageMediaSize"), L"ISOA3");
}

TEST_F(PrintTicketManagerTest, EditOfALevelDoesNotReachTheNext) {
    for (const bool withTickets : {false, true}) {
        if (withTickets) {
            job->ticket = Ticket(L"/j", Choice("psk:PageMediaSize", "psk:ISOA3"));
            document->ticket = Ticket(L"/d", Choice("psk:PageOutputColor", "psk:Monochrome"));
            page->ticket = Ticket(L"/p", Choice("psk:PageOutputColor", "psk:Color"));
        }
        ASSERT_TRUE(SUCCEEDED(manager.MergeAndValidatePartPrintTicket(job)));
        Edit(manager.GetPtrToJobPrintTicketForReading());
        ASSERT_TRUE(SUCCEEDED(manager.MergeAndValidatePartPrintTicket(document)));
        Edit(manager.GetPtrToDocPrintTicketForReading());
        ASSERT_TRUE(SUCCEEDED(manager.MergeAndValidatePartPrintTicket(page)));
        EXPECT_EQ(Options(L"PageOrientation"),
                  (Levels{L"Portrait", L"ReversePortrait", L"ReversePortrait", L"Portrait"}));
    }
}

TEST_F(PrintTicketManagerTest, MergeOfALevelClearsItsFlagAndThoseBelow) {
    ASSERT_EQ(MergeAll(), S_OK);
    const auto flagsAfter = [&](auto part) {
        manager.SetJobPtChangedFlag(true);
        manager.SetDocPtChangedFlag(true);
        manager.SetPagePtChangedFlag(true);
        manager.MergeAndValidatePartPrintTicket(part);
        return std::array{manager.GetJobPtChangedFlag(), manager.GetDocPtChangedFlag(),
                          manager.GetPagePtChangedFlag()};
    };
    EXPECT_EQ(flagsAfter(page.p), (std::array{true, true, false}));
    EXPECT_EQ(flagsAfter(document.p), (std::array{true, false, false}));
    EXPECT_EQ(flagsAfter(job.p), (std::array{false, false, false}));
}

TEST_F(PrintTicketManagerTest, MergeOfALevelForgetsThoseBelowAlsoWhereItFails) {
    const auto bad = MakeFake<FakePrintTicketPart>(L"/bad", "<broken");
    constexpr auto badDelta = static_cast<HRESULT>(E_DELTA_PRINTTICKET_FORMAT);
    ASSERT_EQ(MergeAll(), S_OK);
    ASSERT_EQ(manager.MergeAndValidatePartPrintTicket(job), S_OK);
    EXPECT_FALSE(manager.GetPtrToDocPrintTicketForReading());
    EXPECT_FALSE(manager.GetPtrToPagePrintTicketForReading());
    // What stands above is not there to merge on.
    EXPECT_EQ(manager.MergeAndValidatePartPrintTicket(page), E_POINTER);

    page->ticket = bad.p;
    EXPECT_EQ(MergeAll(), badDelta);
    EXPECT_FALSE(manager.GetPtrToPagePrintTicketForReading());
    bad->streamResult = E_ACCESSDENIED;
    EXPECT_EQ(manager.MergeAndValidatePartPrintTicket(page), E_ACCESSDENIED);
    bad->streamResult = S_OK;

    page->ticket.Release();
    ASSERT_EQ(MergeAll(), S_OK);
    document->ticket = bad.p;
    EXPECT_EQ(manager.MergeAndValidatePartPrintTicket(document), badDelta);
    EXPECT_FALSE(manager.GetPtrToDocPrintTicketForReading() || manager.GetPtrToPagePrintTicketForReading());
    EXPECT_EQ(manager.MergeAndValidatePartPrintTicket(page), E_POINTER);

    document->ticket.Release();
    ASSERT_EQ(MergeAll(), S_OK);
    job->ticket = bad.p;
    EXPECT_EQ(manager.MergeAndValidatePartPrintTicket(job), badDelta);
    EXPECT_FALSE(manager.GetPtrToJobPrintTicketForReading());
    EXPECT_EQ(manager.MergeAndValidatePartPrintTicket(document), E_POINTER);
}

TEST_F(PrintTicketManagerTest, DefaultsPasscodeDoesNotLockAJobThatAskedForNone) {
    std::string defaultTicket = queue.DefaultTicket();
    const std::string passcode = Choice("pskv11:JobPasscode", "psk:On");
    if (const auto at = defaultTicket.find("<psf:Feature name=\"pskv11:JobPasscode\"");
        at != std::string::npos) {
        defaultTicket.erase(at, defaultTicket.find("</psf:Feature>", at) + 14 - at);
    }
    defaultTicket.insert(defaultTicket.rfind("</psf:PrintTicket>"), passcode);
    ASSERT_EQ(Initialize(manager, defaultTicket), S_OK);

    const auto expectPasscode = [&](bool inJob, const char* what) {
        ASSERT_TRUE(SUCCEEDED(manager.MergeAndValidatePartPrintTicket(job))) << what;
        EXPECT_EQ(HasPasscode(manager.GetPtrToJobPrintTicketForReading()), inJob) << what;
        // The document without a ticket is the copy of what the next level stands on.
        ASSERT_EQ(manager.MergeAndValidatePartPrintTicket(document), S_OK) << what;
        EXPECT_EQ(HasPasscode(manager.GetPtrToDocPrintTicketForReading()), inJob) << what;
    };
    expectPasscode(true, "no job ticket");
    job->ticket = Ticket(L"/j", Choice("psk:PageMediaSize", "psk:ISOA3"));
    expectPasscode(false, "job ticket without the feature");
    job->ticket = Ticket(L"/j", passcode);
    expectPasscode(true, "job ticket with the feature");
}

TEST_F(PrintTicketManagerTest, PagesOfOneTicketPartCostOneMerge) {
    ASSERT_EQ(manager.MergeAndValidatePartPrintTicket(job), S_OK);
    ASSERT_EQ(manager.MergeAndValidatePartPrintTicket(document), S_OK);
    const auto ticket = MakeFake<FakePrintTicketPart>(
        L"/Metadata/Page_PT.xml", TicketText(Choice("psk:PageOrientation", "psk:Landscape")));
    page->ticket = ticket.p;
    for (int number = 0; number < 200; ++number) {
        ASSERT_TRUE(SUCCEEDED(manager.MergeAndValidatePartPrintTicket(page)));
        // An edit of one page does not appear in the next.
        ASSERT_EQ(OptionOf(manager.GetPtrToPagePrintTicketForReading(), L"PageOrientation"), L"Landscape");
        Edit(manager.GetPtrToPagePrintTicketForReading());
    }
    EXPECT_EQ(ticket->streamsGiven, 1);

    // It outlives document and job, and ends when it is told to.
    ASSERT_EQ(manager.MergeAndValidatePartPrintTicket(job), S_OK);
    ASSERT_EQ(manager.MergeAndValidatePartPrintTicket(document), S_OK);
    ASSERT_EQ(manager.MergeAndValidatePartPrintTicket(page), S_OK);
    EXPECT_EQ(ticket->streamsGiven, 1);
    EXPECT_EQ(manager.ClearPerJobInMemoryDomDocumentCaches(), S_OK);
    ASSERT_TRUE(SUCCEEDED(manager.MergeAndValidatePartPrintTicket(page)));
    EXPECT_EQ(ticket->streamsGiven, 2);

    // Another part is another merge, and one without a URI has a place of its own; but whose URI cannot be
    // had is nobody's twin.
    const auto mergedOrientation = [&](const CComPtr<FakePrintTicketPart>& part) {
        page->ticket = part.p;
        EXPECT_TRUE(SUCCEEDED(manager.MergeAndValidatePartPrintTicket(page)));
        return OptionOf(manager.GetPtrToPagePrintTicketForReading(), L"PageOrientation");
    };
    const auto other = MakeFake<FakePrintTicketPart>(
        L"/Metadata/Other_PT.xml", TicketText(Choice("psk:PageOrientation", "psk:ReverseLandscape")));
    EXPECT_EQ(mergedOrientation(other), L"ReverseLandscape");
    ticket->uriResult = E_ELEMENT_NOT_FOUND;
    for (int number = 0; number < 2; ++number)
        EXPECT_EQ(mergedOrientation(ticket), L"Landscape");
    EXPECT_EQ(ticket->streamsGiven, 3);
    ticket->uriResult = other->uriResult = E_ABORT;
    EXPECT_EQ(mergedOrientation(other), L"ReverseLandscape");
    EXPECT_EQ(mergedOrientation(ticket), L"Landscape");
}

TEST_F(PrintTicketManagerTest, TicketThatCannotBeFetchedCountsAsNothingToLayOver) {
    const ReportRecorder recorder;
    for (const HRESULT result : {E_ACCESSDENIED, S_OK}) { // S_OK without a ticket
        job->ticketResult = document->ticketResult = page->ticketResult = result;
        ASSERT_TRUE(SUCCEEDED(MergeAll()));
        EXPECT_EQ(Options(L"PageMediaSize"), (Levels{L"ISOA4", L"ISOA4", L"ISOA4", L"ISOA4"}));
        if (FAILED(result)) {
            EXPECT_EQ(ReportRecorder::reports().size(), 3u);
        }
    }
}

TEST_F(PrintTicketManagerTest, LookAtTheJobTicketThatFailsIsReportedAndNoMore) {
    // Gives its stream from the second time on: the first is for the look, the second for the merge.
    class LateTicket : public FakePrintTicketPart {
    public:
        using FakePrintTicketPart::FakePrintTicketPart;
        HRESULT STDMETHODCALLTYPE GetStream(IPrintReadStream** stream) override {
            return m_asked++ ? FakePrintTicketPart::GetStream(stream) : E_ACCESSDENIED;
        }

    private:
        int m_asked = 0;
    };
    job->ticket = CComPtr<IPartPrintTicket>(
        new LateTicket(L"/j", TicketText(Choice("psk:PageMediaSize", "psk:ISOA3"))));
    const ReportRecorder recorder;
    EXPECT_EQ(manager.MergeAndValidatePartPrintTicket(job), S_OK);
    EXPECT_EQ(OptionOf(manager.GetPtrToJobPrintTicketForReading(), L"PageMediaSize"), L"ISOA3");
    ASSERT_EQ(ReportRecorder::reports().size(), 1u);
    EXPECT_NE(ReportRecorder::reports()[0].text.find("PrintTicketManager::MergeAndValidatePartPrintTicket"),
              std::string::npos)
        << ReportRecorder::reports()[0].text;

    // A part's own ticket likewise; that there is none is nothing to report.
    const auto copy = manager.GetCopyOfCurrentPrintTicketFromPart(static_cast<IFixedDocumentSequence*>(job));
    ASSERT_TRUE(copy);
    EXPECT_EQ(OptionOf(copy->GetDomDocPtr(), L"PageMediaSize"), L"ISOA3");
    EXPECT_EQ(OptionOf(copy->GetDomDocPtr(), L"PageOrientation"), L"") << "as it is";
    document->ticket = CComPtr<IPartPrintTicket>(new FakePrintTicketPart(L"/d", "<broken"));
    EXPECT_FALSE(manager.GetCopyOfCurrentPrintTicketFromPart(static_cast<IFixedDocument*>(document)));
    EXPECT_FALSE(manager.GetCopyOfCurrentPrintTicketFromPart(static_cast<IFixedPage*>(page)));
    EXPECT_EQ(ReportRecorder::reports().size(), 2u);
}

TEST_F(PrintTicketManagerTest, NoFailureMakesAnotherTicketWithoutAWord) {
    struct Levels {
        std::unique_ptr<PrintTicketManager> manager = std::make_unique<PrintTicketManager>();
        [[nodiscard]] std::wstring TextOfLevel(IXMLDOMDocument2* ticket) const {
            return ticket ? TextOf(ticket) : L"(none)";
        }
        [[nodiscard]] std::string State() const {
            return CPStringUtils::narrowToStdString(
                (TextOfLevel(manager->GetPtrToJobPrintTicketForReading()) +
                 TextOfLevel(manager->GetPtrToDocPrintTicketForReading()) +
                 TextOfLevel(manager->GetPtrToPagePrintTicketForReading()))
                    .c_str());
        }
    };
    job->ticket =
        Ticket(L"/j", Choice("pskv11:JobPasscode", "pskv11:On") + Choice("psk:PageMediaSize", "psk:ISOA3"));
    document->ticket = Ticket(L"/d", Choice("psk:PageOutputColor", "psk:Monochrome"));
    page->ticket = Ticket(L"/p", Choice("psk:PageOrientation", "psk:Landscape"));
    const auto merged = [this](int levels) {
        auto world = std::make_unique<Levels>();
        HRESULT hr = Initialize(*world->manager, queue.DefaultTicket());
        if (levels > 0 && SUCCEEDED(hr)) hr = world->manager->MergeAndValidatePartPrintTicket(job);
        if (levels > 1 && SUCCEEDED(hr)) hr = world->manager->MergeAndValidatePartPrintTicket(document);
        if (levels > 2 && SUCCEEDED(hr)) hr = world->manager->MergeAndValidatePartPrintTicket(page);
        EXPECT_TRUE(SUCCEEDED(hr)) << hr;
        return world;
    };
    const auto merge = [](auto part) {
        return [part](Levels& world) -> SweptAnswer {
            return world.manager->MergeAndValidatePartPrintTicket(part);
        };
    };
    // A level that fails has no ticket.
    FailureSweep<Levels>([&] { return merged(0); }, merge(job.p)).Run("a job");
    FailureSweep<Levels>([&] { return merged(1); }, merge(document.p)).Run("a document");
    FailureSweep<Levels>([&] { return merged(2); }, merge(page.p)).Run("a page");
    FailureSweep<Levels>([&] { return merged(3); }, merge(page.p)).Run("a page again", {merged(2)->State()});
}

TEST_F(PrintTicketManagerTest, FirstUpdateOfATicketPartStays) {
    const auto first = MakeFake<FakePrintTicketPart>(L"/Metadata/Job_PT.xml");
    const auto second = MakeFake<FakePrintTicketPart>(L"/Metadata/Job_PT.xml");
    EXPECT_EQ(manager.AddUpdatedPrintTicketToMap(first), S_OK);
    EXPECT_EQ(manager.AddUpdatedPrintTicketToMap(second), S_OK);
    manager.ClearPerJobInMemoryDomDocumentCaches();
    CXString uri(L"/Metadata/Job_PT.xml");
    IPartPrintTicket* found = nullptr;
    EXPECT_EQ(manager.GetUpdatedPrintTicketFromMap(uri, &found), S_OK);
    EXPECT_EQ(found, static_cast<IPartPrintTicket*>(first));
    EXPECT_EQ(first->References(), 2u);
    uri = L"/Metadata/Other.xml";
    EXPECT_EQ(manager.GetUpdatedPrintTicketFromMap(uri, &found), S_FALSE);
    EXPECT_EQ(found, nullptr);

    EXPECT_EQ(manager.AddUpdatedPrintTicketToMap(nullptr), E_POINTER);
    EXPECT_EQ(manager.GetUpdatedPrintTicketFromMap(uri, nullptr), E_POINTER);
    second->uriResult = E_ABORT;
    EXPECT_EQ(manager.AddUpdatedPrintTicketToMap(second), E_ABORT);
}

TEST_F(PrintTicketManagerTest, CopySharesTheTicketsAndTakesTheProvider) {
    const auto pageTicket = MakeFake<FakePrintTicketPart>(L"/p", TicketText(""));
    page->ticket = pageTicket.p;
    job->ticket = Ticket(L"/j", "");
    ASSERT_TRUE(SUCCEEDED(MergeAll()));
    EXPECT_EQ(manager.AddUpdatedPrintTicketToMap(Ticket(L"/updated", "")), S_OK);
    manager.SetJobPtChangedFlag(true);
    PrintTicketManager copy(manager);
    EXPECT_EQ(copy.GetPtrToJobPrintTicketForReading(), manager.GetPtrToJobPrintTicketForReading());
    EXPECT_TRUE(copy.GetJobPtChangedFlag());
    EXPECT_STREQ(copy.GetPrinterName(), SampleQueue::name);
    CXString updated(L"/updated");
    IPartPrintTicket* found = nullptr;
    EXPECT_EQ(copy.GetUpdatedPrintTicketFromMap(updated, &found), S_OK);
    ASSERT_TRUE(SUCCEEDED(copy.MergeAndValidatePartPrintTicket(document)));
    ASSERT_TRUE(SUCCEEDED(copy.MergeAndValidatePartPrintTicket(page)));
    EXPECT_EQ(pageTicket->streamsGiven, 1); // the stored pages came along

    EXPECT_EQ(manager.MergeAndValidatePartPrintTicket(job), E_POINTER);
    manager = copy;
    EXPECT_TRUE(SUCCEEDED(manager.MergeAndValidatePartPrintTicket(job)));
    EXPECT_EQ(copy.MergeAndValidatePartPrintTicket(job), E_POINTER);
}

TEST_F(PrintTicketManagerTest, HoldsItsFieldsInOrder) {
    EXPECT_EQ(SlotOf(&OneMore<PrintTicketManager>::Next), 2u);
    int token = 0;
    PrintTicketManager unopened;
    std::wstring name = L"No such printer";
    unopened.Initialize(MakeFake<MemoryReadStream>(queue.DefaultTicket()), name.data(), &token);
    EXPECT_EQ(unopened.GetUserToken(), &token);
    EXPECT_EQ(WordOf(&unopened, 1), &token);
    EXPECT_EQ(PrintTicketManager(unopened).GetUserToken(), &token);

    ASSERT_EQ(MergeAll(), S_OK);
    constexpr std::size_t provider =
        2 + (sizeof(CXString) + sizeof(std::map<CXString, CComPtr<IPartPrintTicket>>)) / sizeof(void*);
    EXPECT_TRUE(WordOf(&manager, provider));
    EXPECT_FALSE(WordOf(&unopened, provider));
    EXPECT_EQ(WordOf(&manager, provider + 1), manager.GetPtrToDefaultPrintTicketForReading());
    EXPECT_EQ(WordOf(&manager, provider + 2), manager.GetPtrToJobPrintTicketForReading());
    EXPECT_EQ(WordOf(&manager, provider + 3), manager.GetPtrToDocPrintTicketForReading());
    EXPECT_EQ(WordOf(&manager, provider + 4), manager.GetPtrToPagePrintTicketForReading());
    manager.MergeAndValidatePartPrintTicket(job);
    EXPECT_TRUE(WordOf(&manager, provider + 5));
    EXPECT_FALSE(WordOf(&manager, provider + 6));
    manager.SetDocPtChangedFlag(true);
    const auto* const flags = reinterpret_cast<const bool*>(&manager) + (provider + 7) * sizeof(void*);
    EXPECT_TRUE(!flags[0] && flags[1] && !flags[2]);
}

TEST_F(PrintTicketManagerTest, SpoolerNamesTheJobAndItsUser) {
    CXString jobName(L"old");
    CXString userName(L"old");
    CXString domain(L"old");
    EXPECT_EQ(manager.GetJobNameUserNameAndDomainName(7, queue.handle, jobName, userName, domain), S_OK);
    EXPECT_STREQ(jobName, L"Report");
    EXPECT_STREQ(userName, L"ada");
    EXPECT_FALSE(domain == L"old");
    EXPECT_EQ(manager.GetJobNameUserNameAndDomainName(8, queue.handle, jobName, userName, domain), E_FAIL);
    EXPECT_TRUE(jobName.IsEmpty() && userName.IsEmpty());
}

} // namespace
