#include "FilterUtilities/FeatureAccess/JobUnderTest.h"
#include "Support/Growth.h"
#include "Support/Rows.h"
#include "Support/SkipOnWindows.h"

#include <Com/FaultInjection.h>
#include <LowLevelFacilities/Failures/CPExceptionUnknownKeyRequest.h>

namespace {

using namespace DataModelIds;

TEST(DataModelLessFeatureAccess, AsksTheTicketForPublishedFeaturesAndTheDeviceForPrivateOnes) {
    JobUnderTest job;
    job.device = {
        {"outlines-api"},
        {"odrv-ms-orientation"},
        {"media-col", {}, false, "", {{"media-weight-metric", {}, false, "", {{"sides"}}}, {"media-color"}}}};
    job.ticket.supported = {L"PageMediaSize", L"_outlinesapi_"};
    const DataModelLessFeatureAccess& access = job.Access();
    EXPECT_TRUE(access.IsSupportedFeature(FEAT_OUTLINES));
    EXPECT_FALSE(access.IsSupportedFeature(FEAT_MS_ORIENTATION));
    EXPECT_FALSE(access.IsSupportedFeature(FEAT_BOOKLET));
    EXPECT_THROW((void)access.IsSupportedFeature(FEAT_ANNOTATION_NAME), CPExceptionUnknownKeyRequest);
    EXPECT_THROW((void)access.GetFactoryDefaultOptionValue(tagFeatureEnum{849}),
                 CPExceptionUnknownKeyRequest);

    EXPECT_TRUE(access.IsSupportedFeature(FEAT_MEDIA_COL, FEAT_MEDIA_WEIGHT));
    EXPECT_FALSE(access.IsSupportedFeature(FEAT_MEDIA_COL, FEAT_OUTLINES)) << "stands elsewhere";
    EXPECT_FALSE(access.IsSupportedFeature(FEAT_MEDIA_COL, FEAT_MEDIA_COLOR)) << "is the ticket's to know";
    EXPECT_TRUE(access.IsSupportedFeature(FEAT_MEDIA_COL, FEAT_MEDIA_WEIGHT, FEAT_SIDES_IMAGED));
    EXPECT_FALSE(access.IsSupportedFeature(FEAT_MEDIA_COL, FEAT_MEDIA_COL, FEAT_SIDES_IMAGED));
    job.ticket.supported.insert(L"PageMediaColor");
    EXPECT_TRUE(access.IsSupportedFeature(FEAT_MEDIA_COL, FEAT_MEDIA_COLOR));

    for (const auto member : {FEAT_ANNOTATION_NAME, FEAT_ANNOTATION_MEMBER_895, FEAT_ANNOTATION_ELEMENT_COL})
        EXPECT_TRUE(access.IsSupportedFeature(FEAT_ANNOTATION_COL, member));
    EXPECT_FALSE(access.IsSupportedFeature(FEAT_ANNOTATION_COL, FEAT_OUTLINES));
}

TEST(DataModelLessFeatureAccess, KnowsTrayAndLayoutByEitherOfTwoTicketFeatures) {
    const Rows<const wchar_t*, bool, bool> cases{{L"PageInputBin", true, false},
                                                 {L"JobInputBin", true, false},
                                                 {L"JobNUpAllDocumentsContiguously", false, true},
                                                 {L"DocumentNUp", false, true}};
    for (const auto& [name, isTray, isLayout] : cases) {
        JobUnderTest job;
        job.ticket.supported = {name};
        EXPECT_EQ(job.Access().IsSupportedFeature(FEAT_INPUT_TRAY), isTray);
        EXPECT_EQ(job.Access().IsSupportedFeature(FEAT_MEDIA_COL, FEAT_INPUT_TRAY), isTray);
        EXPECT_EQ(job.Access().IsSupportedFeature(FEAT_PAGE_LAYOUT), isLayout);
    }
}

TEST(DataModelLessFeatureAccess, WritesAnEmptyDocumentIntoATicketThatHasNone) {
    JobUnderTest job;
    job.ticket.publicSettings = " \n";
    (void)Ask(job, FEAT_MS_ORIENTATION);
    EXPECT_EQ(job.ticket.publicSettings, " \n") << "nobody asked for document settings";
    (void)Ask(job, FEAT_BOOKLET);
    EXPECT_NE(job.ticket.publicSettings.find("<OrvelPublicDocSettings cpss-version=\"2.07\""),
              std::string::npos);

    JobUnderTest readOnly;
    readOnly.ticket.isReadOnly = true;
    readOnly.AddAttribute(FEAT_BOOKLET, AttributeBytesValue::FromOption(VAL_BOOKLET_ON));
    EXPECT_EQ(Ask(readOnly, FEAT_BOOKLET).source, FeatureValueSource::AttributeBytes);
}

TEST(DataModelLessFeatureAccess, ReadsTheDocumentOnceAndTakesABrokenOneForNone) {
    JobUnderTest job;
    job.AddElement("booklet-api", "booklet-on");
    for (int time = 0; time < 3; ++time)
        EXPECT_EQ(Ask(job, FEAT_BOOKLET).value, VAL_BOOKLET_ON);
    EXPECT_EQ(job.ticket.settingsReads, 1);

    const std::string whole = job.ticket.publicSettings;
    JobUnderTest broken;
    broken.AddAttribute(FEAT_BOOKLET, AttributeBytesValue::FromOption(VAL_BOOKLET_OFF));
    broken.ticket.publicSettings = whole.substr(0, whole.size() - 3);
    const std::string before = broken.ticket.publicSettings;
    for (int time = 0; time < 3; ++time)
        EXPECT_EQ(Ask(broken, FEAT_BOOKLET).source, FeatureValueSource::AttributeBytes);
    EXPECT_EQ(broken.ticket.publicSettings, before) << "it is not for reading to repair";
    OvPlatform::FaultInjection::CountCalls();
    EXPECT_EQ(Ask(broken, FEAT_BOOKLET).source, FeatureValueSource::AttributeBytes);
    EXPECT_EQ(OvPlatform::FaultInjection::CallCount(), 0) << "it is not parsed for each question";
    OvPlatform::FaultInjection::Reset();
    broken.ticket.publicSettings = whole;
    EXPECT_EQ(Ask(broken, FEAT_BOOKLET).source, FeatureValueSource::PublicDocumentSettings);
}

TEST(DataModelLessFeatureAccess, StandsDocumentsThatNobodyWouldWrite) {
    const std::string on = "<booklet-api>booklet-on</booklet-api>";
    const auto nested = [&](std::size_t depth) {
        const auto level = [](const char* tag) { return [=](std::size_t) { return std::string(tag); }; };
        return Times(depth, level("<a>")) + on + Times(depth, level("</a>"));
    };
    const std::string megabytes(10 << 20, 'x');
    const Rows<const char*, std::string, int> cases{
        {"another root", "<AnotherRoot>" + on + "</AnotherRoot>", VAL_BOOKLET_ON},
        {"only the element", on, VAL_BOOKLET_OFF},
        {"nested too deeply", nested(100000), VAL_BOOKLET_OFF},
        {"10 MB that are no XML", "<" + megabytes, VAL_BOOKLET_OFF},
        {"10 MB before the element", "<a><b>" + megabytes + "</b>" + on + "</a>", VAL_BOOKLET_ON},
        {"with a DTD", "<!DOCTYPE a [<!ENTITY e 'booklet-on'>]><a><booklet-api>&e;</booklet-api></a>",
         VAL_BOOKLET_OFF},
    };
    for (const auto& [name, settings, value] : cases) {
        // It reads no text of that length, and takes documents with a DTD.
        if (IsWine() && (settings.starts_with("<a><b>") || settings.starts_with("<!DOCTYPE"))) continue;
        JobUnderTest job;
        job.ticket.publicSettings = settings;
        job.AddAttribute(FEAT_BOOKLET, AttributeBytesValue::FromOption(VAL_BOOKLET_OFF));
        EXPECT_EQ(Ask(job, FEAT_BOOKLET).value, value) << name;
    }
}

// A document that could not be read once, for want of memory, say, is no broken one.
TEST(DataModelLessFeatureAccess, ReadsTheDocumentAgainAfterAFailure) {
    int failures = 0;
    for (LONG number = 1;; ++number) {
        JobUnderTest job;
        job.AddElement("booklet-api", "booklet-on");
        (void)job.Access();
        bool isOver = false;
        {
            const OvPlatform::FaultInjectionScope scope(number);
            if (job.Access().GetOptionValue(FEAT_BOOKLET).GetValue() != VAL_BOOKLET_ON) ++failures;
            isOver = !OvPlatform::FaultInjection::HasFailed();
        }
        EXPECT_EQ(Ask(job, FEAT_BOOKLET).value, VAL_BOOKLET_ON) << number;
        if (isOver) break;
    }
    EXPECT_GT(failures, 2);
}

TEST(DataModelLessFeatureAccess, NamesFeaturesAndValues) {
    JobUnderTest job;
    job.device = {{"hole-punch-api", {"4-hole-punch", "twaddle", "2-hole-punch"}},
                  {"booklet-api", {}, false, "booklet-off"},
                  {"outlines-api", {}, false, "twaddle"}};
    const DataModelLessFeatureAccess& access = job.Access();
    EXPECT_EQ(access.GetFactoryDefaultOptionValue(FEAT_BOOKLET), SimpleOptionValue(VAL_BOOKLET_OFF));
    EXPECT_EQ(access.GetFactoryDefaultOptionValue(FEAT_OUTLINES), SimpleOptionValue());
    EXPECT_EQ(access.GetFactoryDefaultOptionValue(FEAT_SIDES_IMAGED), SimpleOptionValue());

    EXPECT_EQ(access.GetFeatureCpssName(FEAT_SIDES_IMAGED), CXString(L"sides"));
    EXPECT_EQ(access.GetFeaturePrintTicketName(FEAT_SIDES_IMAGED),
              CXString(L"JobDuplexAllDocumentsContiguously"));
    EXPECT_EQ(access.GetFeatureEnumNameForDisplay(FEAT_SIDES_IMAGED), "DataModelIds::FEAT_SIDES_IMAGED");
    const tagFeatureEnum unknown{849};
    EXPECT_TRUE(access.GetFeatureCpssName(unknown).IsEmpty());
    EXPECT_TRUE(access.GetFeaturePrintTicketName(unknown).IsEmpty());
    EXPECT_TRUE(access.GetFeatureEnumNameForDisplay(unknown).isEmpty());
    EXPECT_TRUE(access.GetSupportedValueEnums(unknown, false).empty());

    const tagFeatureEnum punch = FEAT_FINISHING_HOLE_PUNCH;
    const tagValueEnum two = VAL_FINISHING_2_HOLE_PUNCH;
    EXPECT_EQ(access.GetSupportedValueEnums(punch, false), (std::vector{VAL_FINISHING_4_HOLE_PUNCH, two}));
    EXPECT_EQ(access.GetValueCppsNameFromFeatureAndValueEnums(punch, two), "2-hole-punch");
    EXPECT_TRUE(access.GetValueCppsNameFromFeatureAndValueEnums(FEAT_BOOKLET, two).isEmpty());
    EXPECT_EQ(access.GetValueEnumFromFeatureAndName(punch, "2-hole-punch"), two);
    EXPECT_EQ(access.GetValueEnumFromFeatureAndName(FEAT_BOOKLET, "2-hole-punch"), VAL_UNSPECIFIED);
}

} // namespace
