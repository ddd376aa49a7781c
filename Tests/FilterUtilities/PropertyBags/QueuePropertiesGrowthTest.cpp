// A queue's properties where the platform fails, and where there is much of them.
#include "Support/FailureSweep.h"
#include "Support/Growth.h"
#include "Support/InApartment.h"

#include <PropertyBags/NativeComPrinterPropertyBagAccess.h>
#include <PropertyBags/NativeComQueuePropertyBagAccess.h>
#include <Spooler/QueuePropertyBag.h>

#include <gtest/gtest.h>

#include <memory>

namespace {

using Access = NativeComQueuePropertyBagAccess;

struct QueueOf {
    explicit QueueOf(const std::string& properties) {
        plain.SetPrinterPropertyBagString(L"OrvelQueueProperties", CXString(properties.c_str()));
    }
    [[nodiscard]] std::string State() const {
        CXString text;
        plain.GetPrinterPropertyBagString(L"OrvelQueueProperties", text);
        return std::string(CPString(text).view());
    }

    CComPtr<IPrinterPropertyBag> bag = [] {
        CComPtr<IPrinterPropertyBag> made;
        OvPlatform::QueuePropertyBag::Create({}, OvPlatform::QueuePropertyBag::Access::ReadWrite, &made);
        return made;
    }();
    NativeComPrinterPropertyBagAccess plain{
        *bag, NativeComPrinterPropertyBagAccess::AssertionPolicyBagIsHeldElsewhere};
    Access queue{L"", {}, plain};
};

using QueuePropertiesSweepTest = InApartment<>;
TEST_F(QueuePropertiesSweepTest, NoFailureOfThePlatformPassesWithoutAWord) {
    const auto make = [] {
        return std::make_unique<QueueOf>("<q><OrvelDeviceSettings>old</OrvelDeviceSettings></q>");
    };
    const auto setAndRead = [](QueueOf& world) {
        CPString text;
        world.queue.SetOrvelDeviceSettings("new");
        world.queue.GetOrvelDeviceSettings(text);
        return SweptAnswer(std::string(text.view()));
    };
    FailureSweep<QueueOf>(make, setAndRead).Run("setting and reading");
}

// Replaces and reads settings, where the document is of n items, and the settings too.
GrowthCase SettingsAmong(const char* name, const Item& item) {
    return {name, [item](std::size_t n) {
                const auto world = std::make_shared<QueueOf>("<q>" + Times(n, item) + "</q>");
                const CPString settings(Times(n, [](std::size_t) { return "]]>"; }).c_str());
                return [world, settings] {
                    CPString text;
                    world->queue.SetOrvelDeviceSettings(settings);
                    world->queue.GetOrvelDeviceSettings(text);
                    ASSERT_EQ(text, settings);
                };
            }};
}
const GrowthCase growthCases[] = {
    SettingsAmong("OtherItems", [](std::size_t) { return "<Other>x</Other> "; }),
    SettingsAmong("RepeatedItems",
                  [](std::size_t) { return "<OrvelDeviceSettings>x</OrvelDeviceSettings><!-- -->"; }),
    {"LongNamesOfOptions",
     [](std::size_t n) {
         const CXString name(Times(n, [](std::size_t) { return "a-_b.c"; }).c_str());
         return [name] {
             QueueOf world("");
             Access device(L"", {name}, world.plain);
             device.SetInstallableOptions({{name, name}});
             ASSERT_EQ(Access::TryGetInstallableOption(world.bag, name), name);
         };
     }},
};

class QueuePropertiesGrowthTest : public InApartment<testing::TestWithParam<GrowthCase>> {};
TEST_P(QueuePropertiesGrowthTest, IsLinear) { ExpectLinearGrowth(GetParam()); }
INSTANTIATE_TEST_SUITE_P(All, QueuePropertiesGrowthTest, testing::ValuesIn(growthCases), GrowthName);

} // namespace
