#include "Support/Rows.h"

#include <LowLevelFacilities/WideStrings/ByteBuffer.h>

#include <gtest/gtest.h>

namespace {

TEST(ByteBuffer, TakesBytesAlsoFromItself) {
    const unsigned char bytes[] = {1, 2, 3};
    ByteBuffer buffer(bytes, 3);
    buffer.appendLpbyte(buffer.getLpbyte(), 3);
    EXPECT_EQ((std::vector<unsigned char>{1, 2, 3, 1, 2, 3}), buffer);
    buffer.setWithLpbyte(buffer.getLpbyte() + 2, 2);
    EXPECT_EQ((std::vector<unsigned char>{3, 1}), buffer);
    buffer.setWithLpbyte(nullptr, 0);
    EXPECT_TRUE(buffer.empty());
}

TEST(ByteBuffer, ReadsHexadecimalTextOrRefusesIt) {
    for (const auto& [text, isLenient, isGood, bytes] :
         Rows<const wchar_t*, bool, bool, std::vector<unsigned char>>{
             {L"00fFA5", false, true, {0, 0xFF, 0xA5}},
             {L"0", false, false, {}},
             {L"0g", false, false, {}},
             {L"00 ff", false, false, {}},
             {L" 00-ff\n", true, true, {0, 0xFF}},
             {L"0 0", true, false, {}}}) {
        ByteBuffer buffer(1, 9);
        EXPECT_EQ(isGood, ByteBuffer::ConvertHexBinaryStringToByteBuffer(text, buffer, isLenient));
        EXPECT_EQ(bytes, buffer) << CXString(text);
    }
}

} // namespace
