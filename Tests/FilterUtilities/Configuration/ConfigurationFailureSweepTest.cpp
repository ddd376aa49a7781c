#include "Support/ConfiguredQueue.h"
#include "Support/FailureSweep.h"
#include "Support/InApartment.h"

#include <Configuration/XmlConfigurationReading.h>

#include <gtest/gtest.h>

namespace {

using ConfigurationFailureSweepTest = InApartment<>;

struct World {
    [[nodiscard]] std::string State() const { return {}; } // a question changes nothing
};

void Sweep(const char* name, const FailureSweep<World>::Operation& operation) {
    FailureSweep<World>([] { return std::make_unique<World>(); }, operation).Run(name);
}

const std::string head = ConfiguredFeature("Staple", "None") + ConfiguredFeature("Color", "x");

TEST_F(ConfigurationFailureSweepTest, AReadingTellsItsFault) {
    for (const char* const tail : {"", "<Foo/><Bar/>"})
        Sweep(tail, [tail](World&) {
            const XmlConfigurationReading reading{CPString(("<c>" + head + tail + "</c>").c_str())};
            const auto& fault = reading.GetFault();
            SweptAnswer answer(fault ? std::to_string(fault->line) : std::string());
            for (const auto& [name, outcome] : reading.GetElements())
                answer.text += " " + std::string(name.view()) + std::to_string(static_cast<int>(outcome));
            answer.hasFailed = fault && !fault->isInContent;
            return answer;
        });
}

TEST_F(ConfigurationFailureSweepTest, ASetReportsIt) {
    Sweep("a set", [](World&) {
        std::string members;
        const auto set = ConfiguredFeatures(head);
        for (unsigned int i = 0; i < set.NumberOfFeatures(); ++i)
            members += set.GetFeature(i).GetDebugDisplayString().utf8Bytes();
        return SweptAnswer(members);
    });
}

} // namespace
