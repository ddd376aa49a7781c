#include "Support/FilterJob.h"
#include "Support/ReportRecorder.h"
#include "Support/TicketText.h"

#include <ComSupport/MsSafeCoinit.h>
#include <Ticket/PrintTicketEditor.h>
#include <Ticket/PrintTicketManager.h>

#include <gtest/gtest.h>

#include <string>

namespace {

std::wstring OrientationIn(IXMLDOMDocument2* document) {
    if (document == nullptr) return L"(no document)";
    const PrintTicketXmlDocument ticket(document);
    CComBSTR option;
    return ticket.GetFeatureOption(ticket.GetKeywordsNsPrefix(), L"PageOrientation", &option, nullptr) == S_OK
               ? std::wstring(option)
               : L"";
}

struct PrintTicketEditorTest : testing::Test {
    const MsSafeCoInit apartment;
    SampleQueue queue;
    PrintTicketManager manager;
    CComPtr<FakeXpsConsumer> consumer = MakeFake<FakeXpsConsumer>();
    CComPtr<FakeFixedDocumentSequence> job = MakeFake<FakeFixedDocumentSequence>();
    CComPtr<FakeFixedDocument> document = MakeFake<FakeFixedDocument>();
    CComPtr<FakeFixedPage> page = MakeFake<FakeFixedPage>();
    CComPtr<FakeFixedPage> otherPage = MakeFake<FakeFixedPage>();

    void SetUp() override {
        std::wstring name = SampleQueue::name;
        ASSERT_EQ(manager.Initialize(MakeFake<MemoryReadStream>(queue.DefaultTicket()), name.data(), nullptr),
                  S_OK);
    }
    void Merge() {
        ASSERT_TRUE(SUCCEEDED(manager.MergeAndValidatePartPrintTicket(job)));
        ASSERT_TRUE(SUCCEEDED(manager.MergeAndValidatePartPrintTicket(document)));
        ASSERT_TRUE(SUCCEEDED(manager.MergeAndValidatePartPrintTicket(page)));
    }
    static CComPtr<IPartPrintTicket> Ticket(const wchar_t* uri, const std::string& text) {
        return CComPtr<IPartPrintTicket>(new FakePrintTicketPart(uri, text));
    }
    static CComPtr<IPartPrintTicket> Landscape(const wchar_t* uri) {
        return Ticket(uri, TicketText(Choice("psk:PageOrientation", "psk:Landscape")));
    }
    static std::wstring NameOf(IPartPrintTicket* ticket) {
        CComBSTR uri;
        if (ticket != nullptr) ticket->GetUri(&uri);
        return uri ? std::wstring(uri) : L"(none)";
    }
    // Turns the ticket's orientation, and says what came of it.
    static HRESULT Turn(PrintTicketEditor& editor) {
        PrintTicketXmlDocument* ticket = nullptr;
        const HRESULT hr = editor.TryToGetPrintTicketXmlDocumentToEdit(&ticket);
        if (hr != S_OK) return hr;
        EXPECT_STREQ(ticket->GetUserKeywordsNsPrefix(), L"ok:");
        EXPECT_EQ(ticket->SetFeatureOption(L"PageOrientation", true, L"ReversePortrait", true), S_OK);
        return editor.CommitPrintTicketChangesToDocumentPart();
    }
};

TEST_F(PrintTicketEditorTest, ChangedTicketIsNamedAfterTheOldOneAndItsLevel) {
    struct Row {
        const wchar_t* uri;
        const wchar_t* ofJob;
        const wchar_t* ofDocument;
        const wchar_t* ofPage;
    };
    for (const Row& row : {
             Row{L"/Metadata/Page1_PT.xml", L"/Metadata/Page1_PT.xml", L"/Metadata/Page1_PT_d.xml",
                 L"/Metadata/Page1_PT_p.xml"},
             Row{L"/Metadata/PT_p.xml", L"/Metadata/PT_p_j.xml", L"/Metadata/PT_p_d.xml",
                 L"/Metadata/PT_p.xml"},
             Row{L"/PT_d.1.xml", L"/PT_d.1_j.xml", L"/PT_d.1_d.xml", L"/PT_d.1_p.xml"},
             Row{L"/NoDot", L"/NoDot", L"/NoDot_d", L"/NoDot_p"},
         }) {
        const CComPtr<IPartPrintTicket> ticket = Landscape(row.uri);
        CXString name;
        PrintTicketEditor ofJob(consumer, job, &manager);
        EXPECT_EQ(ofJob.GetUriWithScopeSuffixAdded(ticket, name, false), S_OK);
        EXPECT_STREQ(name, row.ofJob);
        PrintTicketEditor ofDocument(consumer, document, 3, &manager);
        EXPECT_EQ(ofDocument.GetUriWithScopeSuffixAdded(ticket, name, false), S_OK);
        EXPECT_STREQ(name, row.ofDocument);
        PrintTicketEditor ofPage(consumer, page, 12, &manager);
        EXPECT_EQ(ofPage.GetUriWithScopeSuffixAdded(ticket, name, false), S_OK);
        EXPECT_STREQ(name, row.ofPage);
        EXPECT_EQ(ofDocument.GetUriWithScopeSuffixAdded(ticket, name, true), S_OK);
        EXPECT_NE(name.View().find(L"_d_3_"), std::wstring_view::npos) << row.uri;
        EXPECT_EQ(ofPage.GetUriWithScopeSuffixAdded(ticket, name, true), S_OK);
        EXPECT_NE(name.View().find(L"_p_12_"), std::wstring_view::npos) << row.uri;
        EXPECT_TRUE(name.View().ends_with(std::wstring_view(row.uri).ends_with(L".xml") ? L".xml" : L""));
    }
    const auto nameless = CComPtr<FakePrintTicketPart>(new FakePrintTicketPart(L"/x.xml"));
    nameless->uriResult = E_ACCESSDENIED;
    CXString name = L"old";
    PrintTicketEditor editor(consumer, page, 1, &manager);
    EXPECT_EQ(editor.GetUriWithScopeSuffixAdded(nameless, name, false), E_ACCESSDENIED);
    EXPECT_TRUE(name.IsEmpty());
}

TEST_F(PrintTicketEditorTest, EditReachesThePartAndTheManagerButNotTheLevelsBelow) {
    job->ticket = Landscape(L"/Metadata/Job_PT.xml");
    document->ticket = Landscape(L"/Metadata/Doc_PT.xml");
    page->ticket = Landscape(L"/Metadata/Page_PT.xml");
    ASSERT_TRUE(SUCCEEDED(manager.MergeAndValidatePartPrintTicket(job)));
    PrintTicketEditor ofJob(consumer, job, &manager);
    EXPECT_TRUE(ofJob.DoesPartHaveExistingPrintTicket());
    EXPECT_EQ(Turn(ofJob), S_OK);
    EXPECT_TRUE(manager.GetJobPtChangedFlag());
    ASSERT_TRUE(SUCCEEDED(manager.MergeAndValidatePartPrintTicket(document)));
    EXPECT_EQ(OrientationIn(manager.GetPtrToDocPrintTicketForReading()), L"Landscape");
    PrintTicketEditor ofDocument(consumer, document, 1, &manager);
    EXPECT_EQ(Turn(ofDocument), S_OK);
    EXPECT_TRUE(manager.GetDocPtChangedFlag());
    ASSERT_TRUE(SUCCEEDED(manager.MergeAndValidatePartPrintTicket(page)));
    PrintTicketEditor ofPage(consumer, page, 1, &manager);
    EXPECT_EQ(Turn(ofPage), S_OK);
    EXPECT_TRUE(manager.GetPagePtChangedFlag());

    EXPECT_EQ(consumer->newUris,
              (std::vector<std::wstring>{L"/Metadata/Job_PT.xml", L"/Metadata/Doc_PT_d.xml",
                                         L"/Metadata/Page_PT_p.xml"}));
    for (const auto& stream : consumer->newStreams) {
        EXPECT_NE(stream->bytes.find("psk:ReversePortrait"), std::string::npos);
        EXPECT_NE(stream->bytes.find("xmlns:ok="), std::string::npos);
        EXPECT_EQ(stream->timesClosed, 1);
    }
    EXPECT_EQ(NameOf(page->ticket), L"/Metadata/Page_PT_p.xml");
    for (IXMLDOMDocument2* ticket :
         {manager.GetPtrToJobPrintTicketForReading(), manager.GetPtrToDocPrintTicketForReading(),
          manager.GetPtrToPagePrintTicketForReading()})
        EXPECT_EQ(OrientationIn(ticket), L"ReversePortrait");
    // The edited ticket as it stands: nothing of the default ticket is merged into it.
    const PrintTicketXmlDocument edited(manager.GetPtrToPagePrintTicketForReading());
    EXPECT_EQ(edited.FeaturePresent(L"PageMediaSize", true, nullptr), E_ELEMENT_NOT_FOUND);
}

TEST_F(PrintTicketEditorTest, PartsThatShareATicketShareItsUpdate) {
    const CComPtr<IPartPrintTicket> shared = Landscape(L"/Metadata/PT.xml");
    page->ticket = shared;
    otherPage->ticket = shared;
    Merge();
    PrintTicketEditor first(consumer, page, 1, &manager);
    EXPECT_FALSE(first.HasPrintTicketAlreadyBeenUpdatedForThisUri());
    EXPECT_EQ(first.TryToSynchAndCommitThisPrintTicketWithMatchFromMap(), S_FALSE);
    ASSERT_EQ(Turn(first), S_OK);

    PrintTicketEditor second(consumer, otherPage, 2, &manager);
    EXPECT_TRUE(second.HasPrintTicketAlreadyBeenUpdatedForThisUri());
    PrintTicketXmlDocument* ticket = nullptr;
    EXPECT_EQ(second.TryToGetPrintTicketXmlDocumentToEdit(&ticket), S_FALSE);
    EXPECT_EQ(ticket, nullptr);
    EXPECT_EQ(second.TryToSynchAndCommitThisPrintTicketWithMatchFromMap(), S_OK);
    EXPECT_EQ(otherPage->ticket, page->ticket);
    EXPECT_EQ(consumer->newUris.size(), 1u);

    // What goes on is the changed ticket: the next filter's editor finds it by the same name.
    PrintTicketEditor third(consumer, otherPage, 2, &manager);
    EXPECT_TRUE(third.HasPrintTicketAlreadyBeenUpdatedForThisUri());
    // So does the editor of another kind of part, but for the job's, which shares with nobody.
    document->ticket = Landscape(L"/Metadata/PT_p_d.xml");
    PrintTicketEditor ofDocument(consumer, document, 1, &manager);
    ASSERT_EQ(Turn(ofDocument), S_OK);
    const CComPtr<IPartPrintTicket> changed = document->ticket;
    document->ticket = job->ticket = Landscape(L"/Metadata/PT_p_d.xml");
    PrintTicketEditor ofOther(consumer, document, 2, &manager);
    EXPECT_EQ(ofOther.TryToSynchAndCommitThisPrintTicketWithMatchFromMap(), S_OK);
    EXPECT_EQ(document->ticket, changed);
    document->setTicketResult = E_ACCESSDENIED;
    EXPECT_EQ(ofOther.TryToSynchAndCommitThisPrintTicketWithMatchFromMap(), E_ACCESSDENIED);
    job->ticket = Landscape(L"/Metadata/PT.xml");
    PrintTicketEditor ofJob(consumer, job, &manager);
    EXPECT_FALSE(ofJob.HasPrintTicketAlreadyBeenUpdatedForThisUri());
    ASSERT_EQ(Turn(ofJob), S_OK);
    EXPECT_EQ(ofJob.TryToSynchAndCommitThisPrintTicketWithMatchFromMap(), E_INVALIDARG);

    // A page may be told the name, for which the filter has its reasons.
    otherPage->ticket = Landscape(L"/Metadata/Other.xml");
    PrintTicketEditor named(consumer, otherPage, 3, &manager, L"/Metadata/Named.xml", true);
    ASSERT_EQ(Turn(named), S_OK);
    EXPECT_EQ(NameOf(otherPage->ticket), L"/Metadata/Named.xml");
}

TEST_F(PrintTicketEditorTest, PartWithoutTicketGetsOneOfItsOwn) {
    Merge();
    PrintTicketEditor editor(consumer, page, 7, &manager);
    PrintTicketXmlDocument* ticket = nullptr;
    EXPECT_EQ(editor.TryToGetPrintTicketXmlDocumentToEdit(&ticket), S_FALSE);
    ASSERT_EQ(editor.GetPointerToNewEmptyPrintTicketXmlDocument(&ticket), S_OK);
    PrintTicketXmlDocument* again = nullptr;
    ASSERT_EQ(editor.GetPointerToNewEmptyPrintTicketXmlDocument(&again), S_OK);
    EXPECT_EQ(again, ticket);
    EXPECT_FALSE(page->ticket); // not yet
    CComPtr<IXMLDOMElement> feature;
    CComPtr<IXMLDOMElement> option;
    ASSERT_EQ(
        ticket->CreateFeatureOptionPair(L"PageOrientation", true, L"Landscape", true, &feature, &option),
        S_OK);
    ASSERT_EQ(ticket->AppendChildToRootNode(feature), S_OK);
    consumer->newStreams.back()->mostBytesAtATime = 7;
    ASSERT_EQ(editor.CommitPrintTicketChangesToDocumentPart(), S_OK);
    EXPECT_TRUE(NameOf(page->ticket).starts_with(L"/METADATA/Page_7_PT_")) << consumer->newUris.size();
    const PrintTicketXmlDocument written(CXString(consumer->newStreams.back()->bytes.c_str()));
    EXPECT_EQ(OrientationIn(written.GetDomDocPtr()), L"Landscape");
    EXPECT_EQ(written.FeaturePresent(L"PageMediaSize", true, nullptr), E_ELEMENT_NOT_FOUND);

    PrintTicketEditor ofDocument(consumer, document, 3, &manager);
    PrintTicketEditor ofJob(consumer, job, &manager);
    ASSERT_EQ(ofDocument.GetPointerToNewEmptyPrintTicketXmlDocument(&ticket), S_OK);
    ASSERT_EQ(ofJob.GetPointerToNewEmptyPrintTicketXmlDocument(&ticket), S_OK);
    ASSERT_EQ(consumer->newUris.size(), 3u);
    EXPECT_TRUE(consumer->newUris[1].starts_with(L"/METADATA/Doc_3_PT_"));
    EXPECT_TRUE(consumer->newUris[2].starts_with(L"/METADATA/Job_PT_"));

    job->ticket = Landscape(L"/j.xml");
    PrintTicketEditor withTicket(nullptr, job, &manager);
    EXPECT_EQ(withTicket.GetPointerToNewEmptyPrintTicketXmlDocument(&ticket), E_FAIL);
}

TEST_F(PrintTicketEditorTest, FailureLeavesThePartAndTheManagerAsTheyWere) {
    page->ticket = Landscape(L"/Metadata/PT.xml");
    Merge();
    const auto expectUntouched = [&](const char* what) {
        EXPECT_EQ(NameOf(page->ticket), L"/Metadata/PT.xml") << what;
        EXPECT_EQ(OrientationIn(manager.GetPtrToPagePrintTicketForReading()), L"Landscape") << what;
        EXPECT_FALSE(manager.GetPagePtChangedFlag()) << what;
        PrintTicketEditor next(consumer, page, 1, &manager);
        EXPECT_FALSE(next.HasPrintTicketAlreadyBeenUpdatedForThisUri()) << what;
    };
    const ReportRecorder reports;
    PrintTicketXmlDocument* ticket = nullptr;

    PrintTicketEditor unwritable(consumer, page, 1, &manager);
    ASSERT_EQ(unwritable.TryToGetPrintTicketXmlDocumentToEdit(&ticket), S_OK);
    consumer->newStreams.back()->writeResult = STG_E_MEDIUMFULL;
    EXPECT_EQ(unwritable.CommitPrintTicketChangesToDocumentPart(), STG_E_MEDIUMFULL);
    consumer->newStreams.back()->writeResult = S_OK;
    EXPECT_EQ(unwritable.CommitPrintTicketChangesToDocumentPart(), E_FAIL); // no half ticket
    expectUntouched("a full disk");

    PrintTicketEditor stuck(consumer, page, 1, &manager);
    ASSERT_EQ(stuck.TryToGetPrintTicketXmlDocumentToEdit(&ticket), S_OK);
    consumer->newStreams.back()->mostBytesAtATime = 0;
    EXPECT_EQ(stuck.CommitPrintTicketChangesToDocumentPart(), STG_E_WRITEFAULT);
    expectUntouched("a stream that takes nothing");

    PrintTicketEditor refused(consumer, page, 1, &manager);
    ASSERT_EQ(refused.TryToGetPrintTicketXmlDocumentToEdit(&ticket), S_OK);
    EXPECT_EQ(ticket->SetFeatureOption(L"PageOrientation", true, L"Portrait", true), S_OK);
    page->setTicketResult = E_ACCESSDENIED;
    EXPECT_EQ(refused.CommitPrintTicketChangesToDocumentPart(), E_ACCESSDENIED);
    expectUntouched("a part that does not take it");
    page->setTicketResult = S_OK;

    PrintTicketEditor withoutConsumer(nullptr, page, 1, &manager);
    EXPECT_EQ(withoutConsumer.TryToGetPrintTicketXmlDocumentToEdit(&ticket), E_POINTER);
    PrintTicketEditor withoutEdit(consumer, page, 1, &manager);
    EXPECT_EQ(withoutEdit.CommitPrintTicketChangesToDocumentPart(), E_FAIL);
    expectUntouched("nothing to commit");

    for (const auto& [text, expected] :
         {std::pair<const char*, HRESULT>{"<other/>", E_FAIL}, {"no xml", E_FAIL}}) {
        const CComPtr<IPartPrintTicket> wrong = Ticket(L"/Metadata/PT.xml", text);
        otherPage->ticket = wrong;
        PrintTicketEditor editor(consumer, otherPage, 1, &manager);
        ticket = nullptr;
        EXPECT_EQ(editor.TryToGetPrintTicketXmlDocumentToEdit(&ticket), expected) << text;
        EXPECT_EQ(ticket, nullptr);
        EXPECT_EQ(editor.CommitPrintTicketChangesToDocumentPart(), E_FAIL);
        EXPECT_EQ(otherPage->ticket, wrong);
    }

    otherPage->ticket.Release();
    otherPage->ticketResult = E_ACCESSDENIED; // it may have one
    PrintTicketEditor unread(consumer, otherPage, 1, &manager);
    EXPECT_EQ(unread.GetPointerToNewEmptyPrintTicketXmlDocument(&ticket), E_ACCESSDENIED);
    PrintTicketEditor ofNothing(consumer, static_cast<IFixedPage*>(nullptr), 1, &manager);
    EXPECT_EQ(ofNothing.GetPointerToNewEmptyPrintTicketXmlDocument(&ticket), E_INVALIDARG);
}

} // namespace
