#include "Xml/AttributeBound.h"

#include <algorithm>

namespace OvPlatform {

namespace {

bool IsQuote(char c) noexcept { return c == '"' || c == '\''; }

// In blocks of one size, whose count fits a byte: those the compiler turns into few instructions.
std::size_t CountQuotes(std::string_view text) {
    constexpr std::size_t block = 128;
    std::size_t count = 0;
    for (; text.size() >= block; text.remove_prefix(block)) {
        unsigned char here = 0;
        for (std::size_t at = 0; at < block; ++at)
            here = static_cast<unsigned char>(here + IsQuote(text[at]));
        count += here;
    }
    return count + static_cast<std::size_t>(std::count_if(text.begin(), text.end(), IsQuote));
}

} // namespace

bool AttributeBound::PassesWhole(std::string_view text) {
    return CountQuotes(text) <= 2 * mostOfOneElement || AttributeBound().Passes(text);
}

bool AttributeBound::Passes(std::string_view piece) {
    for (std::size_t at = 0; m_passes && at < piece.size(); ++at) {
        // What is long is passed over quickly.
        if (m_state == State::Text) at = std::min(piece.find('<', at), piece.size());
        if (m_state == State::Quoted) at = std::min(piece.find(m_quote, at), piece.size());
        if (at < piece.size()) Take(piece[at]);
    }
    return m_passes;
}

void AttributeBound::Take(char c) {
    switch (m_state) {
    case State::Text:
        m_state = State::Opened;
        break;
    case State::Opened:
        TakeFirst(c);
        break;
    case State::Bang:
        // A document type ends the parse.
        m_state = c == '-' ? State::Comment : c == '[' ? State::CData : State::Text;
        m_marks = 0;
        break;
    case State::StartTag:
        if (IsQuote(c)) CountAttribute(c);
        if (c == '>') EndStartTag();
        m_selfClosing = c == '/';
        break;
    case State::Quoted:
        m_state = State::StartTag;
        break;
    case State::EndTag:
        if (c == '>') m_state = State::Text;
        break;
    case State::Comment:
        EndAt('-', 2, c);
        break;
    case State::CData:
        EndAt(']', 2, c);
        break;
    case State::Instruction:
        EndAt('?', 1, c);
        break;
    }
}

void AttributeBound::TakeFirst(char c) {
    m_marks = 0;
    switch (c) {
    case '!':
        m_state = State::Bang;
        break;
    case '?':
        m_state = State::Instruction;
        break;
    case '/':
        m_state = State::EndTag;
        if (m_open.empty()) break;
        m_inForce -= m_open.back();
        m_open.pop_back();
        break;
    default:
        m_state = State::StartTag;
        m_own = 0;
        m_selfClosing = false;
    }
}

void AttributeBound::CountAttribute(char quote) {
    m_state = State::Quoted;
    m_quote = quote;
    ++m_own;
    ++m_inForce;
    m_passes = m_own <= mostOfOneElement && m_inForce <= mostInForce;
}

void AttributeBound::EndStartTag() {
    m_state = State::Text;
    if (m_selfClosing)
        m_inForce -= m_own;
    else
        m_open.push_back(m_own);
    m_own = 0;
}

void AttributeBound::EndAt(char mark, std::size_t marks, char c) {
    if (c == '>' && m_marks >= marks)
        m_state = State::Text;
    else
        m_marks = c == mark ? m_marks + 1 : 0;
}

} // namespace OvPlatform
