// Where the dictionaries are, and what asking them takes.

#include "Support/AllocationCount.h"

#include <DataModel/FeatureNameTable.h>
#include <DataModel/NativeXmlConfigCpssOptionValueDictionary.h>
#include <DataModel/NativeXmlConfigFeatureDictionary.h>
#include <DataModel/NativeXmlConfigOptionValueDictionary.h>
#include <DataModel/ValueNameTable.h>
#include <FeatureAccess/FeatureRuleTable.h>

#include <dlfcn.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <vector>

using namespace DataModelIds;

namespace {

// A copy in the program would answer in place of what the filters in it are answered from.
TEST(Dictionaries, ExistOnceInAProcess) {
    const FeatureRule* const inCollection =
        FindFeatureRule(FeatureQuestionKind::Option, {FEAT_MEDIA_COL, FEAT_INPUT_TRAY});
    for (const void* const place : std::initializer_list<const void*>{
             reinterpret_cast<const void*>(&NativeXmlConfigFeatureDictionary::Instance),
             reinterpret_cast<const void*>(&NativeXmlConfigOptionValueDictionary::Instance),
             reinterpret_cast<const void*>(&NativeXmlConfigCpssOptionValueDictionary::Instance),
             GetFeatureNames().data(), GetValueNames().data(), inCollection,
             inCollection->words.Rows().data()}) {
        Dl_info found{};
        ASSERT_NE(dladdr(place, &found), 0);
        EXPECT_TRUE(std::filesystem::path(found.dli_fname)
                        .filename()
                        .string()
                        .starts_with("libov-FilterUtilities.so"))
            << found.dli_fname;
    }
}

TEST(OptionDictionaries, AllocateNothingForWhoHoldsText) {
    // Each is made at its first use.
    const auto& features = *NativeXmlConfigFeatureDictionary::Instance();
    const auto& cpssOptions = *NativeXmlConfigCpssOptionValueDictionary::Instance();
    const auto& options = *NativeXmlConfigOptionValueDictionary::Instance();
    std::vector<const NativeXmlConfigOptionValueEntry*> entries;
    options.GetAllEntries(entries);
    std::size_t found =
        cpssOptions.IsCpssNamePresent(FEAT_JOB_TYPE, "") + std::size_t{features.IsXmlConfigNamePresent("")};
    const std::size_t allocated = AllocationCount::Of([&] {
        for (const NativeXmlConfigOptionValueEntry* const option : entries)
            found += options.IsXmlConfigNamePresent(option->feature, option->xmlConfigOptionName.view());
        found += options.IsPrintTicketNamePresent(FEAT_FINISHING_STAPLE, L"StapleTopLeft");
        found += cpssOptions.IsCpssNamePresent(FEAT_JOB_TYPE, "hold-job");
        found += cpssOptions.IsValuePresent(FEAT_JOB_TYPE, VAL_JOB_TYPE_HOLD);
        found += features.IsXmlConfigNamePresent("Staple");
    });
    EXPECT_EQ(0u, allocated);
    EXPECT_EQ(found, entries.size() + 4);
}

} // namespace
