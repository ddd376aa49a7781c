#include "ObjectModel/MarkupWriter.h"

#include "ObjectModel/MarkupFailure.h"
#include "ObjectModel/MarkupText.h"
#include "ObjectModel/PartObject.h"

#include <algorithm>
#include <utility>

namespace OvPlatform {

namespace {

// For a value that may stand in either quotes.
std::string EscapeBoth(std::string_view text) {
    std::string escaped = EscapeAttribute(text);
    for (std::size_t at = 0; (at = escaped.find('\'', at)) != std::string::npos;)
        escaped.replace(at, 1, "&#39;");
    return escaped;
}

} // namespace

std::string ReferringValue::Text() const {
    std::string text;
    for (const Piece& piece : pieces)
        text += piece.text;
    return text;
}

MarkupWriter::MarkupWriter(Sink sink, std::string partName, XPS_DOCUMENT_TYPE type)
    : m_sink(std::move(sink)), m_partName(std::move(partName)), m_type(type) {}

void MarkupWriter::Write(std::string_view text) {
    if (!text.empty()) m_sink(text);
}

void MarkupWriter::WriteAttribute(std::string_view name, std::string_view value) {
    Write(" " + std::string(name) + "=\"" + EscapeAttribute(value) + "\"");
}

std::string MarkupWriter::Resolve(const ReferringValue& value) {
    std::string text;
    for (const ReferringValue::Piece& piece : value.pieces) {
        text += piece.text;
        if (!piece.part) continue;
        const std::string name = PartNameOf(piece.part);
        Note(name, piece.part);
        text += Relative(name);
    }
    return text;
}

void MarkupWriter::Copy(const PageSource& source, std::size_t begin, std::size_t end) {
    const std::vector<SourceReference>& references = source.References();
    const bool differs = Known(source).differs;
    auto next = std::lower_bound(
        references.begin(), references.end(), begin,
        [](const SourceReference& reference, std::size_t place) { return reference.valueBegin < place; });
    for (; next != references.end() && next->valueBegin < end; ++next) {
        NoteParts(source, *next);
        if (!differs) continue;
        Write(source.Text(begin, next->valueBegin));
        Write(Renewed(source, *next));
        begin = next->valueBegin + next->valueLength;
    }
    Write(source.Text(begin, end));
}

void MarkupWriter::CopyElement(const PageSource& source, std::uint32_t element) {
    const std::size_t begin = source.At(element).begin;
    RawAttributes attributes(source.StartTag(element));
    std::size_t at = begin + 1 + attributes.ElementName().size();
    if (OpenTag(source, element))
        for (RawAttributes::Item item; attributes.Next(item); at = begin + item.end)
            if (!IsRule(source, element, item.name)) Copy(source, at, begin + item.end);
    Copy(source, at, source.At(element).end);
}

bool MarkupWriter::OpenTag(const PageSource& source, std::uint32_t element) {
    Write("<" + std::string(RawAttributes(source.StartTag(element)).ElementName()));
    const bool hasRules = DeclareFor(source, element);
    m_hasRoot = true;
    return hasRules;
}

bool MarkupWriter::IsRule(const PageSource& source, std::uint32_t element, std::string_view attribute) {
    const std::string_view prefix = PrefixOf(attribute);
    if (prefix.empty() || CompatibilityRule(LocalPartOf(attribute)).empty()) return false;
    const std::string* const uri = source.FindNamespace(source.At(element).scope, prefix);
    return uri != nullptr && *uri == compatibilityNamespace;
}

MarkupWriter::Inside::Inside(MarkupWriter& writer, const PageSource& source, std::uint32_t element)
    : m_writer(writer), m_source(writer.m_source), m_scope(writer.m_scope), m_prefix(writer.m_prefix) {
    writer.m_source = &source;
    writer.m_scope = source.At(element).scope;
    writer.m_prefix = PrefixOf(RawAttributes(source.StartTag(element)).ElementName());
}

MarkupWriter::Inside::~Inside() {
    m_writer.m_source = m_source;
    m_writer.m_scope = m_scope;
    m_writer.m_prefix = std::move(m_prefix);
}

void MarkupWriter::DeclareIfRoot() {
    if (!std::exchange(m_hasRoot, true)) WriteAttribute("xmlns", PageNamespace(m_type));
}

std::string MarkupWriter::QualifiedName(std::string_view localName) const {
    return WithPrefix(m_prefix, localName);
}

std::string MarkupWriter::KeyName(std::string& declaration) const {
    const std::string uri = ResourceKeyNamespace(m_type);
    for (const std::string prefix : {"x", "x1", "x2"}) {
        const std::optional<std::string> here = NamespaceHere(prefix);
        if (here && *here != uri) continue;
        if (!here) declaration.append(" xmlns:").append(prefix).append("=\"").append(uri).append("\"");
        return prefix + ":Key";
    }
    throw MarkupFailure(XPS_E_INVALID_MARKUP);
}

std::optional<std::string> MarkupWriter::NamespaceHere(std::string_view prefix) const {
    if (m_source == nullptr)
        return m_hasRoot && prefix.empty() ? std::optional<std::string>(PageNamespace(m_type)) : std::nullopt;
    const std::string* const uri = m_source->FindNamespace(m_scope, prefix);
    return uri == nullptr ? std::nullopt : std::optional(NamespaceIn(m_type, *uri));
}

bool MarkupWriter::DeclareFor(const PageSource& source, std::uint32_t element) {
    std::vector<std::string> declared;
    RawAttributes attributes(source.StartTag(element));
    for (RawAttributes::Item item; attributes.Next(item);)
        if (item.name == "xmlns" || PrefixOf(item.name) == "xmlns") declared.emplace_back(item.name);
    const std::uint32_t scope = source.At(element).scope;
    const std::uint32_t around = source.ScopeAround(element);
    const std::uint32_t known = DeclareScope(source, scope, std::move(declared));
    // What is said around it holds for it wherever it comes to stand, unless it is said there too.
    const RuleWords outer = source.Rules(around, known);
    if (outer.empty()) return false;
    RuleWords rules = source.Rules(scope, around);
    const std::size_t own = rules.size();
    const RuleWords here = m_source == nullptr ? RuleWords() : m_source->Rules(m_scope, 0);
    const auto isIn = [](const RuleWords& words, const PageSource::RuleWord& word) {
        return std::find(words.begin(), words.end(), word) != words.end();
    };
    for (const PageSource::RuleWord& word : outer)
        if (!isIn(rules, word) && !isIn(here, word)) rules.push_back(word);
    if (rules.size() == own) return false;
    WriteRules(source, scope, rules);
    return true;
}

void MarkupWriter::WriteRules(const PageSource& source, std::uint32_t scope, const RuleWords& words) {
    std::vector<std::pair<std::string, std::string>> added; // prefixes of namespaces that have none there
    const auto prefixOf = [&](std::string_view uri) {
        if (const std::optional<std::string> prefix = source.FindPrefix(scope, uri); prefix) return *prefix;
        for (const auto& [prefix, known] : added)
            if (known == uri) return prefix;
        std::string prefix;
        for (int number = 1; prefix.empty() || source.FindNamespace(scope, prefix) != nullptr; ++number)
            prefix = "n" + std::to_string(added.size()) + "_" + std::to_string(number);
        WriteAttribute("xmlns:" + prefix, NamespaceIn(m_type, uri));
        return added.emplace_back(prefix, uri).first;
    };
    std::vector<std::pair<std::string_view, std::string>> values;
    for (const PageSource::RuleWord& word : words) {
        auto value = std::find_if(values.begin(), values.end(),
                                  [&](const auto& one) { return one.first == word.rule; });
        if (value == values.end()) value = values.insert(value, {word.rule, {}});
        if (!value->second.empty()) value->second += ' ';
        value->second += prefixOf(word.uri);
        if (!word.name.empty()) value->second.append(":").append(word.name);
    }
    for (const auto& [rule, value] : values)
        WriteAttribute(prefixOf(compatibilityNamespace) + ":" + std::string(rule), value);
}

std::uint32_t MarkupWriter::DeclareScope(const PageSource& source, std::uint32_t scope,
                                         std::vector<std::string> declared) {
    const auto declare = [&](const std::string& prefix, const std::string& uri) {
        const std::string name = prefix.empty() ? "xmlns" : "xmlns:" + prefix;
        if (std::find(declared.begin(), declared.end(), name) != declared.end()) return;
        declared.push_back(name);
        if (NamespaceHere(prefix).value_or("") != uri) WriteAttribute(name, uri);
    };
    // Of the same source, only what was declared between here and there; otherwise all that holds there.
    std::uint32_t at = scope;
    for (; at != 0 && !(m_source == &source && at == m_scope); at = source.FindDeclaration(at)->outer) {
        const PageSource::Declaration& one = *source.FindDeclaration(at);
        if (one.rule.empty()) declare(one.prefix, NamespaceIn(m_type, one.uri));
    }
    if (at == 0 && source.FindNamespace(scope, "") == nullptr) declare("", "");
    return at;
}

void MarkupWriter::OpenRootAround(const PageSource& source, std::uint32_t element,
                                  std::string_view localName) {
    const std::string_view prefix = PrefixOf(RawAttributes(source.StartTag(element)).ElementName());
    Write("<" + WithPrefix(prefix, localName));
    const std::uint32_t scope = source.At(element).scope;
    DeclareScope(source, scope, {});
    WriteRules(source, scope, source.Rules(scope, 0));
    m_hasRoot = true;
    Write(">");
}

MarkupWriter::KnownSource& MarkupWriter::Known(const PageSource& source) {
    const auto [entry, isNew] = m_known.try_emplace(&source);
    KnownSource& known = entry->second;
    if (!isNew) return known;
    known.noted.resize(source.Parts().size());
    known.differs = m_type != source.Type() || m_partName != source.PartName();
    for (const SourcePart& part : source.Parts()) {
        // A resource may have got another name since.
        std::string name = part.resource ? PartNameOf(part.resource) : std::string();
        if (name.empty()) name = part.name;
        if (name != part.name) known.differs = true;
        known.names.push_back(std::move(name));
    }
    return known;
}

void MarkupWriter::NoteParts(const PageSource& source, const SourceReference& reference) {
    KnownSource& known = Known(source);
    for (const std::uint32_t part : reference.parts) {
        if (part == noPart || known.noted[part]) continue;
        Note(known.names[part], source.Parts()[part].resource);
        known.noted[part] = true;
    }
}

std::string MarkupWriter::Renewed(const PageSource& source, const SourceReference& reference) {
    std::string value =
        UnescapeAttribute(source.Text(reference.valueBegin, reference.valueBegin + reference.valueLength));
    if (reference.kind == ReferenceKind::Namespace) return EscapeBoth(NamespaceIn(m_type, value));
    const std::vector<ReferenceSpan> spans = ReferencesIn(reference.kind, value);
    for (std::size_t index = spans.size(); index-- > 0;) { // from the back, so that the places before stay
        const std::uint32_t part = reference.parts[index];
        if (part != noPart)
            value.replace(spans[index].begin, spans[index].length, Relative(Known(source).names[part]));
    }
    return EscapeBoth(value);
}

std::string MarkupWriter::Relative(const std::string& name) const {
    return m_partName.empty() ? name : RelativeReference(m_partName, name);
}

void MarkupWriter::Note(const std::string& name, IXpsOMResource* resource) {
    const auto [entry, isNew] = m_partOfName.try_emplace(name, m_parts.size());
    const auto isAnother = [&, entry = entry] {
        const CComPtr<IXpsOMResource>& known = m_parts[entry->second].resource;
        return resource != nullptr && known && known != resource;
    };
    // Two under one name are both told, so that whoever writes them can see it.
    if (isNew || isAnother()) m_parts.push_back({name, resource});
}

} // namespace OvPlatform
