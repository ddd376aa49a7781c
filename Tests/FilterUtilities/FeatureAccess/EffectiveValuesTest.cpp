#include "FilterUtilities/FeatureAccess/JobUnderTest.h"
#include "Support/AttributeLists.h"
#include "Support/Rows.h"

#include <Encryption/DataEncrypter.h>
#include <LowLevelFacilities/Failures/CPExceptionUnknownKeyRequest.h>

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
        {L"PageMediaColor", L"buff", FEAT_MEDIA_COLOR, 6756},
        {L"PageMediaColor", L"Buff", FEAT_MEDIA_COLOR, 5001},
        {L"PageMediaColor", L"media-color-unspecified", FEAT_MEDIA_COLOR, 5001},
        {L"PageMediaType", L"Plain", FEAT_EFFECTIVE_MEDIA_TYPE, 6800},
        {L"PageMediaType", L"HeavyweightPaper", FEAT_EFFECTIVE_MEDIA_TYPE, 6807},
        {L"PageMediaType", L"stationery-heavyweight", FEAT_EFFECTIVE_MEDIA_TYPE, 6807},
        {L"PageMediaType", L"cardstock-extra-heavyweight-glossy", FEAT_EFFECTIVE_MEDIA_TYPE, 10313},
        {L"PageMediaType", L"media-type-api-unspecified", FEAT_EFFECTIVE_MEDIA_TYPE, 5001},
        {L"PageInputBin", L"AutoSelect", FEAT_INPUT_TRAY, 7165},
        {L"PageInputBin", L"automatic", FEAT_INPUT_TRAY, 7165},
        {L"JobInputBin", L"tray-2", FEAT_INPUT_TRAY, 7154},
        {L"JobInputBin", L"manual", FEAT_INPUT_TRAY, 9163},
        {L"JobInputBin", L"tray-10", FEAT_INPUT_TRAY, 5001},
    };
    for (const auto& [ticketFeature, word, feature, value] : cases) {
        SCOPED_TRACE(word);
        JobUnderTest job;
        EXPECT_EQ(AskInMedia(job, feature), nothing) << "not supported";
        job.ticket.Choose(ticketFeature, word);
        EXPECT_EQ(AskInMedia(job, feature),
                  value != VAL_UNSPECIFIED ? By(PrintTicket, value) : UnspecifiedBy(PrintTicket));
        for (const tagFeatureEnum other : {FEAT_FRONT_COVER, FEAT_BACK_COVER, FEAT_ANNOTATION_COL})
            EXPECT_FALSE(job.Access().GetOptionValueWithContext(other, feature).IsSpecified());
        EXPECT_FALSE(
            job.Access().GetOptionValueWithContext(FEAT_MEDIA_COL, FEAT_MEDIA_COL, feature).IsSpecified());
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
        {L"NorthAmericaLetter", 6430},
        {L"NorthAmericaTabloid", 6431},
        {L"NorthAmerica11x17", 5001},
        {L"JapanHagakiPostcard", 6449},
        {L"Postcard", 5001},
        {L"iso-b5-envelope-b5", 6446},
        {L"ISOB5Envelope", 5001},
        {L"12x17_99", 6515},
        {L"custom", 6517},
        {L"CustomMediaSize", 6517},
        {L"OtherMetric297x1200", 6734},
        {L"JapanYou2Envelope", 6522},
        {L"Transient", 6731},
        {L"pb-trim-custom", 10322},
        {L"psk:ISOA4", 5001},
        {L"isoa4", 5001},
        {L":", 5001},
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
    const struct {
        const wchar_t* orientation;
        const wchar_t* pages;
        int width; // millimeters
        int height;
        int expected;
        bool isBooklet = false;
    } cases[] = {
        {L"", L"", 210, 297, 5010},
        {L"Landscape", L"", 210, 297, 5011},
        {L"ReversePortrait", L"", 210, 297, 5010},
        {L"Portrait", L"", 210, 297, 5011, true},
        {L"Landscape", L"", 210, 297, 5010, true},
        {L"Portrait", L"2", 210, 297, 5011, true}, // once only
        {L"Portrait", L"2", 210, 297, 5011},
        {L"Landscape", L"2", 210, 297, 5010},
        {L"Portrait", L"4", 210, 297, 5010},
        {L"Portrait", L"9", 210, 297, 5010},
        {L"Portrait", L"16", 297, 210, 5010},
        {L"Portrait", L"6", 100, 120, 5011},
        {L"Portrait", L"6", 100, 160, 5010},
        {L"Portrait", L"6", 100, 150, 5010}, // exactly equal
        {L"Landscape", L"6", 120, 100, 5010},
    };
    for (const auto& row : cases) {
        SCOPED_TRACE(::testing::Message()
                     << CXString(row.orientation) << (row.isBooklet ? " booklet " : " ")
                     << CXString(row.pages) << "-up on " << row.width << " x " << row.height);
        JobUnderTest job;
        job.outputWidth = Dimension(row.width, Dimension::Millimeter);
        job.outputHeight = Dimension(row.height, Dimension::Millimeter);
        job.ticket.Choose(L"PageOrientation", row.orientation);
        job.ticket.Choose(L"DocumentNUp", row.pages);
        if (row.isBooklet) job.AddAttribute(FEAT_BOOKLET, Bytes::FromOption(VAL_BOOKLET_ON));
        EXPECT_EQ(job.Access().GetEffectiveOrientation(), row.expected);
    }

    JobUnderTest job;
    job.AddAttribute(FEAT_BOOKLET, Bytes::FromOption(VAL_BOOKLET_ON, false));
    EXPECT_EQ(job.Access().GetEffectiveOrientation(), VAL_MS_ORIENTATION_PORTRAIT) << "nobody chose it";
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

struct Integer {
    bool isSpecified = false;
    int value = 0;
    FeatureValueSource source = None;

    bool operator==(const Integer&) const = default;
    friend std::ostream& operator<<(std::ostream& out, const Integer& integer) {
        return out << Answered{integer.isSpecified, integer.value, integer.source};
    }
};

Integer AskInteger(JobUnderTest& job, tagFeatureEnum feature) {
    Integer answer{false, -1, None};
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

TEST(EffectiveValues, ReadCopiesFromTheTicket) {
    JobUnderTest job;
    job.ticket.integers[L"JobCopiesAllDocuments"] = 7;
    EXPECT_EQ(AskInteger(job, FEAT_COPIES), Integer()) << "not supported";
    job.ticket.supported.insert(L"JobCopiesAllDocuments");
    EXPECT_EQ(AskInteger(job, FEAT_COPIES), (Integer{true, 7, PrintTicket}));
}

TEST(EffectiveValues, ReadAdjustmentsFromTheAttributeBytesAndEnforceThem) {
    const std::optional<Bytes> absent;
    const Bytes unspecified = Bytes::FromInteger(12, false);
    const Rows<const char*, std::optional<Bytes>, bool, JobUnderTest::Kind, Integer> cases{
        {"nothing", absent, false, OfJobWithAttributeBytes, Integer{}},
        {"required", absent, true, OfJobWithAttributeBytes, Integer{true, 25, FactoryDefault}},
        {"required outside a job", absent, true, OutsideJob, Integer{}},
        {"an attribute", Bytes::FromInteger(-40), true, OutsideJob, Integer{true, -40, AttributeBytes}},
        {"zero", Bytes::FromInteger(0), true, OfJobWithAttributeBytes, Integer{true, 0, AttributeBytes}},
        {"no attribute bytes", Bytes::FromInteger(-40), true, OfJob, Integer{}},
        {"unspecified", unspecified, false, OfJobWithAttributeBytes, Integer{false, 12, AttributeBytes}},
        // The value is not 0, and stays.
        {"both", unspecified, true, OfJobWithAttributeBytes, Integer{true, 12, AttributeBytes}},
        {"an option", Bytes::FromOption(5), true, OfJobWithAttributeBytes, Integer{true, 25, FactoryDefault}},
    };
    const std::pair<tagFeatureEnum, const char*> features[] = {
        {FEAT_LIGHTNESS, "adjust-lightness"},
        {FEAT_COLORBALANCE_YELLOW_BLUE, "adjust-yellow-blue"},
    };
    for (const auto& [what, attribute, isRequired, kind, expected] : cases) {
        for (const auto& [feature, name] : features) {
            SCOPED_TRACE(std::string(what) + ", " + name);
            JobUnderTest job;
            job.kind = kind;
            job.AddAttribute(FEAT_SIDES_IMAGED, Bytes::FromOption(VAL_SIDES_ONE_SIDED));
            if (attribute) job.AddAttribute(feature, *attribute);
            job.device = {OfferedInteger(name, "25", isRequired)};
            EXPECT_EQ(AskInteger(job, feature), expected);
        }
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
        {nullptr, "", {true, 120, AttributeBytes}},
        {"80", "", {true, 80, PublicDocumentSettings}},
        {"79.5", "", {true, 79, PublicDocumentSettings}}, // just below a half is added
        {"79.51", "", {true, 80, PublicDocumentSettings}},
        {"80", "specified='false'", {false, 0, PublicDocumentSettings}},
        {"heavy", "", {true, 0, PublicDocumentSettings}},
    };
    for (const auto& [text, mark, expected] : cases) {
        SCOPED_TRACE(text ? text : "no element");
        JobUnderTest job;
        job.AddAttribute(FEAT_MEDIA_COL, Collection({{FEAT_MEDIA_WEIGHT, Bytes::FromInteger(120)}}));
        if (text) job.AddElement("media-weight-metric", text, mark);
        Integer answer{false, -1, None};
        answer.isSpecified =
            job.Access().GetIntegerValue(FEAT_MEDIA_COL, FEAT_MEDIA_WEIGHT, answer.value, answer.source);
        EXPECT_EQ(answer, expected);
        int value = -1;
        EXPECT_FALSE(job.Access().GetIntegerValue(FEAT_FRONT_COVER, FEAT_MEDIA_WEIGHT, value));
        EXPECT_EQ(value, 0);
    }
    JobUnderTest job;
    int value = -1;
    EXPECT_FALSE(job.Access().GetIntegerValue(FEAT_MEDIA_COL, FEAT_MEDIA_WEIGHT, value));
    EXPECT_EQ(value, 0);
}

TEST(EffectiveValues, ReadDimensionsAndTheirFactoryDefaults) {
    const auto ask = [](JobUnderTest& job, bool& isSpecified) {
        Dimension value(1, Dimension::Inch);
        isSpecified = job.Access().GetDimensionValue(FEAT_X1_IMAGE_SHIFT, value);
        return value.GetValue(Dimension::Micron);
    };
    bool isSpecified = true;
    JobUnderTest unsupported;
    unsupported.AddAttribute(FEAT_X1_IMAGE_SHIFT, Bytes::FromDimension(Dimension(2, Dimension::Millimeter)));
    EXPECT_EQ(ask(unsupported, isSpecified), Number(0));
    EXPECT_FALSE(isSpecified);

    JobUnderTest job;
    job.device = {OfferedInteger("x-side1-image-shift", "350", true)};
    EXPECT_EQ(ask(job, isSpecified), Number(3500)) << "hundredths of a millimeter";
    EXPECT_TRUE(isSpecified);
    job.AddAttribute(FEAT_X1_IMAGE_SHIFT, Bytes::FromDimension(Dimension(2, Dimension::Millimeter)));
    EXPECT_EQ(ask(job, isSpecified), Number(2000));
    EXPECT_TRUE(isSpecified);
}

TEST(EffectiveValues, TellFactoryDefaultsOfIntegers) {
    JobUnderTest job;
    job.device = {OfferedInteger("adjust-lightness", "25", false),
                  OfferedInteger("adjust-contrast", "", false)};
    int value = -1;
    EXPECT_TRUE(job.Access().GetFactoryDefaultIntegerValue(FEAT_LIGHTNESS, value));
    EXPECT_EQ(value, 25);
    EXPECT_FALSE(job.Access().GetFactoryDefaultIntegerValue(FEAT_CONTRAST, value));
    EXPECT_EQ(value, 0);
    Dimension length;
    EXPECT_THROW((void)job.Access().GetFactoryDefaultIntegerValue(FEAT_WHOLE_JOB, value),
                 CPExceptionUnknownKeyRequest);
    EXPECT_THROW((void)job.Access().GetFactoryDefaultDimensionValue(FEAT_SECURE_JOB_NAME, length),
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
    for (const auto& [feature, name] : features) {
        SCOPED_TRACE(name);
        JobUnderTest none;
        EXPECT_EQ(AskText(none, feature), Text());
        JobUnderTest onlyBytes;
        onlyBytes.AddAttribute(feature, Bytes::FromString(L"by attribute"));
        EXPECT_EQ(AskText(onlyBytes, feature), (Text{true, L"by attribute", AttributeBytes}));
        JobUnderTest both;
        both.AddAttribute(feature, Bytes::FromString(L"by attribute"));
        both.AddElement(name, "by document", "specified='false'");
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
        {nullptr, false, Bytes::FromString(L"mine"), {true, L"document", Rule}},
        {"normal-print", false, Bytes::FromString(L"mine"), {true, L"document", Rule}},
        {"secure-print", false, Bytes::FromString(L"mine"), {true, L"mine", AttributeBytes}},
        {"secure-print", false, Bytes::FromString(L"mine", false), {true, L"document", Rule}},
        {"secure-print", false, Bytes::FromString(L""), {true, L"document", Rule}},
        {"secure-print", false, std::nullopt, {true, L"document", Rule}},
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

TEST(EffectiveValues, KnowTheJobAndTheQueue) {
    JobUnderTest job;
    EXPECT_EQ(job.Access().GetPrintJobDocumentName(), L"document");
    EXPECT_EQ(job.Access().GetPrintJobUserName(), L"user");
    EXPECT_EQ(job.Access().GetPrintJobUserDomainName(), L"domain");
    bool value = true;
    EXPECT_TRUE(job.Access().GetBooleanValue(FEAT_START_SHEET_FROM_APPLICATION, value));
    EXPECT_FALSE(value) << "no printer, no separator page";
    value = true;
    EXPECT_FALSE(job.Access().GetBooleanValue(FEAT_TONER_SAVER, value));
    EXPECT_FALSE(value);
}

// ---- Passwords

std::string InHex(const std::string& bytes) {
    static constexpr char digits[] = "0123456789ABCDEF";
    std::string text;
    for (const char byte : bytes) {
        text += digits[static_cast<unsigned char>(byte) >> 4];
        text += digits[static_cast<unsigned char>(byte) & 0xF];
    }
    return text;
}

std::string Scrambled(const wchar_t* password) {
    const ByteBuffer form = DataEncrypter::EncryptStringWithOrvelSimple1(password);
    return InHex(std::string(form.begin(), form.end()));
}

TEST(EffectiveValues, UnscrambleThePasswordUnlessTheTicketHasAPin) {
    const std::string secret = Scrambled(L"secr\u00E9t");
    // text: of the element
    // pin: null: not supported
    const Rows<const char*, std::optional<std::string>, const char*, const wchar_t*, bool, std::string> cases{
        {"no place", std::nullopt, "", nullptr, false, ""},
        {"scrambled", secret, "", nullptr, true, "secr\xC3\xA9t"},
        {"not specified", secret, "specified='false'", nullptr, false, ""},
        {"empty", "", "", nullptr, true, ""},
        {"a pin", secret, "", L"12\u20AC4", true,
         "12\xE2\x82\xAC"
         "4"},
        {"a blank pin", secret, "", L"  ", true, "secr\xC3\xA9t"},
        {"a pin only", std::nullopt, "", L"1234", true, "1234"},
        {"no hexadecimal", "secret", "", nullptr, false, ""},
        {"cut", secret.substr(0, secret.size() - 8), "", nullptr, false, ""},
        {"never scrambled", InHex("secret"), "", nullptr, false, ""},
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
    const auto isSpecified = [&](auto... features) {
        return job.Access().IsCollectionSpecified(features...);
    };
    const auto count = [&](auto... features) {
        return job.Access().GetCountOfSpecified1SetOfCollectionElements(features...);
    };
    EXPECT_FALSE(isSpecified(FEAT_MEDIA_COL));
    EXPECT_EQ(count(FEAT_PAGE_EXCEPTION), 0U);

    AttributeBytesIndexedList entries;
    for (const int value : {1, 2, 3})
        entries.AddAttributeBytes(::AttributeBytes(
            AttributeBytesFeatureId(value), Collection({{FEAT_MEDIA_WEIGHT, Bytes::FromInteger(value)}})));
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
    EXPECT_FALSE(isSpecified(FEAT_BACK_COVER, FEAT_MEDIA_COL));
    EXPECT_FALSE(isSpecified(FEAT_BOOKLET, FEAT_MEDIA_COL)) << "no collection";
    EXPECT_TRUE(isSpecified(FEAT_FRONT_COVER, FEAT_MEDIA_COL, FEAT_MEDIA_COLOR));
    EXPECT_FALSE(isSpecified(FEAT_FRONT_COVER, FEAT_MEDIA_COL, FEAT_MEDIA_WEIGHT));
    EXPECT_FALSE(isSpecified(FEAT_BACK_COVER, FEAT_MEDIA_COL, FEAT_MEDIA_COLOR));

    EXPECT_EQ(count(FEAT_PAGE_EXCEPTION), 3U);
    EXPECT_EQ(count(FEAT_BOOKLET), 0U);
    EXPECT_EQ(count(FEAT_FRONT_COVER, FEAT_PAGE_INSERT), 3U);
    EXPECT_EQ(count(FEAT_BACK_COVER, FEAT_PAGE_INSERT), 0U);

    JobUnderTest without;
    without.kind = OfJob;
    EXPECT_FALSE(without.Access().IsCollectionSpecified(FEAT_FRONT_COVER));
    EXPECT_FALSE(without.Access().IsCollectionSpecified(FEAT_FRONT_COVER, FEAT_MEDIA_COL, FEAT_MEDIA_COLOR));
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
        AttributeBytesIndexedList entries;
        for (const int position : {0, 1})
            entries.AddAttributeBytes(
                ::AttributeBytes(AttributeBytesFeatureId(position), Bytes::FromInteger(position)));
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
