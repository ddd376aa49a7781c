#include "Package/ContentTypes.h"

#include "Package/PackageError.h"
#include "Xml/StrictXml.h"
#include "Xml/XmlOutput.h"

#include <msopc.h>

#include <vector>

namespace OvPlatform {

namespace {

constexpr char namespaceUri[] = "http://schemas.openxmlformats.org/package/2006/content-types";

[[noreturn]] void Refuse(HRESULT result, long line, const std::string& problem) {
    const std::string place = line > 0 ? " (line " + std::to_string(line) + ")" : std::string();
    throw PackageError(result, std::string(contentTypesName), problem + place);
}

std::string RequiredAttribute(const xmlNode* element, const char* name) {
    std::string value;
    if (!GetAttribute(element, name, value) || value.empty())
        Refuse(OPC_E_INVALID_CONTENT_TYPE_XML, xmlGetLineNo(element),
               "an element " + std::string(LocalName(element)) + " has no " + name);
    return value;
}

} // namespace

ContentTypes ContentTypes::Parse(std::string_view xml) {
    XmlDocument document;
    try {
        document = ParseStrictXml(xml);
    } catch (const StrictXmlError& error) {
        Refuse(OPC_E_NONCONFORMING_CONTENT_TYPES_XML, error.Line(), error.what());
    }
    const xmlNode* root = xmlDocGetRootElement(document.get());
    if (LocalName(root) != "Types" || NamespaceOf(root) != namespaceUri)
        Refuse(OPC_E_INVALID_CONTENT_TYPE_XML, xmlGetLineNo(root), "the root is not the Types element");

    ContentTypes types;
    for (const xmlNode* child = root->children; child != nullptr; child = child->next) {
        if (child->type != XML_ELEMENT_NODE) continue;
        const long line = xmlGetLineNo(child);
        const bool isDefault = LocalName(child) == "Default", isOverride = LocalName(child) == "Override";
        if ((!isDefault && !isOverride) || NamespaceOf(child) != namespaceUri)
            Refuse(OPC_E_INVALID_CONTENT_TYPE_XML, line, "unknown element " + std::string(LocalName(child)));
        const std::string key = RequiredAttribute(child, isDefault ? "Extension" : "PartName");
        const std::string type = RequiredAttribute(child, "ContentType");
        if (isDefault) {
            if (!types.m_defaults.emplace(FoldPartName(key), type).second)
                Refuse(OPC_E_DUPLICATE_DEFAULT_EXTENSION, line, "the extension '" + key + "' stands twice");
            continue;
        }
        const std::string name = DecodeUnreserved(EncodeExcluded(key));
        try {
            CheckPartName(name);
        } catch (const PartNameError& error) {
            Refuse(OPC_E_INVALID_OVERRIDE_PART_NAME, line, "the part name '" + key + "': " + error.what());
        }
        if (!types.m_overrides.emplace(name, type).second)
            Refuse(OPC_E_DUPLICATE_OVERRIDE_PART, line, "the part name '" + key + "' stands twice");
    }
    return types;
}

std::string_view ContentTypes::Find(std::string_view partName) const {
    if (const auto found = m_overrides.find(partName); found != m_overrides.end()) return found->second;
    const std::string extension = FoldPartName(PartExtension(partName));
    const auto found = m_defaults.find(extension);
    return found == m_defaults.end() ? std::string_view() : std::string_view(found->second);
}

void ContentTypes::Add(std::string_view partName, std::string_view contentType) {
    const std::string_view extension = PartExtension(partName);
    if (!extension.empty()) {
        const auto [entry, added] = m_defaults.emplace(FoldPartName(extension), contentType);
        if (added || entry->second == contentType) return;
    }
    m_overrides.insert_or_assign(std::string(partName), std::string(contentType));
}

void ContentTypes::SetDefault(std::string_view extension, std::string_view contentType) {
    m_defaults.insert_or_assign(FoldPartName(extension), std::string(contentType));
}

std::string ContentTypes::Format() const {
    XmlOutput xml(false);
    xml.Start("Types");
    xml.Attribute("xmlns", namespaceUri);
    for (const auto& [extension, type] : m_defaults) {
        xml.Start("Default");
        xml.Attribute("Extension", extension);
        xml.Attribute("ContentType", type);
        xml.End();
    }
    const std::map<std::string, std::string> sorted(m_overrides.begin(), m_overrides.end());
    for (const auto& [name, type] : sorted) {
        xml.Start("Override");
        xml.Attribute("PartName", name);
        xml.Attribute("ContentType", type);
        xml.End();
    }
    return xml.Finish();
}

} // namespace OvPlatform
