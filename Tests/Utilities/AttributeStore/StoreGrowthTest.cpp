#include "Support/AttributeLists.h"
#include "Support/Growth.h"

namespace {

const AttributeBytesNameSpacesId ours = PersistentAttributes::GetDataModelDocPropNameSpaceId();

ByteBuffer StoreOf(std::size_t n) {
    AttributeBytesRawList list;
    for (std::size_t i = 0; i < n; ++i)
        list.AddAttributeBytes(AttributeBytes(AttributeBytesFeatureId(static_cast<LONG>(i)),
                                              AttributeBytesValue::FromInteger(static_cast<int>(i))));
    return StoreOf(list);
}

AttributeBytesIndexedList ListOf(const ByteBuffer& bytes) {
    AttributeBytesRawList raw;
    AttributeBytesIndexedList list;
    EXPECT_TRUE(PersistentAttributes(bytes, false, nullptr).GetAttributeBytesListForNameSpace(ours, raw));
    list.ImportFromRawList(raw);
    return list;
}

constexpr std::size_t most = PersistentAttributes::maxRecords / 4;

const GrowthCase cases[] = {
    {"WritesStores", [](std::size_t n) { return [n] { StoreOf(n); }; }, most},
    {"ReadsStoresAndAsksForAll",
     [](std::size_t n) {
         return [n, bytes = StoreOf(n)] {
             const AttributeBytesIndexedList list = ListOf(bytes);
             for (std::size_t i = 0; i < n; ++i) {
                 bool found = false;
                 EXPECT_EQ(static_cast<int>(i),
                           list.GetIntegerValue(AttributeBytesFeatureId(static_cast<LONG>(i)), &found));
             }
         };
     },
     most},
};

class StoreGrowth : public testing::TestWithParam<GrowthCase> {};

TEST_P(StoreGrowth, IsLinear) { ExpectLinearGrowth(GetParam()); }

INSTANTIATE_TEST_SUITE_P(, StoreGrowth, testing::ValuesIn(cases), GrowthName);

} // namespace
