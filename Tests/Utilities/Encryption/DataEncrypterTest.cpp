#include "Support/PackedRecords.h"

#include <Encryption/DataEncrypter.h>
#include <Encryption/SipHash.h>
#include <LowLevelFacilities/Strings/Base64.h>

#include <gtest/gtest.h>

#include <set>

namespace {

CXString Scramble(const CXString& text, int mode = DataEncrypter::passwordMode) {
    return DataEncrypter::EncryptStringWithOrvelSimple1(text, mode).getAsCXStringFromUtf8Buffer();
}

CXString Unscramble(const CXString& form, int mode = DataEncrypter::passwordMode) {
    return DataEncrypter::DecryptStringWithOrvelSimple1(form, mode).getAsCXStringFromUtf8Buffer();
}

TEST(DataEncrypter, GivesBackTheTextInPrintableForm) {
    std::set<std::wstring> forms;
    for (const CXString& text :
         {CXString(L"1"), CXString(L"1234"), CXString(L"12345678"), CXString(L"123456789"),
          CXString(L"p\u00E4ss \u20AC \xD83D\xDE00"), CXString(L"a\0b", 3)}) {
        for (const int mode : {0, 1, -1}) {
            const CXString form = Scramble(text, mode);
            EXPECT_EQ(form, Scramble(text, mode));
            EXPECT_TRUE(forms.emplace(form.View()).second); // no two alike, in text or in mode
            EXPECT_EQ(text, Unscramble(form, mode));
            EXPECT_NE("", RefusalOf([&] { (void)Unscramble(form, mode + 1); }));
            for (const wchar_t character : form.View())
                EXPECT_TRUE(character > L' ' && character < 0x7F && character != L'"' && character != L'\\');
        }
    }
    EXPECT_EQ(L"", Scramble(L""));
    EXPECT_EQ(L"", Unscramble(L""));
}

TEST(DataEncrypter, ReadsTheDocumentedExample) { EXPECT_EQ(L"ATJVsQUArL+anXpx/A==", Scramble(L"1234")); }

TEST(DataEncrypter, CoversEqualPartsOfDifferentTextsDifferently) {
    // The same start in both, byte for byte: a stream that did not depend on the text would show it.
    ByteBuffer first;
    ByteBuffer second;
    for (auto [form, text] : {std::pair{&first, L"12345678A"}, {&second, L"12345678B"}})
        ASSERT_TRUE(Base64::decode(Scramble(text).View().data(), Scramble(text).View().size(), *form));
    int equal = 0;
    for (std::size_t i = 1; i < first.size(); ++i)
        equal += first[i] == second[i] ? 1 : 0;
    EXPECT_LE(equal, 3);
    // Nor does the stream begin anew within a text.
    const CXString twice = Scramble(L"1234567812345678");
    ASSERT_TRUE(Base64::decode(twice.View().data(), twice.View().size(), first));
    EXPECT_FALSE(std::equal(first.end() - 8, first.end(), first.end() - 16));
}

TEST(DataEncrypter, RefusesWhatItDidNotMakeOrWhatWasChanged) {
    const CXString form = Scramble(L"1234");
    for (int length = 1; length < form.GetLength(); ++length) {
        if (form.Left(length) + L"==" == form || form.Left(length) + L"=" == form) continue; // same bytes
        EXPECT_NE("", RefusalOf([&] { (void)Unscramble(form.Left(length)); })) << length;
    }
    ByteBuffer bytes;
    ASSERT_TRUE(Base64::decode(form.View().data(), form.View().size(), bytes));
    for (std::size_t bit = 0; bit < 8 * bytes.size(); ++bit) {
        ByteBuffer changed = bytes;
        changed[bit / 8] = static_cast<unsigned char>(changed[bit / 8] ^ (1u << (bit % 8)));
        std::string text(Base64::encodedLength(changed.size()), '\0');
        Base64::encode(changed.data(), changed.size(), text.data());
        EXPECT_NE("", RefusalOf([&] { (void)Unscramble(CXString(text.c_str())); })) << bit;
    }
    for (const wchar_t* const other : {L"1234", L"AQ==", L"AQAAAAAAAAAA", L"\u20AC"}) {
        const std::string refusal = RefusalOf([&] { (void)Unscramble(other); });
        EXPECT_NE("", refusal);
        EXPECT_EQ(std::string::npos, refusal.find("1234"));
    }
}

TEST(SipHash, GivesThePublishedValues) {
    constexpr SipHash::Key key{0x0706050403020100u, 0x0F0E0D0C0B0A0908u};
    ByteBuffer bytes;
    for (unsigned char i = 0; i < 15; ++i)
        bytes.push_back(i);
    EXPECT_EQ(0xA129CA6149BE45E5u, SipHash::hash(key, bytes));
    EXPECT_EQ(0x726FDB47DD0E0E31u, SipHash::hash(key, {}));
}

} // namespace
