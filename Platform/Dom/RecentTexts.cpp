#include "Dom/RecentTexts.h"

#include <algorithm>
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

TreeShare RecentTexts::Find(Mark mark, std::string_view bytes, const DomSettings& settings) {
    if (mark == none || !WasMet(mark)) return {};
    const auto known = m_known.Find(bytes);
    return known && known->IsFor(settings) ? known->tree : TreeShare();
}

void RecentTexts::Made(Mark mark, std::string_view bytes, DomTree& tree) noexcept {
    if (mark == none || Meet(mark)) return;
    try {
        // What is shared is read back as it stands in every case.
        if (const ReadBack& form = tree.Form(); !form.isCopy || !form.isSame) return;
        const DomSettings& settings = tree.Settings();
        const Known known{tree.Share(), settings.preserveWhiteSpace, settings.maxElementDepth,
                          settings.maxXmlSize};
        m_known.Keep(std::string(bytes), std::make_shared<const Known>(known),
                     sizeOfEmptyTree + sizeOfContent * bytes.size());
    } catch (const std::bad_alloc&) {
        // The next one is parsed, too.
    }
}

} // namespace OvPlatform
