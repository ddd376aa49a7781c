// What tickets, access objects and feature access are and answer after any one platform call fails.

#include "Support/FailureSweep.h"

#include "FilterUtilities/FeatureAccess/JobUnderTest.h"
#include "FilterUtilities/PrintSchema/TicketSupport.h"
#include "Support/Rows.h"

#include <AttributeStore/AttributeBytesNameSpaces.h>
#include <AttributeStore/AttributeBytesRawList.h>
#include <AttributeStore/PersistentAttributes.h>
#include <Media/CPageImageablePCHandler.h>
#include <Media/PageMediaSizePtPcHelper.h>
#include <TicketAccess/NativeComPrintTicketAccess.h>

#include <sstream>

namespace {

using namespace DataModelIds;

std::string Parameter(const std::string& name, const std::string& value) {
    return "<psf:ParameterInit name='" + name + "'><psf:Value xsi:type='xsd:string'>" + value +
           "</psf:Value></psf:ParameterInit>";
}

std::string Size(const std::string& width, const std::string& height) {
    return ScoredProperty("psk:MediaSizeWidth", Value(width)) +
           ScoredProperty("psk:MediaSizeHeight", Value(height));
}

std::string Offer(const std::string& name, const std::string& content = {}) {
    return "<psf:Option name='" + name + "'>" + content + "</psf:Option>";
}

std::string Offers(const std::string& feature, const std::string& options) {
    return "<psf:Feature name='" + feature + "'>" + options + "</psf:Feature>";
}

std::string Definition(const std::string& name, const std::string& property, const std::string& value) {
    return "<psf:ParameterDef name='" + name + "'><psf:Property name='psf:" + property + "'>" + Value(value) +
           "</psf:Property></psf:ParameterDef>";
}

// Attribute bytes with a booklet and a lightness.
ByteBuffer Store() {
    AttributeBytesRawList list;
    list.AddAttributeBytes(AttributeBytes(AttributeBytesFeatureId(FEAT_BOOKLET),
                                          AttributeBytesValue::FromInteger(VAL_BOOKLET_ON)));
    AttributeBytesNameSpaces nameSpaces;
    nameSpaces.SetNameSpaceAttributes(PersistentAttributes::GetDataModelDocPropNameSpaceId(), list);
    PersistentAttributes store({}, false, nullptr);
    store.SetAttributeBytesNameSpaces(nameSpaces);
    return store.GetPersistentAttributesState();
}

std::string FullTicket() {
    OpenTicket ticket(::Ticket(
        Feature("psk:PageMediaSize", "psk:ISOA4", Size("210000", "297000")) +
            Feature("psk:JobDuplexAllDocumentsContiguously", "psk:OneSided") +
            Feature("psk:DocumentCollate", "psk:Collated") + Feature("psk:PageMediaType", "psk:Plain") +
            Feature("psk:DocumentNUp", "", ScoredProperty("psk:PagesPerSheet", Value("2"))) +
            Feature("v11:JobPasscode", "v11:Off") + "<psf:ParameterInit name='psk:JobCopiesAllDocuments'>" +
            Value("1") + "</psf:ParameterInit>" + Parameter("ok:JobSimpleSecurePrint", "MQA=") +
            Parameter("ok:JobOrvelPublicDocSettings",
                      "&lt;s>&lt;sides>two-sided-long-edge&lt;/sides>&lt;outlines-api>outlines-on"
                      "&lt;/outlines-api>&lt;/s>"),
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
        "<psf:ParameterInit name='psk:PageMediaSizeMediaSizeWidth'>" + Value("100000") +
        "</psf:ParameterInit><psf:ParameterInit name='psk:PageMediaSizeMediaSizeHeight'>" + Value("150000") +
        "</psf:ParameterInit>");
}

std::string CapabilitiesText() {
    std::string text = ::Ticket(
        Offers("psk:PageMediaSize", Offer("psk:ISOA4", Size("210000", "297000")) +
                                        Offer("psk:ISOA3", Size("297000", "420000")) +
                                        Offer("psk:SameSize", Size("297000", "420000")) +
                                        Offer("ok:Private", Size("111000", "222000"))) +
            Offers("psk:JobDuplexAllDocumentsContiguously",
                   Offer("psk:OneSided") + Offer("psk:TwoSidedLongEdge")) +
            Offers("psk:DocumentCollate", Offer("psk:Collated") + Offer("psk:Uncollated")) +
            Offers("psk:PageMediaType", Offer("psk:Plain") + Offer("ok:Rough")) +
            Offers("psk:DocumentNUp",
                   "<psf:Option>" + ScoredProperty("psk:PagesPerSheet", Value("2")) + "</psf:Option>") +
            Offers("v11:JobPasscode", Offer("v11:On") + Offer("v11:Off")) +
            Definition("psk:JobCopiesAllDocuments", "MaxValue", "99") +
            Definition("psk:PageMediaSizeMediaSizeWidth", "DefaultValue", "300000") +
            Definition("psk:PageMediaSizeMediaSizeHeight", "DefaultValue", "400000") +
            Definition("ok:JobSimpleSecurePrint", "MinLength", "4"),
        Declare("v11", keywordsV11Uri) + Declare("ok", PrivateUri()));
    for (std::size_t at = 0; (at = text.find("psf:PrintTicket", at)) != std::string::npos;)
        text.replace(at, 15, "psf:PrintCapabilities");
    return text;
}

CXString Text(const std::string& text) { return CXString(text.c_str()); }

// A ticket with all that reads and writes it.
class Job {
public:
    explicit Job(const std::string& text)
        : ticket(text), capabilities(Text(CapabilitiesText())), access(ticket, capabilities),
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
    const auto settings = Edit([](Job& job) { job.access.SetJobOrvelPublicDocSettingsXml("<new/>"); });
    const Rows<const char*, std::string, Sweep::Operation> setters{
        {"sides", full, option(L"JobDuplexAllDocumentsContiguously", L"TwoSidedLongEdge")},
        {"collation", full, option(L"DocumentCollate", L"Uncollated")},
        {"a private type", full, option(L"PageMediaType", L"Rough")},
        {"a type for a ticket without private names", plain, option(L"PageMediaType", L"Rough")},
        {"pages per sheet", full, option(L"DocumentNUp", L"4")},
        {"passcode", full, option(L"JobPasscode", L"On")},
        {"a size by name", full, option(L"PageMediaSize", L"ISOA3")},
        {"the second of two sizes", full, option(L"PageMediaSize", L"SameSize")},
        {"a private size", full, option(L"PageMediaSize", L"Private")},
        {"a size by name for a custom one", plain, option(L"PageMediaSize", L"ISOA3")},
        {"a private size for a ticket without private names", plain, option(L"PageMediaSize", L"Private")},
        {"a size by numbers", full, size(L"", 297000, 420000)},
        {"a size without numbers", full, size(L"ISOA3", 0, 0)},
        {"a custom size by name", full, option(L"PageMediaSize", L"PSCustomMediaSize")},
        {"a custom size", full, size(L"", 123000, 234000)},
        {"a custom size for a custom one", plain, size(L"", 123000, 234000)},
        {"copies", full,
         Edit([](Job& job) { job.access.SetCurrentValueIntegerFeature(L"JobCopiesAllDocuments", 3); })},
        {"copies for a ticket without", plain,
         Edit([](Job& job) { job.access.SetCurrentValueIntegerFeature(L"JobCopiesAllDocuments", 3); })},
        {"no secure print", full, Edit([](Job& job) { job.access.RemoveSecurePrintFeature(); })},
        {"public settings", full, settings},
        {"public settings for a ticket without", plain, settings},
        {"complete settings", full,
         Edit([](Job& job) { job.access.SetCurrentValueBase64EncodedCompleteDocSettings(L"AAAA"); })},
        {"feature access: sides", full, Edit([](Job& job) {
             job.features.SetOptionValue(FEAT_SIDES_IMAGED, VAL_SIDES_TWO_SIDED_FLIP_LONG_EDGE);
         })},
        {"feature access: collation", full,
         Edit([](Job& job) { job.features.SetOptionValue(FEAT_COLLATION, VAL_COLLATION_UNCOLLATED); })},
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

template <typename Value>
Sweep::Operation Question(const std::function<Value(Job&)>& ask) {
    return [ask](Job& job) {
        std::ostringstream text;
        text << ask(job);
        return SweptAnswer(text.str());
    };
}

Sweep::Operation Filled(const std::function<void(Job&, CXString&)>& ask) {
    return [ask](Job& job) {
        CXString text;
        ask(job, text);
        return SweptAnswer(Narrow(text));
    };
}

Sweep::Operation Option(tagFeatureEnum feature) {
    return Question<int>(
        [=](Job& job) { return job.features.GetOptionValue(feature).GetValuePlusSpecifiedState(); });
}

TEST(FailureSweep, NoFirstQuestionToAnAccessChangesItsAnswers) {
    const std::string full = FullTicket();
    const auto microns = [](const Dimension& size) {
        return std::to_string(size.GetValue(Dimension::Micron).GetIntValue(0.4));
    };
    const auto offered = [](const wchar_t* feature) {
        return Question<std::string>([=](Job& job) {
            std::vector<IPrintTicketAccess::OptionCapability> options;
            job.access.GetCapabilitiesOptionFeature(feature, options);
            std::string names;
            for (const auto& option : options)
                names += Narrow(std::get<0>(option)) + " ";
            return names;
        });
    };
    const auto isSupported = [](const wchar_t* feature) {
        return Question<bool>([=](Job& job) { return job.access.IsSupportedPrintTicketFeature(feature); });
    };
    const auto current = [](const wchar_t* feature) {
        return Filled(
            [=](Job& job, CXString& text) { job.access.GetCurrentValueOptionFeature(feature, text); });
    };
    const auto range = [](const wchar_t* feature) {
        return Question<int>([=](Job& job) {
            std::pair<int, int> range;
            job.access.GetRangeCapability(feature, range);
            return range.second;
        });
    };
    const Rows<const char*, Sweep::Operation> questions{
        {"support of a feature", isSupported(L"PageMediaType")},
        {"support of copies", isSupported(L"JobCopiesAllDocuments")},
        {"support of secure print", isSupported(L"JobSimpleSecurePrint")},
        {"support of a passcode", isSupported(L"JobPasscode")},
        {"display name",
         Filled([](Job& job, CXString& text) { job.access.GetFeatureDisplayName(L"PageMediaType", text); })},
        {"range of copies", range(L"JobCopiesAllDocuments")},
        {"range of the password", range(L"JobSimpleSecurePrint")},
        {"types offered", offered(L"PageMediaType")},
        {"pages per sheet offered", offered(L"DocumentNUp")},
        {"sizes offered", Question<std::string>([&](Job& job) {
             std::vector<IPrintTicketAccess::MediaSizeCapability> sizes;
             job.access.GetCapabilitiesMediaSizeFeature(L"PageMediaSize", sizes);
             std::string text;
             for (const auto& size : sizes)
                 text += Narrow(std::get<0>(size)) + microns(std::get<5>(size).second) + " ";
             return text;
         })},
        {"type", current(L"PageMediaType")},
        {"pages per sheet", current(L"DocumentNUp")},
        {"passcode", current(L"JobPasscode")},
        {"size", Question<std::string>([&](Job& job) {
             CXString option;
             Dimension width;
             Dimension height;
             job.access.GetCurrentValueMediaSizeFeature(L"PageMediaSize", option, width, height);
             return Narrow(option) + microns(width) + "x" + microns(height);
         })},
        {"copies", Question<int>([](Job& job) {
             return job.access.GetCurrentValueIntegerFeature(L"JobCopiesAllDocuments");
         })},
        {"password", Filled([](Job& job, CXString& text) {
             job.access.GetCurrentValueJobSimpleSecurePrintPassword(text);
         })},
        {"complete settings", Filled([](Job& job, CXString& text) {
             job.access.GetCurrentValueBase64EncodedCompleteDocSettings(text);
         })},
        {"public settings", Question<std::string>([](Job& job) {
             CPString xml;
             job.access.GetJobOrvelPublicDocSettingsXml(xml);
             return std::string(xml.view());
         })},
        {"ticket", Question<std::string>([](Job& job) {
             CPString xml;
             job.access.GetPrintTicketAsXmlString(xml, false);
             return std::string(xml.view());
         })},
        {"capabilities", Question<std::string>([](Job& job) {
             CPString xml;
             job.access.GetPrintCapabilitiesAsXmlString(xml, false);
             return std::string(xml.view());
         })},
        {"helper: sizes", Question<std::size_t>([](Job& job) {
             return job.sizes.GetSupportedPageMediaSizes(job.capabilities).size();
         })},
        {"helper: a size's name", Filled([](Job& job, CXString& text) {
             PrintSchema::MsPrintTicketNamespacesEnum ns{};
             job.sizes.GetPageMediaSizeOptionKeyword(job.capabilities, 297000, 420000, text, ns);
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
        Sweep(MakeJob(full), operation).Run(name);
}

TEST(FailureSweep, NoFirstQuestionToTheFeatureAccessChangesItsAnswersOrTheTicket) {
    const std::string full = FullTicket();
    const std::string plain = PlainTicket();
    const Rows<const char*, std::string, Sweep::Operation> questions{
        {"outlines, of the public settings", full, Option(FEAT_OUTLINES)},
        {"outlines, of a ticket without settings", plain, Option(FEAT_OUTLINES)},
        {"booklet, of the attribute bytes", full, Option(FEAT_BOOKLET)},
        {"booklet, of a ticket without", plain, Option(FEAT_BOOKLET)},
        {"sides", full, Option(FEAT_SIDES_IMAGED)},
        {"collation", full, Option(FEAT_COLLATION)},
        {"job type", full, Option(FEAT_JOB_TYPE)},
        {"page layout", full, Option(FEAT_PAGE_LAYOUT)},
        {"staples", full, Option(FEAT_FINISHING_STAPLE)},
        {"size of the job", full, Question<int>([](Job& job) {
             return job.features.GetEffectiveJobLevelMediaSize().GetValuePlusSpecifiedState();
         })},
        {"copies", full, Question<int>([](Job& job) {
             int copies = 0;
             return job.features.GetIntegerValue(FEAT_COPIES, copies) ? copies : -1;
         })},
        {"user", full,
         Filled([](Job& job, CXString& text) { job.features.GetStringValue(FEAT_CURRENT_USER_NAME, text); })},
        {"orientation", full, Question<int>([](Job& job) { return job.features.GetEffectiveOrientation(); })},
        {"a collection", full,
         Question<bool>([](Job& job) { return job.features.IsCollectionSpecified(FEAT_ANNOTATION_COL); })},
    };
    for (const auto& [name, ticket, operation] : questions)
        Sweep(MakeJob(ticket), operation).Run(name);
}

} // namespace
