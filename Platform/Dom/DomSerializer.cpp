#include "Dom/DomSerializer.h"

#include "Dom/TextConversion.h"
#include "Dom/XmlDeclaration.h"

#include <libxml/encoding.h>
#include <libxml/xmlIO.h>

#include <array>
#include <memory>

namespace OvPlatform {

namespace {

constexpr std::string_view LineEnd = "\r\n";
constexpr std::string_view MadeUpPrefix = "ns";

/// What stands for a character that cannot stand for itself. Empty: it can.
constexpr std::string_view Escape(char c, bool inAttribute) noexcept {
    switch (c) {
    case '&':
        return "&amp;";
    case '<':
        return "&lt;";
    case '>':
        return "&gt;";
    case '\r':
        return "&#13;";
    case '"':
        return inAttribute ? "&quot;" : "";
    case '\t':
        return inAttribute ? "&#9;" : "";
    case '\n':
        return inAttribute ? "&#10;" : LineEnd;
    default:
        return "";
    }
}

constexpr std::array<bool, 256> Specials = [] {
    std::array<bool, 256> specials{};
    for (char c : {'&', '<', '>', '\r', '"', '\t', '\n'})
        specials[static_cast<unsigned char>(c)] = true;
    return specials;
}();

xmlNode* AsNode(const DomTree& tree) noexcept { return tree.DocumentNode(); }

} // namespace

void DomSerializer::Write(const xmlNode* node) {
    if (node->type == XML_DOCUMENT_NODE || node->type == XML_DOCUMENT_FRAG_NODE) {
        const bool lines = node->type == XML_DOCUMENT_NODE && !m_tree.PreservesWhiteSpace();
        for (const xmlNode* child = node->children; child != nullptr; child = child->next) {
            WriteSubtree(child);
            if (lines) m_text += LineEnd;
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
        if (node != top && (MarksOf(node) & BreakBefore)) BreakAfter(node->prev);
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
    const std::size_t own = m_bindings.size();
    m_frames.push_back(own);
    for (const xmlNs* declaration = element->nsDef; declaration; declaration = declaration->next)
        m_bindings.push_back({View(declaration->prefix), View(declaration->href)});

    const std::string_view prefix = element->ns ? View(element->ns->prefix) : std::string_view();
    const std::string_view uri = element->ns ? View(element->ns->href) : std::string_view();
    m_text += '<';
    WriteName(prefix, View(element->name));

    std::size_t declared = m_bindings.size();
    const Binding* bound = BindingOf(prefix);
    const bool ownDefault = bound != nullptr && static_cast<std::size_t>(bound - m_bindings.data()) >= own;
    const std::string_view boundUri = bound ? bound->uri : std::string_view();
    // An element without a namespace that declares a default one is written as it stands.
    if (boundUri != uri && prefix != "xml" && !(uri.empty() && ownDefault))
        m_bindings.push_back({prefix, uri});

    AttributeCursor cursor(element);
    for (AttributeSlot slot = cursor.Next(); slot; slot = cursor.Next()) {
        if (slot.attribute)
            WriteAttribute(slot.attribute, PrefixFor(slot.attribute, own));
        else
            WriteDeclaration(View(slot.declaration->prefix), View(slot.declaration->href));
    }
    for (; declared < m_bindings.size(); ++declared)
        WriteDeclaration(m_bindings[declared].prefix, m_bindings[declared].uri);

    if (element->children != nullptr) {
        m_text += '>';
    } else if (MarksOf(element) & BreakBeforeEnd) {
        m_text += '>';
        EndElement(element);
    } else {
        m_text += "/>";
        m_bindings.resize(m_frames.back());
        m_frames.pop_back();
    }
}

void DomSerializer::EndElement(const xmlNode* element) {
    if (MarksOf(element) & BreakBeforeEnd) BreakAfter(element->last);
    m_text += "</";
    WriteName(element->ns ? View(element->ns->prefix) : std::string_view(), View(element->name));
    m_text += '>';
    m_bindings.resize(m_frames.back());
    m_frames.pop_back();
}

void DomSerializer::WriteLeaf(const xmlNode* node) {
    const std::string_view content = View(node->content);
    switch (node->type) {
    case XML_TEXT_NODE:
        WriteEscaped(content, false);
        break;
    case XML_CDATA_SECTION_NODE: {
        m_text += "<![CDATA[";
        std::string_view rest = content;
        for (std::size_t end = rest.find("]]>"); end != std::string_view::npos; end = rest.find("]]>")) {
            WriteRaw(rest.substr(0, end + 2));
            m_text += "]]><![CDATA[";
            rest.remove_prefix(end + 2);
        }
        WriteRaw(rest);
        m_text += "]]>";
        break;
    }
    case XML_COMMENT_NODE:
        m_text += "<!--";
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

const DomSerializer::Binding* DomSerializer::BindingOf(std::string_view prefix) const noexcept {
    for (std::size_t index = m_bindings.size(); index-- > 0;)
        if (m_bindings[index].prefix == prefix) return &m_bindings[index];
    return nullptr;
}

/// The prefix to write, with a declaration added to the element where none fits. `own` is where its bindings
/// begin.
std::string_view DomSerializer::PrefixFor(const xmlAttr* attribute, std::size_t own) {
    if (attribute->ns == nullptr) return {};
    const std::string_view prefix = View(attribute->ns->prefix);
    const std::string_view uri = View(attribute->ns->href);
    if (prefix == "xml") return prefix;
    const Binding* bound = prefix.empty() ? nullptr : BindingOf(prefix);
    if (bound != nullptr && bound->uri == uri) return prefix;
    const bool taken = bound != nullptr && static_cast<std::size_t>(bound - m_bindings.data()) >= own;
    if (!prefix.empty() && !taken) {
        m_bindings.push_back({prefix, uri});
        return prefix;
    }
    for (const Binding& binding : m_bindings)
        if (binding.uri == uri && !binding.prefix.empty() && BindingOf(binding.prefix) == &binding)
            return binding.prefix;
    std::string made;
    do {
        made = std::string(MadeUpPrefix) + std::to_string(m_madeUp.size());
        m_madeUp.push_back(made);
    } while (BindingOf(made) != nullptr);
    m_bindings.push_back({m_madeUp.back(), uri});
    return m_madeUp.back();
}

void DomSerializer::WriteName(std::string_view prefix, std::string_view name) {
    if (!prefix.empty()) m_text.append(prefix).append(1, ':');
    m_text.append(name);
}

void DomSerializer::WriteEscaped(std::string_view text, bool inAttribute) {
    std::size_t begin = 0;
    for (std::size_t index = 0; index < text.size(); ++index) {
        if (!Specials[static_cast<unsigned char>(text[index])]) continue;
        const std::string_view escape = Escape(text[index], inAttribute);
        if (escape.empty()) continue;
        m_text.append(text, begin, index - begin).append(escape);
        begin = index + 1;
    }
    m_text.append(text, begin, text.size() - begin);
}

void DomSerializer::WriteRaw(std::string_view text) {
    for (char c : text) {
        if (c == '\n')
            m_text += LineEnd;
        else
            m_text += c;
    }
}

/// Behind a text, which has come there since, or where blanks count, the break would become content.
void DomSerializer::BreakAfter(const xmlNode* previous) {
    if (m_tree.PreservesWhiteSpace() || (previous != nullptr && previous->type == XML_TEXT_NODE)) return;
    m_text += LineEnd;
    m_text.append(m_depth, '\t');
}

bool DomSerializer::ToBytes(const DomTree& tree, std::string& bytes) {
    DomSerializer serializer(tree, Declaration::WithEncoding);
    serializer.Write(AsNode(tree));
    bytes = serializer.TakeText();

    const xmlNode* first = tree.Document()->children;
    if (first == nullptr || first->type != XML_PI_NODE || View(first->name) != "xml") return true;
    const auto declaration = XmlDeclaration::FromData(View(first->content));
    if (!declaration) return true;
    switch (ClassifyEncoding(declaration->encoding)) {
    case TextEncoding::Utf8:
        return true;
    case TextEncoding::Utf16:
        bytes = ToUtf16Bytes(bytes);
        return true;
    case TextEncoding::Other:
        break;
    }
    xmlCharEncodingHandler* handler = xmlFindCharEncodingHandler(declaration->encoding.c_str());
    if (handler == nullptr) return false;
    // Writes a character reference where the encoding has no such character.
    xmlOutputBuffer* output = xmlAllocOutputBuffer(handler);
    if (output == nullptr) throw std::bad_alloc();
    const int written = xmlOutputBufferWrite(output, static_cast<int>(bytes.size()), bytes.data());
    xmlOutputBufferFlush(output);
    const xmlBuf* converted = output->conv != nullptr ? output->conv : output->buffer;
    if (written >= 0)
        bytes.assign(reinterpret_cast<const char*>(xmlBufContent(converted)),
                     xmlBufUse(const_cast<xmlBuf*>(converted)));
    xmlOutputBufferClose(output);
    return written >= 0;
}

} // namespace OvPlatform
