#include "HtmlReport/HtmlText.h"

#include <Locale/ShownText.h>

namespace OvPipeline {

HtmlText& HtmlText::Open(Word element, Attributes attributes) {
    Begin(element, attributes);
    m_open.push_back(element.View());
    return *this;
}

HtmlText& HtmlText::Close() {
    m_text.append("</").append(m_open.back()).append(">");
    m_open.pop_back();
    return *this;
}

HtmlText& HtmlText::Text(std::string_view text, std::size_t bound) {
    Escape(text, bound);
    return *this;
}

HtmlText& HtmlText::Element(Word element, std::string_view text, Attributes attributes) {
    return Open(element, attributes).Text(text).Close();
}

HtmlText& HtmlText::Empty(Word element, Attributes attributes) {
    Begin(element, attributes);
    return *this;
}

HtmlText& HtmlText::Markup(Word markup) {
    m_text += markup.View();
    return *this;
}

HtmlText& HtmlText::Add(const HtmlText& other) {
    m_text += other.Result();
    return *this;
}

void HtmlText::Begin(Word element, Attributes attributes) {
    m_text.append("<").append(element.View());
    for (const Attribute& attribute : attributes) {
        m_text.append(" ").append(attribute.name.View()).append("=\"");
        Escape(attribute.value, std::string_view::npos);
        m_text += '"';
    }
    m_text += '>';
}

void HtmlText::Escape(std::string_view text, std::size_t bound) {
    for (const char c : OvPlatform::Shown(text, bound)) {
        switch (c) {
        case '&':
            m_text += "&amp;";
            break;
        case '<':
            m_text += "&lt;";
            break;
        case '>':
            m_text += "&gt;";
            break;
        case '"':
            m_text += "&quot;";
            break;
        case '\'':
            m_text += "&#39;";
            break;
        default:
            m_text += c;
        }
    }
}

} // namespace OvPipeline
