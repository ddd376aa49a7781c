#include "Support/AttributeLists.h"
#include "Support/NoDisplayHelp.h"
#include "Support/PackedRecords.h"
#include "Support/Rows.h"

#include <gtest/gtest.h>

#include <vector>

namespace {

using Id = AttributeBytesFeatureId;
using Value = AttributeBytesValue;

AttributeBytes Option(LONG id, LONG value) { return {Id(id), Value::FromOption(value)}; }

std::vector<LONG> NumbersOf(const AttributeBytesIndexedList& list) {
    std::vector<LONG> numbers;
    for (auto i = list.GetIndexedListIterator(); list.IsValidIndexedListIterator(i);
         list.IncrementIndexedListIterator(i))
        numbers.push_back(list.GetAttributeBytesPtr(i)->GetFeatureId().GetFeatureId());
    return numbers;
}

TEST(AttributeBytesIndexedList, TellsValueAndWhetherItWasStated) {
    const auto list = Attributes(
        {{10, Value::FromOption(5111)}, {20, Value::FromOption(5110, false)}, {30, Value::FromInteger(-7)}});
    for (const auto& [feature, value, newValue, isFound] :
         Rows<LONG, LONG, LONG, bool>{{10, 5111, 5111, true},  // stated
                                      {20, 5110, 5001, false}, // stored, not stated
                                      {30, 5001, 5001, false}, // of another kind
                                      {40, 5001, 5001, false}}) {
        bool found = !isFound;
        EXPECT_EQ(value, list.GetOptionValue(Id(feature), &found)) << feature;
        EXPECT_EQ(isFound, found) << feature;
        EXPECT_EQ(newValue, list.GetNewOptionValueId(Id(feature), nullptr)) << feature;
    }
    bool found = true;
    EXPECT_EQ(-7, list.GetIntegerValue(Id(30), nullptr));
    EXPECT_EQ(0, list.GetIntegerValue(Id(10), &found));
    EXPECT_FALSE(found);
}

TEST(AttributeBytesIndexedList, HasEachFeatureOnceInOrderOfNumbersAndTheLastCounts) {
    AttributeBytesRawList raw;
    for (const AttributeBytes& attribute :
         {Option(30, 1), Option(-1, 2), Option(30, 3), Option(10, 4), Option(30, 5), Option(20, 6)})
        raw.AddAttributeBytes(attribute);
    AttributeBytesIndexedList list;
    list.AddAttributeBytes(Option(1, 1));
    list.ImportFromRawList(raw);
    // Adding goes by the same rule, wherever the number lies.
    AttributeBytesIndexedList added;
    for (auto i = raw.GetIterator(); raw.IsValid(i);)
        added.AddAttributeBytes(raw.GetNextAttributeBytesSharedPtr(i));
    for (const auto* const each : {&list, &added}) {
        EXPECT_EQ((std::vector<LONG>{10, 20, 30, -1}), NumbersOf(*each));
        EXPECT_EQ(5, each->GetOptionValue(Id(30), nullptr));
    }

    AttributeBytesRawList back;
    back.AddAttributeBytes(Option(1, 1));
    back.ImportFromIndexedList(list);
    list.DeleteAllAttributeBytes();
    EXPECT_EQ(4u, back.GetNumberOfAttributeBytes());
    EXPECT_NE("", RefusalOf([&] { list.AddAttributeBytes(AttributeBytesList::SharedPtr()); }));
}

TEST(AttributeBytesIndexedList, OpensCollectionsByNumberAndMembersOfASetByPosition) {
    const auto first = Attributes({{895, Value::FromOption(7203)}});
    const auto second = Attributes({{895, Value::FromOption(7204, false)}});
    const auto elements = Attributes<AttributeBytesRawList>(
        {{921, Value::FromCollection(first)}, {921, Value::FromCollection(second)}});
    const auto annotations = Attributes({{921, Value::FromCollectionSet(elements)}});
    const auto list =
        Attributes({{544, Value::FromCollection(annotations, false)}, {10, Value::FromOption(5111)}});

    // Through one and the same list, which gives up what it held.
    AttributeBytesIndexedList at = list;
    ASSERT_TRUE(at.GetCollection(Id(544), at));
    ASSERT_TRUE(at.GetCollection(Id(921), at));
    EXPECT_EQ((std::vector<LONG>{0, 1}), NumbersOf(at));
    AttributeBytesIndexedList element;
    ASSERT_TRUE(at.GetCollectionByIndex(0, element));
    EXPECT_EQ(7203, element.GetOptionValue(Id(895), nullptr));
    ASSERT_TRUE(at.GetCollectionByIndex(1, element));
    EXPECT_EQ(7204, element.GetOptionValue(Id(895), nullptr));

    EXPECT_FALSE(at.GetCollectionByIndex(2, element));
    EXPECT_TRUE(element.IsEmpty());
    element = first;
    EXPECT_FALSE(list.GetCollection(Id(10), element)); // no collection
    EXPECT_TRUE(element.IsEmpty());
    EXPECT_FALSE(list.GetCollection(Id(11), element));
}

TEST(AttributeBytesValue, NestsToALimitAndTakesNoKnownKindForUnknown) {
    AttributeBytesIndexedList list;
    for (unsigned int depth = 0; depth < Value::maxDepth; ++depth) {
        const AttributeBytes holder(Id(1), depth % 2 == 0 ? Value::FromCollection(list)
                                                          : Value::FromCollectionSet(list));
        list.DeleteAllAttributeBytes();
        list.AddAttributeBytes(holder);
    }
    EXPECT_NE("", RefusalOf([&] { (void)Value::FromCollection(list); }));
    EXPECT_NE("", RefusalOf([&] { (void)Value::FromCollectionSet(list); }));
    EXPECT_NE("", RefusalOf([] { (void)Value::FromUnknown(6, {}); }));
    EXPECT_NE("", RefusalOf([] { (void)Value::FromUnknown(16, {}); }));
}

class Names : public NoDisplayHelp {
public:
    [[nodiscard]] CPString GetFeatureName(Id feature) const override {
        return feature == Id(199) ? "booklet" : "";
    }
    [[nodiscard]] CPString GetOptionName(Id, LONG option) const override {
        return option == 5111 ? "on" : "";
    }
};

TEST(AttributeBytesList, DumpsALineForEachAttribute) {
    const auto members = Attributes({{155, Value::FromDimension(Dimension(210, Dimension::Millimeter))},
                                     {163, Value::FromInteger(80, false)}});
    const auto list = Attributes({{193, Value::FromCollection(members)},
                                  {199, Value::FromOption(5111)},
                                  {489, Value::FromString(L"7.1\u00E9")},
                                  {600, Value::FromUnknown(9, ByteBuffer(3))}});
    EXPECT_EQ("193: collection of 2\n"
              "  155: dimension 210 mm\n"
              "  163: integer 80, not specified\n"
              "199 (booklet): option 5111 (on)\n"
              "489: string \"7.1\xC3\xA9\"\n"
              "600: kind 9, 3 bytes\n",
              list.AttributeBytesDump(Names()));
}

} // namespace
