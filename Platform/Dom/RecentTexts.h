#pragma once

#include "Dom/DomSettings.h"
#include "Dom/SharedTree.h"
#include "Xml/TextMemory.h"

#include <array>
#include <cstddef>
#include <functional>
#include <mutex>
#include <string_view>

namespace OvPlatform {

/// Texts that came more than once of late, with the trees that were made of them: the pages of a job have few
/// different tickets. A document that is loaded from such a text shares the tree, as a clone does. Holds
/// little more than a MB. Threads may share it.
class RecentTexts {
public:
    /// That of all documents.
    static RecentTexts& OfProcess();

    /// By which a text is known again; none for one that is too long to be kept.
    using Mark = std::size_t;
    static constexpr Mark none = 0;
    static Mark MarkOf(std::string_view bytes) noexcept {
        return bytes.size() > mostOfOneText ? none : std::hash<std::string_view>()(bytes);
    }

    /// What a document of these settings makes of `bytes`, which have this mark. Empty where that is not
    /// known.
    TreeShare Find(Mark mark, std::string_view bytes, const DomSettings& settings);
    /// A tree was made of `bytes`, and nobody has changed it. Where memory is short, it is not kept.
    void Made(Mark mark, std::string_view bytes, DomTree& tree) noexcept;

private:
    struct Known {
        TreeShare tree;
        // Under which it was read.
        bool preservesWhiteSpace;
        LONG maxElementDepth, maxXmlSize;

        bool IsFor(const DomSettings& settings) const noexcept;
    };
    bool WasMet(Mark mark) noexcept;
    /// False where it was met before.
    bool Meet(Mark mark) noexcept;

    static constexpr std::size_t mostOfOneText = std::size_t{1} << 16;
    static constexpr std::size_t mostOfAll = std::size_t{1} << 20;
    static constexpr std::size_t sizeOfEmptyTree = std::size_t{8} << 10; ///< with its dictionary, about
    static constexpr std::size_t sizeOfContent = 10; ///< as often the bytes of its text, about

    std::mutex m_lock; ///< of the marks
    std::array<Mark, 64> m_met{};
    std::size_t m_next = 0;
    TextMemory<Known> m_known{mostOfAll};
};

} // namespace OvPlatform
