#include "PrintTicket/SchemaReader.h"

#include "PrintTicket/NamespaceScope.h"
#include "PrintTicket/SchemaWords.h"

namespace OvPlatform {
namespace {

class Reader {
public:
    explicit Reader(const xmlNode* root) : m_root(root), m_scope(root) {}

    SchemaDocument Read() const;

private:
    KeywordName Name(const xmlNode* element, const char* attribute = SchemaAttribute::Name) const;
    SchemaValue Value(const xmlNode* element) const;
    SchemaProperty Property(const xmlNode* element) const;
    SchemaOption Option(const xmlNode* element) const;
    SchemaFeature Feature(const xmlNode* element) const;

    const xmlNode* m_root;
    NamespaceScope m_scope;
};

template <typename Visitor>
void ForEachChild(const xmlNode* parent, Visitor visit) {
    for (const xmlNode* child = FirstElement(parent, SchemaSpace::Framework); child;
         child = NextElement(child, SchemaSpace::Framework))
        visit(child, View(child->name));
}

void AddDeclarations(const xmlNode* element, NamespacePrefixes::Declarations& declarations) {
    for (const xmlNs* declaration = element->nsDef; declaration; declaration = declaration->next)
        declarations.emplace_back(View(declaration->prefix), View(declaration->href));
    ForEachChild(element,
                 [&](const xmlNode* child, std::string_view) { AddDeclarations(child, declarations); });
}

SchemaDocument Reader::Read() const {
    SchemaDocument document;
    ForEachChild(m_root, [&](const xmlNode* child, std::string_view tag) {
        if (tag == SchemaTag::Feature) {
            document.features.push_back(Feature(child));
        } else if (tag == SchemaTag::ParameterInit) {
            document.parameters.push_back({Name(child), Value(FirstElement(child, SchemaSpace::Framework))});
        } else if (tag == SchemaTag::ParameterDef) {
            document.definitions.push_back({Name(child), Property(child).properties});
        } else {
            document.properties.push_back(Property(child));
        }
    });
    return document;
}

KeywordName Reader::Name(const xmlNode* element, const char* attribute) const {
    const xmlAttr* found = xmlHasNsProp(element, AsXml(attribute), nullptr);
    if (!found || !found->children) return {};
    return m_scope.Resolve(element, View(found->children->content)).value_or(KeywordName());
}

SchemaValue Reader::Value(const xmlNode* element) const {
    SchemaValue value;
    for (const xmlNode* child = element->children; child; child = child->next)
        if (child->type == XML_TEXT_NODE || child->type == XML_CDATA_SECTION_NODE)
            value.text.append(View(child->content));
    const xmlAttr* type = xmlHasNsProp(element, AsXml(SchemaAttribute::Type), AsXml(SchemaSpace::Instance));
    if (type && type->children)
        value.type = m_scope.Resolve(element, View(type->children->content)).value_or(KeywordName());
    if (value.IsQName()) {
        KeywordName name = m_scope.Resolve(element, value.text).value_or(KeywordName());
        value.space = std::move(name.space);
        value.text = std::move(name.local);
    }
    return value;
}

SchemaProperty Reader::Property(const xmlNode* element) const {
    SchemaProperty property;
    property.name = Name(element);
    ForEachChild(element, [&](const xmlNode* child, std::string_view tag) {
        if (tag == SchemaTag::Value)
            property.value = Value(child);
        else if (tag == SchemaTag::ParameterRef)
            property.parameter = Name(child);
        else if (tag == SchemaTag::ScoredProperty)
            property.scored.push_back(Property(child));
        else
            property.properties.push_back(Property(child));
    });
    return property;
}

SchemaOption Reader::Option(const xmlNode* element) const {
    SchemaOption option;
    option.name = Name(element);
    option.constrained = Name(element, SchemaAttribute::Constrained);
    ForEachChild(element, [&](const xmlNode* child, std::string_view tag) {
        (tag == SchemaTag::ScoredProperty ? option.scored : option.properties).push_back(Property(child));
    });
    return option;
}

SchemaFeature Reader::Feature(const xmlNode* element) const {
    SchemaFeature feature;
    feature.name = Name(element);
    ForEachChild(element, [&](const xmlNode* child, std::string_view tag) {
        if (tag == SchemaTag::Option)
            feature.options.push_back(Option(child));
        else if (tag == SchemaTag::Feature)
            feature.features.push_back(Feature(child));
        else
            feature.properties.push_back(Property(child));
    });
    return feature;
}

} // namespace

SchemaDocument ReadSchemaDocument(const xmlDoc* document) {
    return Reader(xmlDocGetRootElement(document)).Read();
}

NamespacePrefixes::Declarations DeclaredNamespaces(const xmlDoc* document) {
    NamespacePrefixes::Declarations declarations;
    AddDeclarations(xmlDocGetRootElement(document), declarations);
    return declarations;
}

SchemaDocument ReadSchemaDocument(std::string_view bytes, FrameworkCheck::Kind kind) {
    const XmlDocument document = ParseSchemaXml(bytes);
    FrameworkCheck::Check(document.get(), kind);
    return ReadSchemaDocument(document.get());
}

} // namespace OvPlatform
