#include "FilterUtilities/FeatureAccess/JobUnderTest.h"
#include "Support/Rows.h"

namespace {

using namespace DataModelIds;
using enum FeatureValueSource;
using enum JobUnderTest::Kind;
using Bytes = AttributeBytesValue;

// ---- Rules of one place

TEST(FeatureOptionRules, TakeOptionsOfTheTicket) {
    const Rows<tagFeatureEnum, std::wstring, std::wstring, int> cases{
        {FEAT_MS_ORIENTATION, L"PageOrientation", L"Landscape", 5011},
        {FEAT_COLOR_EFFECTS, L"PageOutputColor", L"Monochrome", 5971},
        {FEAT_MARGINS, L"PageBorderless", L"None", 8010},
        {FEAT_FINISHING_2_STAPLES, L"JobStapleAllDocuments", L"StapleDualTop", 8032},
        {FEAT_FINISHING_FOLD, L"JobBindAllDocuments", L"FoldLetter", 8040},
        {FEAT_JOB_IDENTIFICATION, L"JobIdentification", L"JobIdCustomBanner", 10343},
        {FEAT_MS_PIN_PRINTING, L"JobPasscode", L"Off", 10825},
        {FEAT_PAGE_LAYOUT, L"JobNUpAllDocumentsContiguously", L"6", 7243},
        {FEAT_SIDES_IMAGED, L"JobDuplexAllDocumentsContiguously", L"TwoSidedShortEdge", 5422},
    };
    for (const auto& [feature, ticketFeature, option, value] : cases) {
        SCOPED_TRACE(feature);
        JobUnderTest job;
        job.ticket.Choose(ticketFeature, option);
        EXPECT_EQ(Ask(job, feature), By(PrintTicket, value));
        job.ticket.options[ticketFeature] = option + L" ";
        EXPECT_NE(Ask(job, feature).value, value);
        job.ticket.Choose(ticketFeature, option);
        job.ticket.supported.clear();
        EXPECT_FALSE(Ask(job, feature).isSpecified) << "of a feature that is not supported";
    }
}

TEST(FeatureOptionRules, TakeTextsOfTheDocumentSettings) {
    const Rows<tagFeatureEnum, std::string, const char*, int> cases{
        {FEAT_OUTLINES, "outlines-api", "outlines-off", 7611},
        {FEAT_FINISHING_CENTER_STAPLE, "center-staple-api", "center-staples-r", 8029},
        {FEAT_FINISHING_BOOKLET, "booklet-finishing-api", "booklet-fold-staple", 8059},
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
        job.AddElement("collection", "<" + element + ">" + text + "</" + element + ">");
        EXPECT_EQ(Ask(job, feature), By(PublicDocumentSettings, value)) << "at any depth";
    }
    JobUnderTest job;
    job.AddElement("outlines-api", "outlines-on", "specified=\"false\"");
    job.AddElement("creator-name-attributes", "windows-pcl5c-driver");
    job.AddElement("hold-for-authentication", "user-id", "specified=\"False\"");
    EXPECT_EQ(Ask(job, FEAT_OUTLINES), UnspecifiedBy(PublicDocumentSettings, VAL_OUTLINES_ON));
    EXPECT_EQ(Ask(job, FEAT_CREATOR_NAME_ATTRIBUTES), UnspecifiedBy(PublicDocumentSettings))
        << "is written, but not read";
    EXPECT_TRUE(Ask(job, FEAT_HOLD_FOR_AUTHENTICATION).isSpecified) << "case counts";
}

TEST(FeatureOptionRules, KnowNothingOfOtherFeatures) {
    JobUnderTest job;
    for (const int feature : {int{FEAT_COPIES}, 849, 2, 100000, -1}) {
        job.AddAttribute(tagFeatureEnum{feature}, Bytes::FromOption(6000));
        EXPECT_EQ(Ask(job, tagFeatureEnum{feature}), nothing) << feature;
    }
}

// ---- One place after the other

TEST(FeatureOptionRules, AskThePlacesInTheirOrder) {
    const auto quality = FEAT_PRINT_QUALITY_LEVEL;
    const auto fold = FEAT_FINISHING_FOLD;
    const auto cover = FEAT_COVER_OPTIONS;
    const auto sides = FEAT_SIDES_IMAGED;
    const char unspecified[] = "specified='false'";
    const Bytes photo = Bytes::FromOption(VAL_QUALITY_PHOTO);
    const Rows<tagFeatureEnum, Given, Answered> cases{
        // The attribute bytes have the last word, where the settings have no element.
        {quality, {.text = "fast-draft", .attribute = photo}, By(PublicDocumentSettings, VAL_QUALITY_DRAFT)},
        {quality,
         {.text = "fast-draft", .mark = unspecified, .attribute = photo},
         UnspecifiedBy(PublicDocumentSettings, VAL_QUALITY_DRAFT)},
        {quality, {.text = "twaddle", .attribute = photo}, UnspecifiedBy(PublicDocumentSettings)},
        {quality, {.attribute = photo}, By(AttributeBytes, VAL_QUALITY_PHOTO)},
        {quality,
         {.attribute = Bytes::FromOption(VAL_QUALITY_PHOTO, false)},
         UnspecifiedBy(AttributeBytes, VAL_QUALITY_PHOTO)},
        {quality, {.attribute = Bytes::FromInteger(3)}, nothing},
        {FEAT_COLOR_EFFECTS,
         {.option = L"Twaddle", .text = "monochrome-grayscale", .attribute = Bytes::FromOption(7777)},
         By(AttributeBytes, 7777)},
        {FEAT_OUTPUT_DESTINATION,
         {.text = "mailbox-10", .attribute = Bytes::FromOption(7100)},
         By(AttributeBytes, 7100)},
        // A required feature has a value.
        {quality, {.required = "standard"}, By(FactoryDefault, VAL_QUALITY_STANDARD)},
        {quality, {.required = "twaddle"}, By(Rule, VAL_UNSPECIFIED)},
        {quality,
         {.text = "enhanced", .mark = unspecified, .required = "standard"},
         By(PublicDocumentSettings, VAL_QUALITY_ENHANCED)},
        {quality, {.text = "twaddle", .required = "standard"}, By(FactoryDefault, VAL_QUALITY_STANDARD)},
        // Folding begins with the ticket.
        {fold, {.text = "z-fold-po", .required = "c-fold-pi"}, nothing},
        {fold, {.option = L"None", .text = "z-fold-po", .required = "c-fold-pi"}, UnspecifiedBy(PrintTicket)},
        {fold, {.option = L"", .text = "z-fold-po"}, By(PublicDocumentSettings, VAL_FINISHING_Z_FOLD_PO)},
        // Cover options end with none.
        {cover, {}, By(Rule, VAL_COVER_OPTION_NONE)},
        {cover, {.text = "cover-front-only", .mark = unspecified}, By(Rule, VAL_COVER_OPTION_NONE)},
        {cover, {.text = "cover-front-only"}, By(PublicDocumentSettings, VAL_COVER_FRONT_ONLY)},
        // Sides that are marked are nobody's choice.
        {sides, {.text = "one-sided"}, nothing},
        {sides, {.option = L"TwoSidedLongEdge", .text = "one-sided"}, By(PrintTicket, 5421)},
        {sides,
         {.option = L"TwoSidedLongEdge", .text = "two-sided-long-edge", .mark = unspecified},
         UnspecifiedBy(PublicDocumentSettings)},
        {sides, {.option = L"", .text = "two-sided-short-edge"}, By(PublicDocumentSettings, 5422)},
        {sides,
         {.option = L"", .text = "two-sided-short-edge", .mark = unspecified},
         UnspecifiedBy(PublicDocumentSettings)},
        {sides, {.option = L"_TwoSidedAny_", .text = "one-sided"}, UnspecifiedBy(PrintTicket)},
    };
    for (const auto& row : cases) {
        const auto& [feature, given, expected] = row;
        JobUnderTest job;
        job.Put(feature, given);
        EXPECT_EQ(Ask(job, feature), expected) << &row - cases.data();
    }
    JobUnderTest outside;
    outside.kind = OutsideJob;
    outside.Put(quality, {.required = "standard"});
    EXPECT_EQ(Ask(outside, quality), nothing);
}

// ---- Rules of their own

TEST(FeatureOptionRules, JobTypeHangsOnThePasscode) {
    const Bytes proof = Bytes::FromOption(7899);
    // passcode: null if it is not supported, as where device settings keep it from use
    const Rows<const wchar_t*, Given, Answered> cases{
        {L"On", {.text = "save"}, By(PrintTicket, 7891)},
        {L"Off", {.text = "secure-print"}, By(PrintTicket, 7890)},
        {L"Off", {.text = "save"}, By(PublicDocumentSettings, 7895)},
        {L"Off", {.required = "secure-print"}, By(PrintTicket, 7890)},
        {L"", {.text = "secure-print"}, By(PublicDocumentSettings, 7891)},
        {nullptr, {.text = "secure-print"}, By(PublicDocumentSettings, 7891)},
        {nullptr, {.text = "none"}, By(Rule, 7890)},
        {nullptr, {.text = "twaddle"}, By(Rule, 7890)},
        {nullptr, {.text = "twaddle", .required = "hold-job"}, By(PublicDocumentSettings, 7890)},
        {nullptr, {.attribute = Bytes::FromOption(7904)}, By(Rule, 7890)},
        {nullptr, {.required = "hold-job"}, By(FactoryDefault, 7902)},
        {nullptr, {.attribute = proof, .required = "hold-job"}, By(AttributeBytes, 7899)},
    };
    for (const auto& row : cases) {
        const auto& [passcode, given, expected] = row;
        JobUnderTest job;
        job.ticket.options[L"JobPasscode"] = passcode != nullptr ? passcode : L"On";
        if (passcode != nullptr) job.ticket.supported.insert(L"JobPasscode");
        job.Put(FEAT_JOB_TYPE, given);
        EXPECT_EQ(Ask(job, FEAT_JOB_TYPE), expected) << &row - cases.data();
    }
}

TEST(FeatureOptionRules, StaplePositionsLeaveTheCountToOtherFeatures) {
    const Rows<const wchar_t*, std::vector<std::wstring>, int, int, int> cases{
        {L"StapleTopLeft", {L"None", L"StapleTopLeft", L"StapleTopRight"}, 5001, 8023, 5001},
        {L"StapleTopLeft", {L"None", L"StapleTopLeft"}, 8061, 8023, 5001},
        {L"StapleDualLeft", {L"StapleTopRight"}, 5001, 5001, 8031},
        {L"StapleDualLeft", {L"StapleTopLeft", L"StapleBottomRight"}, 8062, 5001, 8031},
        {L"FourStaples", {}, 8063, 5001, 5001},
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

} // namespace
