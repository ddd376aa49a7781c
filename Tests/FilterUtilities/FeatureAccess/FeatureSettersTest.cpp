#include "FilterUtilities/FeatureAccess/JobUnderTest.h"
#include "FilterUtilities/PrintSchema/CapabilitiesSupport.h"
#include "Support/Rows.h"
#include "Support/TicketText.h"

#include <TicketAccess/NativeComPrintTicketAccess.h>

namespace {

using namespace DataModelIds;

constexpr char settings[] = "<OrvelPublicDocSettings> </OrvelPublicDocSettings>";

// A ticket's access in an apartment.
class FeatureSetters : public ::testing::Test {
protected:
    static CXString Wide(const std::string& text) { return CXString(text.c_str()); }

    static std::string Capabilities() {
        return CapabilitiesText("<psf:Feature name='psk:JobDuplexAllDocumentsContiguously'/>"
                                "<psf:Feature name='psk:DocumentCollate'/>");
    }

    static std::string TextOf(const IPrintTicketAccess& ticket) {
        CPString text;
        ticket.GetPrintTicketAsXmlString(text, false);
        return text.utf8Bytes();
    }

    // What a new reader finds in the text of a ticket.
    static SimpleOptionValue ReadAnew(const IPrintTicketAccess& written, tagFeatureEnum feature) {
        NativeComPrintTicketAccess ticket(Wide(TextOf(written)), Wide(Capabilities()));
        SimpleOcapParser device((CPString()));
        return DataModelLessFeatureAccess(device, ticket, nullptr).GetOptionValue(feature);
    }

    MsSafeCoInit apartment;
};

TEST_F(FeatureSetters, WriteTicketOptionsThatANewReaderFinds) {
    // found: in a ticket without the feature
    const Rows<tagFeatureEnum, SimpleOptionValue, int> cases{
        {FEAT_COLLATION, VAL_COLLATION_COLLATED, 5410},
        {FEAT_COLLATION, SimpleOptionValue(false, VAL_COLLATION_UNCOLLATED), 5411},
        {FEAT_COLLATION, VAL_SIDES_ONE_SIDED, 5001},
        {FEAT_COLLATION, SimpleOptionValue(), 5001},
        {FEAT_SIDES_IMAGED, VAL_SIDES_ONE_SIDED, 5420},
        {FEAT_SIDES_IMAGED, VAL_SIDES_TWO_SIDED_FLIP_LONG_EDGE, 5421},
        {FEAT_SIDES_IMAGED, VAL_SIDES_TWO_SIDED_FLIP_SHORT_EDGE, 5422},
        {FEAT_SIDES_IMAGED, VAL_SIDES_TWO_SIDED_ANY, 5001},
        {FEAT_MARGINS, VAL_MARGINS_BORDERLESS, 5001}, // cannot be set
    };
    const std::string filled = Choice("psk:DocumentCollate", "psk:Other") +
                               Choice("psk:JobDuplexAllDocumentsContiguously", "psk:Other");
    for (const auto& [feature, value, found] : cases) {
        for (const std::string& before : {std::string(), filled}) {
            SCOPED_TRACE(::testing::Message() << feature << " = " << value.GetValue() << " into " << before);
            NativeComPrintTicketAccess ticket(Wide(TicketText(before)), Wide(Capabilities()));
            SimpleOcapParser device((CPString()));
            DataModelLessFeatureAccess access(device, ticket, nullptr);
            (void)access.GetOptionValue(feature); // so that the document is there already
            const std::string textBefore = TextOf(ticket);
            access.SetOptionValue(feature, value);
            EXPECT_EQ(access.GetOptionValue(feature).GetValuePlusSpecifiedState(), found);
            EXPECT_EQ(ReadAnew(ticket, feature).GetValuePlusSpecifiedState(), found);
            EXPECT_EQ(TextOf(ticket) == textBefore, found == VAL_UNSPECIFIED);
        }
    }
}

TEST_F(FeatureSetters, KeepElementsFromTheTicketAndReadThemBack) {
    const Rows<tagFeatureEnum, int, int> cases{
        {FEAT_CREATOR_NAME_ATTRIBUTES, 8822, 8822}, {FEAT_CREATOR_NAME_ATTRIBUTES, 8827, 5001},
        {FEAT_CREATOR_NAME_ATTRIBUTES, 8858, 8858}, {FEAT_CREATOR_NAME_ATTRIBUTES, 8859, 5001},
        {FEAT_CREATOR_NAME_PDL, 8835, 8835},        {FEAT_CREATOR_NAME_PDL, 5001, 5001},
    };
    for (const auto& [feature, value, wantedFound] : cases) {
        for (const bool isSpecified : {true, false}) {
            SCOPED_TRACE(::testing::Message() << feature << " = " << value << " " << isSpecified);
            JobUnderTest job;
            job.ticket.publicSettings = settings;
            job.Access().SetOptionValue(feature, feature == FEAT_CREATOR_NAME_PDL
                                                     ? VAL_CREATOR_NAME_PDL_UNKNOWN_APPLICATION
                                                     : VAL_CREATOR_NAME_WINDOWS_XPS_DRIVER);
            EXPECT_TRUE(job.Access().GetOptionValue(feature).IsSpecified());
            job.Access().SetOptionValue(feature,
                                        SimpleOptionValue(isSpecified, static_cast<tagValueEnum>(value)));
            const SimpleOptionValue found = job.Access().GetOptionValue(feature);
            EXPECT_EQ(found.GetValue(), wantedFound);
            EXPECT_EQ(found.IsSpecified(), isSpecified && wantedFound != VAL_UNSPECIFIED);
            EXPECT_EQ(job.ticket.publicSettings, settings);
        }
    }
}

TEST_F(FeatureSetters, SetTextsWhetherSpecifiedOrNot) {
    for (const tagFeatureEnum feature : {FEAT_CREATOR_NAME_PDL, FEAT_CURRENT_USER_DOMAIN}) {
        SCOPED_TRACE(feature);
        JobUnderTest job;
        job.AddAttribute(feature, AttributeBytesValue::FromString(L"by attribute"));
        const auto expect = [&](const wchar_t* expected, bool isSpecified) {
            CXString text;
            EXPECT_EQ(job.Access().GetStringValue(feature, text), isSpecified);
            EXPECT_EQ(text, expected);
        };
        // A new element, then the same one changed.
        job.Access().SetStringValue(feature, L"<1> & \u20AC", false);
        expect(L"<1> & \u20AC", false);
        job.Access().SetStringValue(feature, L"2", true);
        expect(L"2", true);
    }
    JobUnderTest job;
    job.Access().SetStringValue(FEAT_JOB_NAME, L"mine", true);
    job.Access().SetStringValue(FEAT_CREATOR_NAME_ATTRIBUTES, L"windows-xps-driver", true);
    EXPECT_EQ(job.ticket.settingsReads, 0) << "neither can be set as a text";
}

// Without settings that can be parsed there is nothing to change.
TEST_F(FeatureSetters, ChangeNothingInABrokenDocument) {
    JobUnderTest job;
    job.ticket.publicSettings = "<OrvelPublicDocSettings><user-name-api>";
    job.Access().SetStringValue(FEAT_CURRENT_USER_NAME, L"me", true);
    job.Access().SetOptionValue(FEAT_CREATOR_NAME_PDL, VAL_CREATOR_NAME_PDL_EXPLORER);
    CXString text;
    EXPECT_FALSE(job.Access().GetStringValue(FEAT_CURRENT_USER_NAME, text));
    EXPECT_EQ(text, L"");
    EXPECT_FALSE(job.Access().GetOptionValue(FEAT_CREATOR_NAME_PDL).IsSpecified());
    EXPECT_EQ(job.ticket.publicSettings, "<OrvelPublicDocSettings><user-name-api>");
}

} // namespace
