#include "Fonts/SystemFonts.h"

#include "Fonts/FontTables.h"
#include "Locale/CharacterCase.h"
#include "Locale/Utf16.h"

#include <algorithm>
#include <new>
#include <optional>
#include <set>

namespace OvPlatform {
namespace {

using Pattern = std::unique_ptr<FcPattern, Destroyer<FcPatternDestroy>>;
using FontSet = std::unique_ptr<FcFontSet, Destroyer<FcFontSetDestroy>>;

// How many requests are remembered; a job asks for a few.
constexpr std::size_t maximumChoices = 1000;

/// Languages that a charset stands for, where the face that was asked for is not there.
struct CharsetLanguage {
    BYTE charset;
    const char* language;
};
constexpr CharsetLanguage charsetLanguages[] = {
    {SHIFTJIS_CHARSET, "ja"},
    {129, "ko"},
    {134, "zh-cn"},
    {136, "zh-tw"},
    {161, "el"},
    {162, "tr"},
    {163, "vi"},
    {177, "he"},
    {ARABIC_CHARSET, "ar"},
    {204, "ru"},
    {222, "th"},
};

/// Locales of languages that fonts give without their region.
struct LanguageLocale {
    std::wstring_view language;
    std::wstring_view locale;
};
constexpr LanguageLocale languageLocales[] = {
    {L"en", L"en-us"}, {L"ja", L"ja-jp"}, {L"ko", L"ko-kr"}, {L"de", L"de-de"},
    {L"fr", L"fr-fr"}, {L"es", L"es-es"}, {L"it", L"it-it"}, {L"ru", L"ru-ru"},
};

template <class Object>
Object* Made(Object* object) {
    if (object == nullptr) throw std::bad_alloc();
    return object;
}

std::optional<std::string_view> Text(const FcPattern* pattern, const char* object, int number = 0) {
    FcChar8* text = nullptr;
    if (FcPatternGetString(pattern, object, number, &text) != FcResultMatch) return {};
    return reinterpret_cast<const char*>(text);
}

std::wstring LocaleOf(std::string_view language) {
    std::wstring name = FromUtf8(language);
    const auto* const known =
        std::find_if(std::begin(languageLocales), std::end(languageLocales),
                     [&name](const LanguageLocale& row) { return row.language == name; });
    return known != std::end(languageLocales) ? std::wstring(known->locale) : name;
}

std::vector<SystemFonts::Name> Names(const FcPattern* pattern, const char* object,
                                     const char* languageObject) {
    std::vector<SystemFonts::Name> names;
    for (int number = 0; const auto text = Text(pattern, object, number); ++number)
        names.push_back({LocaleOf(Text(pattern, languageObject, number).value_or("")), FromUtf8(*text)});
    return names;
}

/// The American English name, or else the first.
const SystemFonts::Name& ChiefName(const std::vector<SystemFonts::Name>& names) {
    const auto english = std::find_if(
        names.begin(), names.end(), [](const SystemFonts::Name& name) { return name.language == L"en-us"; });
    return english != names.end() ? *english : names.front();
}

std::wstring Upper(std::wstring text) {
    std::transform(text.begin(), text.end(), text.begin(), SimpleUpper);
    return text;
}

std::wstring_view AskedName(const LOGFONTW& asked) {
    const std::wstring_view name(asked.lfFaceName, LF_FACESIZE);
    return name.substr(0, name.find(L'\0'));
}

Pattern RequestPattern(const LOGFONTW& asked) {
    Pattern pattern(Made(FcPatternCreate()));
    const std::string name = ToUtf8(AskedName(asked));
    bool isWhole = name.empty() || FcPatternAddString(pattern.get(), FC_FAMILY,
                                                      reinterpret_cast<const FcChar8*>(name.c_str()));
    const LONG weight = asked.lfWeight == FW_DONTCARE ? FW_NORMAL : std::clamp<LONG>(asked.lfWeight, 1, 1000);
    isWhole &= FcPatternAddDouble(pattern.get(), FC_WEIGHT,
                                  FcWeightFromOpenTypeDouble(static_cast<double>(weight))) != FcFalse;
    isWhole &= FcPatternAddInteger(pattern.get(), FC_SLANT,
                                   asked.lfItalic ? FC_SLANT_ITALIC : FC_SLANT_ROMAN) != FcFalse;
    for (const CharsetLanguage& row : charsetLanguages)
        if (row.charset == asked.lfCharSet)
            isWhole &= FcPatternAddString(pattern.get(), FC_LANG,
                                          reinterpret_cast<const FcChar8*>(row.language)) != FcFalse;
    if (!isWhole) throw std::bad_alloc();
    return pattern;
}

/// Whether the file has, under that index, a font with outlines and with a name of its own.
bool IsNamedOutlineFont(const FontFile& file, std::uint32_t index) {
    const auto tables = FontTables::Read(file.Bytes(), index);
    if (!tables || !tables->Has(FontTag("name"))) return false;
    return tables->Has(FontTag("glyf")) || tables->Has(FontTag("CFF ")) || tables->Has(FontTag("CFF2"));
}

} // namespace

SystemFonts& SystemFonts::Instance() {
    static SystemFonts& fonts = *new SystemFonts;
    return fonts;
}

SystemFonts::SystemFonts() : m_configuration(Made(FcConfigReference(nullptr))) {
    const FcFontSet* fonts = FcConfigGetFonts(m_configuration, FcSetSystem);
    for (int font = 0; fonts != nullptr && font < fonts->nfont; ++font)
        AddMember(fonts->fonts[font]);
}

void SystemFonts::AddMember(FcPattern* pattern) {
    int index = 0;
    const auto file = Text(pattern, FC_FILE);
    // Instances of a variable font, other than its default, have a number in the upper half.
    if (!file || FcPatternGetInteger(pattern, FC_INDEX, 0, &index) != FcResultMatch || index >> 16 != 0)
        return;
    Member member;
    member.pattern = pattern;
    member.file = *file;
    member.index = static_cast<std::uint32_t>(index);
    member.families = Names(pattern, FC_FAMILY, FC_FAMILYLANG);
    if (member.families.empty()) return;
    for (const Name& name : member.families)
        member.foldedNames.push_back(FoldCase(name.text));
    for (const Name& name : Names(pattern, FC_FULLNAME, FC_FULLNAMELANG))
        member.foldedNames.push_back(FoldCase(name.text));
    m_members.push_back(std::move(member));
}

const std::vector<SystemFonts::Family>& SystemFonts::Families() {
    const std::lock_guard guard(m_lock);
    if (m_families) return *m_families;
    for (Member& member : m_members) {
        if (member.face || member.isNone) continue;
        const auto file = FontFile::Open(member.file);
        member.isNone = !file || !IsNamedOutlineFont(*file, member.index);
    }
    return m_families.emplace(CollectFamilies(m_members));
}

std::vector<SystemFonts::Family> SystemFonts::CollectFamilies(const std::vector<Member>& members) {
    std::map<std::wstring, Family> byName; // in upper case
    for (const Member& member : members) {
        if (member.isNone) continue;
        const Name& chief = ChiefName(member.families);
        Family& family = byName[Upper(chief.text)];
        if (family.names.empty()) family.names.push_back(chief);
        // The first name in each language: the others are those of faces within the family.
        for (const Name& name : member.families)
            if (std::none_of(family.names.begin(), family.names.end(),
                             [&name](const Name& other) { return other.language == name.language; }))
                family.names.push_back(name);
    }
    std::vector<Family> families;
    families.reserve(byName.size());
    for (auto& [name, family] : byName)
        families.push_back(std::move(family));
    return families;
}

std::shared_ptr<const SystemFonts::Choice> SystemFonts::Choose(const LOGFONTW& asked) {
    const Request request(FoldCase(AskedName(asked)), asked.lfWeight, asked.lfItalic != 0, asked.lfCharSet);
    const std::lock_guard guard(m_lock);
    if (const auto known = m_choices.find(request); known != m_choices.end()) return known->second;
    auto choice = Find(asked, request);
    if (m_choices.size() >= maximumChoices) m_choices.clear();
    if (choice) m_choices.emplace(request, choice);
    return choice;
}

std::shared_ptr<const SystemFonts::Choice> SystemFonts::Find(const LOGFONTW& asked, const Request& request) {
    const std::wstring& wanted = std::get<0>(request);
    // A font that does not open is as good as none; then the next one is taken.
    for (;;) {
        std::vector<Member*> named;
        std::vector<Member*> all;
        for (Member& member : m_members) {
            if (member.isNone) continue;
            all.push_back(&member);
            if (std::find(member.foldedNames.begin(), member.foldedNames.end(), wanted) !=
                member.foldedNames.end())
                named.push_back(&member);
        }
        const Pattern pattern = RequestPattern(asked);
        if (named.empty() && !FcConfigSubstitute(m_configuration, pattern.get(), FcMatchPattern))
            throw std::bad_alloc();
        FcDefaultSubstitute(pattern.get());
        Member* const nearest = Nearest(pattern.get(), named.empty() ? all : named);
        if (nearest == nullptr) return nullptr;
        if (!Open(*nearest)) continue;
        const auto own = std::find_if(nearest->families.begin(), nearest->families.end(),
                                      [&wanted](const Name& name) { return FoldCase(name.text) == wanted; });
        const Name& name = own != nearest->families.end() ? *own : ChiefName(nearest->families);
        return std::make_shared<const Choice>(Choice{nearest->face, name.text});
    }
}

SystemFonts::Member* SystemFonts::Nearest(FcPattern* request, const std::vector<Member*>& candidates) {
    const FontSet set(Made(FcFontSetCreate()));
    for (const Member* member : candidates) {
        FcPatternReference(member->pattern);
        if (!FcFontSetAdd(set.get(), member->pattern)) {
            FcPatternDestroy(member->pattern);
            throw std::bad_alloc();
        }
    }
    FcFontSet* sets[] = {set.get()};
    FcResult result = FcResultNoMatch;
    const Pattern match(FcFontSetMatch(m_configuration, sets, 1, request, &result));
    int index = 0;
    if (!match || FcPatternGetInteger(match.get(), FC_INDEX, 0, &index) != FcResultMatch) return nullptr;
    const auto found = std::find_if(candidates.begin(), candidates.end(), [&](const Member* member) {
        return member->index == static_cast<std::uint32_t>(index) &&
               member->file == *Text(match.get(), FC_FILE);
    });
    return found != candidates.end() ? *found : nullptr;
}

bool SystemFonts::Open(Member& member) {
    if (member.face) return true;
    auto file = FontFile::Open(member.file);
    if (file && IsNamedOutlineFont(*file, member.index))
        member.face = FontFace::Open(std::move(file), member.index);
    member.isNone = !member.face;
    return !member.isNone;
}

} // namespace OvPlatform
