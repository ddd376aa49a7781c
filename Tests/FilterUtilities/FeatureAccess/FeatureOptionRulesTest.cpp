#include "FilterUtilities/FeatureAccess/JobUnderTest.h"
#include "Support/Rows.h"

#include <DataModel/NativeXmlConfigFeatureDictionary.h>

namespace {

using namespace DataModelIds;
using enum FeatureValueSource;
using enum JobUnderTest::Kind;
using Bytes = AttributeBytesValue;

// ---- Rules of one place

TEST(FeatureOptionRules, TakeOptionsOfTheTicket) {
    const Rows<tagFeatureEnum, std::wstring, std::wstring, int> cases{
        {FEAT_MS_ORIENTATION, L"PageOrientation", L"Landscape", 5011},
        {FEAT_COLLATION, L"DocumentCollate", L"Uncollated", 5411},
        {FEAT_COLOR_EFFECTS, L"PageOutputColor", L"Monochrome", 5971},
        {FEAT_MARGINS, L"PageBorderless", L"None", 8010},
        {FEAT_FINISHING_STAPLE, L"JobStapleAllDocuments", L"StapleDualLeft", 8062},
        {FEAT_FINISHING_1_STAPLE, L"JobStapleAllDocuments", L"StapleBottomLeft", 8024},
        {FEAT_FINISHING_2_STAPLES, L"JobStapleAllDocuments", L"StapleDualTop", 8032},
        {FEAT_FINISHING_FOLD, L"JobBindAllDocuments", L"FoldLetter", 8040},
        {FEAT_JOB_IDENTIFICATION, L"JobIdentification", L"JobIdCustomBanner", 10343},
        {FEAT_MS_PIN_PRINTING, L"JobPasscode", L"Off", 10825},
        {FEAT_PAGE_LAYOUT, L"JobNUpAllDocumentsContiguously", L"6", 7243},
        {FEAT_PAGE_LAYOUT, L"DocumentNUp", L"2", 7241},
        {FEAT_SIDES_IMAGED, L"JobDuplexAllDocumentsContiguously", L"TwoSidedShortEdge", 5422},
    };
    for (const auto& [feature, ticketFeature, option, value] : cases) {
        SCOPED_TRACE(feature);
        JobUnderTest job;
        job.ticket.Choose(ticketFeature, option);
        EXPECT_EQ(Ask(job, feature), By(PrintTicket, value));
        for (const std::wstring& other : {option + L" ", L"psk:" + option, std::wstring(L"Twaddle")}) {
            job.ticket.options[ticketFeature] = other;
            EXPECT_NE(Ask(job, feature).value, value);
        }
        job.ticket.Choose(ticketFeature, option);
        job.ticket.supported.clear();
        EXPECT_FALSE(Ask(job, feature).isSpecified) << "of a feature that is not supported";
    }
}

TEST(FeatureOptionRules, TakeTextsOfTheDocumentSettings) {
    const Rows<tagFeatureEnum, const char*, const char*, int> cases{
        {FEAT_OUTLINES, "outlines-api", "outlines-off", 7611},
        {FEAT_FINISHING_CENTER_STAPLE, "center-staple-api", "center-staples-r", 8029},
        {FEAT_FINISHING_4_STAPLES, "four-staples-api", "4-staples-b", 10245},
        {FEAT_FINISHING_BOOKLET, "booklet-finishing-api", "booklet-fold-staple", 8059},
        {FEAT_FINISHING_COIL_PUNCH, "coil-punch-api", "coil-punch-pllt", 9727},
        {FEAT_FINISHING_UNSPECIFIED, "unspecified-finishing-api", "on", 10807},
        {FEAT_HOLD_FOR_AUTHENTICATION, "hold-for-authentication", "user-id", 10221},
        {FEAT_CREATOR_NAME_ATTRIBUTES, "creator-name-attributes", "windows-psa-print", 8860},
        {FEAT_CREATOR_NAME_ATTRIBUTES, "creator-name-attributes", "unknown-application", 8833},
        {FEAT_CREATOR_NAME_PDL, "creator-name-pdl", "unknown-application", 8835},
        {FEAT_BOOKLET, "booklet-api", "booklet-on", 5111},
        {FEAT_JOB_TYPE, "job-type-api", "proof-print", 7899},
    };
    for (const auto& [feature, element, text, value] : cases) {
        SCOPED_TRACE(element);
        JobUnderTest job;
        job.AddElement("collection", std::string("<") + element + ">" + text + "</" + element + ">");
        EXPECT_EQ(Ask(job, feature), By(PublicDocumentSettings, value)) << "at any depth";

        JobUnderTest marked;
        marked.AddElement(element, text, "specified=\"False\"");
        EXPECT_EQ(Ask(marked, feature), By(PublicDocumentSettings, value));

        JobUnderTest other;
        other.AddElement(element, "twaddle");
        EXPECT_NE(Ask(other, feature).value, value);
    }
    JobUnderTest job;
    job.AddElement("outlines-api", "outlines-on", "specified=\"false\"");
    job.AddElement("creator-name-attributes", "windows-pcl5c-driver");
    EXPECT_EQ(Ask(job, FEAT_OUTLINES), UnspecifiedBy(PublicDocumentSettings, VAL_OUTLINES_ON));
    EXPECT_EQ(Ask(job, FEAT_CREATOR_NAME_ATTRIBUTES), UnspecifiedBy(PublicDocumentSettings))
        << "is written, but not read";
}

TEST(FeatureOptionRules, KnowNothingOfOtherFeatures) {
    std::vector<const NativeXmlConfigFeatureEntry*> entries;
    NativeXmlConfigFeatureDictionary::Instance()->GetAllEntries(entries);
    ASSERT_EQ(entries.size(), 127u);
    JobUnderTest job;
    for (const NativeXmlConfigFeatureEntry* const entry : entries) {
        const Answered expected = entry->feature == FEAT_JOB_TYPE        ? By(Rule, 7890)
                                  : entry->feature == FEAT_COVER_OPTIONS ? By(Rule, 7760)
                                  : entry->feature == FEAT_PAGE_LAYOUT   ? UnspecifiedBy(None, 7240)
                                                                         : nothing;
        EXPECT_EQ(Ask(job, entry->feature), expected) << entry->featureEnumString;
    }
    JobUnderTest full;
    for (const int feature : {int{FEAT_COPIES}, 849, 2, 100000, -1}) {
        full.AddAttribute(tagFeatureEnum{feature}, Bytes::FromOption(6000));
        EXPECT_EQ(Ask(full, tagFeatureEnum{feature}), nothing) << feature;
    }
}

// ---- One place after the other

TEST(FeatureOptionRules, AskTheAttributeBytesWhereTheDocumentSettingsHaveNoElement) {
    const auto quality = FEAT_PRINT_QUALITY_LEVEL;
    // text: of the element, if there is one
    const Rows<const char*, const char*, std::optional<Bytes>, Answered> cases{
        {"fast-draft", "", Bytes::FromOption(VAL_QUALITY_PHOTO),
         By(PublicDocumentSettings, VAL_QUALITY_DRAFT)},
        {"fast-draft", "specified='false'", Bytes::FromOption(VAL_QUALITY_PHOTO),
         UnspecifiedBy(PublicDocumentSettings, VAL_QUALITY_DRAFT)},
        {"twaddle", "", Bytes::FromOption(VAL_QUALITY_PHOTO), UnspecifiedBy(PublicDocumentSettings)},
        {nullptr, "", Bytes::FromOption(VAL_QUALITY_PHOTO), By(AttributeBytes, VAL_QUALITY_PHOTO)},
        {nullptr, "", Bytes::FromOption(VAL_QUALITY_PHOTO, false),
         UnspecifiedBy(AttributeBytes, VAL_QUALITY_PHOTO)},
        {nullptr, "", Bytes::FromInteger(3), nothing},
        {nullptr, "", {}, nothing},
    };
    for (const auto& [text, attributes, attribute, expected] : cases) {
        JobUnderTest job;
        if (text != nullptr) job.AddElement("print-quality-level", text, attributes);
        if (attribute) job.AddAttribute(quality, *attribute);
        EXPECT_EQ(Ask(job, quality), expected) << (text ? text : "no element");
    }
}

TEST(FeatureOptionRules, AskTheAttributeBytesWhereTheTicketHasNoKnownOption) {
    for (const tagFeatureEnum feature : {FEAT_COLOR_EFFECTS, FEAT_JOB_IDENTIFICATION}) {
        const std::wstring name = feature == FEAT_COLOR_EFFECTS ? L"PageOutputColor" : L"JobIdentification";
        JobUnderTest job;
        job.AddElement(feature == FEAT_COLOR_EFFECTS ? "color-effects-type" : "odrv-job-identification",
                       "monochrome-grayscale");
        job.AddAttribute(feature, Bytes::FromOption(7777));
        job.ticket.supported.insert(name);
        EXPECT_EQ(Ask(job, feature), By(AttributeBytes, 7777));
        job.ticket.options[name] = L"Twaddle";
        EXPECT_EQ(Ask(job, feature), By(AttributeBytes, 7777));
    }
    JobUnderTest job;
    job.AddAttribute(FEAT_OUTPUT_DESTINATION, Bytes::FromOption(7100));
    job.AddElement("output-bin", "twaddle");
    EXPECT_EQ(Ask(job, FEAT_OUTPUT_DESTINATION), By(AttributeBytes, 7100));
}

TEST(FeatureOptionRules, FoldBeginsWithTheTicket) {
    JobUnderTest job;
    job.AddElement("fold-api", "z-fold-po");
    job.device = {{"fold-api", {}, true, "c-fold-pi"}};
    EXPECT_EQ(Ask(job, FEAT_FINISHING_FOLD), nothing) << "not supported";
    job.ticket.Choose(L"JobBindAllDocuments", L"None");
    EXPECT_EQ(Ask(job, FEAT_FINISHING_FOLD), UnspecifiedBy(PrintTicket));
    job.ticket.options.clear();
    EXPECT_EQ(Ask(job, FEAT_FINISHING_FOLD), By(PublicDocumentSettings, VAL_FINISHING_Z_FOLD_PO));
}

// ---- Required features

TEST(FeatureOptionRules, GiveARequiredFeatureTheFactoryDefault) {
    const std::string name = "print-quality-level";
    const OfferedFeature required{name, {}, true, "standard"};
    const Rows<JobUnderTest::Kind, OfferedFeature, const char*, const char*, Answered> cases{
        {OfJobWithAttributeBytes, required, nullptr, "", By(FactoryDefault, VAL_QUALITY_STANDARD)},
        {OfJob, required, nullptr, "", nothing},
        {OutsideJob, required, nullptr, "", nothing},
        {OfJobWithAttributeBytes, {name, {}, false, "standard"}, nullptr, "", nothing},
        {OfJobWithAttributeBytes, {name, {}, true, ""}, nullptr, "", By(Rule, VAL_UNSPECIFIED)},
        {OfJobWithAttributeBytes, {name, {}, true, "twaddle"}, nullptr, "", By(Rule, VAL_UNSPECIFIED)},
        {OfJobWithAttributeBytes, required, "enhanced", "", By(PublicDocumentSettings, VAL_QUALITY_ENHANCED)},
        {OfJobWithAttributeBytes, required, "enhanced", "specified='false'",
         By(PublicDocumentSettings, VAL_QUALITY_ENHANCED)},
        {OfJobWithAttributeBytes, required, "twaddle", "", By(FactoryDefault, VAL_QUALITY_STANDARD)},
    };
    for (const auto& [kind, feature, text, attributes, expected] : cases) {
        JobUnderTest job;
        job.kind = kind;
        job.device = {feature};
        if (text != nullptr) job.AddElement(name, text, attributes);
        EXPECT_EQ(Ask(job, FEAT_PRINT_QUALITY_LEVEL), expected)
            << static_cast<int>(kind) << feature.factoryDefault << (text ? text : "");
    }
}

// ---- Rules of their own

TEST(FeatureOptionRules, CoverOptionsEndWithNone) {
    const Rows<const char*, const char*, Answered> cases{
        {nullptr, "", By(Rule, VAL_COVER_OPTION_NONE)},
        {"twaddle", "", By(Rule, VAL_COVER_OPTION_NONE)},
        {"cover-front-only", "specified='false'", By(Rule, VAL_COVER_OPTION_NONE)},
        {"cover-front-only", "", By(PublicDocumentSettings, VAL_COVER_FRONT_ONLY)},
    };
    for (const auto& [text, attributes, expected] : cases) {
        JobUnderTest job;
        if (text != nullptr) job.AddElement("cover-options-api", text, attributes);
        EXPECT_EQ(Ask(job, FEAT_COVER_OPTIONS), expected) << (text ? text : "no element");
    }
}

TEST(FeatureOptionRules, JobTypeHangsOnThePasscode) {
    // passcode: null if it is not supported, as where device settings keep it from use
    // required: the factory default of a required feature
    const Rows<const wchar_t*, const char*, const char*, std::optional<int>, const char*, Answered> cases{
        {L"On", "save", "", {}, nullptr, By(PrintTicket, 7891)},
        {L"oN", nullptr, "", {}, nullptr, By(PrintTicket, 7891)},
        {L"Off", "secure-print", "", {}, nullptr, By(PrintTicket, 7890)},
        {L"OFF", nullptr, "", 7891, nullptr, By(PrintTicket, 7890)},
        {L"Off", "save", "", {}, nullptr, By(PublicDocumentSettings, 7895)},
        {L"Off", nullptr, "", {}, "secure-print", By(PrintTicket, 7890)},
        {L"", "secure-print", "", {}, nullptr, By(PublicDocumentSettings, 7891)},
        {nullptr, "secure-print", "", {}, nullptr, By(PublicDocumentSettings, 7891)},
        {nullptr, "none", "", {}, nullptr, By(Rule, 7890)},
        {nullptr, "save", "specified='false'", {}, nullptr, By(Rule, 7890)},
        {nullptr, "twaddle", "", 7895, nullptr, By(Rule, 7890)},
        {nullptr, nullptr, "", {}, nullptr, By(Rule, 7890)},
        {nullptr, nullptr, "", 7904, nullptr, By(Rule, 7890)},
        {nullptr, nullptr, "", 7899, nullptr, By(AttributeBytes, 7899)},
        {nullptr, nullptr, "", {}, "hold-job", By(FactoryDefault, 7902)},
        {nullptr, nullptr, "", 7899, "hold-job", By(AttributeBytes, 7899)},
    };
    for (const auto& row : cases) {
        const auto& [passcode, text, attributes, attribute, required, expected] = row;
        SCOPED_TRACE(&row - cases.data());
        JobUnderTest job;
        job.ticket.options[L"JobPasscode"] = passcode != nullptr ? passcode : L"On";
        if (passcode != nullptr) job.ticket.supported.insert(L"JobPasscode");
        if (text != nullptr) job.AddElement("job-type-api", text, attributes);
        if (attribute) job.AddAttribute(FEAT_JOB_TYPE, Bytes::FromOption(*attribute));
        if (required != nullptr) job.device = {{"job-type-api", {}, true, required}};
        EXPECT_EQ(Ask(job, FEAT_JOB_TYPE), expected);
    }
}

TEST(FeatureOptionRules, SidesMarkedNotSpecifiedAreNobodysChoice) {
    const Rows<const wchar_t*, const char*, const char*, Answered> cases{
        {L"TwoSidedLongEdge", nullptr, "", By(PrintTicket, 5421)},
        {L"TwoSidedLongEdge", "one-sided", "", By(PrintTicket, 5421)},
        {L"TwoSidedLongEdge", "two-sided-long-edge", "specified='false'",
         UnspecifiedBy(PublicDocumentSettings)},
        {L"", "two-sided-short-edge", "", By(PublicDocumentSettings, 5422)},
        {L"", "two-sided-short-edge", "specified='false'", UnspecifiedBy(PublicDocumentSettings)},
        {L"", "TwoSidedShortEdge", "", UnspecifiedBy(PublicDocumentSettings)},
        {L"", nullptr, "", nothing},
        {L"_TwoSidedAny_", "one-sided", "", UnspecifiedBy(PrintTicket)},
        {L"Twaddle", "one-sided", "", UnspecifiedBy(PrintTicket)},
    };
    for (const auto& row : cases) {
        const auto& [option, text, attributes, expected] = row;
        SCOPED_TRACE(&row - cases.data());
        JobUnderTest job;
        job.ticket.Choose(L"JobDuplexAllDocumentsContiguously", option);
        if (text != nullptr) job.AddElement("sides", text, attributes);
        EXPECT_EQ(Ask(job, FEAT_SIDES_IMAGED), expected);
        job.ticket.supported.clear();
        EXPECT_EQ(Ask(job, FEAT_SIDES_IMAGED), nothing);
    }
}

TEST(FeatureOptionRules, StaplePositionsLeaveTheCountToOtherFeatures) {
    const Rows<const wchar_t*, std::vector<std::wstring>, int, int, int> cases{
        {L"StapleTopLeft", {L"None", L"StapleTopLeft", L"StapleTopRight"}, 5001, 8023, 5001},
        {L"StapleTopLeft", {L"None", L"StapleTopLeft"}, 8061, 8023, 5001},
        {L"StapleTopLeft", {}, 8061, 8023, 5001},
        {L"StapleDualLeft", {L"StapleTopRight"}, 5001, 5001, 8031},
        {L"StapleDualLeft", {L"StapleTopLeft", L"StapleBottomRight"}, 8062, 5001, 8031},
        {L"FourStaples", {}, 8063, 5001, 5001},
        {L"MultipleStaples", {}, 8064, 5001, 5001},
        {L"None", {}, 5001, 5001, 5001},
    };
    for (const auto& [option, offered, staple, oneStaple, twoStaples] : cases) {
        JobUnderTest job;
        job.ticket.Choose(L"JobStapleAllDocuments", option);
        job.ticket.offeredOptions[L"JobStapleAllDocuments"] = offered;
        EXPECT_EQ(Ask(job, FEAT_FINISHING_STAPLE).value, staple);
        EXPECT_EQ(Ask(job, FEAT_FINISHING_1_STAPLE).value, oneStaple);
        EXPECT_EQ(Ask(job, FEAT_FINISHING_2_STAPLES).value, twoStaples);
    }
}

TEST(FeatureOptionRules, PageLayoutIsOnePageUnlessTheTicketKnowsBetter) {
    JobUnderTest job;
    EXPECT_EQ(Ask(job, FEAT_PAGE_LAYOUT), UnspecifiedBy(None, 7240));
    job.ticket.Choose(L"DocumentNUp", L"3");
    EXPECT_EQ(Ask(job, FEAT_PAGE_LAYOUT), By(Rule, 7240));
    job.ticket.Choose(L"DocumentNUp", L"16");
    EXPECT_EQ(Ask(job, FEAT_PAGE_LAYOUT), By(PrintTicket, VAL_PAGE_LAYOUT_NUP_16));
    job.ticket.Choose(L"JobNUpAllDocumentsContiguously", L"4");
    EXPECT_EQ(Ask(job, FEAT_PAGE_LAYOUT), By(PrintTicket, VAL_PAGE_LAYOUT_NUP_4));
}

TEST(FeatureOptionRules, LetFailuresOfTheTicketPass) {
    JobUnderTest job;
    job.ticket.Choose(L"PageOrientation", L"Landscape");
    job.ticket.fails = true;
    EXPECT_THROW((void)job.Access().GetOptionValue(FEAT_MS_ORIENTATION), std::runtime_error);
}

} // namespace
