#include "FilterUtilities/FeatureAccess/JobUnderTest.h"
#include "Support/AttributeLists.h"
#include "Support/Rows.h"

#include <Encryption/DataEncrypter.h>
#include <LowLevelFacilities/Failures/CPExceptionUnknownKeyRequest.h>

#include <iomanip>
#include <sstream>

namespace {

using namespace DataModelIds;
using enum FeatureValueSource;
using enum JobUnderTest::Kind;
using Bytes = AttributeBytesValue;

Answered AskInMedia(JobUnderTest& job, tagFeatureEnum feature) {
    FeatureValueSource source{};
    const SimpleOptionValue value = job.Access().GetOptionValueWithContext(FEAT_MEDIA_COL, feature, source);
    EXPECT_EQ(value, job.Access().GetOptionValueWithContext(FEAT_MEDIA_COL, feature));
    return {value.IsSpecified(), value.GetValue(), source};
}

Answered AskMediaSize(JobUnderTest& job) {
    FeatureValueSource source{};
    const SimpleOptionValue value = job.Access().GetEffectiveJobLevelMediaSize(source);
    EXPECT_EQ(value, job.Access().GetEffectiveJobLevelMediaSize());
    return {value.IsSpecified(), value.GetValue(), source};
}

Bytes Collection(std::initializer_list<std::pair<LONG, Bytes>> members) {
    return Bytes::FromCollection(Attributes(members));
}

// ---- Media

TEST(EffectiveValues, ReadMediaByPublishedAndPrivateWords) {
    const Rows<const wchar_t*, const wchar_t*, tagFeatureEnum, int> cases{
        {L"PageMediaColor", L"Blue", FEAT_MEDIA_COLOR, 6754},
        {L"PageMediaColor", L"blue", FEAT_MEDIA_COLOR, 6754},
        {L"PageMediaColor", L"BLUE", FEAT_MEDIA_COLOR, 5001},
        {L"PageMediaColor", L"media-color-unspecified", FEAT_MEDIA_COLOR, 5001},
        {L"PageMediaType", L"HeavyweightPaper", FEAT_EFFECTIVE_MEDIA_TYPE, 6807},
        {L"PageMediaType", L"stationery-heavyweight", FEAT_EFFECTIVE_MEDIA_TYPE, 6807},
        {L"PageInputBin", L"AutoSelect", FEAT_INPUT_TRAY, 7165},
        {L"JobInputBin", L"tray-2", FEAT_INPUT_TRAY, 7154},
        {L"JobInputBin", L"tray-10", FEAT_INPUT_TRAY, 5001},
    };
    for (const auto& [ticketFeature, word, feature, value] : cases) {
        SCOPED_TRACE(word);
        JobUnderTest job;
        EXPECT_EQ(AskInMedia(job, feature), nothing) << "not supported";
        job.ticket.Choose(ticketFeature, word);
        EXPECT_EQ(AskInMedia(job, feature),
                  value != VAL_UNSPECIFIED ? By(PrintTicket, value) : UnspecifiedBy(PrintTicket));
        EXPECT_FALSE(job.Access().GetOptionValueWithContext(FEAT_FRONT_COVER, feature).IsSpecified());
    }
}

TEST(EffectiveValues, PreferThePagesTrayToTheJobs) {
    JobUnderTest job;
    job.ticket.Choose(L"JobInputBin", L"tray-2");
    job.ticket.supported.insert(L"PageInputBin");
    EXPECT_EQ(AskInMedia(job, FEAT_INPUT_TRAY), nothing) << "the page's bin is supported, and has no option";
    job.ticket.Choose(L"PageInputBin", L"tray-1");
    EXPECT_EQ(AskInMedia(job, FEAT_INPUT_TRAY), By(PrintTicket, VAL_INPUT_TRAY_1));
}

TEST(EffectiveValues, TakeTheMediaSizeFromTheTicket) {
    const std::pair<const wchar_t*, int> cases[] = {
        {L"NorthAmericaLetter", 6430},  {L"NorthAmerica11x17", 5001},
        {L"JapanHagakiPostcard", 6449}, {L"iso-b5-envelope-b5", 6446},
        {L"CustomMediaSize", 6517},     {L"pb-trim-custom", 10322},
        {L"psk:ISOA4", 5001},           {L"isoa4", 5001},
    };
    for (const auto& [word, value] : cases) {
        SCOPED_TRACE(word);
        JobUnderTest job;
        EXPECT_EQ(AskMediaSize(job), nothing);
        job.ticket.Choose(L"PageMediaSize", word);
        EXPECT_EQ(AskMediaSize(job),
                  value != VAL_UNSPECIFIED ? By(PrintTicket, value) : UnspecifiedBy(PrintTicket));
        EXPECT_EQ(AskInMedia(job, FEAT_MEDIA_SIZE_OPTION), nothing);
    }
}

TEST(EffectiveValues, TakeTheMediaSizeToFitFromTheAttributeBytes) {
    constexpr char element[] = "fit-to-new-size-print-ticket-keyword-api";
    for (const char* mark : {"", "specified='true'", "specified='false'"}) {
        SCOPED_TRACE(mark);
        const bool isSpecified = std::string(mark) != "specified='false'";
        JobUnderTest job;
        job.ticket.Choose(L"PageMediaSize", L"ISOA3");
        job.AddElement(element, "NorthAmericaLegal", mark);
        EXPECT_EQ(AskMediaSize(job), isSpecified ? nothing : By(PrintTicket, 6435)) << "no attribute bytes";
        job.AddAttribute(FEAT_MEDIA_SIZE_OPTION, Bytes::FromOption(6430)); // outside the collection
        EXPECT_EQ(AskMediaSize(job), isSpecified ? nothing : By(PrintTicket, 6435));
        job.AddAttribute(FEAT_MEDIA_COL, Collection({{FEAT_MEDIA_SIZE_OPTION, Bytes::FromOption(6436)}}));
        EXPECT_EQ(AskMediaSize(job), isSpecified ? By(AttributeBytes, 6436) : By(PrintTicket, 6435));
    }
}

TEST(EffectiveValues, TurnTheSheetForBookletsAndLayoutsThatNeedIt) {
    const Rows<const wchar_t*, const wchar_t*, std::optional<Bytes>, int> cases{
        {L"", L"", {}, 5010},
        {L"ReversePortrait", L"", {}, 5010},
        {L"Landscape", L"", Bytes::FromOption(VAL_BOOKLET_ON), 5010},
        {L"Landscape", L"", Bytes::FromOption(VAL_BOOKLET_ON, false), 5011}, // nobody chose it
        {L"Portrait", L"6", {}, 5011},
        {L"Landscape", L"4", {}, 5011},
    };
    for (const auto& row : cases) {
        const auto& [orientation, pages, booklet, expected] = row;
        JobUnderTest job;
        job.outputWidth = Dimension(100, Dimension::Millimeter);
        job.outputHeight = Dimension(120, Dimension::Millimeter);
        job.ticket.Choose(L"PageOrientation", orientation);
        job.ticket.Choose(L"DocumentNUp", pages);
        if (booklet) job.AddAttribute(FEAT_BOOKLET, *booklet);
        EXPECT_EQ(job.Access().GetEffectiveOrientation(), expected) << &row - cases.data();
    }
    JobUnderTest tall;
    tall.outputHeight = Dimension(20, Dimension::Inch);
    tall.ticket.Choose(L"DocumentNUp", L"6");
    EXPECT_EQ(tall.Access().GetEffectiveOrientation(), VAL_MS_ORIENTATION_PORTRAIT) << "by the sheet";
}

TEST(EffectiveValues, GiveTheOutputSizeForTheJobOnly) {
    JobUnderTest job;
    Dimension width(1, Dimension::Point);
    Dimension height(2, Dimension::Point);
    EXPECT_FALSE(job.Access().GetOutputSize(FEAT_MEDIA_COL, width, height));
    EXPECT_FALSE(job.Access().GetOutputSize(FEAT_WHOLE_JOB, 0, width, height));
    EXPECT_EQ(width.GetUnits(), Dimension::Point) << "untouched";
    EXPECT_TRUE(job.Access().GetOutputSize(FEAT_WHOLE_JOB, width, height));
    EXPECT_EQ(height.GetValue(Dimension::Inch), Number(11));
    EXPECT_TRUE(job.Access().GetOutputSize(height, width)); // the first is the width
    EXPECT_EQ(height.GetValue(Dimension::TenthOfInch), Number(85));
}

// ---- Integers and dimensions

// Zero, and not VAL_UNSPECIFIED, where nobody says anything.
struct Integer : Answered {
    explicit Integer(bool isSpecified = false, int value = 0, FeatureValueSource source = None)
        : Answered{isSpecified, value, source} {}
};

Integer AskInteger(JobUnderTest& job, tagFeatureEnum feature) {
    Integer answer;
    int value = -1;
    answer.isSpecified = job.Access().GetIntegerValue(feature, answer.value, answer.source);
    EXPECT_EQ(job.Access().GetIntegerValue(feature, value), answer.isSpecified);
    EXPECT_EQ(job.Access().GetIntegerValue(FEAT_WHOLE_JOB, feature, value), answer.isSpecified);
    EXPECT_EQ(value, answer.value);
    return answer;
}

OfferedFeature OfferedInteger(const char* name, const char* factoryDefault, bool isRequired) {
    OfferedFeature feature{name, {}, isRequired, factoryDefault};
    feature.isInteger = true;
    return feature;
}

TEST(EffectiveValues, ReadAdjustmentsFromTheAttributeBytesAndEnforceThem) {
    const std::optional<Bytes> absent;
    const Rows<const char*, std::optional<Bytes>, bool, JobUnderTest::Kind, Integer> cases{
        {"nothing", absent, false, OfJobWithAttributeBytes, Integer{}},
        {"required", absent, true, OfJobWithAttributeBytes, Integer{true, 25, FactoryDefault}},
        {"required outside a job", absent, true, OutsideJob, Integer{}},
        {"an attribute", Bytes::FromInteger(-40), true, OutsideJob, Integer{true, -40, AttributeBytes}},
        {"zero", Bytes::FromInteger(0), true, OfJobWithAttributeBytes, Integer{true, 0, AttributeBytes}},
        {"no attribute bytes", Bytes::FromInteger(-40), true, OfJob, Integer{}},
        // The value is not 0, and stays.
        {"both", Bytes::FromInteger(12, false), true, OfJobWithAttributeBytes,
         Integer{true, 12, AttributeBytes}},
        {"an option", Bytes::FromOption(5), true, OfJobWithAttributeBytes, Integer{true, 25, FactoryDefault}},
    };
    for (const auto& [what, attribute, isRequired, kind, expected] : cases) {
        SCOPED_TRACE(what);
        JobUnderTest job;
        job.kind = kind;
        job.AddAttribute(FEAT_SIDES_IMAGED, Bytes::FromOption(VAL_SIDES_ONE_SIDED));
        if (attribute) job.AddAttribute(FEAT_LIGHTNESS, *attribute);
        job.device = {OfferedInteger("adjust-lightness", "25", isRequired)};
        EXPECT_EQ(AskInteger(job, FEAT_LIGHTNESS), expected);
    }
    JobUnderTest job;
    job.AddAttribute(FEAT_LIGHTNESS, Bytes::FromInteger(3));
    job.AddAttribute(FEAT_X1_IMAGE_SHIFT, Bytes::FromInteger(3));
    job.device = {OfferedInteger("x-side1-image-shift", "25", true)};
    EXPECT_EQ(AskInteger(job, FEAT_LIGHTNESS), Integer()) << "the device does not have it";
    EXPECT_EQ(AskInteger(job, FEAT_X1_IMAGE_SHIFT), Integer()) << "no integer of a job";
}

TEST(EffectiveValues, ReadTheMediaWeightFromTheDocumentAndThenFromTheCollection) {
    // text: null for no element
    const Rows<const char*, const char*, Integer> cases{
        {nullptr, "", Integer(true, 120, AttributeBytes)},
        {"79.5", "", Integer(true, 79, PublicDocumentSettings)}, // just below a half is added
        {"79.51", "", Integer(true, 80, PublicDocumentSettings)},
        {"80", "specified='false'", Integer(false, 0, PublicDocumentSettings)},
    };
    for (const auto& [text, mark, expected] : cases) {
        SCOPED_TRACE(text ? text : "no element");
        JobUnderTest job;
        job.AddAttribute(FEAT_MEDIA_COL, Collection({{FEAT_MEDIA_WEIGHT, Bytes::FromInteger(120)}}));
        if (text) job.AddElement("media-weight-metric", text, mark);
        Integer answer(false, -1);
        answer.isSpecified =
            job.Access().GetIntegerValue(FEAT_MEDIA_COL, FEAT_MEDIA_WEIGHT, answer.value, answer.source);
        EXPECT_EQ(answer, expected);
        int value = -1;
        EXPECT_FALSE(job.Access().GetIntegerValue(FEAT_FRONT_COVER, FEAT_MEDIA_WEIGHT, value));
        EXPECT_EQ(value, 0);
    }
}

TEST(EffectiveValues, ReadDimensionsAndTheirFactoryDefaults) {
    const Bytes twoMillimeters = Bytes::FromDimension(Dimension(2, Dimension::Millimeter));
    const OfferedFeature shift = OfferedInteger("x-side1-image-shift", "350", true);
    const Rows<std::vector<OfferedFeature>, std::optional<Bytes>, bool, int> cases{
        {{}, twoMillimeters, false, 0},
        {{shift}, {}, true, 3500}, // the device's are hundredths of a millimeter
        {{shift}, twoMillimeters, true, 2000},
    };
    for (const auto& [device, attribute, isSpecified, microns] : cases) {
        JobUnderTest job;
        job.device = device;
        if (attribute) job.AddAttribute(FEAT_X1_IMAGE_SHIFT, *attribute);
        Dimension value(1, Dimension::Inch);
        EXPECT_EQ(job.Access().GetDimensionValue(FEAT_X1_IMAGE_SHIFT, value), isSpecified);
        EXPECT_EQ(value.GetValue(Dimension::Micron), Number(microns));
    }
}

TEST(EffectiveValues, TellFactoryDefaultsOfIntegers) {
    JobUnderTest job;
    job.device = {OfferedInteger("adjust-lightness", "25", false)};
    int value = -1;
    EXPECT_TRUE(job.Access().GetFactoryDefaultIntegerValue(FEAT_LIGHTNESS, value));
    EXPECT_EQ(value, 25);
    EXPECT_FALSE(job.Access().GetFactoryDefaultIntegerValue(FEAT_CONTRAST, value));
    EXPECT_EQ(value, 0);
    EXPECT_THROW((void)job.Access().GetFactoryDefaultIntegerValue(FEAT_WHOLE_JOB, value),
                 CPExceptionUnknownKeyRequest);
}

// ---- Strings

struct Text {
    bool isSpecified = false;
    std::wstring text;
    FeatureValueSource source = None;

    bool operator==(const Text&) const = default;
    friend std::ostream& operator<<(std::ostream& out, const Text& text) {
        return out << Answered{text.isSpecified, 0, text.source} << " '" << CXString(text.text.c_str())
                   << "'";
    }
};

Text AskText(JobUnderTest& job, tagFeatureEnum feature) {
    CXString text = L"stale";
    FeatureValueSource source{};
    const bool isSpecified = job.Access().GetStringValue(feature, text, source);
    CXString again;
    EXPECT_EQ(job.Access().GetStringValue(feature, again), isSpecified);
    EXPECT_EQ(text, again);
    return {isSpecified, std::wstring(text.View()), source};
}

TEST(EffectiveValues, ReadStringsFromTheDocumentAndThenFromTheAttributeBytes) {
    const std::pair<tagFeatureEnum, const char*> features[] = {
        {FEAT_CREATOR_VERSION_ATTRIBUTES, "creator-version-attributes"},
        {FEAT_CREATOR_NAME_PDL, "creator-name-pdl"},
        {FEAT_CREATOR_VERSION_PDL, "creator-version-pdl"},
        {FEAT_CURRENT_USER_NAME, "user-name-api"},
        {FEAT_CURRENT_USER_DOMAIN, "user-domain-api"},
    };
    JobUnderTest bytes;
    JobUnderTest both;
    for (const auto& [feature, name] : features)
        for (JobUnderTest* const job : {&bytes, &both})
            job->AddAttribute(feature, Bytes::FromString(L"by attribute"));
    for (const auto& [feature, name] : features)
        both.AddElement(name, "by document", "specified='false'");
    for (const auto& [feature, name] : features) {
        SCOPED_TRACE(name);
        JobUnderTest none;
        EXPECT_EQ(AskText(none, feature), Text());
        EXPECT_EQ(AskText(bytes, feature), (Text{true, L"by attribute", AttributeBytes}));
        EXPECT_EQ(AskText(both, feature), (Text{false, L"by document", PublicDocumentSettings}));
    }
}

TEST(EffectiveValues, ReadThePinFromTheTicket) {
    JobUnderTest job;
    EXPECT_EQ(AskText(job, FEAT_MS_PIN_PRINTING_STRING), Text());
    job.ticket.strings[L"JobPasscodeString"] = L"1234";
    EXPECT_EQ(AskText(job, FEAT_MS_PIN_PRINTING_STRING), (Text{true, L"1234", PrintTicket}));
    job.AddElement("job-password", "text");
    EXPECT_EQ(AskText(job, FEAT_JOB_PASSWORD), Text()) << "no plain string";
}

TEST(EffectiveValues, OnlySecureJobsHaveANameOfTheirOwn) {
    // jobType: null for none
    const Rows<const char*, bool, std::optional<Bytes>, Text> cases{
        {"normal-print", false, Bytes::FromString(L"mine"), {true, L"document", Rule}},
        {"secure-print", false, Bytes::FromString(L"mine"), {true, L"mine", AttributeBytes}},
        {"secure-print", false, Bytes::FromString(L"mine", false), {true, L"document", Rule}},
        {"secure-print", false, Bytes::FromString(L""), {true, L"document", Rule}},
        {"normal-print", true, Bytes::FromString(L"mine"), {true, L"mine", AttributeBytes}},
    };
    for (const auto& [jobType, isPinOn, name, expected] : cases) {
        SCOPED_TRACE(::testing::Message() << (jobType ? jobType : "no type") << " -> " << expected);
        JobUnderTest job;
        if (jobType) job.AddElement("job-type-api", jobType);
        job.AddElement("job-name", "of the document settings, where nobody looks");
        if (isPinOn) job.ticket.Choose(L"JobPasscode", L"On");
        if (name) job.AddAttribute(FEAT_JOB_NAME, *name);
        EXPECT_EQ(AskText(job, FEAT_JOB_NAME), expected);
    }
    JobUnderTest outside;
    outside.kind = OutsideJob;
    EXPECT_EQ(AskText(outside, FEAT_JOB_NAME), Text()) << "there is no document";
}

TEST(EffectiveValues, KnowNoSeparatorPageWithoutAPrinter) {
    JobUnderTest job;
    bool value = true;
    EXPECT_TRUE(job.Access().GetBooleanValue(FEAT_START_SHEET_FROM_APPLICATION, value));
    EXPECT_FALSE(value);
    value = true;
    EXPECT_FALSE(job.Access().GetBooleanValue(FEAT_TONER_SAVER, value));
    EXPECT_FALSE(value);
}

// ---- Passwords

std::string InHex(const ByteBuffer& bytes) {
    std::ostringstream text;
    text << std::hex << std::uppercase << std::setfill('0');
    for (const unsigned char byte : bytes)
        text << std::setw(2) << int{byte};
    return text.str();
}

TEST(EffectiveValues, UnscrambleThePasswordUnlessTheTicketHasAPin) {
    const std::string secret = InHex(DataEncrypter::EncryptStringWithOrvelSimple1(L"secr\u00E9t"));
    // text: of the element
    // pin: null: not supported
    const Rows<const char*, std::optional<std::string>, const char*, const wchar_t*, bool, std::string> cases{
        {"no place", std::nullopt, "", nullptr, false, ""},
        {"scrambled", secret, "", nullptr, true, "secr\xC3\xA9t"},
        {"not specified", secret, "specified='false'", nullptr, false, ""},
        {"a pin", secret, "", L"12\u20AC4", true,
         "12\xE2\x82\xAC"
         "4"},
        {"a blank pin", secret, "", L"  ", true, "secr\xC3\xA9t"},
        {"no hexadecimal", "secret", "", nullptr, false, ""},
        {"cut", secret.substr(0, secret.size() - 8), "", nullptr, false, ""},
        {"never scrambled", "736563726574", "", nullptr, false, ""},
    };
    for (const auto& [what, text, mark, pin, isThere, wantedPassword] : cases) {
        SCOPED_TRACE(what);
        JobUnderTest job;
        if (text) job.AddElement("job-password", *text, mark);
        if (pin) {
            job.ticket.supported.insert(L"JobPasscodeString");
            job.ticket.strings[L"JobPasscodeString"] = pin;
        }
        ByteBuffer password(3, 'x');
        EXPECT_EQ(job.Access().GetUnencodedPassword(password, FEAT_JOB_PASSWORD), isThere);
        EXPECT_EQ(std::string(password.begin(), password.end()), wantedPassword);
        EXPECT_FALSE(job.Access().GetUnencodedPassword(password, FEAT_MS_PIN_PRINTING_STRING));
    }
}

// ---- Collections

TEST(EffectiveValues, FindCollectionsAndTheirMembersInTheAttributeBytes) {
    JobUnderTest job;
    const auto isSpecified = [&](auto... path) { return job.Access().IsCollectionSpecified(path...); };
    const auto count = [&](auto... path) {
        return job.Access().GetCountOfSpecified1SetOfCollectionElements(path...);
    };
    EXPECT_FALSE(isSpecified(FEAT_MEDIA_COL));
    EXPECT_EQ(count(FEAT_PAGE_EXCEPTION), 0U);

    const auto entries = Attributes({{1, Bytes::FromInteger(1)}, {2, Bytes::FromInteger(2)}});
    job.AddAttribute(FEAT_PAGE_EXCEPTION, Bytes::FromCollectionSet(entries));
    job.AddAttribute(
        FEAT_FRONT_COVER,
        Collection({{FEAT_MEDIA_COL, Collection({{FEAT_MEDIA_COLOR, Bytes::FromOption(6754)},
                                                 {FEAT_MEDIA_WEIGHT, Bytes::FromInteger(80, false)}})},
                    {FEAT_PAGE_INSERT, Bytes::FromCollectionSet(entries)}}));
    job.AddAttribute(FEAT_BACK_COVER, Bytes::FromCollection(AttributeBytesIndexedList(), false));
    job.AddAttribute(FEAT_BOOKLET, Bytes::FromOption(VAL_BOOKLET_ON));
    EXPECT_TRUE(isSpecified(FEAT_FRONT_COVER));
    EXPECT_FALSE(isSpecified(FEAT_BACK_COVER)) << "there, and marked";
    EXPECT_FALSE(isSpecified(FEAT_MEDIA_COL)) << "only inside";
    EXPECT_TRUE(isSpecified(FEAT_FRONT_COVER, FEAT_MEDIA_COL));
    EXPECT_FALSE(isSpecified(FEAT_BOOKLET, FEAT_MEDIA_COL)) << "no collection";
    EXPECT_TRUE(isSpecified(FEAT_FRONT_COVER, FEAT_MEDIA_COL, FEAT_MEDIA_COLOR));
    EXPECT_FALSE(isSpecified(FEAT_FRONT_COVER, FEAT_MEDIA_COL, FEAT_MEDIA_WEIGHT));
    EXPECT_EQ(count(FEAT_PAGE_EXCEPTION), 2U);
    EXPECT_EQ(count(FEAT_BOOKLET), 0U);
    EXPECT_EQ(count(FEAT_FRONT_COVER, FEAT_PAGE_INSERT), 2U);

    JobUnderTest without;
    without.kind = OfJob;
    EXPECT_FALSE(without.Access().IsCollectionSpecified(FEAT_FRONT_COVER));
}

TEST(EffectiveValues, CountAnnotationsInTheDocumentWhereItHasThem) {
    // element: null for none
    const Rows<const char*, const char*, unsigned int> cases{
        {nullptr, "", 2},
        {"<annotation-element-col-api><a/><b/><c/></annotation-element-col-api>", "", 3},
        {"<annotation-element-col-api><a/></annotation-element-col-api>", "specified='false'", 1},
        {"<annotation-element-col-api specified='false'><a/></annotation-element-col-api>", "", 0},
        {"<other/>", "", 0},
    };
    for (const auto& [element, mark, count] : cases) {
        SCOPED_TRACE(element ? element : "no element");
        JobUnderTest job;
        if (element) job.AddElement("annotation-col-api", element, mark);
        const auto entries = Attributes({{0, Bytes::FromInteger(0)}, {1, Bytes::FromInteger(1)}});
        job.AddAttribute(FEAT_ANNOTATION_COL,
                         Collection({{FEAT_ANNOTATION_ELEMENT_COL, Bytes::FromCollectionSet(entries)}}));
        EXPECT_EQ(job.Access().GetCountOfSpecified1SetOfCollectionElements(FEAT_ANNOTATION_COL,
                                                                           FEAT_ANNOTATION_ELEMENT_COL),
                  count);
        EXPECT_TRUE(job.Access().IsCollectionSpecified(FEAT_ANNOTATION_COL));
    }
    JobUnderTest documentOnly;
    documentOnly.AddElement("media-col", "<annotation-col-api specified='false'/>");
    EXPECT_TRUE(documentOnly.Access().IsCollectionSpecified(FEAT_ANNOTATION_COL)) << "at any depth";
    EXPECT_FALSE(documentOnly.Access().IsCollectionSpecified(FEAT_MEDIA_COL)) << "the document has no say";
}

} // namespace
