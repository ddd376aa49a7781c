#include "FilterUtilities/FeatureAccess/JobUnderTest.h"
#include "Support/Rows.h"

namespace {

using namespace DataModelIds;

// Which of what a device offers is asked for; what becomes of it then is the room's below.
TEST(HolePunch, OfTheTicketBecomesWhatTheDeviceOffers) {
    constexpr tagFeatureEnum features[] = {FEAT_FINISHING_HOLE_PUNCH, FEAT_FINISHING_2_HOLE_PUNCH,
                                           FEAT_FINISHING_3_HOLE_PUNCH, FEAT_FINISHING_4_HOLE_PUNCH};
    const OfferedFeature two{"two-hole-punch-api"};
    const OfferedFeature three{"three-hole-punch-api"};
    const OfferedFeature four{"four-hole-punch-api"};
    const auto punch = [](const std::vector<std::string>& counts) {
        return OfferedFeature{"hole-punch-api", counts};
    };
    const OfferedFeature allCounts = punch({"2-hole-punch", "3-hole-punch", "4-hole-punch"});
    constexpr int none = VAL_UNSPECIFIED;
    // One value for each of the four features.
    const Rows<std::vector<OfferedFeature>, const wchar_t*, std::vector<int>> cases{
        {{punch({"hole-punch-on"})}, L"HolePunch", {10669, none, none, none}},
        {{punch({"hole-punch-on"})}, L"None", {none, none, none, none}},
        {{punch({"hole-punch-on", "2-hole-punch"})}, L"HolePunch", {none, none, none, none}},
        {{punch({"hole-punch-on"}), two}, L"HolePunch", {none, none, none, none}},
        {{allCounts}, L"HolePunchDualLeft", {8020, none, none, none}},
        {{allCounts}, L"HolePunchTripleLeft", {8021, none, none, none}},
        {{allCounts}, L"HolePunchQuadLeft", {8022, none, none, none}},
        {{allCounts}, L"HolePunchDualTop", {none, none, none, none}},
        {{punch({"2-hole-punch"})}, L"HolePunchTripleLeft", {none, none, none, none}},
        {{punch({}), two, three, four}, L"HolePunchDualTop", {none, 8036, none, none}},
        {{punch({}), two, three, four}, L"HolePunchTripleBottom", {none, none, 8037, none}},
        {{punch({}), two, three, four}, L"HolePunchQuadRight", {none, none, none, 8038}},
        {{allCounts, three}, L"HolePunchTripleLeft", {none, none, 8035, none}},
        {{allCounts, three}, L"HolePunchDualLeft", {none, none, none, none}},
    };
    for (const auto& row : cases) {
        const auto& [device, option, expected] = row;
        JobUnderTest job;
        job.device = device;
        job.ticket.Choose(L"JobHolePunch", option);
        std::vector<int> values;
        for (const tagFeatureEnum feature : features)
            values.push_back(Ask(job, feature).value);
        EXPECT_EQ(values, expected) << &row - cases.data();
    }
}

TEST(HolePunch, ComesFromTheOtherPlacesWhereTheTicketSaysNothing) {
    using enum FeatureValueSource;
    const AttributeBytesValue two = AttributeBytesValue::FromOption(8020);
    const Rows<std::optional<std::wstring>, Given, bool, Answered> cases{
        {std::nullopt, {.text = "3-hole-punch", .attribute = two}, false, By(PublicDocumentSettings, 8021)},
        {std::nullopt, {.attribute = two}, false, By(AttributeBytes, 8020)},
        {std::nullopt, {}, true, By(FactoryDefault, 8022)},
        {L"Twaddle", {.text = "3-hole-punch"}, false, By(PublicDocumentSettings, 8021)},
        {L"None", {.text = "3-hole-punch"}, false, UnspecifiedBy(PrintTicket)},
        {L"None", {.text = "3-hole-punch"}, true, By(FactoryDefault, 8022)},
        {L"HolePunchDualLeft", {.text = "3-hole-punch"}, true, By(PrintTicket, 8020)},
    };
    for (const auto& row : cases) {
        const auto& [option, given, isRequired, expected] = row;
        JobUnderTest job;
        job.device = {
            {"hole-punch-api", {"2-hole-punch", "3-hole-punch", "4-hole-punch"}, isRequired, "4-hole-punch"}};
        if (option) job.ticket.Choose(L"JobHolePunch", *option);
        job.Put(FEAT_FINISHING_HOLE_PUNCH, given);
        EXPECT_EQ(Ask(job, FEAT_FINISHING_HOLE_PUNCH), expected) << &row - cases.data();
    }
    JobUnderTest job;
    job.ticket.Choose(L"JobHolePunch", L"HolePunch");
    job.AddElement("hole-punch-api", "3-hole-punch");
    EXPECT_EQ(Ask(job, FEAT_FINISHING_HOLE_PUNCH), nothing) << "of a device that has no puncher";
}

} // namespace
