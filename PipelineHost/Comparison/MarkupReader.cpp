#include "Comparison/MarkupReader.h"

#include <ObjectModel/MarkupNames.h>
#include <ObjectModel/PageSource.h>
#include <ObjectModel/XpsVocabulary.h>
#include <Xml/XmlString.h>

#include <libxml/xmlreader.h>

#include <algorithm>
#include <array>
#include <string_view>
#include <utility>

using namespace OvPlatform;

namespace OvPipeline {

namespace {

constexpr std::string_view blanks = " \t\r\n";

struct Referring {
    std::string_view element;
    std::string_view attribute;
    ReferenceKind kind;
};
constexpr std::array referring{
    Referring{"Glyphs", "FontUri", ReferenceKind::Whole},
    Referring{"ImageBrush", "ImageSource", ReferenceKind::Image},
    Referring{"ResourceDictionary", "Source", ReferenceKind::Whole},
};
constexpr std::string_view contextColor = "ContextColor ";

std::string Text(const xmlChar* text) { return std::string(View(text)); }

// The namespaces of both vocabularies as one, which is not written.
std::string SpaceOf(const std::string& uri) {
    for (const XpsFlavour flavour : {XpsFlavour::Xps, XpsFlavour::OpenXps})
        if (const std::string_view base = MarkupNamespace(flavour); uri.starts_with(base)) {
            const std::string rest = uri.substr(base.size());
            if (rest.empty()) return {};
            if (rest.starts_with('/')) return "{xps" + rest + "}";
        }
    return uri.empty() ? std::string() : "{" + uri + "}";
}

std::optional<ReferenceKind> KindOfReference(const std::string& element, const std::string& name,
                                             const std::string& value) {
    for (const Referring& row : referring)
        if (row.element == element && row.attribute == name) return row.kind;
    if (value.starts_with(contextColor)) return ReferenceKind::Context;
    return std::nullopt;
}

// Whether the value is a list of prefixes.
bool IsRule(const std::string& element, const std::string& name) {
    const std::string space = "{" + std::string(compatibilityNamespace) + "}";
    return name.starts_with(space) || (element == space + "Choice" && name == "Requires");
}

// Prefixes, and names behind them, by their namespaces.
std::string MeaningOfRule(xmlTextReader* reader, const std::string& value) {
    std::vector<std::string> words;
    for (std::size_t at = 0; (at = value.find_first_not_of(blanks, at)) != std::string::npos;) {
        const std::size_t end = (std::min)(value.find_first_of(blanks, at), value.size());
        const std::string word = value.substr(at, end - at);
        const std::string prefix = word.substr(0, word.find(':'));
        const XmlPointer<xmlChar> uri(xmlTextReaderLookupNamespace(reader, AsXml(prefix.c_str())));
        words.push_back(uri ? "{" + Text(uri.get()) + "}" + word.substr(prefix.size()) : word);
        at = end;
    }
    std::ranges::sort(words);
    std::string meaning;
    for (const std::string& word : words)
        meaning += word + " ";
    return meaning;
}

} // namespace

bool MarkupEvent::Means(const MarkupEvent& other) const {
    return kind == other.kind && name == other.name && text == other.text &&
           std::ranges::equal(attributes, other.attributes, [](const Attribute& one, const Attribute& two) {
               return one.name == two.name && one.meaning == two.meaning;
           });
}

MarkupReader::MarkupReader(std::string partName, PartMarkup::ReadBytes bytes, Resolve resolve)
    : m_markup(std::move(partName), std::move(bytes), PartMarkup::Bounds::Owners),
      m_resolve(std::move(resolve)) {}

bool MarkupReader::Next(MarkupEvent& event) {
    if (m_due) {
        event = std::move(*m_due);
        m_due.reset();
        return true;
    }
    event = {};
    if (m_isEmptyElement) {
        m_isEmptyElement = false;
        TakeEnd(event);
        return true;
    }
    std::string text;
    MarkupEvent tag;
    bool isTag = false;
    while (!isTag && m_markup.Advance()) {
        switch (xmlTextReaderNodeType(m_markup.Reader())) {
        case XML_READER_TYPE_TEXT:
        case XML_READER_TYPE_CDATA:
        case XML_READER_TYPE_WHITESPACE:
        case XML_READER_TYPE_SIGNIFICANT_WHITESPACE:
            text += View(xmlTextReaderConstValue(m_markup.Reader()));
            break;
        case XML_READER_TYPE_ELEMENT:
        case XML_READER_TYPE_END_ELEMENT:
            isTag = true;
            break;
        default: // comments and instructions to programs
            break;
        }
    }
    const bool isBlank = text.find_first_not_of(blanks) == std::string::npos;
    if (isTag) {
        const bool isStart = xmlTextReaderNodeType(m_markup.Reader()) == XML_READER_TYPE_ELEMENT;
        isStart ? TakeStart(tag) : TakeEnd(tag);
    }
    if (!isBlank) {
        event.text = std::move(text);
        if (isTag) m_due = std::move(tag);
        return true;
    }
    event = std::move(tag);
    return isTag;
}

std::string MarkupReader::NameHere(bool isAttribute) const {
    const std::string uri = Text(xmlTextReaderConstNamespaceUri(m_markup.Reader()));
    const std::string local = Text(xmlTextReaderConstLocalName(m_markup.Reader()));
    // An attribute without a prefix belongs to its element.
    return (isAttribute && uri.empty() ? std::string() : SpaceOf(uri)) + local;
}

std::string MarkupReader::MeaningHere(const std::string& element, const std::string& name,
                                      const std::string& value) const {
    if (IsRule(element, name)) return MeaningOfRule(m_markup.Reader(), value);
    const auto kind = m_resolve ? KindOfReference(element, name, value) : std::nullopt;
    if (!kind) return value;
    std::string meaning;
    std::size_t done = 0;
    for (const ReferenceSpan& span : ReferencesIn(*kind, value)) {
        const std::string reference = value.substr(span.begin, span.length);
        meaning += value.substr(done, span.begin - done) + m_resolve(reference).value_or(reference);
        done = span.begin + span.length;
    }
    return meaning + value.substr(done);
}

void MarkupReader::TakeStart(MarkupEvent& event) {
    if (m_hasEnded) m_open.pop_back();
    m_hasEnded = false;
    if (m_open.size() >= deepest) m_markup.Refuse("elements are nested too deeply");
    event.kind = MarkupEvent::Kind::Start;
    event.name = NameHere(false);
    const std::size_t number = m_open.empty() ? 1 : ++m_open.back().children;
    m_open.push_back({event.name, number});
    m_isEmptyElement = xmlTextReaderIsEmptyElement(m_markup.Reader()) == 1;
    while (xmlTextReaderMoveToNextAttribute(m_markup.Reader()) == 1) {
        if (xmlTextReaderIsNamespaceDecl(m_markup.Reader()) == 1) continue;
        MarkupEvent::Attribute attribute;
        attribute.name = NameHere(true);
        attribute.written = View(xmlTextReaderConstValue(m_markup.Reader()));
        attribute.meaning = MeaningHere(event.name, attribute.name, attribute.written);
        event.attributes.push_back(std::move(attribute));
    }
    xmlTextReaderMoveToElement(m_markup.Reader());
    std::ranges::sort(event.attributes, {}, &MarkupEvent::Attribute::name);
}

void MarkupReader::TakeEnd(MarkupEvent& event) {
    if (m_hasEnded) m_open.pop_back();
    m_hasEnded = true;
    event.kind = MarkupEvent::Kind::End;
    event.name = m_open.back().name;
}

std::string MarkupReader::Place() const {
    std::string place;
    for (const Open& element : m_open)
        place += (place.empty() ? "" : "/") + element.name +
                 (place.empty() ? "" : " " + std::to_string(element.number));
    return place;
}

} // namespace OvPipeline
