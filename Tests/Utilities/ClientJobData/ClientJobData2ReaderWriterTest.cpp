#include "Support/PackedRecords.h"
#include "Support/Rows.h"

#include <ClientJobData/ClientJobData2ReaderWriter.h>

#include <gtest/gtest.h>

namespace {

TEST(ClientJobData2ReaderWriter, ReadsBackWhatItWroteAsTextAndAsBytes) {
    ClientJobData2ReaderWriter data;
    data.AddOrReplaceInParameterList(205, CXString(L"0:first;"));
    data.AddOrReplaceInParameterList(-1, ByteBuffer(3, 0xFF));
    data.AddOrReplaceInParameterList(203, CXString(L"\u00E9\xD83D\xDE00"));
    data.AddOrReplaceInParameterList(0, CXString());
    data.AddOrReplaceInParameterList(205, CXString(L"1:second;"));

    const ClientJobData2ReaderWriter read(data.GetClientJobData2());
    CXString text;
    ByteBuffer bytes;
    for (const auto& [id, asText, asBytes] : Rows<LONG, const wchar_t*, ByteBuffer>{
             {205, L"1:second;", BytesOf({'1', ':', 's', 'e', 'c', 'o', 'n', 'd', ';'})},
             {203, L"\u00E9\xD83D\xDE00", BytesOf({0xC3, 0xA9, 0xF0, 0x9F, 0x98, 0x80})},
             {-1, L"\uFFFD\uFFFD\uFFFD", ByteBuffer(3, 0xFF)},
             {0, L"", {}}}) {
        EXPECT_TRUE(read.GetStringFromParameterList(id, text));
        EXPECT_EQ(asText, text);
        EXPECT_TRUE(read.GetByteBufferFromParameterList(id, bytes));
        EXPECT_EQ(asBytes, bytes);
    }
    text = L"old";
    EXPECT_FALSE(read.GetStringFromParameterList(207, text));
    EXPECT_EQ(L"", text);
    bytes.resize(9);
    EXPECT_FALSE(read.GetByteBufferFromParameterList(207, bytes));
    EXPECT_TRUE(bytes.empty());
    EXPECT_EQ(data.GetClientJobData2(), read.GetClientJobData2());
}

TEST(ClientJobData2ReaderWriter, WritesTheDocumentedExample) {
    ClientJobData2ReaderWriter data;
    data.AddOrReplaceInParameterList(205, CXString(L"0:MQAyAA==;"));
    data.AddOrReplaceInParameterList(207, CXString());
    const ByteBuffer expected = BytesOf({
        'O',  'J',  1,                                                                 // envelope
        0xCD, 1,    0,    11,   '0', ':', 'M', 'Q', 'A', 'y', 'A', 'A', '=', '=', ';', // 205
        1,    0,    0,                                                                 // 207
        0xA2, 0x4E, 0x88, 0xCE,
    });
    EXPECT_EQ(expected, data.GetClientJobData2());
}

TEST(ClientJobData2ReaderWriter, KeepsWhatItDoesNotKnow) {
    // Parameter 5 is of form 2.
    const ByteBuffer bytes = Packed("OJ", BytesOf({5, 2, 3, 1, 2, 3, 0, 0, 1, 'x'}));
    ClientJobData2ReaderWriter data(bytes);
    ByteBuffer value;
    EXPECT_FALSE(data.GetByteBufferFromParameterList(5, value));
    EXPECT_EQ(bytes, data.GetClientJobData2());
    data.AddOrReplaceInParameterList(7, CXString(L"y"));
    EXPECT_EQ(Packed("OJ", BytesOf({5, 2, 3, 1, 2, 3, 0, 0, 1, 'x', 0, 0, 1, 'y'})),
              data.GetClientJobData2());
    data.AddOrReplaceInParameterList(5, CXString(L"z"));
    EXPECT_TRUE(data.GetByteBufferFromParameterList(5, value));
}

TEST(ClientJobData2ReaderWriter, RefusesDamage) {
    ClientJobData2ReaderWriter data;
    data.AddOrReplaceInParameterList(203, CXString(L"<annotations/>"));
    data.AddOrReplaceInParameterList(205, CXString(L"0:MQAyAA==;"));
    ForEachDamage(data.GetClientJobData2(), [](const ByteBuffer& damaged) {
        EXPECT_NE("", RefusalOf([&] { ClientJobData2ReaderWriter reader(damaged); }));
    });

    ByteBuffer tooMany(3 * (ClientJobData2ReaderWriter::maxParameters + 1));
    for (const auto& [content, message] : Rows<ByteBuffer, const char*>{
             {BytesOf({5, 0}), "cut"},
             {BytesOf({5, 0, 2, 'x'}), "cut"},
             {BytesOf({5, 0, 0xFF, 0xFF, 0xFF, 0xFF, 15}), "cut"},
             {BytesOf({0xFF, 0xFF, 0xFF, 0xFF, 15, 0, 0, 0, 0, 0}), "number of a parameter"},
             {tooMany, "too many"},
             {ByteBuffer(ClientJobData2ReaderWriter::maxBytes), "larger"}}) {
        const std::string refusal =
            RefusalOf([&content = content] { ClientJobData2ReaderWriter reader(Packed("OJ", content)); });
        EXPECT_NE(std::string::npos, refusal.find(message)) << refusal;
    }
}

TEST(ClientJobData2ReaderWriter, TakesNoMoreThanItCouldReadAgain) {
    ClientJobData2ReaderWriter data;
    data.AddOrReplaceInParameterList(1, ByteBuffer(ClientJobData2ReaderWriter::maxBytes - 100));
    const ByteBuffer before = data.GetClientJobData2();
    EXPECT_NE("", RefusalOf([&] { data.AddOrReplaceInParameterList(2, ByteBuffer(100)); }));
    ClientJobData2ReaderWriter read(before);
    EXPECT_NE("", RefusalOf([&] { read.AddOrReplaceInParameterList(2, ByteBuffer(100)); }));
    EXPECT_EQ(before, data.GetClientJobData2());
    data.AddOrReplaceInParameterList(1, CXString(L"short"));
    for (LONG id = 2; id <= static_cast<LONG>(ClientJobData2ReaderWriter::maxParameters); ++id)
        data.AddOrReplaceInParameterList(id, CXString());
    EXPECT_NE("", RefusalOf([&] { data.AddOrReplaceInParameterList(0, CXString()); }));
    data.AddOrReplaceInParameterList(1, CXString(L"again"));
    EXPECT_NO_THROW(ClientJobData2ReaderWriter(data.GetClientJobData2()));
}

} // namespace
