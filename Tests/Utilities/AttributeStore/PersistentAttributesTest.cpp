#include "Support/AttributeLists.h"
#include "Support/NoDisplayHelp.h"
#include "Support/PackedRecords.h"
#include "Support/Rows.h"

#include <gtest/gtest.h>

#include <climits>

namespace {

using Id = AttributeBytesFeatureId;
using NameSpaceId = AttributeBytesNameSpacesId;
using Value = AttributeBytesValue;

const NameSpaceId ours = PersistentAttributes::GetDataModelDocPropNameSpaceId();

AttributeBytesRawList ListOf(const ByteBuffer& bytes) {
    AttributeBytesRawList list;
    PersistentAttributes(bytes, false, nullptr).GetAttributeBytesListForNameSpace(ours, list);
    return list;
}

/// A store with one name space, ours, of these records.
ByteBuffer StoreOfRecords(const ByteBuffer& records) {
    ByteBuffer content = BytesOf({1});
    PackedBytes::appendNumber(content, static_cast<std::uint32_t>(records.size()));
    content.insert(content.end(), records.begin(), records.end());
    return Packed("OA", content);
}

std::string TextOf(const AttributeBytesList& list) {
    return std::string(list.AttributeBytesDump(NoDisplayHelp()).view());
}

/// One attribute of everything, in ascending order of numbers.
AttributeBytesRawList Everything() {
    Dimension third;
    third.SetValue(Number::fromFraction(1, 3, true), Dimension::Point);
    const std::vector<Value> values{
        Value::FromOption(5001, false),
        Value::FromOption(-1),
        Value::FromInteger(-100, false),
        Value::FromInteger(INT_MIN),
        Value::FromInteger(INT_MAX),
        Value::FromString(L"", false),
        Value::FromString(L"\u00E9 \u20AC \xD83D\xDE00"),
        Value::FromString(CXString(L"a\0b", 3)),
        Value::FromString(CXString(std::wstring(300, L'x'))),
        Value::FromDimension(Dimension()),
        Value::FromDimension(Dimension(-1e-300, Dimension::XpsUnit), false),
        Value::FromDimension(Dimension(1e300, Dimension::Micron)),
        Value::FromDimension(third),
        Value::FromUnknown(0, {}),
        Value::FromUnknown(15, ByteBuffer(200, 7), false),
    };
    AttributeBytesRawList list;
    LONG id = 0;
    for (const Value& value : values)
        list.AddAttributeBytes(AttributeBytes(Id(id += 37), value));
    const auto few = Attributes<AttributeBytesRawList>({{0, values[1]}, {-10, values[6]}, {-3, values[10]}});
    const Value collection = Value::FromCollection(few);
    const auto set = Attributes({{0, collection}, {1, Value::FromCollectionSet(few, false)}});
    for (const auto& [last, value] :
         Rows<LONG, Value>{{INT_MAX, collection},
                           {INT_MIN, Value::FromCollectionSet(set, false)},
                           {-2, Value::FromCollection(AttributeBytesRawList())},
                           {-1, Value::FromCollectionSet(AttributeBytesRawList())}})
        list.AddAttributeBytes(AttributeBytes(Id(last), value));
    return list;
}

TEST(PersistentAttributes, ReadsBackWhatItWrote) {
    // The text shows all but the last digits of dimensions and unknown bytes; those the second store shows.
    const AttributeBytesRawList list = Everything();
    const ByteBuffer bytes = StoreOf(list);
    PersistentAttributes store(bytes, false, nullptr);
    for (int time = 0; time < 2; ++time) {
        AttributeBytesRawList read;
        ASSERT_TRUE(store.GetAttributeBytesListForNameSpace(ours, read));
        EXPECT_EQ(TextOf(list), TextOf(read));
        EXPECT_EQ(bytes, StoreOf(read));
    }

    // Out of order, and with a feature twice: the last stays.
    const auto mixed = Attributes<AttributeBytesRawList>({{9, Value::FromInteger(0)},
                                                          {7, Value::FromInteger(1)},
                                                          {9, Value::FromInteger(2)},
                                                          {8, Value::FromInteger(3)}});
    EXPECT_EQ("7: integer 1\n8: integer 3\n9: integer 2\n", TextOf(ListOf(StoreOf(mixed))));
}

TEST(PersistentAttributes, WritesTheDocumentedExample) {
    Dimension width;
    width.SetValue(Number(210), Dimension::Millimeter);
    const auto media = Attributes({{155, Value::FromDimension(width)}, {163, Value::FromInteger(80, false)}});
    const auto list = Attributes<AttributeBytesRawList>({{193, Value::FromCollection(media)},
                                                         {199, Value::FromOption(5111)},
                                                         {489, Value::FromString(L"7.1")}});
    const ByteBuffer expected = BytesOf({
        'O',  'A',  1,                        // envelope
        1,    25,                             // name space 1
        0xC1, 1,    0xF5, 11,                 // 193: collection
        0x9B, 1,    0x94, 5,    1,   0xD2, 1, // its 155: 210 mm
        7,    0x42, 0xA0, 1,                  // its 163: 80, not specified
        5,    0x51, 0xF7, 0x27,               // 199: option 5111
        0xA1, 2,    0x73, '7',  '.', '1',     // 489: "7.1"
        0xB9, 0x4A, 0xD9, 0x76,
    });
    EXPECT_EQ(expected, StoreOf(list));
}

TEST(PersistentAttributes, IsSmallEnoughForATicket) {
    // A ticket takes 1,500 bytes.
    AttributeBytesRawList list;
    for (LONG id = 0; id < 280; ++id)
        list.AddAttributeBytes(AttributeBytes(Id(40 + 4 * id), Value::FromOption(5000 + 30 * id)));
    EXPECT_LE(StoreOf(list).size(), 1500u);
}

TEST(PersistentAttributes, KeepsWhatItDoesNotKnow) {
    // Name space 7 is not of records; name space 1 holds a kind 9 and, in a set, a kind 12.
    const ByteBuffer foreign =
        BytesOf({1, 8, 10, 0x39, 0xAB, 0, 0x66, 0x1C, 0x2C, 0xEE, 5, 4, 0xFF, 0xFF, 0xFF, 0xFF});
    const ByteBuffer bytes = Packed("OA", foreign);
    PersistentAttributes store(bytes, false, nullptr);
    EXPECT_EQ(bytes, store.GetPersistentAttributesState());

    AttributeBytesRawList list;
    EXPECT_NE("", RefusalOf([&] { store.GetAttributeBytesListForNameSpace(NameSpaceId(7), list); }));
    EXPECT_FALSE(store.GetAttributeBytesListForNameSpace(NameSpaceId(2), list));
    ASSERT_TRUE(store.GetAttributeBytesListForNameSpace(ours, list));
    EXPECT_EQ(bytes, StoreOf(list, bytes));
    list.AddAttributeBytes(AttributeBytes(Id(40), Value::FromOption(1)));
    const ByteBuffer changed = StoreOf(list, bytes);
    EXPECT_EQ(TextOf(list), TextOf(ListOf(changed)));
    const ByteBuffer tail = BytesOf({5, 4, 0xFF, 0xFF, 0xFF, 0xFF});
    EXPECT_TRUE(std::equal(tail.begin(), tail.end(), changed.end() - 4 - static_cast<int>(tail.size())));
}

TEST(PersistentAttributes, BeginsEmptyAndHoldsWhatWasSetWithoutAnIntermediateWrite) {
    PersistentAttributes store({}, false, nullptr);
    AttributeBytesRawList list = Everything();
    EXPECT_FALSE(store.GetAttributeBytesListForNameSpace(ours, list));
    AttributeBytesNameSpaces nameSpaces;
    nameSpaces.SetNameSpaceAttributes(ours, list);
    nameSpaces.SetNameSpaceAttributes(NameSpaceId(-1), Everything());
    store.SetAttributeBytesNameSpaces(nameSpaces);
    EXPECT_TRUE(store.GetAttributeBytesListForNameSpace(NameSpaceId(-1), list));
    EXPECT_EQ(TextOf(Everything()), TextOf(list));
}

TEST(PersistentAttributes, RefusesEveryCutAndEveryChangedBit) {
    ForEachDamage(StoreOf(Everything()), [](const ByteBuffer& damaged) {
        EXPECT_NE("", RefusalOf([&] { PersistentAttributes(damaged, false, nullptr); }));

        PersistentAttributes tolerant(damaged, true, nullptr);
        EXPECT_NE("", tolerant.GetDamage());
        EXPECT_NE("", RefusalOf([&] { (void)tolerant.GetPersistentAttributesState(); }));
    });
}

TEST(PersistentAttributes, ShowsWhatStandsBeforeTheCutIfAsked) {
    AttributeBytesRawList list;
    for (LONG id = 10; id < 20; ++id)
        list.AddAttributeBytes(AttributeBytes(Id(id), Value::FromOption(id)));
    const ByteBuffer bytes = StoreOf(list);
    PersistentAttributes half(ByteBuffer(bytes.data(), bytes.size() / 2), true, nullptr);
    AttributeBytesRawList seen;
    ASSERT_TRUE(half.GetAttributeBytesListForNameSpace(ours, seen));
    ASSERT_FALSE(seen.IsEmpty());
    EXPECT_TRUE(TextOf(list).starts_with(TextOf(seen)));
}

TEST(PersistentAttributes, SaysWhatIsWrongInAStoreWhoseCheckFits) {
    // Collections, each the only member of the one before.
    ByteBuffer tooDeep;
    for (unsigned int depth = 0; depth <= Value::maxDepth; ++depth) {
        ByteBuffer holder = BytesOf({0, 0xF5});
        PackedBytes::appendNumber(holder, static_cast<std::uint32_t>(tooDeep.size()));
        if (tooDeep.size() < 7) holder = BytesOf({0, static_cast<int>(tooDeep.size() << 5 | 0x15)});
        holder.insert(holder.end(), tooDeep.begin(), tooDeep.end());
        tooDeep = holder;
    }
    ByteBuffer tooMany(2 * (PersistentAttributes::maxRecords + 1));
    ByteBuffer longNumerator = BytesOf({0, 0xF4, 0x85, 4, 5, 0x81, 4});
    longNumerator.insert(longNumerator.end(), 513, 1);
    longNumerator.push_back(1);
    ByteBuffer manyNameSpaces(2 * (PersistentAttributes::maxNameSpaces + 1));
    for (const auto& [what, bytes, message] : Rows<const char*, ByteBuffer, const char*>{
             {"empty envelope", BytesOf({'O', 'A', 1}), "too short"},
             {"newer version", BytesOf({'O', 'A', 2, 0, 0, 0, 0}), "version"},
             {"name space without a length", Packed("OA", BytesOf({1})), "head of a name space"},
             {"name space number too large", Packed("OA", BytesOf({0xFF, 0xFF, 0xFF, 0xFF, 15, 0, 0, 0})),
              "number of a name space"},
             {"name spaces without end", Packed("OA", manyNameSpaces), "too many name spaces"},
             {"number of 35 bits", StoreOfRecords(BytesOf({0xFF, 0xFF, 0xFF, 0xFF, 0x7F, 0})), "cut"},
             {"number with a useless zero", StoreOfRecords(BytesOf({0x81, 0, 0})), "cut"},
             {"numbers past 32 bits", StoreOfRecords(BytesOf({0xFF, 0xFF, 0xFF, 0xFF, 15, 0, 0, 0})),
              "number is too large, at byte 6 of name space 1"},
             {"number without a value", StoreOfRecords(BytesOf({0, 0, 5})), "record is cut, at byte 3"},
             {"value beyond the end", StoreOfRecords(BytesOf({5, 0x31})), "longer than what holds it"},
             {"short length in long form", StoreOfRecords(BytesOf({5, 0xF3, 1, 'a'})), "shortest form"},
             {"option without a value", StoreOfRecords(BytesOf({5, 0x11})), "option"},
             {"string with a surrogate", StoreOfRecords(BytesOf({5, 0x73, 0xED, 0xA0, 0x80})), "UTF-8"},
             {"dimension over zero", StoreOfRecords(BytesOf({5, 0x94, 5, 1, 1, 0})), "dimension"},
             {"dimension of unit 13", StoreOfRecords(BytesOf({5, 0x94, 13, 1, 1, 1})), "dimension"},
             {"negative zero", StoreOfRecords(BytesOf({5, 0x74, 0x85, 0, 1})), "dimension"},
             {"dimension with a useless zero", StoreOfRecords(BytesOf({5, 0xB4, 5, 2, 1, 0, 1})),
              "dimension"},
             {"dimension with 513 bytes", StoreOfRecords(longNumerator), "dimension"},
             {"collections too deep", StoreOfRecords(tooDeep), "too deep"},
             {"records without end", StoreOfRecords(tooMany), "too many records"},
             {"more than a megabyte", ByteBuffer(PersistentAttributes::maxBytes + 1), "larger"},
         }) {
        const std::string refusal =
            RefusalOf([&bytes = bytes] { PersistentAttributes(bytes, false, nullptr); });
        EXPECT_NE(std::string::npos, refusal.find(message)) << what << ": " << refusal;
        EXPECT_NE(std::string::npos, PersistentAttributes(bytes, true, nullptr).GetDamage().find(message))
            << what;
    }
}

TEST(PersistentAttributes, WritesNothingThatItWouldNotRead) {
    const auto refusalOf = [](const AttributeBytesRawList& list) {
        return RefusalOf([&] { (void)StoreOf(list); });
    };
    AttributeBytesRawList tooMany;
    for (std::size_t i = 0; i <= PersistentAttributes::maxRecords; ++i)
        tooMany.AddAttributeBytes(AttributeBytes(Id(static_cast<LONG>(i)), Value::FromUnknown(9, {})));
    EXPECT_NE("", refusalOf(tooMany));

    // One that just fits, and one a byte larger.
    constexpr std::size_t overhead = 3 + 1 + 3 + 1 + 1 + 3 + 4;
    for (const std::size_t beyond : {0u, 1u}) {
        const ByteBuffer content(PersistentAttributes::maxBytes - overhead + beyond);
        const auto large = Attributes<AttributeBytesRawList>({{1, Value::FromUnknown(9, content)}});
        EXPECT_EQ(beyond == 0, refusalOf(large).empty());
    }

    Dimension many;
    many.SetValue(Number(CXString(std::wstring(1300, L'9')), true), Dimension::Inch);
    EXPECT_NE("", refusalOf(Attributes<AttributeBytesRawList>({{1, Value::FromDimension(many)}})));
    const auto unit = Attributes<AttributeBytesRawList>(
        {{1, Value::FromDimension(Dimension(1, static_cast<Dimension::UnitsEnum>(13)))}});
    EXPECT_NE("", refusalOf(unit));

    // A refused change changes nothing.
    AttributeBytesNameSpaces good;
    good.SetNameSpaceAttributes(ours, Everything());
    PersistentAttributes store({}, false, nullptr);
    store.SetAttributeBytesNameSpaces(good);
    const ByteBuffer before = store.GetPersistentAttributesState();
    AttributeBytesNameSpaces bad;
    bad.SetNameSpaceAttributes(NameSpaceId(0), {});
    bad.SetNameSpaceAttributes(ours, unit);
    EXPECT_NE("", RefusalOf([&] { store.SetAttributeBytesNameSpaces(bad); }));
    EXPECT_EQ(before, store.GetPersistentAttributesState());
    AttributeBytesNameSpaces many256;
    for (LONG id = 2; id < 258; ++id)
        many256.SetNameSpaceAttributes(NameSpaceId(id), {});
    EXPECT_NE("", RefusalOf([&] { store.SetAttributeBytesNameSpaces(many256); }));
    EXPECT_EQ(before, store.GetPersistentAttributesState());
}

} // namespace
