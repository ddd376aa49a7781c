#include "FilterUtilities/FeatureAccess/JobUnderTest.h"

#include <FeatureAccess/RecordedFeatureAccess.h>

#include <sstream>

namespace {

using namespace DataModelIds;
using enum FeatureQuestionKind;
using enum FeatureValueSource;
using Value = RecordedAnswer::Value;

std::string Shown(const Value& answer) {
    std::ostringstream text;
    const auto show = [&]<typename Kind>(const Kind& value) {
        if constexpr (std::is_same_v<Kind, Dimension>)
            text << value.GetValue(Dimension::Micron).GetIntValue(0.4);
        else if constexpr (std::is_same_v<Kind, RecordedAnswer::Size>)
            text << Shown(value.first) << " x " << Shown(value.second);
        else if constexpr (!std::is_same_v<Kind, std::monostate>)
            text << value;
    };
    std::visit(show, answer);
    return text.str();
}

class RecordedFeatures : public ::testing::Test {
protected:
    RecordedFeatureAccess& Recorded() {
        if (!m_recorded)
            m_recorded.emplace(m_job.Access(), [this](const FeatureQuestion& question) {
                return m_job.Access().GetSource(question);
            });
        return *m_recorded;
    }

    JobUnderTest m_job;

private:
    std::optional<RecordedFeatureAccess> m_recorded;
};

TEST_F(RecordedFeatures, TellEachQuestionWithAnswerAndSource) {
    m_job.ticket.Choose(L"PageOrientation", L"Landscape");
    m_job.ticket.Choose(L"PageMediaColor", L"Blue");
    m_job.ticket.supported.insert({L"JobCopiesAllDocuments", L"JobPasscodeString"});
    m_job.ticket.integers[L"JobCopiesAllDocuments"] = 7;
    m_job.ticket.strings[L"JobPasscodeString"] = L"1234";
    m_job.AddElement("user-name-api", "me", "specified='false'");
    m_job.AddElement("annotation-col-api",
                     "<annotation-element-col-api><a/><b/></annotation-element-col-api>");
    m_job.AddAttribute(FEAT_BOOKLET, AttributeBytesValue::FromOption(VAL_BOOKLET_ON, false));
    m_job.device = {{"print-quality-level", {}, true, "standard"}};

    const RecordedFeatureAccess& access = Recorded();
    int number = 0;
    bool flag = false;
    CXString text;
    Dimension length;
    Dimension other;
    ByteBuffer bytes;
    UtcTime time;
    for (const auto feature : {FEAT_MS_ORIENTATION, FEAT_PRINT_QUALITY_LEVEL, FEAT_BOOKLET, FEAT_COPIES})
        (void)access.GetOptionValue(feature);
    (void)access.GetOptionValueWithContext(FEAT_MEDIA_COL, FEAT_MEDIA_COLOR);
    EXPECT_TRUE(access.GetIntegerValue(FEAT_COPIES, number));
    EXPECT_FALSE(access.GetIntegerValue(FEAT_SAVE_COL, FEAT_SAVE_INFO_COL, 2, FEAT_COPIES, number));
    EXPECT_FALSE(access.GetStringValue(FEAT_CURRENT_USER_NAME, text));
    EXPECT_TRUE(access.GetStringValue(FEAT_MS_PIN_PRINTING_STRING, text));
    EXPECT_EQ(text, L"1234");
    EXPECT_TRUE(access.GetUnencodedPassword(bytes, FEAT_JOB_PASSWORD));
    EXPECT_TRUE(access.GetBooleanValue(FEAT_START_SHEET_FROM_APPLICATION, flag));
    EXPECT_TRUE(access.IsCollectionSpecified(FEAT_ANNOTATION_COL));
    EXPECT_EQ(
        access.GetCountOfSpecified1SetOfCollectionElements(FEAT_ANNOTATION_COL, FEAT_ANNOTATION_ELEMENT_COL),
        2U);
    EXPECT_EQ(access.GetEffectiveOrientation(), VAL_MS_ORIENTATION_LANDSCAPE);
    EXPECT_TRUE(access.GetOutputSize(length, other));
    EXPECT_FALSE(access.GetDateTimeValue(FEAT_JOB_NAME, time));
    EXPECT_FALSE(access.GetDimensionValue(FEAT_X1_IMAGE_SHIFT, length));

    const struct {
        FeatureQuestion question;
        const char* value;
        FeatureValueSource source;
        bool isSpecified;
        bool isSecret = false;
    } expected[] = {
        {{Option, FEAT_MS_ORIENTATION}, "5011", PrintTicket, true},
        {{Option, FEAT_PRINT_QUALITY_LEVEL}, "5471", FactoryDefault, true},
        {{Option, FEAT_BOOKLET}, "5111", AttributeBytes, false},
        {{Option, FEAT_COPIES}, "5001", None, false},
        {{Option, {FEAT_MEDIA_COL, FEAT_MEDIA_COLOR}}, "6754", PrintTicket, true},
        {{Integer, FEAT_COPIES}, "7", PrintTicket, true},
        {{Integer, FeaturePath(FEAT_SAVE_COL, FEAT_SAVE_INFO_COL, FEAT_COPIES).At(2)}, "0", None, false},
        {{Text, FEAT_CURRENT_USER_NAME}, "me", PublicDocumentSettings, false},
        {{Text, FEAT_MS_PIN_PRINTING_STRING}, "", PrintTicket, true, true},
        {{Password, FEAT_JOB_PASSWORD}, "", PrintTicket, true, true},
        {{Flag, FEAT_START_SHEET_FROM_APPLICATION}, "0", Queue, true},
        {{Collection, FEAT_ANNOTATION_COL}, "1", PublicDocumentSettings, true},
        {{Entries, {FEAT_ANNOTATION_COL, FEAT_ANNOTATION_ELEMENT_COL}}, "2", PublicDocumentSettings, true},
        {{Orientation}, "5011", PrintTicket, true},
        {{OutputSize}, "215900 x 279400", None, true},
        {{Time, FEAT_JOB_NAME}, "", None, false},
        {{Length, FEAT_X1_IMAGE_SHIFT}, "0", None, false},
    };
    ASSERT_EQ(Recorded().Answers().size(), std::size(expected));
    for (std::size_t at = 0; at < std::size(expected); ++at) {
        SCOPED_TRACE(at);
        const RecordedAnswer& answer = Recorded().Answers()[at];
        EXPECT_EQ(answer.question, expected[at].question);
        EXPECT_EQ(answer.isSpecified, expected[at].isSpecified);
        EXPECT_EQ(answer.source, expected[at].source);
        EXPECT_EQ(answer.isSecret, expected[at].isSecret);
        EXPECT_EQ(Shown(answer.value), expected[at].value);
    }
}

TEST_F(RecordedFeatures, WithholdOneAnswerAndNoOther) {
    m_job.ticket.Choose(L"PageOrientation", L"Landscape");
    m_job.ticket.Choose(L"PageMediaColor", L"Blue");
    m_job.ticket.supported.insert(L"JobCopiesAllDocuments");
    m_job.ticket.integers[L"JobCopiesAllDocuments"] = 7;
    int number = 0;
    Recorded().Withhold({Integer, FEAT_COPIES});
    EXPECT_FALSE(Recorded().GetIntegerValue(FEAT_COPIES, number));
    EXPECT_FALSE(Recorded().Answers().back().isSpecified);
    EXPECT_EQ(Recorded().GetEffectiveOrientation(), VAL_MS_ORIENTATION_LANDSCAPE);
    Recorded().Withhold({Orientation});
    EXPECT_EQ(Recorded().GetEffectiveOrientation(), VAL_UNSPECIFIED);
    EXPECT_TRUE(Recorded().GetIntegerValue(FEAT_COPIES, number));
    Recorded().Withhold({Option, {FEAT_MEDIA_COL, FEAT_MEDIA_COLOR}});
    EXPECT_EQ(Recorded().GetOptionValueWithContext(FEAT_MEDIA_COL, FEAT_MEDIA_COLOR), SimpleOptionValue());
    EXPECT_TRUE(Recorded().GetOptionValue(FEAT_MS_ORIENTATION).IsSpecified());
    Dimension width;
    Dimension height;
    Recorded().Withhold({OutputSize});
    EXPECT_FALSE(Recorded().GetOutputSize(width, height));
    EXPECT_EQ(width.GetValue(Dimension::Micron).GetNearestIntValue(), 0) << "callers may use it all the same";
}

TEST_F(RecordedFeatures, PassOnWhatIsSetAndForgetWhatFailed) {
    m_job.ticket.Choose(L"PageOrientation", L"Landscape");
    Recorded().SetStringValue(FEAT_CURRENT_USER_NAME, L"me", true);
    EXPECT_TRUE(Recorded().Answers().empty());
    CXString user;
    EXPECT_TRUE(Recorded().GetStringValue(FEAT_CURRENT_USER_NAME, user));
    EXPECT_EQ(user, L"me");
    m_job.ticket.fails = true;
    EXPECT_THROW((void)Recorded().GetOptionValue(FEAT_MS_ORIENTATION), std::runtime_error);
    EXPECT_EQ(Recorded().Answers().size(), 1U);
    Recorded().Forget();
    EXPECT_TRUE(Recorded().Answers().empty());
}

} // namespace
