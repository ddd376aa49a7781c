#include "Report/JsonText.h"

#include <Locale/ShownText.h>

namespace OvPipeline {

JsonText& JsonText::Key(std::string_view key) {
    StartValue();
    m_text += OvPlatform::ShownJson(key) + ": ";
    m_isAfterKey = true;
    return *this;
}

JsonText& JsonText::Text(std::string_view text) { return Value(OvPlatform::ShownJson(text)); }

JsonText& JsonText::Value(std::string_view text) {
    StartValue();
    m_text += text;
    return *this;
}

JsonText& JsonText::Whole(std::string_view json) {
    StartValue();
    for (const char c : json) { // a break stands nowhere inside a text
        m_text += c;
        if (c == '\n') m_text.append(2 * m_depth, ' ');
    }
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
