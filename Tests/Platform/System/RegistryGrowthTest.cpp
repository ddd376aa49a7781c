#include "Support/Growth.h"

#include <System/RegistryFile.h>

using namespace OvPlatform;

namespace {

GrowthMaker Registry(const std::string& head, const Item& item) {
    return [=](std::size_t n) {
        return
            [text = "OvRegistry 1\n" + head + Times(n, item)] { PrintRegistryFile(ParseRegistryFile(text)); };
    };
}

const GrowthCase cases[] = {
    {"ReadsRegistryKeys",
     Registry("",
              [](std::size_t i) { return "[HKEY_CURRENT_USER\\a\\" + std::to_string(i) + "]\n@=\"x\"\n"; }),
     28'000},
    {"ReadsRegistryValues",
     Registry("[HKEY_CURRENT_USER\\a]\n",
              [](std::size_t i) { return "\"v" + std::to_string(i) + "\"=dword:1\n"; }),
     50'000},
};

class RegistryGrowth : public testing::TestWithParam<GrowthCase> {};

TEST_P(RegistryGrowth, IsLinear) { ExpectLinearGrowth(GetParam()); }

INSTANTIATE_TEST_SUITE_P(, RegistryGrowth, testing::ValuesIn(cases), GrowthName);

} // namespace
