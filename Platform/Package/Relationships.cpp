#include "Package/Relationships.h"

#include "Package/PackageError.h"
#include "Package/PartName.h"
#include "Xml/StrictXml.h"
#include "Xml/XmlOutput.h"

#include <msopc.h>

#include <algorithm>
#include <set>

namespace OvPlatform {

namespace {

constexpr char namespaceUri[] = "http://schemas.openxmlformats.org/package/2006/relationships";

std::string AtLine(const std::string& problem, long line) {
    return line > 0 ? problem + " (line " + std::to_string(line) + ")" : problem;
}

class RelationshipsReader {
public:
    explicit RelationshipsReader(const std::string& source)
        : m_source(source), m_part(RelationshipsPartName(source)) {}

    std::vector<PackageRelationship> Read(std::string_view xml) {
        XmlDocument document;
        try {
            document = ParseStrictXml(xml);
        } catch (const StrictXmlError& error) {
            throw PackageError(OPC_E_NONCONFORMING_RELS_XML, m_part, AtLine(error.what(), error.Line()));
        }
        const xmlNode* root = xmlDocGetRootElement(document.get());
        if (LocalName(root) != "Relationships" || NamespaceOf(root) != namespaceUri)
            Refuse(root, OPC_E_INVALID_RELS_XML, "the root is not the Relationships element");
        for (const xmlNode* child = root->children; child != nullptr; child = child->next) {
            if (child->type != XML_ELEMENT_NODE) continue;
            if (LocalName(child) != "Relationship" || NamespaceOf(child) != namespaceUri)
                Refuse(child, OPC_E_INVALID_RELS_XML, "unknown element " + std::string(LocalName(child)));
            m_relationships.push_back(ReadOne(child));
        }
        return std::move(m_relationships);
    }

private:
    [[noreturn]] void Refuse(const xmlNode* node, HRESULT result, const std::string& problem) const {
        throw PackageError(result, m_part, AtLine(problem, xmlGetLineNo(node)));
    }

    PackageRelationship ReadOne(const xmlNode* element) {
        PackageRelationship relationship;
        if (!GetAttribute(element, "Id", relationship.id) || relationship.id.empty())
            Refuse(element, OPC_E_INVALID_RELATIONSHIP_ID, "a relationship has no Id");
        const std::string named = "the relationship '" + relationship.id + "' ";
        if (!m_ids.insert(relationship.id).second)
            Refuse(element, OPC_E_DUPLICATE_RELATIONSHIP, named + "stands twice");
        if (!GetAttribute(element, "Type", relationship.type) || relationship.type.empty())
            Refuse(element, OPC_E_INVALID_RELATIONSHIP_TYPE, named + "has no Type");
        if (!GetAttribute(element, "Target", relationship.target))
            Refuse(element, OPC_E_INVALID_RELATIONSHIP_TARGET, named + "has no Target");
        std::string mode = "Internal";
        GetAttribute(element, "TargetMode", mode);
        if (mode != "Internal" && mode != "External")
            Refuse(element, OPC_E_INVALID_RELATIONSHIP_TARGET_MODE,
                   named + "has the TargetMode '" + mode + "'");
        relationship.external = mode == "External";
        if (relationship.external) return relationship;
        if (relationship.target.empty())
            Refuse(element, OPC_E_INVALID_RELATIONSHIP_TARGET, named + "has an empty Target");
        try {
            relationship.targetPart = ResolvePartName(m_source, relationship.target);
        } catch (const PartNameError& error) {
            Refuse(element, OPC_E_INVALID_RELATIONSHIP_TARGET,
                   named + "has the Target '" + relationship.target + "': " + error.what());
        }
        return relationship;
    }

    std::string m_source;
    std::string m_part;
    std::vector<PackageRelationship> m_relationships;
    std::set<std::string> m_ids;
};

} // namespace

namespace {

// Written as it is, in an attribute. All else takes a writer of XML.
bool IsPlain(std::string_view text) {
    return std::all_of(text.begin(), text.end(), [](char c) {
        return c >= ' ' && c < 0x7F && c != '<' && c != '>' && c != '&' && c != '"';
    });
}

std::string FormatPlain(const std::vector<PackageRelationship>& relationships) {
    std::string xml = R"(<?xml version="1.0" encoding="UTF-8"?>)"
                      "\n<Relationships xmlns=\"";
    xml.append(namespaceUri).append("\">");
    for (const PackageRelationship& relationship : relationships) {
        xml.append(R"(<Relationship Type=")").append(relationship.type);
        xml.append(R"(" Target=")").append(relationship.target);
        if (relationship.external) xml.append(R"(" TargetMode="External)");
        xml.append(R"(" Id=")").append(relationship.id).append(R"("/>)");
    }
    return xml.append("</Relationships>\n");
}

} // namespace

std::string FormatRelationships(const std::vector<PackageRelationship>& relationships) {
    const bool isPlain = std::all_of(relationships.begin(), relationships.end(), [](const auto& each) {
        return IsPlain(each.type) && IsPlain(each.target) && IsPlain(each.id);
    });
    if (isPlain && !relationships.empty()) return FormatPlain(relationships);
    XmlOutput xml(false);
    xml.Start("Relationships");
    xml.Attribute("xmlns", namespaceUri);
    for (const PackageRelationship& relationship : relationships) {
        xml.Start("Relationship");
        xml.Attribute("Type", relationship.type);
        xml.Attribute("Target", relationship.target);
        if (relationship.external) xml.Attribute("TargetMode", "External");
        xml.Attribute("Id", relationship.id);
        xml.End();
    }
    return xml.Finish();
}

std::vector<PackageRelationship> ParseRelationships(std::string_view xml, const std::string& source) {
    return RelationshipsReader(source).Read(xml);
}

} // namespace OvPlatform
