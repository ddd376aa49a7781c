#include "Dom/RecentTexts.h"

#include <algorithm>
#include <cstring>
#include <memory>
#include <new>
#include <string>

namespace OvPlatform {

bool RecentTexts::Known::IsFor(const DomSettings& settings) const noexcept {
    return preservesWhiteSpace == settings.preserveWhiteSpace &&
           maxElementDepth == settings.maxElementDepth && maxXmlSize == settings.maxXmlSize;
}

RecentTexts& RecentTexts::OfProcess() {
    static RecentTexts texts;
    return texts;
}

RecentTexts::Mark RecentTexts::MarkOf(std::string_view bytes) noexcept {
    constexpr std::size_t places = 16;
    constexpr Mark factor = 0x9E3779B97F4A7C15; // odd, its bits evenly spread
    Mark mark = bytes.size() + 1;
    const std::size_t step = std::max(bytes.size() / places, sizeof mark);
    for (std::size_t at = 0; at + sizeof mark <= bytes.size(); at += step) {
        Mark word = 0;
        std::memcpy(&word, bytes.data() + at, sizeof word);
        mark = (mark ^ word) * factor;
        mark ^= mark >> 32;
    }
    return mark;
}

bool RecentTexts::WasMet(Mark mark) noexcept {
    const std::lock_guard held(m_lock);
    return std::find(m_met.begin(), m_met.end(), mark) != m_met.end();
}

bool RecentTexts::Meet(Mark mark) noexcept {
    const std::lock_guard held(m_lock);
    if (std::find(m_met.begin(), m_met.end(), mark) != m_met.end()) return false;
    m_met[m_next++ % m_met.size()] = mark;
    return true;
}

TreeShare RecentTexts::Find(std::string_view bytes, const DomSettings& settings) {
    if (bytes.size() > mostOfOneText || !WasMet(MarkOf(bytes))) return {};
    const auto known = m_known.Find(bytes);
    return known && known->IsFor(settings) ? known->tree : TreeShare();
}

void RecentTexts::Made(std::string_view bytes, DomTree& tree) noexcept {
    if (bytes.size() > mostOfOneText || Meet(MarkOf(bytes))) return;
    try {
        // What is shared is read back as it stands in every case.
        if (const ReadBack& form = tree.Form(); !form.isCopy || !form.isSame) return;
        const DomSettings& settings = tree.Settings();
        const Known known{tree.Share(), settings.preserveWhiteSpace, settings.maxElementDepth,
                          settings.maxXmlSize};
        m_known.Keep(std::string(bytes), std::make_shared<const Known>(known), sizeOfTree * bytes.size());
    } catch (const std::bad_alloc&) {
        // The next one is parsed, too.
    }
}

} // namespace OvPlatform
