#include "PrintTicket/FrameworkCheck.h"

#include "PrintTicket/SchemaFormatError.h"
#include "PrintTicket/SchemaWords.h"
#include "PrintTicket/SchemaXml.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdint>
#include <string_view>

namespace OvPlatform {
namespace {

enum Row : std::size_t {
    TicketRoot,
    CapabilitiesRoot,
    Feature,
    Option,
    ScoredProperty,
    Property,
    ParameterInit,
    ParameterDef,
    ParameterRef,
    Value,
    RowCount
};

constexpr std::uint16_t Bit(Row row) { return static_cast<std::uint16_t>(1u << row); }

enum class Naming { None, Optional, Required };

struct ElementRule {
    std::string_view name;
    Naming naming;
    std::uint16_t children; // the elements that may stand inside
    std::uint16_t single;   // of these, together at most one
    std::uint16_t needed;   // of these, at least one
};

constexpr std::array<ElementRule, RowCount> rules{{
    {SchemaTag::PrintTicket, Naming::None, Bit(Feature) | Bit(ParameterInit) | Bit(Property), 0, 0},
    {SchemaTag::PrintCapabilities, Naming::None, Bit(Feature) | Bit(ParameterDef) | Bit(Property), 0, 0},
    {SchemaTag::Feature, Naming::Required, Bit(Feature) | Bit(Option) | Bit(Property), 0, 0},
    {SchemaTag::Option, Naming::Optional, Bit(ScoredProperty) | Bit(Property), 0, 0},
    {SchemaTag::ScoredProperty, Naming::Required,
     Bit(ScoredProperty) | Bit(Property) | Bit(Value) | Bit(ParameterRef), Bit(Value) | Bit(ParameterRef), 0},
    {SchemaTag::Property, Naming::Required, Bit(Property) | Bit(Value), Bit(Value), 0},
    {SchemaTag::ParameterInit, Naming::Required, Bit(Value), Bit(Value), Bit(Value)},
    {SchemaTag::ParameterDef, Naming::Required, Bit(Property), 0, 0},
    {SchemaTag::ParameterRef, Naming::Required, 0, 0, 0},
    {SchemaTag::Value, Naming::None, 0, 0, 0},
}};

std::string Tag(const xmlNode* element) {
    std::string tag;
    if (element->ns && element->ns->prefix) tag.append(View(element->ns->prefix)).append(":");
    return tag.append(View(element->name));
}

const xmlAttr* NameAttribute(const xmlNode* element) {
    return xmlHasNsProp(element, AsXml(SchemaAttribute::Name), nullptr);
}

std::string_view TextOf(const xmlAttr* attribute) {
    return attribute && attribute->children ? View(attribute->children->content) : std::string_view();
}

// "/psf:PrintTicket/psf:Feature[2](psk:PageMediaSize)/psf:Option[1]"
std::string PathOf(const xmlNode* element) {
    std::string path;
    for (; element && element->type == XML_ELEMENT_NODE; element = element->parent) {
        std::string step = "/" + Tag(element);
        if (element->parent && element->parent->type == XML_ELEMENT_NODE) {
            int position = 1;
            for (const xmlNode* before = element->prev; before; before = before->prev)
                if (before->type == XML_ELEMENT_NODE && xmlStrEqual(before->name, element->name)) ++position;
            step += "[" + std::to_string(position) + "]";
        }
        if (const std::string_view name = TextOf(NameAttribute(element)); !name.empty())
            step.append("(").append(name.substr(0, 80)).append(")");
        path.insert(0, step);
    }
    return path;
}

[[noreturn]] void Refuse(const xmlNode* element, const std::string& problem) {
    throw SchemaFormatError("line " + std::to_string(xmlGetLineNo(element)) + ", " + PathOf(element) + ": " +
                            problem);
}

std::string Quoted(std::string_view text) { return "'" + std::string(text.substr(0, 80)) + "'"; }

std::string NamesOf(std::uint16_t rows) {
    std::string names;
    for (std::size_t row = 0; row < RowCount; ++row)
        if (rows & Bit(static_cast<Row>(row)))
            names.append(names.empty() ? "" : " or ").append(rules[row].name);
    return names;
}

std::size_t RowOf(const xmlNode* element) {
    const std::string_view name = View(element->name);
    for (std::size_t row = Feature; row < RowCount; ++row)
        if (rules[row].name == name) return row;
    return RowCount;
}

bool IsText(const xmlNode* node) {
    return node->type == XML_TEXT_NODE || node->type == XML_CDATA_SECTION_NODE;
}

} // namespace

void FrameworkCheck::Check(const xmlDoc* document, Kind kind) {
    const xmlNode* root = xmlDocGetRootElement(document);
    if (!root) throw SchemaFormatError("the document has no root element");
    const FrameworkCheck check(root);
    check.CheckRoot(root, kind);
    check.CheckElement(root, kind == Kind::Ticket ? TicketRoot : CapabilitiesRoot, 1);
}

void FrameworkCheck::CheckRoot(const xmlNode* root, Kind kind) const {
    const std::string_view expected = rules[kind == Kind::Ticket ? TicketRoot : CapabilitiesRoot].name;
    if (!IsElement(root, SchemaSpace::Framework) || View(root->name) != expected)
        Refuse(root, "the root element has to be " + std::string(expected) + " in the namespace " +
                         SchemaSpace::Framework);

    const xmlAttr* version = xmlHasNsProp(root, AsXml(SchemaAttribute::Version), nullptr);
    if (!version) Refuse(root, "the attribute version is missing");
    const std::string_view text = Trimmed(TextOf(version));
    double number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (error != std::errc() || end != text.data() + text.size() || number != 1)
        Refuse(root, "the version is " + Quoted(text) + " where only 1 is known");
}

void FrameworkCheck::CheckElement(const xmlNode* element, std::size_t row, int depth) const {
    const ElementRule& rule = rules[row];
    if (depth > maxDepth)
        Refuse(element, "elements are nested more than " + std::to_string(maxDepth) + " levels deep");
    if (rule.naming != Naming::None) CheckName(element, rule.naming == Naming::Required);
    if (row == Value) return CheckValue(element);

    int singles = 0;
    std::uint16_t seen = 0;
    for (const xmlNode* child = element->children; child; child = child->next) {
        if (IsText(child) && !Trimmed(View(child->content)).empty())
            Refuse(element, "text is not allowed here: " + Quoted(Trimmed(View(child->content))));
        if (child->type == XML_ENTITY_REF_NODE) Refuse(element, "an entity is not allowed here");
        if (!IsElement(child, SchemaSpace::Framework)) continue;

        const std::size_t childRow = RowOf(child);
        if (childRow == RowCount) Refuse(child, "the framework has no element of this name");
        const std::uint16_t bit = Bit(static_cast<Row>(childRow));
        if (!(rule.children & bit)) Refuse(child, "not allowed inside " + std::string(rule.name));
        if ((rule.single & bit) && ++singles > 1)
            Refuse(child, "only one " + NamesOf(rule.single) + " is allowed");
        seen |= bit;
        CheckElement(child, childRow, depth + 1);
    }
    if (rule.needed && !(seen & rule.needed)) Refuse(element, NamesOf(rule.needed) + " is missing");
}

void FrameworkCheck::CheckName(const xmlNode* element, bool required) const {
    const xmlAttr* const attribute = NameAttribute(element);
    if (!attribute) {
        if (required) Refuse(element, "the attribute name is missing");
        return;
    }
    const std::string_view name = Trimmed(TextOf(attribute));
    if (name.find(':') == std::string_view::npos)
        Refuse(element, "the name " + Quoted(name) + " has no prefix");
    if (!m_scope.IsName(element, name))
        Refuse(element, "the prefix of the name " + Quoted(name) + " is not declared, or it is no name");
}

void FrameworkCheck::CheckValue(const xmlNode* element) const {
    std::string text;
    for (const xmlNode* child = element->children; child; child = child->next) {
        if (child->type == XML_ELEMENT_NODE) Refuse(child, "a Value holds nothing but text");
        if (child->type == XML_ENTITY_REF_NODE) Refuse(element, "an entity is not allowed here");
        if (IsText(child)) text.append(View(child->content));
    }
    const xmlAttr* type = xmlHasNsProp(element, AsXml(SchemaAttribute::Type), AsXml(SchemaSpace::Instance));
    if (!type) return;
    const std::string_view typeName = TextOf(type);
    const auto resolved = m_scope.Resolve(element, typeName);
    if (!resolved) Refuse(element, "the prefix of the type " + Quoted(typeName) + " is not declared");
    if (resolved->Is(SchemaSpace::Types, SchemaType::QName) && !m_scope.IsName(element, text))
        Refuse(element,
               "the prefix of the value " + Quoted(Trimmed(text)) + " is not declared, or it is no name");
}

} // namespace OvPlatform
