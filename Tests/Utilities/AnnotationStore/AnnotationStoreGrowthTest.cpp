#include "Support/Growth.h"
#include "Support/InApartment.h"

#include <AnnotationStore/AnnotationStore.h>

namespace {

GrowthMaker ReadingAndWriting(const char* open, std::string item, const char* close) {
    return [=](std::size_t n) {
        const auto numbered = [&](std::size_t i) {
            return std::string(item).replace(item.find('#'), 1, std::to_string(i));
        };
        return [text = open + Times(n, numbered) + close] {
            AnnotationStore store(CPString(text.c_str()), true);
            store.AddOrReplaceAnnotationDefinition(L"0", store.GetAnnotationDefinitionByName(L"0"));
            EXPECT_FALSE(store.GetAnnotationStoreXml().isEmpty());
        };
    };
}

const GrowthCase cases[] = {
    {"ReadsDefinitions",
     ReadingAndWriting("<AnnotationStore version='1.0'>",
                       "<Definition name='#'><annotation-col-api/></Definition>", "</AnnotationStore>"),
     AnnotationStore::maxDefinitions / 4},
    {"ReadsElements",
     ReadingAndWriting("<AnnotationStore version='1.0'><Definition name='0'><annotation-col-api>",
                       "<text-api>#</text-api>", "</annotation-col-api></Definition></AnnotationStore>"),
     40'000},
};

class AnnotationStoreGrowth : public InApartment<testing::TestWithParam<GrowthCase>> {};
TEST_P(AnnotationStoreGrowth, IsInProportionToTheText) { ExpectLinearGrowth(GetParam()); }
INSTANTIATE_TEST_SUITE_P(, AnnotationStoreGrowth, testing::ValuesIn(cases), GrowthName);

} // namespace
