#include "FilterUtilities/PrintSchema/TicketSupport.h"
#include "Support/AttributeLists.h"
#include "Support/FailureSweep.h"
#include "Support/FilterJob.h"
#include "Support/NoDisplayHelp.h"
#include "Support/Rows.h"
#include "Support/VirtualSlots.h"

#include <JobContext/XpsFilterPrintTicket.h>
#include <LowLevelFacilities/Failures/CPExceptionInvalidArgument.h>
#include <Ticket/PrintTicketManager.h>

#include <array>
#include <cmath>

namespace {

using namespace PrintSchema;
using Value = AttributeBytesValue;
using Slots = std::array<std::string, 4>; // tickets from the default down; empty: none

const NoDisplayHelp helper;
const std::string ok = Declare("ok", PrivateUri());

std::string Choice(const std::string& feature, const std::string& option) { return Feature(feature, option); }

std::string Sized(const std::string& feature, const std::string& properties) {
    return Feature(feature, "psk:Some", properties);
}
std::string Number(const std::string& property, const std::string& number) {
    return ScoredProperty("psk:" + property, ::Value(number));
}

std::string PublicSettings(const std::string& elements, const std::string& prefix = "ok:") {
    return "<psf:ParameterInit name='" + prefix +
           "JobOrvelPublicDocSettings'><psf:Value xsi:type='xsd:string'><![CDATA[<s>" + elements +
           "</s>]]></psf:Value></psf:ParameterInit>";
}

// A filter's object with its tickets, which are documents of their own.
struct Snapshot {
    explicit Snapshot(const Slots& texts, PrintTicketManager* manager = nullptr,
                      const AttributeBytesRawList& attributes = {})
        : asked(manager, helper) {
        for (std::size_t slot = 0; slot < texts.size(); ++slot) {
            if (texts[slot].empty()) continue;
            EXPECT_EQ(CreateIXMLDOMDocumentFromIStream(StreamOf(texts[slot]), &documents[slot]), S_OK);
        }
        if (attributes.GetNumberOfAttributeBytes() != 0)
            PrintTicketXmlDocument(documents[1])
                .AddOrReplacePageOrvelCompleteDocSettingsInPrintTicket(StoreOf(attributes));
        Take();
    }
    void Take() {
        asked.Initialize(kPTPageScope, documents[0], documents[1], documents[2], documents[3], printer,
                         nullptr);
    }
    std::string Option(const wchar_t* feature, const wchar_t* prefix = L"psk:") {
        CComBSTR option;
        CComBSTR ns;
        const HRESULT hr = asked.XpsFilterGetFeatureOption(prefix, feature, &option, &ns);
        if (hr == E_ELEMENT_NOT_FOUND) return "none";
        return hr == S_OK ? TextOf(ns) + TextOf(option) : "failed";
    }
    // All answers, as numbers in the order of the questions, results among them.
    std::string Answers(bool* hasFailed = nullptr) {
        PageOrientation::EOrientationOption orientation;
        JobDuplexAllDocumentsContiguously::EDuplexOption duplex;
        JobIdentification::EJobIdentificationOption identification;
        PageScaling::PageScalingData scaling;
        Binding::BindingData binding;
        NUp::NUpData nUp;
        PageMediaSize::PageMediaSizeData page;
        OutputPaperSize::OutputPaperSizeData sheet;
        std::string text;
        const auto add = [&](std::initializer_list<int> numbers) {
            for (const int number : numbers)
                text += std::to_string(number) + " ";
            const HRESULT hr = *numbers.begin();
            if (hasFailed != nullptr && FAILED(hr) && hr != E_ELEMENT_NOT_FOUND) *hasFailed = true;
        };
        add({asked.GetOrientationSetting(orientation), static_cast<int>(orientation)});
        add({asked.GetDuplexSetting(duplex), static_cast<int>(duplex)});
        add({asked.GetJobIdSetting(identification), static_cast<int>(identification)});
        add({asked.IsSidesImagedSpecified()});
        add({asked.GetPageScalingSettings(scaling), scaling.isFitToSize});
        add({asked.GetBookletSettings(binding), binding.bookletType, binding.gutter});
        add({asked.GetNUpSettings(nUp), nUp.pagesPerSheet, nUp.outlines});
        add({asked.GetPageMediaSizeSettings(page), page.width, page.height});
        add({asked.GetOutputPaperSizeSettings(sheet), sheet.width, sheet.height, sheet.isSpecified});
        return text;
    }
    std::string State() const {
        std::string text;
        for (const auto& document : documents) {
            CComBSTR xml;
            if (document) document->get_xml(&xml);
            text += TextOf(xml);
        }
        return text;
    }

    std::array<CComPtr<IXMLDOMDocument2>, 4> documents;
    CXString printer = L"a printer";
    XpsFilterPrintTicket asked;
};

Slots JobOf(const std::string& content) { return {"", Ticket(content, ok), "", ""}; }

TEST(XpsFilterPrintTicket, VirtualOperationsStandInTheSlotsOfTheReader) {
    using List = AttributeBytesIndexedList;
    EXPECT_EQ(SlotOf(static_cast<List& (XpsFilterPrintTicketBase::*)()>(
                  &XpsFilterPrintTicketBase::GetAttributeBytesIndexedListRef)),
              3u);
    EXPECT_EQ(SlotOf(&OneMore<XpsFilterPrintTicket>::Next), 7u);
}

TEST(XpsFilterPrintTicket, ScopesAndCounters) {
    using Base = XpsFilterPrintTicketBase;
    const Rows<const wchar_t*, EFilterPtScope> names{{L"PageOrientation", PageFilterPtScope},
                                                     {L"DocumentNUp", DocumentFilterPtScope},
                                                     {L"JobNUpAllDocumentsContiguously", JobFilterPtScope},
                                                     {L"pageOrientation", JobFilterPtScope},
                                                     {L"Doc", JobFilterPtScope},
                                                     {nullptr, JobFilterPtScope}};
    for (const auto& [name, scope] : names)
        EXPECT_EQ(Base::GetFeatureScopeFromName(name), scope);
    EXPECT_EQ(Base::MsEPrintTicketScopeToEFilterPtScope(kPTPageScope), PageFilterPtScope);
    EXPECT_EQ(Base::MsEPrintTicketScopeToEFilterPtScope(kPTJobScope), JobFilterPtScope);
    EXPECT_EQ(Base::MsEPrintTicketScopeToEFilterPtScope(static_cast<EPrintTicketScope>(3)),
              DefaultFilterPtScope);

    Base::PtChangeCounter counter;
    const Base::PtChangeCounter unset;
    EXPECT_FALSE(counter.IsInitialized());
    counter.Increment();
    EXPECT_TRUE(counter.IsInitialized() && counter.Get() == 0 && counter != unset);
    counter.Set(0x7FFFFFFF);
    counter.Increment();
    EXPECT_EQ(counter.Get(), 0);
    counter.Reset();
    EXPECT_TRUE(counter == unset);

    const Gdiplus::SizeF letter = PageMediaSize::PageMediaSizeData().GetPageSizeInXpsUnits();
    EXPECT_NEAR(letter.Width, 816.0, 0.02);
    EXPECT_NEAR(letter.Height, 1056.0, 0.02);
}

TEST(XpsFilterPrintTicket, AQuestionFallsBackFromTheTicketOfItsName) {
    Snapshot tickets({Ticket(Choice("psk:PageMediaType", "psk:Plain")),
                      Ticket(Choice("psk:PageOutputColor", "psk:Color") +
                             Choice("psk:JobDuplexAllDocumentsContiguously", "psk:TwoSidedLongEdge")),
                      Ticket(Choice("psk:DocumentCollate", "psk:Collated") +
                             Choice("psk:PageOrientation", "psk:Portrait")),
                      Ticket(Choice("psk:PageOrientation", "psk:Landscape") +
                             Choice("psk:DocumentCollate", "psk:Uncollated") +
                             Choice("psk:JobDuplexAllDocumentsContiguously", "psk:OneSided") +
                             Choice("psk:PageOutputColor", "Monochrome"))});
    const Rows<const wchar_t*, const char*> cases{
        {L"PageOrientation", "psk:Landscape"},
        {L"DocumentCollate", "psk:Collated"},
        {L"JobDuplexAllDocumentsContiguously", "psk:TwoSidedLongEdge"},
        {L"PageMediaType", "psk:Plain"},
        {L"PageOutputColor", "psk:Color"}, // the page's has no valid name
        {L"PageResolution", "none"}};
    for (const auto& [feature, option] : cases)
        EXPECT_EQ(tickets.Option(feature), option);

    // Without any ticket, and with one that is none, every answer is a default.
    for (const Slots& slots : {Slots{}, Slots{"", "<nothing/>", "", "<PrintTicket/>"}}) {
        Snapshot empty(slots);
        EXPECT_EQ(empty.asked.GetCopyOfPtrToPrintTicketXmlDocumentForReading(PageFilterPtScope), nullptr);
        EXPECT_EQ(empty.Option(L"PageOrientation"), "none");
        EXPECT_EQ(empty.asked.GetKeywordsNsPrefix().m_str, nullptr);
        const std::string absent = std::to_string(E_ELEMENT_NOT_FOUND);
        EXPECT_EQ(empty.Answers(),
                  absent + " 1 1 0 1 0 0 0 0 0 0 0 1 1 7611 " + absent + " 215900 279400 0 215900 279400 0 ");
    }
    int value = 7;
    EXPECT_EQ(tickets.asked.XpsFilterGetScoredPropertyValue(L"PageNone", true, L"Width", &value),
              E_ELEMENT_NOT_FOUND);
    EXPECT_EQ(value, 7);
    EXPECT_EQ(tickets.asked.XpsFilterGetScoredPropertyValue(L"PageNone", true, L"Width", nullptr), E_POINTER);
    EXPECT_EQ(tickets.asked.XpsFilterGetFeatureOption(L"psk:", L"PageNone", nullptr, nullptr), E_POINTER);
}

TEST(XpsFilterPrintTicket, PrefixesAreThoseOfTheJob) {
    const std::string page = "<f:PrintTicket" + Declare("f", frameworkUri) + Declare("psk", PrivateUri()) +
                             Declare("k", keywordsUri) + Declare("w", "urn:vendor") +
                             " version='1'><f:Feature name='k:PageOrientation'><f:Option name='k:Landscape'/>"
                             "</f:Feature><f:Feature name='psk:PageShade'><f:Option name='psk:Dark'/>"
                             "</f:Feature><f:Feature name='w:PageGloss'><f:Option name='w:High'/></f:Feature>"
                             "</f:PrintTicket>";
    Snapshot tickets(
        {"", Ticket("", Declare("ns0000", PrivateUri()) + Declare("v", "urn:vendor")), "", page});
    EXPECT_EQ(tickets.Option(L"PageOrientation", L"psk:"), "psk:Landscape");
    EXPECT_EQ(tickets.Option(L"PageShade", L"ns0000:"), "ns0000:Dark");
    EXPECT_EQ(tickets.Option(L"PageShade", L"ok:"), "ns0000:Dark");
    EXPECT_EQ(tickets.Option(L"PageShade", L"psk:"), "none");
    EXPECT_EQ(tickets.Option(L"PageGloss", L"v:"), "v:High");
    EXPECT_EQ(tickets.Option(L"PageGloss", L"w:"), "v:High"); // the job does not declare it
    EXPECT_EQ(TextOf(tickets.asked.GetUserKeywordsNsPrefix()), "ns0000:");
    // Without a job, the default ticket names them.
    Snapshot defaults({page, "", "", Ticket(Choice("psk:PageOrientation", "psk:Portrait"))});
    EXPECT_EQ(defaults.Option(L"PageOrientation", L"k:"), "k:Portrait");
    EXPECT_EQ(TextOf(defaults.asked.GetFrameworkNsPrefix()), "f:");
}

TEST(XpsFilterPrintTicket, OptionsBecomeNumbers) {
    using Answer = std::pair<HRESULT, int>;
    const Rows<std::string, Answer, Answer, Answer> cases{
        {"", {E_ELEMENT_NOT_FOUND, 1}, {S_FALSE, 0}, {S_FALSE, 0}},
        {Choice("psk:PageOrientation", "psk:Landscape") +
             Choice("psk:JobDuplexAllDocumentsContiguously", "psk:TwoSidedShortEdge") +
             Choice("ok:JobIdentification", "ok:JobIdPrintFirstPage"),
         {S_OK, 0},
         {S_OK, 2},
         {S_OK, 3}},
        {Choice("psk:PageOrientation", "psk:ReversePortrait") +
             Choice("psk:JobDuplexAllDocumentsContiguously", "psk:twosidedlongedge") +
             Choice("psk:JobIdentification", "psk:JobIdBannerOn"), // of the private keywords only
         {S_OK, 3},
         {S_OK, 0},
         {S_FALSE, 0}},
        {Choice("psk:PageOrientation", "Upright"), {E_FAIL, 1}, {S_FALSE, 0}, {S_FALSE, 0}}};
    for (const auto& [content, orientation, duplex, identification] : cases) {
        Snapshot job(JobOf(content));
        PageOrientation::EOrientationOption first;
        JobDuplexAllDocumentsContiguously::EDuplexOption second;
        JobIdentification::EJobIdentificationOption third;
        HRESULT hr = job.asked.GetOrientationSetting(first);
        EXPECT_EQ(Answer(hr, static_cast<int>(first)), orientation) << content;
        hr = job.asked.GetDuplexSetting(second);
        EXPECT_EQ(Answer(hr, static_cast<int>(second)), duplex) << content;
        hr = job.asked.GetJobIdSetting(third);
        EXPECT_EQ(Answer(hr, static_cast<int>(third)), identification) << content;
    }
}

// The settings that travel: from the public ones, and from the attribute bytes only where those cannot be
// read.
TEST(XpsFilterPrintTicket, PublicSettingsHideAttributes) {
    const std::string onePage = Sized("psk:DocumentNUp", Number("PagesPerSheet", "6"));
    const auto attributes = Attributes<AttributeBytesRawList>({{44, Value::FromOption(5461)},
                                                               {199, Value::FromOption(5111)},
                                                               {200, Value::FromOption(7610)},
                                                               {257, Value::FromInteger(36)},
                                                               {258, Value::FromInteger(15)},
                                                               {847, Value::FromOption(5600)}});
    // fit to size; booklet, gutter, creep; N-up: result, feature, pages, outlines; sides
    using Expected = std::array<double, 9>;
    const Rows<std::string, AttributeBytesRawList, Expected> cases{
        {"", {}, {0, 0, 0, 0, S_FALSE, 0, 1, 7611, 0}},
        {"", attributes, {1, 3, 48, 2, S_FALSE, 0, 1, 7610, 0}},
        {onePage, attributes, {1, 3, 48, 2, S_OK, 1, 6, 7610, 0}},
        {Sized("psk:JobNUpAllDocumentsContiguously", Number("PagesPerSheet", "4")) + onePage +
             PublicSettings("<booklet-api>booklet-on</booklet-api><outlines-api>outlines-on</outlines-api>"
                            "<sides>two</sides><fit-to-new-size-print-ticket-keyword-api>x"
                            "</fit-to-new-size-print-ticket-keyword-api>"),
         {},
         {1, 2, 32, 0, S_OK, 0, 4, 7610, 1}},
        {PublicSettings("<booklet-api>off</booklet-api><outlines-api/>"
                        "<sides specified='false'>two</sides><fit-to-new-size-print-ticket-keyword-api "
                        "specified='false'>x</fit-to-new-size-print-ticket-keyword-api>"),
         attributes,
         {0, 0, 0, 0, S_FALSE, 0, 1, 7611, 0}},
        {PublicSettings("<booklet-api specified='false'>booklet-on</booklet-api>"
                        "<outlines-api specified='false'>outlines-on</outlines-api>"),
         attributes,
         {1, 0, 0, 0, S_FALSE, 0, 1, 7611, 0}}};
    for (const auto& [content, bytes, expected] : cases) {
        Snapshot job(JobOf(content), nullptr, bytes);
        PageScaling::PageScalingData scaling;
        Binding::BindingData binding;
        NUp::NUpData nUp;
        EXPECT_EQ(job.asked.GetPageScalingSettings(scaling), S_OK);
        EXPECT_EQ(job.asked.GetBookletSettings(binding), S_OK);
        const HRESULT hr = job.asked.GetNUpSettings(nUp);
        const Expected answer = {static_cast<double>(scaling.isFitToSize),
                                 static_cast<double>(binding.bookletType),
                                 static_cast<double>(binding.gutter),
                                 binding.creep.GetDoubleValue(),
                                 static_cast<double>(hr),
                                 static_cast<double>(nUp.featureFound),
                                 static_cast<double>(nUp.pagesPerSheet),
                                 static_cast<double>(nUp.outlines),
                                 static_cast<double>(job.asked.IsSidesImagedSpecified())};
        EXPECT_EQ(answer, expected) << content;
        EXPECT_EQ(scaling.scaleToFit, scaling.isFitToSize ? 7260 : 7261);
        EXPECT_EQ(static_cast<int>(scaling.scalingType), scaling.isFitToSize ? 5 : 6);
    }
}

struct XpsFilterPrintTicketOfAPrinter : testing::Test {
    SampleQueue queue;
    PrintTicketManager manager;
    CComPtr<FakeFixedDocumentSequence> job = MakeFake<FakeFixedDocumentSequence>();

    void SetUp() override {
        std::wstring name = SampleQueue::name;
        ASSERT_EQ(manager.Initialize(MakeFake<MemoryReadStream>(queue.DefaultTicket()), name.data(), nullptr),
                  S_OK);
    }
};

TEST_F(XpsFilterPrintTicketOfAPrinter, FindsTheSheetThatComesOut) {
    using Sheet = std::array<int, 3>;
    const Sheet page = {100'000, 200'000, 0};
    const auto size = [](LONG unit, double width, double height) {
        const auto kind = static_cast<Dimension::UnitsEnum>(unit);
        return Attributes({{155, Value::FromDimension(Dimension(width, kind))},
                           {156, Value::FromDimension(Dimension(height, kind))}});
    };
    const auto chosen = [&](const AttributeBytesIndexedList& media, const AttributeBytesIndexedList& other) {
        return Attributes<AttributeBytesRawList>(
            {{193, Value::FromCollection(Attributes({{153, Value::FromCollection(media)}}))},
             {844, Value::FromCollection(other)},
             {847, Value::FromOption(5600)}});
    };
    const auto keyword = [](const std::string& name) {
        return PublicSettings("<fit-to-new-size-print-ticket-keyword-api>" + name +
                              "</fit-to-new-size-print-ticket-keyword-api>");
    };
    const AttributeBytesIndexedList noSize;
    const AttributeBytesRawList none;
    const Rows<std::string, AttributeBytesRawList, Sheet> cases{
        {"", none, page},
        {keyword("psk:NorthAmericaLetter"), none, {215'900, 279'400, 1}},
        {keyword("PSK:ISOA3"), none, {297'000, 420'000, 1}},
        {keyword("ISOA3"), none, {297'000, 420'000, 1}},
        {keyword("ok:ISOA3"), none, page},
        {keyword("psk:NoSheet"), none, page},
        {keyword("psk:a\"]|//x[\"b"), none, page},
        {keyword(":"), none, page},
        {keyword("psk:ISOA3"), chosen(size(Dimension::Inch, 1, 2), noSize), {297'000, 420'000, 1}},
        {"", chosen(size(Dimension::Inch, 1, 2), noSize), {25'400, 50'800, 1}},
        {"", chosen(noSize, size(Dimension::Point, 72, 0.01)), {25'400, 4, 1}},
        {"", chosen(size(Dimension::Inch, 1, 0), size(Dimension::Inch, 3, 3)), page},
        {"", chosen(noSize, noSize), page}};
    const std::string ofPage =
        Sized("psk:PageMediaSize", Number("MediaSizeWidth", "100000") + Number("MediaSizeHeight", "200000"));
    for (PrintTicketManager* const from : {&manager, static_cast<PrintTicketManager*>(nullptr)}) {
        for (const auto& [content, attributes, expected] : cases) {
            Snapshot snapshot(JobOf(ofPage + content), from, attributes);
            OutputPaperSize::OutputPaperSizeData sheet;
            EXPECT_EQ(snapshot.asked.GetOutputPaperSizeSettings(sheet), S_OK);
            const bool asksPrinter = content.find("keyword") != std::string::npos;
            EXPECT_EQ((Sheet{sheet.width, sheet.height, sheet.isSpecified}),
                      asksPrinter && from == nullptr ? page : expected)
                << content;
        }
    }
    // Without a printer there are no capabilities; without the second length, the first stands.
    PrintTicketManager unopened;
    Snapshot snapshot(
        JobOf(Sized("psk:PageMediaSize", Number("MediaSizeWidth", "100000")) + keyword("psk:ISOA3")),
        &unopened);
    OutputPaperSize::OutputPaperSizeData sheet;
    EXPECT_EQ(snapshot.asked.GetOutputPaperSizeSettings(sheet), S_OK);
    EXPECT_EQ((Sheet{sheet.width, sheet.height, sheet.isSpecified}), (Sheet{100'000, 279'400, 0}));
    PageMediaSize::PageMediaSizeData media;
    EXPECT_EQ(snapshot.asked.GetPageMediaSizeSettings(media), E_ELEMENT_NOT_FOUND);
}

TEST_F(XpsFilterPrintTicketOfAPrinter, SnapshotsAreOfMergedLevelsAndShareTheirTickets) {
    XpsFilterPrintTicket ticket(&manager, helper);
    const auto take = [&](EPrintTicketScope scope) {
        return manager.GetSnapshotOfCurrentMergedPartPrintTicket(scope, ticket);
    };
    EXPECT_EQ(take(kPTJobScope), E_PENDING);
    ASSERT_EQ(manager.MergeAndValidatePartPrintTicket(job), S_OK);
    EXPECT_EQ(take(kPTPageScope), E_PENDING);
    EXPECT_EQ(take(static_cast<EPrintTicketScope>(3)), E_INVALIDARG);
    EXPECT_FALSE(ticket.GetChangeCounter().IsInitialized());
    ASSERT_EQ(take(kPTJobScope), S_OK);
    const auto slot = [&](EFilterPtScope scope) {
        const auto* const document = ticket.GetCopyOfPtrToPrintTicketXmlDocumentForReading(scope);
        return document != nullptr ? document->GetDomDocPtr() : nullptr;
    };
    EXPECT_EQ(slot(DefaultFilterPtScope), manager.GetPtrToDefaultPrintTicketForReading());
    EXPECT_EQ(slot(JobFilterPtScope), manager.GetPtrToJobPrintTicketForReading());
    EXPECT_EQ(slot(PageFilterPtScope), nullptr);
    EXPECT_FALSE(ticket.IsAttributeBytesListEmpty()); // those of the sample's default

    // The next snapshot has the attribute bytes of its own job, or else of the default ticket.
    PrintTicketXmlDocument own(manager.GetPtrToJobPrintTicketForReading());
    ASSERT_EQ(own.AddOrReplacePageOrvelCompleteDocSettingsInPrintTicket(
                  StoreOf(Attributes<AttributeBytesRawList>({{257, Value::FromInteger(5)}}))),
              S_OK);
    const auto gutter = [&] {
        return ticket.GetIntegerValueFromAttributeBytes(AttributeBytesFeatureId(257), nullptr);
    };
    EXPECT_EQ(gutter(), 0);
    ASSERT_EQ(take(kPTJobScope), S_OK);
    EXPECT_EQ(gutter(), 5);
    own.DeleteParameterInitNodeIfExists(L"ok:", L"JobOrvelCompleteDocSettings");
    ASSERT_EQ(take(kPTJobScope), S_OK);
    EXPECT_EQ(gutter(), 0);
    EXPECT_FALSE(ticket.IsAttributeBytesListEmpty());
}

TEST_F(XpsFilterPrintTicketOfAPrinter, AskingChangesNoTicketAndFailuresAreTold) {
    const Slots tickets = {
        Ticket(Choice("x:JobIdentification", "x:JobIdBannerOn"), Declare("x", PrivateUri())),
        Ticket(Choice("psk:PageOrientation", "psk:Landscape"), Declare("ns0000", PrivateUri())),
        Ticket("", Declare("ok", "urn:of-others")),
        Ticket(Choice("psk:PageOrientation", "psk:Landscape") + PublicSettings("<sides>one</sides>", "y:"),
               Declare("y", PrivateUri()))};
    Snapshot snapshot(tickets, &manager);
    const std::string before = snapshot.State();
    EXPECT_EQ(snapshot.Answers(), "0 0 1 0 0 1 0 0 0 0 0 0 1 1 7611 " + std::to_string(E_ELEMENT_NOT_FOUND) +
                                      " 215900 279400 0 215900 279400 0 ");
    bool isSpecified = true;
    CXString text;
    PrintTicketOrvelPublicDocSettingsReaderWriter& settings =
        snapshot.asked.GetOrvelPublicDocSettingsReaderWriterRef();
    EXPECT_EQ(settings.GetCurrentValueAsStringForOrvelPublicDocSettingsFeature(L"sides", isSpecified, text),
              S_FALSE);
    EXPECT_EQ(snapshot.State(), before);
    // What is committed reaches the shared ticket, under its own prefix.
    EXPECT_EQ(settings.SetCurrentValueAsStringForOrvelPublicDocSettingsFeature(L"sides", L"", true, L"two"),
              S_OK);
    EXPECT_EQ(settings.CommitChangesToPrintTicket(), S_OK);
    snapshot.Take();
    EXPECT_TRUE(snapshot.asked.IsSidesImagedSpecified());
    EXPECT_EQ(TextOf(snapshot.asked.GetUserKeywordsNsPrefix()), "ns0000:");

    FailureSweep<Snapshot>([&] { return std::make_unique<Snapshot>(tickets, &manager); },
                           [](Snapshot& world) -> SweptAnswer {
                               world.Take();
                               SweptAnswer answer;
                               answer.text = world.Answers(&answer.hasFailed);
                               return answer;
                           })
        .Run("a snapshot and all questions");
}

TEST(XpsFilterPrintTicket, DamagedAttributeBytesAreNotNothing) {
    const std::string damaged =
        "<psf:ParameterInit name='ok:JobOrvelCompleteDocSettings'><psf:Value>T0EBARhu</psf:Value>"
        "</psf:ParameterInit>";
    Snapshot job(JobOf(damaged));
    PageScaling::PageScalingData scaling;
    for (int times = 0; times < 2; ++times)
        EXPECT_THROW(static_cast<void>(job.asked.GetPageScalingSettings(scaling)),
                     CPExceptionInvalidArgument);
    OutputPaperSize::OutputPaperSizeData sheet;
    EXPECT_EQ(job.asked.GetOutputPaperSizeSettings(sheet), S_OK);
    EXPECT_FALSE(sheet.isSpecified);
}

} // namespace
