#include "FilterUtilities/FeatureAccess/JobUnderTest.h"

#include <FeatureAccess/FeaturePlaces.h>

namespace {

using namespace DataModelIds;
using enum FeatureQuestionKind;
using Place = FeaturePlace;
using Source = FeatureValueSource;

// The places of a job, asked by rules that the table does not have.
class FeaturePlacesTest : public testing::Test {
protected:
    FeaturePlaces Places(const char* settings = "<s/>") {
        m_settings = PublicDocSettingsDocument::Parse(settings);
        return {{TicketSettings(&ticket), DocumentSettings([this] { return m_settings.get(); }),
                 AttributeBytesSettings(&attributeBytes), DeviceSettings(nullptr)},
                false};
    }

    FakePrintTicketAccess ticket;
    PrintTicketAttributeBytesReaderWriter attributeBytes{NoDisplayHelp()};

private:
    MsSafeCoInit m_apartment;
    PublicDocSettingsDocument::Parser m_settings;
};

TEST_F(FeaturePlacesTest, AskTheNextPlaceWhereTheTicketHasNoNumber) {
    const FeatureRule rule{Integer, FEAT_COPIES, {.places = {Place::Ticket, Place::AttributeBytes}}};
    attributeBytes.GetAttributeBytesIndexedListRef().AddAttributeBytes(
        AttributeBytes(AttributeBytesFeatureId(FEAT_COPIES), AttributeBytesValue::FromInteger(5)));
    FeatureAnswer<int> answer = Places().Ask<int>(rule, rule.path);
    EXPECT_EQ(answer.value, 5);
    EXPECT_TRUE(answer.source == Source::AttributeBytes);

    ticket.integers[L"JobCopiesAllDocuments"] = 0;
    answer = Places().Ask<int>(rule, rule.path);
    EXPECT_EQ(answer.value, 0);
    EXPECT_TRUE(answer.source == Source::PrintTicket);
    // No place of the rule can hold a length.
    EXPECT_TRUE(Places().Ask<Dimension>(rule, rule.path).source == Source::None);
}

TEST_F(FeaturePlacesTest, LookForAMemberInTheCollectionAndEntryThatIsAsked) {
    const char settings[] =
        "<s><media-weight-metric>60</media-weight-metric>"
        "<media-col><deep><media-weight-metric>80</media-weight-metric></deep></media-col>"
        "<annotation-col-api><annotation-element-col-api>"
        "<first><media-weight-metric>1</media-weight-metric></first>"
        "<second><media-weight-metric specified='false'>2</media-weight-metric></second>"
        "<third specified='false'><media-weight-metric>3</media-weight-metric></third>"
        "</annotation-element-col-api></annotation-col-api></s>";
    const FeaturePath ofMedia(FEAT_MEDIA_COL, FEAT_MEDIA_WEIGHT);
    const FeaturePath ofEntry(FEAT_ANNOTATION_COL, FEAT_ANNOTATION_ELEMENT_COL, FEAT_MEDIA_WEIGHT);
    const struct {
        FeaturePath path;
        const wchar_t* text; // null if it is not there
        bool isSpecified = true;
        bool isNamedAlone = false;
    } rows[] = {
        {FEAT_MEDIA_WEIGHT, L"60"},
        {ofMedia, L"80"},
        {ofMedia, L"60", true, true},
        {{FEAT_MEDIA_COL, FEAT_ANNOTATION_COL, FEAT_MEDIA_WEIGHT}, nullptr, false},
        {{FEAT_DEV_INSTALLABLE_COL, FEAT_MEDIA_WEIGHT}, nullptr, false}, // a collection without a name
        {ofEntry, L"1"},
        {ofEntry.At(0), L"1"},
        {ofEntry.At(1), L"2", false},
        {ofEntry.At(2), L"3", false},
        {ofEntry.At(3), nullptr, false},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(&row - rows);
        const FeatureRule rule{
            Text, row.path, {.places = {Place::DocumentSettings}, .isNamedAlone = row.isNamedAlone}};
        const FeatureAnswer<CXString> answer = Places(settings).Ask<CXString>(rule, row.path);
        EXPECT_EQ(answer.source == Source::PublicDocumentSettings, row.text != nullptr);
        EXPECT_EQ(answer.value, row.text != nullptr ? row.text : L"");
        EXPECT_EQ(answer.isSpecified, row.isSpecified);
    }
}

} // namespace
