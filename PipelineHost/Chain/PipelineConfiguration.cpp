#include "Chain/FilterSpec.h"
#include "Streams/FileStreams.h"

#include <Xml/StrictXml.h>

#include <array>

namespace OvPipeline {

namespace {

constexpr std::uint64_t maxSize = 1 << 20;

// One published interface that a Filter's Input or Output may name.
struct KnownEnd {
    const GUID& guid;
    bool isInput;
    EndKind kind;
};
const std::array knownEnds{
    KnownEnd{__uuidof(IXpsDocumentProvider), true, EndKind::XpsParts},
    KnownEnd{__uuidof(IPrintReadStream), true, EndKind::Bytes},
    KnownEnd{__uuidof(IXpsDocumentConsumer), false, EndKind::XpsParts},
    KnownEnd{__uuidof(IPrintWriteStream), false, EndKind::Bytes},
};

class ConfigurationReader {
public:
    explicit ConfigurationReader(const std::filesystem::path& file) : m_file(file) {}

    PipelineSpec Read() {
        const auto document = Parse();
        const xmlNode* root = xmlDocGetRootElement(document.get());
        if (Name(root) != "Filters") Refuse(root, "the root element is " + Name(root) + ", not Filters");
        for (const xmlNode* child = Element(root->children); child != nullptr; child = Element(child->next))
            ReadChild(child);
        return m_spec;
    }

private:
    [[noreturn]] void Refuse(const xmlNode* node, const std::string& problem) const {
        RefuseLine(node != nullptr ? xmlGetLineNo(node) : 0, problem);
    }
    [[noreturn]] void RefuseLine(long line, const std::string& problem) const {
        throw HostError(HRESULT_FROM_WIN32(ERROR_INVALID_DATA), m_file.string(),
                        m_file.string() + (line > 0 ? " line " + std::to_string(line) : std::string()) +
                            ": " + problem);
    }

    std::string ReadText() const {
        try {
            std::string text;
            const auto reader = FileContent(m_file).Open();
            if (reader->Size() > maxSize) Refuse(nullptr, "the configuration is larger than 1 MB");
            Drain(*reader, [&](const void* bytes, std::size_t size) {
                text.append(static_cast<const char*>(bytes), size);
            });
            return text;
        } catch (const HostError& error) { // not a fault of the job
            throw HostError(error.Result(), error.Subject(), error.what());
        }
    }

    OvPlatform::XmlDocument Parse() const {
        try {
            return OvPlatform::ParseStrictXml(ReadText());
        } catch (const OvPlatform::StrictXmlError& error) {
            RefuseLine(error.Line(), error.what());
        }
    }

    static const xmlNode* Element(const xmlNode* node) {
        while (node != nullptr && node->type != XML_ELEMENT_NODE)
            node = node->next;
        return node;
    }
    static std::string Name(const xmlNode* node) { return std::string(OvPlatform::LocalName(node)); }

    static std::string Attribute(const xmlNode* node, const char* name) {
        std::string value;
        OvPlatform::GetAttribute(node, name, value);
        return value;
    }
    std::string RequiredAttribute(const xmlNode* node, const char* name) const {
        std::string value = Attribute(node, name);
        if (value.empty()) Refuse(node, Name(node) + " has no " + name);
        return value;
    }
    GUID RequiredGuid(const xmlNode* node, const char* name) const {
        const std::string text = RequiredAttribute(node, name);
        GUID guid{};
        if (!ParseGuid(text, guid)) Refuse(node, "the " + std::string(name) + " \"" + text + "\" is no GUID");
        return guid;
    }

    void ReadChild(const xmlNode* node) {
        const std::string name = Name(node);
        if (name == "Filter")
            m_spec.filters.push_back(ReadFilter(node));
        else if (name == "FilterServiceProvider")
            m_spec.services.push_back(ReadService(node));
        else if (name == "OptionalFilterServiceProvider")
            m_spec.optionalServices.push_back(ReadService(node));
        else if (name != "Archive") // what becomes of the job afterwards is no matter of the host
            Refuse(node, "unknown element " + name);
    }

    FilterSpec ReadService(const xmlNode* node) const {
        FilterSpec spec;
        spec.module = spec.name = RequiredAttribute(node, "dll");
        spec.beside = m_file.parent_path();
        return spec;
    }

    FilterSpec ReadFilter(const xmlNode* node) {
        FilterSpec spec = ReadService(node);
        spec.clsid = RequiredGuid(node, "clsid");
        if (std::string name = Attribute(node, "name"); !name.empty()) spec.name = std::move(name);
        std::optional<EndKind> input;
        std::optional<EndKind> output;
        for (const xmlNode* child = Element(node->children); child != nullptr; child = Element(child->next)) {
            if (Name(child) == "Input")
                SetEnd(child, true, input);
            else if (Name(child) == "Output")
                SetEnd(child, false, output);
            else if (Name(child) == "Interleaving")
                ReadInterleaving(child);
            else
                Refuse(child, "unknown element " + Name(child) + " in the filter " + spec.name);
        }
        if (!input) Refuse(node, "the filter " + spec.name + " has no Input");
        if (!output) Refuse(node, "the filter " + spec.name + " has no Output");
        spec.ends = FilterEnds{*input, *output};
        return spec;
    }

    void SetEnd(const xmlNode* node, bool isInput, std::optional<EndKind>& end) const {
        if (end) Refuse(node, "a second " + Name(node));
        const GUID guid = RequiredGuid(node, "guid");
        for (const KnownEnd& known : knownEnds)
            if (known.guid == guid && known.isInput == isInput) end = known.kind;
        if (!end)
            Refuse(node, "the " + Name(node) + " " + GuidText(guid) +
                             " is not an interface that this host connects");
    }

    void ReadInterleaving(const xmlNode* node) {
        const std::string mode = RequiredAttribute(node, "mode");
        if (mode == "MarkupFirst")
            m_spec.interleaving = Interleaving::MarkupFirst;
        else if (mode == "ResourcesFirst")
            m_spec.interleaving = Interleaving::ResourcesFirst;
        else
            Refuse(node, "the interleaving mode \"" + mode + "\" is neither ResourcesFirst nor MarkupFirst");
    }

    std::filesystem::path m_file;
    PipelineSpec m_spec;
};

} // namespace

PipelineSpec ReadPipelineConfiguration(const std::filesystem::path& file) {
    return ConfigurationReader(file).Read();
}

FilterSpec ParseFilterArgument(const std::string& argument) {
    FilterSpec spec;
    const std::size_t comma = argument.find(",{");
    spec.module = argument.substr(0, comma);
    if (comma != std::string::npos && !ParseGuid(argument.substr(comma + 1), spec.clsid))
        throw HostError(E_INVALIDARG, argument, "\"" + argument.substr(comma + 1) + "\" is no class id");
    spec.name = std::filesystem::path(spec.module).stem().string();
    if (spec.name.starts_with("lib")) spec.name.erase(0, 3);
    return spec;
}

bool ParseGuid(std::string text, GUID& guid) {
    if (!text.starts_with('{')) text = "{" + text + "}";
    return text.size() == 38 && SUCCEEDED(IIDFromString(Wide(text).c_str(), &guid));
}

} // namespace OvPipeline
