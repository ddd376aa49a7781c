#include "Infoset.h"

#include <atlcomcli.h>
#include <expat.h>

#include <algorithm>
#include <cstdlib>
#include <map>
#include <memory>

namespace {

constexpr char endOfEvent = '\x1E';
constexpr char beforeAttribute = '\x1F';
constexpr char inName = '\x01'; // none of them is a character of XML
constexpr std::string_view xmlUri = "http://www.w3.org/XML/1998/namespace";
constexpr std::string_view xmlnsUri = "http://www.w3.org/2000/xmlns/";

struct Attribute {
    std::string name; // namespace, InName and local name
    std::string value;
    bool operator<(const Attribute& other) const { return name < other.name; }
};

std::string FullName(std::string_view uri, std::string_view local) {
    return std::string(uri).append(1, inName).append(local);
}

/// Puts events together as both sides see them.
class Recorder {
public:
    explicit Recorder(bool keepsBlanks) { m_keepsBlanks.push_back(keepsBlanks); }

    void Declare(const std::string& prefix, const std::string& uri) { m_bound[prefix].push_back(uri); }
    void Undeclare(const std::string& prefix) { m_bound[prefix].pop_back(); }

    void Start(const std::string& name, std::vector<Attribute> attributes) {
        EndText();
        std::sort(attributes.begin(), attributes.end());
        m_infoset.events.append(1, 'S').append(name);
        bool keepsBlanks = m_keepsBlanks.back();
        for (const Attribute& attribute : attributes) {
            m_infoset.events.append(1, beforeAttribute).append(attribute.name).append("=");
            m_infoset.events.append(attribute.value);
            NoteMeaning(attribute.value);
            if (attribute.name != FullName(xmlUri, "space")) continue;
            if (attribute.value == "preserve") keepsBlanks = true;
            if (attribute.value == "default") keepsBlanks = m_keepsBlanks.front();
        }
        m_infoset.events += endOfEvent;
        m_keepsBlanks.push_back(keepsBlanks);
    }
    void End() {
        EndText();
        m_infoset.events.append(1, 'E').append(1, endOfEvent);
        m_keepsBlanks.pop_back();
    }
    void Text(std::string_view text) { m_text.append(text); }
    void Other(char kind, std::string_view content) {
        EndText();
        m_infoset.events.append(1, kind).append(content).append(1, endOfEvent);
    }

    Infoset Take() { return std::move(m_infoset); }

private:
    void EndText() {
        const bool counts = m_keepsBlanks.back() || m_text.find_first_not_of(" \t\r\n") != std::string::npos;
        if (!m_text.empty() && counts) m_infoset.events.append(1, 'T').append(m_text).append(1, endOfEvent);
        m_text.clear();
    }
    void NoteMeaning(std::string_view value) {
        const std::size_t colon = value.find(':');
        if (colon == std::string_view::npos) return;
        const auto bound = m_bound.find(std::string(value.substr(0, colon)));
        const bool isBound = bound != m_bound.end() && !bound->second.empty();
        m_infoset.meanings.push_back(isBound ? bound->second.back() : std::string());
    }

    Infoset m_infoset;
    std::string m_text;
    std::vector<bool> m_keepsBlanks;
    std::map<std::string, std::vector<std::string>> m_bound;
};

// ---- A tree

std::string Narrow(BSTR text) {
    const int units = static_cast<int>(::SysStringLen(text));
    std::string utf8(static_cast<std::size_t>(units) * 3, '\0');
    const int length = units == 0 ? 0
                                  : ::WideCharToMultiByte(CP_UTF8, 0, text, units, utf8.data(),
                                                          static_cast<int>(utf8.size()), nullptr, nullptr);
    utf8.resize(static_cast<std::size_t>(length));
    return utf8;
}

template <class Question>
std::string Answer(IXMLDOMNode* node, Question question) {
    CComBSTR text;
    if (FAILED((node->*question)(&text))) std::abort();
    return Narrow(text);
}

std::string ValueOf(IXMLDOMNode* node) {
    CComVariant value;
    if (FAILED(node->get_nodeValue(&value))) std::abort();
    return value.vt == VT_BSTR ? Narrow(value.bstrVal) : std::string();
}

std::string FullName(IXMLDOMNode* node) {
    return FullName(Answer(node, &IXMLDOMNode::get_namespaceURI), Answer(node, &IXMLDOMNode::get_baseName));
}

class TreeReader {
public:
    TreeReader(IXMLDOMNode* document, bool keepsBlanks) : m_recorder(keepsBlanks) {
        CComPtr<IXMLDOMNode> node = document;
        while (node) {
            CComPtr<IXMLDOMNode> next;
            if (Enter(node)) node->get_firstChild(&next);
            while (!next && node && !node.IsEqualObject(document)) {
                Leave(node);
                if (node->get_nextSibling(&next) == S_OK) break;
                CComPtr<IXMLDOMNode> parent;
                node->get_parentNode(&parent);
                node = parent;
            }
            node = next;
        }
    }

    Infoset Take() { return m_recorder.Take(); }

private:
    static DOMNodeType TypeOf(IXMLDOMNode* node) {
        DOMNodeType type = NODE_INVALID;
        if (FAILED(node->get_nodeType(&type))) std::abort();
        return type;
    }

    /// True if what is inside follows.
    bool Enter(IXMLDOMNode* node) {
        switch (TypeOf(node)) {
        case NODE_ELEMENT:
            EnterElement(node);
            return true;
        case NODE_TEXT:
        case NODE_CDATA_SECTION:
            m_recorder.Text(ValueOf(node));
            return false;
        case NODE_COMMENT:
            m_recorder.Other('C', ValueOf(node));
            return false;
        case NODE_PROCESSING_INSTRUCTION:
            if (const std::string target = Answer(node, &IXMLDOMNode::get_nodeName); target != "xml")
                m_recorder.Other('P', target + ' ' + ValueOf(node));
            return false;
        default:
            return true;
        }
    }

    void EnterElement(IXMLDOMNode* element) {
        // What the element's own prefix means it means for what is inside, unless the element declares it.
        std::map<std::string, std::string> declared;
        declared[Answer(element, &IXMLDOMNode::get_prefix)] = Answer(element, &IXMLDOMNode::get_namespaceURI);
        std::vector<Attribute> attributes;
        CComPtr<IXMLDOMNamedNodeMap> map;
        if (element->get_attributes(&map) != S_OK) std::abort();
        for (CComPtr<IXMLDOMNode> node; map->nextNode(&node) == S_OK; node.Release()) {
            if (Answer(node, &IXMLDOMNode::get_namespaceURI) != xmlnsUri)
                attributes.push_back({FullName(node), ValueOf(node)});
            else if (Answer(node, &IXMLDOMNode::get_prefix) == "xmlns")
                declared[Answer(node, &IXMLDOMNode::get_baseName)] = ValueOf(node);
        }
        m_declared.emplace_back();
        for (const auto& [prefix, uri] : declared) {
            m_recorder.Declare(prefix, uri);
            m_declared.back().push_back(prefix);
        }
        m_recorder.Start(FullName(element), std::move(attributes));
    }

    void Leave(IXMLDOMNode* node) {
        if (TypeOf(node) != NODE_ELEMENT) return;
        m_recorder.End();
        for (const std::string& prefix : m_declared.back())
            m_recorder.Undeclare(prefix);
        m_declared.pop_back();
    }

    Recorder m_recorder;
    std::vector<std::vector<std::string>> m_declared;
};

// ---- A text

Recorder& RecorderOf(void* data) { return *static_cast<Recorder*>(data); }

/// The parser puts no separator into names without a namespace.
std::string FullName(const char* name) {
    const std::string_view whole = name;
    return whole.find(inName) == std::string_view::npos ? FullName("", whole) : std::string(whole);
}

void SetHandlers(XML_Parser parser) {
    XML_SetStartElementHandler(parser, [](void* data, const char* name, const char** pairs) {
        std::vector<Attribute> attributes;
        for (; *pairs != nullptr; pairs += 2)
            attributes.push_back({FullName(pairs[0]), pairs[1]});
        RecorderOf(data).Start(FullName(name), std::move(attributes));
    });
    XML_SetEndElementHandler(parser, [](void* data, const char*) { RecorderOf(data).End(); });
    XML_SetCharacterDataHandler(parser, [](void* data, const char* text, int length) {
        RecorderOf(data).Text({text, static_cast<std::size_t>(length)});
    });
    XML_SetCommentHandler(parser, [](void* data, const char* text) { RecorderOf(data).Other('C', text); });
    XML_SetProcessingInstructionHandler(parser, [](void* data, const char* target, const char* content) {
        RecorderOf(data).Other('P', std::string(target) + ' ' + content);
    });
    XML_SetStartNamespaceDeclHandler(parser, [](void* data, const char* prefix, const char* uri) {
        RecorderOf(data).Declare(prefix != nullptr ? prefix : "", uri != nullptr ? uri : "");
    });
    XML_SetEndNamespaceDeclHandler(parser, [](void* data, const char* prefix) {
        RecorderOf(data).Undeclare(prefix != nullptr ? prefix : "");
    });
}

} // namespace

Infoset Infoset::Of(IXMLDOMDocument3* document, bool keepsBlanks) {
    return TreeReader(document, keepsBlanks).Take();
}

std::optional<Infoset> Infoset::Of(std::string_view text, const char* encoding, bool keepsBlanks,
                                   std::string& reason) {
    const std::unique_ptr<XML_ParserStruct, decltype(&XML_ParserFree)> parser(
        XML_ParserCreateNS(encoding, inName), XML_ParserFree);
    if (parser == nullptr) std::abort();
    Recorder recorder(keepsBlanks);
    XML_SetUserData(parser.get(), &recorder);
    SetHandlers(parser.get());
    if (XML_Parse(parser.get(), text.data(), static_cast<int>(text.size()), XML_TRUE) != XML_STATUS_OK) {
        reason = XML_ErrorString(XML_GetErrorCode(parser.get()));
        return std::nullopt;
    }
    return recorder.Take();
}

std::string Difference(const Infoset& tree, const Infoset& text) {
    if (tree.events != text.events) return "The tree says\n" + tree.events + "\nand its text\n" + text.events;
    if (tree.meanings.size() != text.meanings.size()) return "The text has other values than the tree";
    for (std::size_t index = 0; index < tree.meanings.size(); ++index)
        if (!tree.meanings[index].empty() && tree.meanings[index] != text.meanings[index])
            return "A prefix in a value means " + tree.meanings[index] + " in the tree, but in the text \"" +
                   text.meanings[index] + '"';
    return {};
}
