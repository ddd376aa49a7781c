#include "Support/Rows.h"
#include "Support/VirtualSlots.h"

#include <atlcomcli.h>
#include <dwrite.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cwctype>
#include <string>
#include <vector>

namespace {

CComPtr<IDWriteFontCollection> Collection() {
    CComPtr<IUnknown> unknown;
    CComPtr<IDWriteFontCollection> collection;
    EXPECT_EQ(S_OK, DWriteCreateFactory(DWRITE_FACTORY_TYPE_SHARED, __uuidof(IDWriteFactory), &unknown));
    EXPECT_EQ(S_OK, static_cast<IDWriteFactory*>(unknown.p)->GetSystemFontCollection(&collection));
    return collection;
}

CComPtr<IDWriteLocalizedStrings> NamesOf(IDWriteFontCollection* collection, UINT32 index) {
    CComPtr<IDWriteFontFamily> family;
    CComPtr<IDWriteLocalizedStrings> names;
    EXPECT_EQ(S_OK, collection->GetFontFamily(index, &family));
    EXPECT_EQ(S_OK, family->GetFamilyNames(&names));
    return names;
}

std::wstring TextOf(IDWriteLocalizedStrings* names, UINT32 index) {
    UINT32 length = 0;
    EXPECT_EQ(S_OK, names->GetStringLength(index, &length));
    std::wstring text(length + 1, L'#');
    EXPECT_EQ(S_OK, names->GetString(index, text.data(), length + 1));
    EXPECT_EQ(L'\0', text[length]);
    text.pop_back();
    return text;
}

bool Find(IDWriteFontCollection* collection, const wchar_t* name, UINT32& index) {
    BOOL exists = FALSE;
    EXPECT_EQ(S_OK, collection->FindFamilyName(name, &index, &exists));
    return exists != FALSE;
}

TEST(FontCollection, FamiliesAreOrderedByNameWithoutRegardToCase) {
    const auto collection = Collection();
    std::vector<std::wstring> names;
    for (UINT32 index = 0; index < collection->GetFontFamilyCount(); ++index) {
        names.push_back(TextOf(NamesOf(collection, index), 0));
        for (wchar_t& unit : names.back())
            unit = unit == L'\u00E4' ? L'\u00C4'
                                     : static_cast<wchar_t>(std::towupper(static_cast<wint_t>(unit)));
    }
    EXPECT_TRUE(std::is_sorted(names.begin(), names.end()));
    EXPECT_EQ(names.end(), std::adjacent_find(names.begin(), names.end())) << "a family stands once";
    EXPECT_EQ(L"\u00C4HNLICH", names.back()) << "ordinally: behind all of ASCII";
    CComPtr<IDWriteFontFamily> family;
    EXPECT_TRUE(FAILED(collection->GetFontFamily(static_cast<UINT32>(names.size()), &family)));
}

TEST(FontCollection, AFamilyIsFoundByAnyOfItsNames) {
    const auto collection = Collection();
    UINT32 japanese = 0;
    UINT32 english = 1;
    EXPECT_TRUE(Find(collection, L"\u4E8C\u3064\u306E\u540D\u524D", japanese));
    EXPECT_TRUE(Find(collection, L"tWO nAMES", english));
    EXPECT_EQ(japanese, english);
    for (const wchar_t* absent : {L"Nameless", L"truncated", L"text", L"Two Name", L""}) {
        UINT32 index = 0;
        EXPECT_FALSE(Find(collection, absent, index)) << absent;
        EXPECT_EQ(0xFFFFFFFF, index);
    }
    UINT32 member = 0;
    EXPECT_TRUE(Find(collection, L"Member Two", member)) << "of a file with several fonts";
}

TEST(FontCollection, NamesAreToldByLocale) {
    const auto collection = Collection();
    UINT32 index = 0;
    ASSERT_TRUE(Find(collection, L"Two Names", index));
    const auto names = NamesOf(collection, index);
    EXPECT_EQ(2U, names->GetCount());
    for (const auto& [locale, exists, text] :
         Rows<const wchar_t*, BOOL, const wchar_t*>{{L"en-us", TRUE, L"Two Names"},
                                                    {L"JA-jp", TRUE, L"\u4E8C\u3064\u306E\u540D\u524D"},
                                                    {L"fr-fr", FALSE, L""}}) {
        BOOL found = FALSE;
        ASSERT_EQ(S_OK, names->FindLocaleName(locale, &index, &found));
        EXPECT_EQ(exists, found) << locale;
        EXPECT_EQ(text, found ? TextOf(names, index) : L"");
    }
    wchar_t buffer[9] = L"########";
    EXPECT_EQ(E_NOT_SUFFICIENT_BUFFER, names->GetString(0, buffer, 9));
    EXPECT_STREQ(L"", buffer);
    EXPECT_EQ(S_OK, names->GetLocaleName(0, buffer, 9));
    EXPECT_STREQ(L"en-us", buffer);
    UINT32 length = 0;
    EXPECT_TRUE(FAILED(names->GetStringLength(2, &length)));
    EXPECT_TRUE(FAILED(names->GetString(2, buffer, 9)));
}

TEST(FontCollection, OperationsStandInThePublishedSlots) {
    EXPECT_EQ(3U, SlotOf(&IDWriteFactory::GetSystemFontCollection));
    EXPECT_EQ(23U, SlotOf(&IDWriteFactory::CreateGlyphRunAnalysis));
    EXPECT_EQ(6U, SlotOf(&IDWriteFontCollection::GetFontFromFontFace));
    EXPECT_EQ(6U, SlotOf(&IDWriteFontFamily::GetFamilyNames));
    EXPECT_EQ(8U, SlotOf(&IDWriteLocalizedStrings::GetString));
    // A family answers for the list of fonts that it extends, and for itself.
    CComPtr<IDWriteFontFamily> family;
    ASSERT_EQ(S_OK, Collection()->GetFontFamily(0, &family));
    CComPtr<IDWriteFontList> list;
    EXPECT_EQ(S_OK, family->QueryInterface(__uuidof(IDWriteFontList), reinterpret_cast<void**>(&list)));
    CComPtr<IUnknown> factory;
    EXPECT_EQ(E_NOINTERFACE,
              DWriteCreateFactory(DWRITE_FACTORY_TYPE_SHARED, __uuidof(IDWriteFontFamily), &factory));
}

} // namespace
