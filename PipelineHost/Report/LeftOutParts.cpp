#include "Report/LeftOutParts.h"

#include "Common/Text.h"

#include <Locale/ShownText.h>

#include <algorithm>

namespace OvPipeline {

namespace {

constexpr std::uint64_t namesOfAKind = 3;
constexpr std::size_t nameBound = 60;

} // namespace

void LeftOutParts::Add(const std::string& kind, const std::string& name) {
    auto place =
        std::find_if(m_kinds.begin(), m_kinds.end(), [&](const Kind& known) { return known.kind == kind; });
    if (place == m_kinds.end()) place = m_kinds.insert(place, {kind, 0, {}});
    if (++place->count > namesOfAKind) return;
    place->names += (place->names.empty() ? "" : ", ") + OvPlatform::Shown(name, nameBound);
}

std::string LeftOutParts::Text() const {
    std::string text;
    for (const Kind& kind : m_kinds)
        text += (text.empty() ? "" : ", ") + Counted(kind.count, kind.kind + " part") + " (" + kind.names +
                (kind.count > namesOfAKind ? ", ...)" : ")");
    return text;
}

} // namespace OvPipeline
