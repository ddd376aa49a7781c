#include "Report/JsonText.h"

#include "Common/Text.h"

namespace OvPipeline {

namespace {

std::string Quoted(std::string_view text) {
    constexpr char digits[] = "0123456789abcdef";
    std::string quoted = "\"";
    for (const char c : Utf8(Wide(text))) {
        if (c == '"' || c == '\\') {
            quoted += '\\';
            quoted += c;
        } else if (static_cast<unsigned char>(c) < 0x20) {
            quoted += "\\u00";
            quoted += digits[c >> 4];
            quoted += digits[c & 0xF];
        } else {
            quoted += c;
        }
    }
    return quoted + '"';
}

} // namespace

JsonText& JsonText::Key(std::string_view key) {
    StartValue();
    m_text += Quoted(key) + ": ";
    m_isAfterKey = true;
    return *this;
}

JsonText& JsonText::Text(std::string_view text) { return Value(Quoted(text)); }

JsonText& JsonText::Value(std::string_view text) {
    StartValue();
    m_text += text;
    return *this;
}

JsonText& JsonText::Begin(char bracket) {
    StartValue();
    m_text += bracket;
    ++m_depth;
    m_isFirst = true;
    return *this;
}

JsonText& JsonText::End(char bracket) {
    --m_depth;
    if (!m_isFirst) m_text.append("\n").append(2 * m_depth, ' ');
    m_text += bracket;
    m_isFirst = false;
    return *this;
}

void JsonText::StartValue() {
    if (m_isAfterKey) {
        m_isAfterKey = false;
        return;
    }
    if (m_depth == 0) return;
    if (!m_isFirst) m_text += ',';
    m_text.append("\n").append(2 * m_depth, ' ');
    m_isFirst = false;
}

} // namespace OvPipeline
