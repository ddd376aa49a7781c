#pragma once

#include "Fonts/FontFace.h"

#include <fontconfig/fontconfig.h>

#include <windows.h>

#include <filesystem>
#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>
#include <tuple>
#include <vector>

namespace OvPlatform {

/// The fonts of the system, as Fontconfig finds them when they are first asked for. Fonts with outlines in a
/// TrueType or OpenType file and with a name of their own are members; in a variable font it is the default
/// instance. Threads may share it.
class SystemFonts {
public:
    struct Name {
        std::wstring language; // a locale in lower case, "en-us" say
        std::wstring text;
    };

    /// Fonts that go by one family name.
    struct Family {
        std::vector<Name> names; // the first is the one that families are ordered by
    };

    /// What a font that was asked for came to.
    struct Choice {
        std::shared_ptr<const FontFace> face;
        std::wstring name; // of the face, in the font's own spelling
    };

    /// The one of the process. Throws std::bad_alloc.
    static SystemFonts& Instance();

    /// Ordered by name, ordinally without regard to case. Collected when they are first asked for, which
    /// takes a look into each font's file. Throws std::bad_alloc.
    const std::vector<Family>& Families();

    /// The font of that name, a family's in any language or a full one, whose weight and slant come nearest.
    /// Where there is none, what Fontconfig takes in its place. Null if the system has no font that opens.
    /// Throws std::bad_alloc.
    std::shared_ptr<const Choice> Choose(const LOGFONTW& asked);

private:
    struct Member {
        FcPattern* pattern = nullptr; // the configuration's
        std::filesystem::path file;
        std::uint32_t index = 0;
        std::vector<Name> families;
        std::vector<std::wstring> foldedNames; // of the family and full ones, in all languages
        std::shared_ptr<const FontFace> face;  // null until it is asked for
        bool isNone = false;                   // known to be no font that counts
    };
    using Request = std::tuple<std::wstring, LONG, bool, BYTE>; // folded name, weight, italic, charset

    SystemFonts();
    void AddMember(FcPattern* pattern);
    static bool Open(Member& member);
    static std::vector<Family> CollectFamilies(const std::vector<Member>& members);
    std::shared_ptr<const Choice> Find(const LOGFONTW& asked, const Request& request);
    Member* Nearest(FcPattern* request, const std::vector<Member*>& candidates);

    FcConfig* m_configuration;
    std::mutex m_lock; // of what follows
    std::vector<Member> m_members;
    std::optional<std::vector<Family>> m_families;
    std::map<Request, std::shared_ptr<const Choice>> m_choices;
};

} // namespace OvPlatform
