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

namespace {

using namespace PrintSchema;
using Value = AttributeBytesValue;
using Slots = std::array<std::string, 4>; // tickets from the default down; empty: none

const NoDisplayHelp helper;
const std::string ok = Declare("ok", PrivateUri());

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
    enum Part { Options, Travelling, PagesPerSheet, Page, Sheet, Parts };
    // The answers as numbers, results among them: each question's result comes before its values.
    std::array<std::string, Parts> Answers(bool* hasFailed = nullptr) {
        PageOrientation::EOrientationOption orientation;
        JobDuplexAllDocumentsContiguously::EDuplexOption duplex;
        JobIdentification::EJobIdentificationOption identification;
        PageScaling::PageScalingData scaling;
        Binding::BindingData binding;
        NUp::NUpData nUp;
        PageMediaSize::PageMediaSizeData page;
        OutputPaperSize::OutputPaperSizeData sheet;
        std::array<std::string, Parts> parts;
        // In braces, the question comes before its values.
        const auto add = [&](Part part, std::initializer_list<int> numbers) {
            const HRESULT hr = *numbers.begin();
            for (const int number : numbers)
                parts[part] += (number == E_ELEMENT_NOT_FOUND ? "none" : std::to_string(number)) + " ";
            parts[part].back() = ';';
            if (hasFailed != nullptr && FAILED(hr) && hr != E_ELEMENT_NOT_FOUND) *hasFailed = true;
        };
        add(Options, {asked.GetOrientationSetting(orientation), static_cast<int>(orientation)});
        add(Options, {asked.GetDuplexSetting(duplex), static_cast<int>(duplex)});
        add(Options, {asked.GetJobIdSetting(identification), static_cast<int>(identification)});
        add(Travelling, {asked.IsSidesImagedSpecified()});
        add(Travelling, {asked.GetPageScalingSettings(scaling), scaling.isFitToSize,
                         static_cast<int>(scaling.scalingType), scaling.scaleToFit});
        add(Travelling, {asked.GetBookletSettings(binding), binding.bookletType, binding.gutter,
                         binding.creep.GetIntValue(0)});
        add(PagesPerSheet, {asked.GetNUpSettings(nUp), nUp.featureFound, nUp.pagesPerSheet, nUp.outlines});
        add(Page, {asked.GetPageMediaSizeSettings(page), page.width, page.height});
        add(Sheet, {asked.GetOutputPaperSizeSettings(sheet), sheet.width, sheet.height, sheet.isSpecified});
        return parts;
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
    // Other names are told apart by what they are answered from.
    for (const wchar_t* const name : {L"pageOrientation", L"Doc", static_cast<const wchar_t*>(nullptr)})
        EXPECT_EQ(Base::GetFeatureScopeFromName(name), JobFilterPtScope);
    EXPECT_EQ(Base::MsEPrintTicketScopeToEFilterPtScope(kPTPageScope), PageFilterPtScope);
    EXPECT_EQ(Base::MsEPrintTicketScopeToEFilterPtScope(kPTJobScope), JobFilterPtScope);
    EXPECT_EQ(Base::MsEPrintTicketScopeToEFilterPtScope(static_cast<EPrintTicketScope>(3)),
              DefaultFilterPtScope);

    Base::PtChangeCounter counter;
    const Base::PtChangeCounter unset;
    counter.Increment();
    EXPECT_TRUE(counter.IsInitialized() && counter.Get() == 0 && counter != unset);
    counter.Set(0x7FFFFFFF);
    counter.Increment();
    EXPECT_EQ(counter.Get(), 0);
    counter.Reset();
    EXPECT_TRUE(counter == unset && !counter.IsInitialized());
    const Gdiplus::SizeF letter = PageMediaSize::PageMediaSizeData().GetPageSizeInXpsUnits();
    EXPECT_NEAR(letter.Width, 816.0, 0.02);
    EXPECT_NEAR(letter.Height, 1056.0, 0.02);
}

TEST(XpsFilterPrintTicket, AQuestionFallsBackFromTheTicketOfItsName) {
    Snapshot tickets({Ticket(Feature("psk:PageMediaType", "psk:Plain")),
                      Ticket(Feature("psk:PageOutputColor", "psk:Color") +
                             Feature("psk:JobDuplexAllDocumentsContiguously", "psk:TwoSidedLongEdge")),
                      Ticket(Feature("psk:DocumentCollate", "psk:Collated") +
                             Feature("psk:PageOrientation", "psk:Portrait")),
                      Ticket(Feature("psk:PageOrientation", "psk:Landscape") +
                             Feature("psk:DocumentCollate", "psk:Uncollated") +
                             Feature("psk:JobDuplexAllDocumentsContiguously", "psk:OneSided") +
                             Feature("psk:PageOutputColor", "Monochrome"))});
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
        EXPECT_EQ(empty.Answers(), (std::array<std::string, Snapshot::Parts>{
                                       "none 1;1 0;1 0;", "0;0 0 6 7261;0 0 0 0;", "1 0 1 7611;",
                                       "none 215900 279400;", "0 215900 279400 0;"}));
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
    EXPECT_EQ(tickets.Option(L"PageGloss", L"w:"), "none"); // the job does not declare it
    EXPECT_EQ(TextOf(tickets.asked.GetUserKeywordsNsPrefix()), "ns0000:");
    // Without a job, the default ticket names them.
    Snapshot defaults({page, "", "", Ticket(Feature("psk:PageOrientation", "psk:Portrait"))});
    EXPECT_EQ(defaults.Option(L"PageOrientation", L"k:"), "k:Portrait");
    EXPECT_EQ(TextOf(defaults.asked.GetFrameworkNsPrefix()), "f:");
}

TEST(XpsFilterPrintTicket, OptionsBecomeNumbers) {
    const std::string invalid = std::to_string(E_FAIL);
    const Rows<std::string, std::string> cases{
        {"", "none 1;1 0;1 0;"},
        {Feature("psk:PageOrientation", "psk:Landscape") +
             Feature("psk:JobDuplexAllDocumentsContiguously", "psk:TwoSidedShortEdge") +
             Feature("ok:JobIdentification", "ok:JobIdPrintFirstPage"),
         "0 0;0 2;0 3;"},
        {Feature("psk:PageOrientation", "psk:ReversePortrait") +
             Feature("psk:JobDuplexAllDocumentsContiguously", "psk:twosidedlongedge") +
             Feature("psk:JobIdentification", "psk:JobIdBannerOn"), // of the private keywords only
         "0 3;0 0;1 0;"},
        {Feature("psk:PageOrientation", "Upright"), invalid + " 1;1 0;1 0;"}};
    for (const auto& [content, options] : cases)
        EXPECT_EQ(Snapshot(JobOf(content)).Answers()[Snapshot::Options], options) << content;
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
    // sides; fit to size; booklet, gutter, creep; then the pages on a sheet
    const Rows<std::string, AttributeBytesRawList, const char*, const char*> cases{
        {"", {}, "0;0 0 6 7261;0 0 0 0;", "1 0 1 7611;"},
        {"", attributes, "0;0 1 5 7260;0 3 48 2;", "1 0 1 7610;"},
        {onePage, attributes, "0;0 1 5 7260;0 3 48 2;", "0 1 6 7610;"},
        {Sized("psk:JobNUpAllDocumentsContiguously", Number("PagesPerSheet", "4")) + onePage +
             PublicSettings("<booklet-api>booklet-on</booklet-api><outlines-api>outlines-on</outlines-api>"
                            "<sides>two</sides><fit-to-new-size-print-ticket-keyword-api>x"
                            "</fit-to-new-size-print-ticket-keyword-api>"),
         {},
         "1;0 1 5 7260;0 2 32 0;",
         "0 0 4 7610;"},
        {PublicSettings("<booklet-api>off</booklet-api><outlines-api/>"
                        "<sides specified='false'>two</sides><fit-to-new-size-print-ticket-keyword-api "
                        "specified='false'>x</fit-to-new-size-print-ticket-keyword-api>"),
         attributes, "0;0 0 6 7261;0 0 0 0;", "1 0 1 7611;"},
        {PublicSettings("<booklet-api specified='false'>booklet-on</booklet-api>"
                        "<outlines-api specified='false'>outlines-on</outlines-api>"),
         attributes, "0;0 1 5 7260;0 0 0 0;", "1 0 1 7611;"}};
    for (const auto& [content, bytes, travelling, pages] : cases) {
        Snapshot job(JobOf(content), nullptr, bytes);
        EXPECT_EQ(job.Answers()[Snapshot::Travelling], travelling) << content;
        EXPECT_EQ(job.Answers()[Snapshot::PagesPerSheet], pages) << content;
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
    const std::string page = "0 100000 200000 0;";
    const std::string letter = "0 215900 279400 1;";
    const std::string a3 = "0 297000 420000 1;";
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
    const auto widthAlone = Attributes({{155, Value::FromDimension(Dimension(1, Dimension::Inch))}});
    const AttributeBytesRawList none;
    const Rows<std::string, AttributeBytesRawList, std::string> cases{
        {"", none, page},
        {keyword("psk:NorthAmericaLetter"), none, letter},
        {keyword("PSK:ISOA3"), none, a3},
        {keyword("ISOA3"), none, a3},
        {keyword("ok:ISOA3"), none, page},
        {keyword("psk:NoSheet"), none, page},
        {keyword("psk:a\"]|//x[\"b"), none, page},
        {keyword(":"), none, page},
        {keyword("psk:ISOA3"), chosen(size(Dimension::Inch, 1, 2), noSize), a3},
        {"", chosen(size(Dimension::Inch, 1, 2), noSize), "0 25400 50800 1;"},
        {"", chosen(noSize, size(Dimension::Point, 72, 0.01)), "0 25400 4 1;"},
        {"", chosen(size(Dimension::Inch, 1, 0), size(Dimension::Inch, 3, 3)), page},
        {"", chosen(widthAlone, size(Dimension::Inch, 3, 3)), "0 76200 76200 1;"},
        {"", chosen(noSize, noSize), page}};
    const std::string ofPage =
        Sized("psk:PageMediaSize", Number("MediaSizeWidth", "100000") + Number("MediaSizeHeight", "200000"));
    for (PrintTicketManager* const from : {&manager, static_cast<PrintTicketManager*>(nullptr)}) {
        for (const auto& [content, attributes, expected] : cases) {
            Snapshot snapshot(JobOf(ofPage + content), from, attributes);
            const bool asksPrinter = content.find("keyword") != std::string::npos;
            EXPECT_EQ(snapshot.Answers()[Snapshot::Sheet], asksPrinter && from == nullptr ? page : expected)
                << content;
        }
    }
    // What one page asked for is not what the next one gets, nor what it is of another printer.
    const auto custom = [&](const std::string& width) {
        return keyword("psk:CustomMediaSize") +
               Feature("psk:PageMediaSize", "psk:CustomMediaSize",
                       Number("MediaSizeWidth", width) + Number("MediaSizeHeight", "250000"));
    };
    Snapshot pages(JobOf(keyword("psk:NorthAmericaLetter")), &manager);
    EXPECT_EQ(pages.Answers()[Snapshot::Sheet], letter);
    for (const auto& [content, expected] :
         Rows<std::string, std::string>{{custom("180000"), "0 180000 250000 1;"},
                                        {custom("190000"), "0 190000 250000 1;"},
                                        {keyword("psk:ISOA3"), a3}}) {
        pages.documents[1] = Snapshot(JobOf(content)).documents[1];
        pages.Take();
        EXPECT_EQ(pages.Answers()[Snapshot::Sheet], expected);
    }
    const auto mono = OvPlatform::QueueFolder::Load(OV_SOURCE_DIR "/Samples/Queues/MonoOffice");
    OvPlatform::QueueRegistry::Add(mono); // which has no such sheet
    std::wstring name = mono->PrinterName();
    ASSERT_EQ(manager.Initialize(MakeFake<MemoryReadStream>(mono->DefaultTicket()), name.data(), nullptr),
              S_OK);
    EXPECT_EQ(pages.Answers()[Snapshot::Sheet], "0 215900 279400 0;");
    // Without a printer there are no capabilities; without the second length, the first stands.
    PrintTicketManager unopened;
    Snapshot snapshot(
        JobOf(Sized("psk:PageMediaSize", Number("MediaSizeWidth", "100000")) + keyword("psk:ISOA3")),
        &unopened);
    EXPECT_EQ(snapshot.Answers()[Snapshot::Sheet], "0 100000 279400 0;");
    EXPECT_EQ(snapshot.Answers()[Snapshot::Page], "none 100000 279400;");
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
    const auto document = MakeFake<FakeFixedDocument>();
    const auto page = MakeFake<FakeFixedPage>();
    ASSERT_EQ(manager.MergeAndValidatePartPrintTicket(document), S_OK);
    ASSERT_EQ(manager.MergeAndValidatePartPrintTicket(page), S_OK);
    ASSERT_EQ(take(kPTPageScope), S_OK);
    EXPECT_EQ(slot(DocumentFilterPtScope), manager.GetPtrToDocPrintTicketForReading());
    EXPECT_EQ(slot(PageFilterPtScope), manager.GetPtrToPagePrintTicketForReading());
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
        Ticket(Feature("x:JobIdentification", "x:JobIdBannerOn"), Declare("x", PrivateUri())),
        Ticket(Feature("psk:PageOrientation", "psk:Landscape"), Declare("ns0000", PrivateUri())),
        Ticket("", Declare("ok", "urn:of-others")),
        Ticket(Feature("psk:PageOrientation", "psk:Landscape") + PublicSettings("<sides>one</sides>", "y:"),
               Declare("y", PrivateUri()))};
    Snapshot snapshot(tickets, &manager);
    const std::string before = snapshot.State();
    EXPECT_EQ(snapshot.Answers()[Snapshot::Options], "0 0;1 0;0 1;");
    EXPECT_EQ(snapshot.Answers()[Snapshot::Travelling], "0;0 0 6 7261;0 0 0 0;");
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

    // A snapshot that fails half way is none: nothing of the one before is left. A failure is not taken for a
    // document that is no ticket, whatever its result.
    const auto pageTicket = [&] {
        return snapshot.asked.GetCopyOfPtrToPrintTicketXmlDocumentForReading(PageFilterPtScope);
    };
    int failures = 0;
    for (LONG point = 1; point <= 150; ++point) {
        for (const HRESULT result : {E_ABORT, E_FAIL}) {
            snapshot.Take();
            const OvPlatform::FaultInjectionScope fault(point, result);
            try {
                snapshot.Take();
                EXPECT_NE(pageTicket(), nullptr) << point;
            } catch (const CPComException&) {
                ++failures;
                EXPECT_EQ(pageTicket(), nullptr) << point;
            }
        }
    }
    EXPECT_GT(failures, 0);

    FailureSweep<Snapshot>([&] { return std::make_unique<Snapshot>(tickets, &manager); },
                           [](Snapshot& world) -> SweptAnswer {
                               world.Take();
                               SweptAnswer answer;
                               for (const std::string& part : world.Answers(&answer.hasFailed))
                                   answer.text += part;
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
