// What tickets, access objects and feature access are and answer after any one platform call fails.

#include "Support/FailureSweep.h"

#include "FilterUtilities/FeatureAccess/JobUnderTest.h"
#include "FilterUtilities/PrintSchema/CapabilitiesSupport.h"
#include "Support/AttributeLists.h"
#include "Support/Rows.h"

#include <Media/CPageImageablePCHandler.h>
#include <Media/PageMediaSizePtPcHelper.h>
#include <TicketAccess/NativeComPrintTicketAccess.h>

#include <sstream>

namespace {

using namespace DataModelIds;

std::string Offers(const std::string& feature, const std::string& options) {
    return Named("Feature", feature, options);
}

std::string Definition(const std::string& name, const std::string& property, const std::string& value) {
    return Named("ParameterDef", name, Property(property, value));
}

// Attribute bytes with a booklet.
ByteBuffer Store() {
    return StoreOf(Attributes<AttributeBytesRawList>(
        {{FEAT_BOOKLET, AttributeBytesValue::FromInteger(VAL_BOOKLET_ON)}}));
}

std::string FullTicket() {
    OpenTicket ticket(
        ::Ticket(SizeFeature(SizeOption("psk:ISOA4", "210000", "297000")) +
                     Feature("psk:JobDuplexAllDocumentsContiguously", "psk:OneSided") +
                     Feature("psk:PageMediaType", "psk:Plain") +
                     Feature("psk:DocumentNUp", "", ScoredProperty("psk:PagesPerSheet", Value("2"))) +
                     Feature("v11:JobPasscode", "v11:Off") +
                     Named("ParameterInit", "psk:JobCopiesAllDocuments", Value("1")) +
                     Named("ParameterInit", "ok:JobSimpleSecurePrint", Value("MQA=")) +
                     Named("ParameterInit", "ok:JobOrvelPublicDocSettings",
                           Value("&lt;s>&lt;sides>two-sided-long-edge&lt;/sides>&lt;outlines-api>outlines-on"
                                 "&lt;/outlines-api>&lt;/s>")),
                 Declare("v11", keywordsV11Uri) + Declare("ok", PrivateUri())));
    EXPECT_EQ(ticket.AddOrReplacePageOrvelCompleteDocSettingsInPrintTicket(Store()), S_OK);
    return XmlOf(ticket);
}

// One with a custom size, and without private names of any kind.
std::string PlainTicket() {
    return ::Ticket(
        Feature("psk:PageMediaSize", "psk:CustomMediaSize",
                ScoredProperty("psk:MediaSizeWidth",
                               "<psf:ParameterRef name='psk:PageMediaSizeMediaSizeWidth'/>") +
                    ScoredProperty("psk:MediaSizeHeight",
                                   "<psf:ParameterRef name='psk:PageMediaSizeMediaSizeHeight'/>")) +
        Named("ParameterInit", "psk:PageMediaSizeMediaSizeWidth", Value("100000")) +
        Named("ParameterInit", "psk:PageMediaSizeMediaSizeHeight", Value("150000")));
}

std::string JobCapabilities() {
    return CapabilitiesText(
        SizeFeature(
            SizeOption("psk:ISOA4", "210000", "297000") + SizeOption("psk:ISOA3", "297000", "420000") +
            SizeOption("psk:SameSize", "297000", "420000") + SizeOption("ok:Private", "111000", "222000")) +
            Offers("psk:JobDuplexAllDocumentsContiguously",
                   Named("Option", "psk:OneSided", "") + Named("Option", "psk:TwoSidedLongEdge", "")) +
            Offers("psk:PageMediaType", Named("Option", "psk:Plain", "") + Named("Option", "ok:Rough", "")) +
            Offers("psk:DocumentNUp",
                   "<psf:Option>" + ScoredProperty("psk:PagesPerSheet", Value("2")) + "</psf:Option>") +
            Offers("v11:JobPasscode", Named("Option", "v11:On", "") + Named("Option", "v11:Off", "")) +
            Definition("psk:JobCopiesAllDocuments", "psf:MaxValue", "99") +
            Definition("psk:PageMediaSizeMediaSizeWidth", "psf:DefaultValue", "300000") +
            Definition("psk:PageMediaSizeMediaSizeHeight", "psf:DefaultValue", "400000") +
            Definition("ok:JobSimpleSecurePrint", "psf:MinLength", "4"),
        Declare("v11", keywordsV11Uri) + Declare("ok", PrivateUri()));
}

// A ticket with all that reads and writes it.
class Job {
public:
    explicit Job(const std::string& text)
        : ticket(text), capabilities(CXString(JobCapabilities().c_str())), access(ticket, capabilities),
          device(CPString("<DeviceCapabilities version='1.0'>"
                          "<Option name='booklet-api' default='booklet-off'><Value name='booklet-on'/>"
                          "<Value name='booklet-off'/></Option></DeviceCapabilities>")),
          attributeBytes(&ticket, NoDisplayHelp(), false), features(device, access, &attributeBytes) {}

    // Of the ticket, and of the public settings, which may differ from those in the ticket.
    [[nodiscard]] std::string State() const {
        const std::string text = XmlOf(ticket);
        if (text.find("JobOrvelPublicDocSettings") == std::string::npos) return text;
        CXString user;
        CXString version;
        features.GetStringValue(FEAT_CURRENT_USER_NAME, user);
        features.GetStringValue(FEAT_CREATOR_VERSION_PDL, version);
        return text + "\n" + Narrow(user) + "\n" + Narrow(version);
    }

    OpenTicket ticket;
    PrintCapabilitiesXmlDocument capabilities;
    NativeComPrintTicketAccess access;
    SimpleOcapParser device;
    PrintTicketAttributeBytesReaderWriter attributeBytes;
    DataModelLessFeatureAccess features;
    PageMediaSizePtPcHelper sizes;
};

using Sweep = FailureSweep<Job>;

Sweep::Operation Edit(const std::function<void(Job&)>& edit) {
    return [edit](Job& job) {
        edit(job);
        return SweptAnswer();
    };
}

Sweep::Maker MakeJob(const std::string& ticket) {
    return [ticket] { return std::make_unique<Job>(ticket); };
}

TEST(FailureSweep, NoSetterOfAnAccessLosesWhatTheTicketHolds) {
    const std::string full = FullTicket();
    const std::string plain = PlainTicket();
    const auto option = [](const wchar_t* feature, const wchar_t* value) {
        return Edit([=](Job& job) { job.access.SetCurrentValueOptionFeature(feature, value); });
    };
    const auto size = [](const wchar_t* name, int width, int height) {
        return Edit([=](Job& job) {
            job.access.SetCurrentValueMediaSizeFeature(L"PageMediaSize", name, width, height);
        });
    };
    const auto access = [](const std::function<void(IPrintTicketAccess&)>& edit) {
        return Edit([edit](Job& job) { edit(job.access); });
    };
    const auto copies =
        access([](auto& to) { to.SetCurrentValueIntegerFeature(L"JobCopiesAllDocuments", 3); });
    const Rows<const char*, std::string, Sweep::Operation> setters{
        {"sides", full, option(L"JobDuplexAllDocumentsContiguously", L"TwoSidedLongEdge")},
        {"a private type", full, option(L"PageMediaType", L"Rough")},
        {"a type for a ticket without private names", plain, option(L"PageMediaType", L"Rough")},
        {"pages per sheet", full, option(L"DocumentNUp", L"4")},
        {"passcode", full, option(L"JobPasscode", L"On")},
        {"the second of two sizes", full, option(L"PageMediaSize", L"SameSize")},
        {"a size by name for a custom one", plain, option(L"PageMediaSize", L"ISOA3")},
        {"a private size for a ticket without private names", plain, option(L"PageMediaSize", L"Private")},
        {"a size by numbers", full, size(L"", 297000, 420000)},
        {"a custom size by name", full, option(L"PageMediaSize", L"PSCustomMediaSize")},
        {"a custom size", full, size(L"", 123000, 234000)},
        {"copies", full, copies},
        {"copies for a ticket without", plain, copies},
        {"no secure print", full, access([](auto& to) { to.RemoveSecurePrintFeature(); })},
        {"public settings for a ticket without", plain,
         access([](auto& to) { to.SetJobOrvelPublicDocSettingsXml("<new/>"); })},
        {"complete settings", full,
         access([](auto& to) { to.SetCurrentValueBase64EncodedCompleteDocSettings(L"AAAA"); })},
        {"feature access: sides", full, Edit([](Job& job) {
             job.features.SetOptionValue(FEAT_SIDES_IMAGED, VAL_SIDES_TWO_SIDED_FLIP_LONG_EDGE);
         })},
        {"feature access: a user", full,
         Edit([](Job& job) { job.features.SetStringValue(FEAT_CURRENT_USER_NAME, L"user", true); })},
        {"feature access: a version for a ticket without", plain,
         Edit([](Job& job) { job.features.SetStringValue(FEAT_CREATOR_VERSION_PDL, L"1", false); })},
        {"helper: a size", full,
         [](Job& job) {
             return job.sizes.AddOrReplacePageMediaSize(job.capabilities, job.ticket, 297000, 420000);
         }},
        {"helper: no size", plain,
         [](Job& job) {
             return PageMediaSizePtPcHelper::DeletePageMediaSizeAndItsParameterInitsIfExist(job.ticket);
         }},
    };
    // The first use of settings that are not there, whatever for, makes an empty document.
    Job withEmptySettings(plain);
    ASSERT_FALSE(withEmptySettings.features.GetOptionValue(FEAT_OUTLINES).IsSpecified());
    for (const auto& [name, ticket, operation] : setters) {
        Sweep sweep(MakeJob(ticket), operation);
        EXPECT_TRUE(sweep.IsEdit()) << name;
        sweep.Run(name, {withEmptySettings.State()});
    }
}

// ---- Questions

// One that writes its answer.
Sweep::Operation Question(const std::function<void(Job&, std::ostream&)>& ask) {
    return [ask](Job& job) {
        std::ostringstream text;
        ask(job, text);
        return SweptAnswer(text.str());
    };
}

// One that fills a text.
Sweep::Operation Filled(const std::function<void(const IPrintTicketAccess&, CXString&)>& ask) {
    return Question([ask](Job& job, std::ostream& out) {
        CXString text;
        ask(job.access, text);
        out << text;
    });
}

TEST(FailureSweep, NoFirstQuestionToAnAccessChangesItsAnswers) {
    const auto microns = [](const Dimension& size) {
        return size.GetValue(Dimension::Micron).GetIntValue(0.4);
    };
    const auto offered = [](const wchar_t* feature) {
        return Question([=](Job& job, std::ostream& out) {
            std::vector<IPrintTicketAccess::OptionCapability> options;
            job.access.GetCapabilitiesOptionFeature(feature, options);
            for (const auto& option : options)
                out << std::get<0>(option) << " ";
        });
    };
    const auto isSupported = [](const wchar_t* feature) {
        return Question(
            [=](Job& job, std::ostream& out) { out << job.access.IsSupportedPrintTicketFeature(feature); });
    };
    const auto current = [](const wchar_t* feature) {
        return Filled(
            [=](auto& access, CXString& text) { access.GetCurrentValueOptionFeature(feature, text); });
    };
    const auto range = [](const wchar_t* feature) {
        return Question([=](Job& job, std::ostream& out) {
            std::pair<int, int> range;
            job.access.GetRangeCapability(feature, range);
            out << range.second;
        });
    };
    const Rows<const char*, Sweep::Operation> questions{
        {"support of a feature", isSupported(L"PageMediaType")},
        {"support of secure print", isSupported(L"JobSimpleSecurePrint")},
        {"support of a passcode", isSupported(L"JobPasscode")},
        {"display name",
         Filled([](auto& access, CXString& text) { access.GetFeatureDisplayName(L"PageMediaType", text); })},
        {"range of copies", range(L"JobCopiesAllDocuments")},
        {"types offered", offered(L"PageMediaType")},
        {"pages per sheet offered", offered(L"DocumentNUp")},
        {"sizes offered", Question([&](Job& job, std::ostream& out) {
             std::vector<IPrintTicketAccess::MediaSizeCapability> sizes;
             job.access.GetCapabilitiesMediaSizeFeature(L"PageMediaSize", sizes);
             for (const auto& size : sizes)
                 out << std::get<0>(size) << microns(std::get<5>(size).second) << " ";
         })},
        {"type", current(L"PageMediaType")},
        {"pages per sheet", current(L"DocumentNUp")},
        {"size", Question([&](Job& job, std::ostream& out) {
             CXString option;
             Dimension width;
             Dimension height;
             job.access.GetCurrentValueMediaSizeFeature(L"PageMediaSize", option, width, height);
             out << option << microns(width) << "x" << microns(height);
         })},
        {"password", Filled([](auto& access, CXString& text) {
             access.GetCurrentValueJobSimpleSecurePrintPassword(text);
         })},
        {"complete settings", Filled([](auto& access, CXString& text) {
             access.GetCurrentValueBase64EncodedCompleteDocSettings(text);
         })},
        {"public settings", Question([](Job& job, std::ostream& out) {
             CPString xml;
             job.access.GetJobOrvelPublicDocSettingsXml(xml);
             out << xml;
         })},
        {"helper: sizes", Question([](Job& job, std::ostream& out) {
             out << job.sizes.GetSupportedPageMediaSizes(job.capabilities).size();
         })},
        {"helper: a size's name", Question([](Job& job, std::ostream& out) {
             CXString name;
             PrintSchema::MsPrintTicketNamespacesEnum ns{};
             job.sizes.GetPageMediaSizeOptionKeyword(job.capabilities, 297000, 420000, name, ns);
             out << name;
         })},
        {"imageable area",
         [](Job& job) {
             PrintSchema::PageImageableSize::PageImageableData data{};
             int limits[4] = {};
             CPageImageablePCHandler handler(nullptr);
             return handler.GetData(job.capabilities.GetDomDocPtr(), &data, limits[0], limits[1], limits[2],
                                    limits[3]);
         }},
    };
    for (const auto& [name, operation] : questions)
        Sweep(MakeJob(FullTicket()), operation).Run(name);
}

TEST(FailureSweep, NoFirstQuestionToTheFeatureAccessChangesItsAnswersOrTheTicket) {
    const auto option = [](tagFeatureEnum feature) {
        return Question([=](Job& job, std::ostream& out) {
            out << job.features.GetOptionValue(feature).GetValuePlusSpecifiedState();
        });
    };
    const std::string full = FullTicket();
    const std::string plain = PlainTicket();
    const Rows<const char*, std::string, Sweep::Operation> questions{
        {"outlines, of the public settings", full, option(FEAT_OUTLINES)},
        {"outlines, of a ticket without settings", plain, option(FEAT_OUTLINES)},
        {"booklet, of the attribute bytes", full, option(FEAT_BOOKLET)},
        {"booklet, of a ticket without", plain, option(FEAT_BOOKLET)},
        {"sides", full, option(FEAT_SIDES_IMAGED)},
        {"job type", full, option(FEAT_JOB_TYPE)},
        {"page layout", full, option(FEAT_PAGE_LAYOUT)},
        {"size of the job", full, Question([](Job& job, std::ostream& out) {
             out << job.features.GetEffectiveJobLevelMediaSize().GetValuePlusSpecifiedState();
         })},
        {"copies", full, Question([](Job& job, std::ostream& out) {
             int copies = 0;
             out << job.features.GetIntegerValue(FEAT_COPIES, copies) << copies;
         })},
        {"user", full, Question([](Job& job, std::ostream& out) {
             CXString user;
             out << job.features.GetStringValue(FEAT_CURRENT_USER_NAME, user) << user;
         })},
        {"a collection", full, Question([](Job& job, std::ostream& out) {
             out << job.features.IsCollectionSpecified(FEAT_ANNOTATION_COL);
         })},
    };
    for (const auto& [name, ticket, operation] : questions)
        Sweep(MakeJob(ticket), operation).Run(name);
}

} // namespace
