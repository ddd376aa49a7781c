#include "FilterUtilities/FeatureAccess/JobUnderTest.h"
#include "Support/Rows.h"

#include <array>

namespace {

using namespace DataModelIds;

constexpr const char* countNames[] = {"2-hole-punch", "3-hole-punch", "4-hole-punch", "hole-punch-on"};
constexpr const char* positionFeatures[] = {"two-hole-punch-api", "three-hole-punch-api",
                                            "four-hole-punch-api"};

constexpr tagFeatureEnum features[] = {FEAT_FINISHING_HOLE_PUNCH, FEAT_FINISHING_2_HOLE_PUNCH,
                                       FEAT_FINISHING_3_HOLE_PUNCH, FEAT_FINISHING_4_HOLE_PUNCH};
using Values = std::array<int, 4>;

// An option of the ticket: how many holes (0 are "some"), and on which side.
struct Punch {
    std::wstring option;
    int holes;
    int position; // VAL_UNSPECIFIED for no side
    bool isLeft;
};

std::vector<Punch> AllPunches() {
    std::vector<Punch> punches = {{L"None", -1, VAL_UNSPECIFIED, false},
                                  {L"HolePunch", 0, VAL_UNSPECIFIED, false}};
    const std::wstring counts[] = {L"Dual", L"Triple", L"Quad"};
    const std::pair<std::wstring, int> sides[] = {{L"Top", VAL_FINISHING_HOLE_PUNCH_PTLR},
                                                  {L"Left", VAL_FINISHING_HOLE_PUNCH_PLLT},
                                                  {L"Bottom", VAL_FINISHING_HOLE_PUNCH_PBLL},
                                                  {L"Right", VAL_FINISHING_HOLE_PUNCH_PRLB}};
    for (int count = 0; count < 3; ++count)
        for (const auto& [side, position] : sides)
            punches.push_back({L"HolePunch" + counts[count] + side, count + 2, position, side == L"Left"});
    return punches;
}

struct Device {
    unsigned int counts;    // bits of countNames
    unsigned int positions; // bits of positionFeatures
};

std::vector<OfferedFeature> FeaturesOf(const Device& device) {
    OfferedFeature punch{"hole-punch-api"};
    for (unsigned int bit = 0; bit < 4; ++bit)
        if (device.counts >> bit & 1) punch.values.push_back(countNames[bit]);
    std::vector<OfferedFeature> all = {punch};
    for (unsigned int bit = 0; bit < 3; ++bit)
        if (device.positions >> bit & 1) all.push_back({positionFeatures[bit]});
    return all;
}

// What an option becomes: the position, if the device offers positions for that many holes; without any
// positions, the count, for the side where holes are unless said otherwise; and plain punching only where the
// device knows nothing else.
Values Expected(const Punch& punch, const Device& device) {
    Values values;
    values.fill(VAL_UNSPECIFIED);
    if (punch.holes == 0 && device.positions == 0 && device.counts == 8)
        values[0] = VAL_FINISHING_HOLE_PUNCH_ON;
    if (punch.holes < 2) return values;
    const unsigned int bit = static_cast<unsigned int>(punch.holes) - 2;
    if (device.positions >> bit & 1)
        values[bit + 1] = punch.position;
    else if (punch.isLeft && device.positions == 0 && (device.counts >> bit & 1))
        values[0] = VAL_FINISHING_2_HOLE_PUNCH + static_cast<int>(bit);
    return values;
}

TEST(HolePunch, OfTheTicketBecomesWhatTheDeviceOffers) {
    for (Device device{}; device.counts < 16; ++device.counts) {
        for (device.positions = 0; device.positions < 8; ++device.positions) {
            JobUnderTest job;
            job.device = FeaturesOf(device);
            for (const Punch& punch : AllPunches()) {
                job.ticket.Choose(L"JobHolePunch", punch.option);
                const Values expected = Expected(punch, device);
                for (std::size_t at = 0; at < expected.size(); ++at) {
                    const Answered answer = Ask(job, features[at]);
                    ASSERT_EQ(answer.value, expected[at])
                        << CXString(punch.option.c_str()) << ", counts " << device.counts << ", positions "
                        << device.positions << ", feature " << features[at];
                    ASSERT_EQ(answer.isSpecified, expected[at] != VAL_UNSPECIFIED);
                }
            }
        }
    }
}

TEST(HolePunch, ComesFromTheOtherPlacesWhereTheTicketSaysNothing) {
    // option: null if the ticket does not know the feature
    const Rows<const wchar_t*, const char*, std::optional<int>, bool, Answered> cases{
        {nullptr, "3-hole-punch", 8020, false, {true, 8021, FeatureValueSource::PublicDocumentSettings}},
        {nullptr, nullptr, 8020, false, {true, 8020, FeatureValueSource::AttributeBytes}},
        {nullptr, nullptr, {}, false, {}},
        {nullptr, nullptr, {}, true, {true, 8022, FeatureValueSource::FactoryDefault}},
        {L"", "3-hole-punch", {}, false, {true, 8021, FeatureValueSource::PublicDocumentSettings}},
        {L"Twaddle", "3-hole-punch", {}, false, {true, 8021, FeatureValueSource::PublicDocumentSettings}},
        {L"None", "3-hole-punch", {}, false, {false, 5001, FeatureValueSource::PrintTicket}},
        {L"None", "3-hole-punch", {}, true, {true, 8022, FeatureValueSource::FactoryDefault}},
        {L"HolePunchDualLeft", "3-hole-punch", {}, true, {true, 8020, FeatureValueSource::PrintTicket}},
    };
    for (const auto& row : cases) {
        const auto& [option, text, attribute, isRequired, expected] = row;
        SCOPED_TRACE(&row - cases.data());
        JobUnderTest job;
        job.device = {
            {"hole-punch-api", {"2-hole-punch", "3-hole-punch", "4-hole-punch"}, isRequired, "4-hole-punch"}};
        if (option != nullptr) job.ticket.Choose(L"JobHolePunch", option);
        if (text != nullptr) job.AddElement("hole-punch-api", text);
        if (attribute)
            job.AddAttribute(FEAT_FINISHING_HOLE_PUNCH, AttributeBytesValue::FromOption(*attribute));
        EXPECT_EQ(Ask(job, FEAT_FINISHING_HOLE_PUNCH), expected);
    }
    JobUnderTest job;
    job.ticket.Choose(L"JobHolePunch", L"HolePunch");
    job.AddElement("hole-punch-api", "3-hole-punch");
    EXPECT_EQ(Ask(job, FEAT_FINISHING_HOLE_PUNCH), Answered()) << "of a device that has no puncher";
}

} // namespace
