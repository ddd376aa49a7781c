#pragma once

#include "Com/PlatformExport.h"

#include <cstddef>
#include <string_view>
#include <vector>

namespace OvPlatform {

/// Sees that a text, before it is parsed, has no element with more attributes than a parser gets through: it
/// compares each with each, and looks every prefix up among all declarations in force. Declarations count as
/// attributes. The text may come in pieces, in any encoding that extends ASCII; what is not well-formed is
/// left to the parser.
class OV_PLATFORM_API AttributeBound {
public:
    static constexpr std::size_t mostOfOneElement = 1024;
    static constexpr std::size_t mostInForce = 4096; ///< of an element and all that it stands in

    /// For a text that is there as a whole: where it has so few quotes that they cannot be too many
    /// attributes, it is looked at no further.
    static bool PassesWhole(std::string_view text);

    /// False once there are more, and for good.
    bool Passes(std::string_view piece);

private:
    enum class State { Text, Opened, Bang, StartTag, Quoted, EndTag, Comment, CData, Instruction };

    void TakeFirst(char c);
    void Take(char c);
    void CountAttribute(char quote);
    void EndStartTag();
    void EndAt(char mark, std::size_t marks, char c);

    bool m_passes = true;
    State m_state = State::Text;
    char m_quote = 0;
    bool m_selfClosing = false;
    std::size_t m_marks = 0; ///< how many of the characters have come that end this state before a '>'
    std::size_t m_own = 0;
    std::size_t m_inForce = 0;
    std::vector<std::size_t> m_open; ///< how many attributes each open element has
};

} // namespace OvPlatform
