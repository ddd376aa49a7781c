#include "Dom/DomSerializer.h"

#include "Dom/TargetEncoding.h"
#include "Dom/WhiteSpace.h"
#include "Xml/TextConversion.h"
#include "Xml/XmlDeclaration.h"
#include "Xml/XmlEscape.h"

#include <memory>
#include <optional>

namespace OvPlatform {

namespace {

constexpr std::string_view lineEnd = "\r\n";
constexpr std::string_view sectionStart = "<![CDATA[";
constexpr std::string_view sectionEnd = "]]>";

xmlNode* AsNode(const DomTree& tree) noexcept { return tree.DocumentNode(); }

} // namespace

void DomSerializer::Write(const xmlNode* node) {
    if (node->type == XML_DOCUMENT_NODE || node->type == XML_DOCUMENT_FRAG_NODE) {
        const bool lines = node->type == XML_DOCUMENT_NODE && !m_tree.PreservesWhiteSpace();
        for (const xmlNode* child = node->children; child != nullptr; child = child->next) {
            WriteSubtree(child);
            if (lines) m_text += lineEnd;
        }
    } else if (node->type == XML_ATTRIBUTE_NODE) {
        WriteAttribute(reinterpret_cast<const xmlAttr*>(node),
                       node->ns ? View(node->ns->prefix) : std::string_view());
        m_text.erase(0, 1); // the blank in front
    } else {
        WriteSubtree(node);
    }
}

void DomSerializer::WriteSubtree(const xmlNode* top) {
    const xmlNode* node = top;
    while (true) {
        if (node != top && (MarksOf(node) & BreakBefore) && MayBreak(node->prev, node)) Break();
        if (node->type == XML_ELEMENT_NODE) {
            StartElement(node);
            if (node->children != nullptr) {
                ++m_depth;
                node = node->children;
                continue;
            }
        } else {
            WriteLeaf(node);
        }
        while (node != top && node->next == nullptr) {
            node = node->parent;
            --m_depth;
            EndElement(node);
        }
        if (node == top) return;
        node = node->next;
    }
}

void DomSerializer::StartElement(const xmlNode* element) {
    m_scope.Open();
    for (const xmlNs* declaration = element->nsDef; declaration; declaration = declaration->next)
        m_scope.Bind(View(declaration->prefix), View(declaration->href));
    std::size_t declared = m_scope.OwnCount();
    m_open.push_back({PrefixFor(element), PreservesSpace(element)});

    m_text += '<';
    WriteName(m_open.back().prefix, View(element->name));
    AttributeCursor cursor(element);
    for (AttributeSlot slot = cursor.Next(); slot; slot = cursor.Next()) {
        if (slot.attribute)
            WriteAttribute(slot.attribute, PrefixFor(slot.attribute));
        else
            WriteDeclaration(View(slot.declaration->prefix), View(slot.declaration->href));
    }
    for (; declared < m_scope.OwnCount(); ++declared)
        WriteDeclaration(m_scope.Own(declared).prefix, m_scope.Own(declared).uri);

    if (element->children != nullptr) {
        m_text += '>';
    } else if ((MarksOf(element) & BreakBeforeEnd) && MayBreak(nullptr, nullptr)) {
        m_text += '>';
        EndElement(element);
    } else {
        m_text += "/>";
        Close();
    }
}

void DomSerializer::EndElement(const xmlNode* element) {
    if ((MarksOf(element) & BreakBeforeEnd) && MayBreak(element->last, nullptr)) Break();
    m_text += "</";
    WriteName(m_open.back().prefix, View(element->name));
    m_text += '>';
    Close();
}

void DomSerializer::Close() {
    m_open.pop_back();
    m_scope.Close();
}

void DomSerializer::WriteLeaf(const xmlNode* node) {
    const std::string_view content = View(node->content);
    switch (node->type) {
    case XML_TEXT_NODE:
        WriteEscaped(content, false);
        break;
    case XML_CDATA_SECTION_NODE: {
        m_text += sectionStart;
        const std::size_t begin = m_text.size();
        std::string_view rest = content;
        for (std::size_t end = rest.find(sectionEnd); end != std::string_view::npos;
             end = rest.find(sectionEnd)) {
            WriteRaw(rest.substr(0, end + 2));
            m_text.append(sectionEnd).append(sectionStart);
            rest.remove_prefix(end + 2);
        }
        WriteRaw(rest);
        if (m_encoding != nullptr) m_encoding->Refer(m_text, begin, sectionEnd, sectionStart);
        m_text += sectionEnd;
        break;
    }
    case XML_COMMENT_NODE:
        m_text += "<!--";
        RequireCharacters(content);
        WriteRaw(content);
        m_text += "-->";
        break;
    case XML_PI_NODE:
        WriteProcessingInstruction(node);
        break;
    default:
        break;
    }
}

void DomSerializer::WriteProcessingInstruction(const xmlNode* node) {
    std::string data(View(node->content));
    if ((MarksOf(node) & ReadDeclaration) && m_declaration == Declaration::WithoutEncoding) {
        if (auto declaration = XmlDeclaration::FromData(data)) {
            declaration->encoding.clear();
            data = declaration->Data();
        }
    }
    RequireCharacters(View(node->name));
    RequireCharacters(data);
    m_text.append("<?").append(View(node->name));
    if (!data.empty()) m_text += ' ';
    WriteRaw(data);
    m_text += "?>";
}

void DomSerializer::WriteAttribute(const xmlAttr* attribute, std::string_view prefix) {
    m_text += ' ';
    WriteName(prefix, View(attribute->name));
    m_text += "=\"";
    for (const xmlNode* text = attribute->children; text != nullptr; text = text->next)
        WriteEscaped(View(text->content), true);
    m_text += '"';
}

void DomSerializer::WriteDeclaration(std::string_view prefix, std::string_view uri) {
    m_text += " xmlns";
    if (!prefix.empty()) m_text.append(":").append(prefix);
    m_text += "=\"";
    WriteEscaped(uri, true);
    m_text += '"';
}

std::string_view DomSerializer::PrefixFor(const xmlNode* element) {
    const std::string_view prefix = element->ns ? View(element->ns->prefix) : std::string_view();
    if (m_fitting.first == element->ns && m_fitting.second == m_scope.Version()) return prefix;
    const std::string_view uri = element->ns ? View(element->ns->href) : std::string_view();
    if (prefix == "xml" || m_scope.Means(prefix, uri)) {
        m_fitting = {element->ns, m_scope.Version()};
        return prefix;
    }
    // What the element declares stands: texts in it may count on that.
    if (m_scope.IsBoundHere(prefix)) return m_scope.PrefixOf(uri);
    m_scope.Bind(prefix, uri);
    return prefix;
}

std::string_view DomSerializer::PrefixFor(const xmlAttr* attribute) {
    if (attribute->ns == nullptr) return {};
    const std::string_view prefix = View(attribute->ns->prefix);
    const std::string_view uri = View(attribute->ns->href);
    if (prefix == "xml" || (!prefix.empty() && m_scope.Means(prefix, uri))) return prefix;
    // To bind the prefix anew here would change the other names in the tag, and what texts say with it.
    if (prefix.empty() || m_scope.IsBound(prefix)) return m_scope.PrefixOf(uri);
    m_scope.Bind(prefix, uri);
    return prefix;
}

void DomSerializer::WriteName(std::string_view prefix, std::string_view name) {
    RequireCharacters(prefix);
    RequireCharacters(name);
    if (!prefix.empty()) m_text.append(prefix).append(1, ':');
    m_text.append(name);
}

void DomSerializer::WriteEscaped(std::string_view text, bool inAttribute) {
    const std::size_t start = m_text.size();
    AppendXml(m_text, text, inAttribute ? XmlPlace::Attribute : XmlPlace::Content, lineEnd);
    if (m_encoding != nullptr) m_encoding->Refer(m_text, start, {}, {});
}

void DomSerializer::RequireCharacters(std::string_view text) {
    if (m_encoding != nullptr && !m_encoding->HasAll(text)) m_lacksCharacters = true;
}

void DomSerializer::WriteRaw(std::string_view text) {
    for (char c : text) {
        if (c == '\n')
            m_text += lineEnd;
        else
            m_text += c;
    }
}

bool DomSerializer::PreservesSpace(const xmlNode* element) const noexcept {
    const SpaceRule rule = SpaceRuleOf(element);
    if (rule != SpaceRule::AsAround) return rule == SpaceRule::Preserve;
    return m_open.empty() ? SpaceIsPreserved(element->parent) : m_open.back().preservesSpace;
}

bool DomSerializer::MayBreak(const xmlNode* left, const xmlNode* right) const noexcept {
    const bool keepsBlanks = m_tree.PreservesWhiteSpace() || m_open.back().preservesSpace;
    return !keepsBlanks && !(left != nullptr && IsText(left)) && !(right != nullptr && IsText(right));
}

void DomSerializer::Break() {
    m_text += lineEnd;
    m_text.append(m_depth, '\t');
}

bool DomSerializer::ToBytes(const DomTree& tree, std::string& bytes) {
    const xmlNode* first = tree.Document()->children;
    std::optional<XmlDeclaration> declaration;
    if (first != nullptr && XmlDeclaration::Is(first))
        declaration = XmlDeclaration::FromData(View(first->content));
    const std::string name = declaration ? declaration->encoding : std::string();
    const TextEncoding kind = ClassifyEncoding(name);
    const std::unique_ptr<TargetEncoding> encoding =
        kind == TextEncoding::Other ? TargetEncoding::Find(name) : nullptr;
    if (kind == TextEncoding::Other && encoding == nullptr) return false;

    DomSerializer serializer(tree, Declaration::WithEncoding);
    serializer.m_encoding = encoding.get();
    serializer.Write(AsNode(tree));
    if (serializer.m_lacksCharacters) return false;
    bytes = serializer.TakeText();
    if (kind == TextEncoding::Utf16) bytes = ToUtf16Bytes(bytes);
    if (encoding == nullptr) return true;
    std::optional<std::string> encoded = encoding->Encode(bytes);
    if (encoded) bytes = std::move(*encoded);
    return encoded.has_value();
}

} // namespace OvPlatform
