#include "DeviceDescription/DeviceCapabilitiesReader.h"

#include "DeviceDescription/DeviceFeature.h"
#include "LowLevelFacilities/Failures/ThrowComException.h"
#include "LowLevelFacilities/Formatter/CPFormat.h"
#include "LowLevelFacilities/WideStrings/CXString.h"
#include "SystemServices/WindowsDesktopUtilities.h"
#include "Xml/SaxContentListener.h"

#include <atlcomcli.h>
#include <msxml6.h>
#include <objbase.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <exception>
#include <optional>
#include <string>

namespace {

constexpr std::size_t largestDocument = 4u << 20; // bytes
constexpr std::size_t mostFeatures = 10'000;
constexpr std::size_t longestText = 255; // UTF-16 units
constexpr std::size_t mostLevelsOfFeatures = 3;
constexpr std::size_t mostLevelsOfElements = 32; // there are more than four only in what is passed over

constexpr std::wstring_view rootElement = L"DeviceCapabilities";
constexpr std::wstring_view valueElement = L"Value";
constexpr unsigned majorVersion = 1;
constexpr unsigned minorVersion = 0;

enum Attribute : unsigned {
    Name,
    Version,
    Required,
    Opif,
    Installable,
    Default,
    DefaultSpecified,
    Min,
    Max,
    MinLength,
    MaxLength,
    AttributeCount
};
constexpr std::array<std::wstring_view, AttributeCount> attributeNames = {
    L"name", L"version", L"required",  L"opif",     L"installable", L"default", L"defaultSpecified",
    L"min",  L"max",     L"minLength", L"maxLength"};

constexpr unsigned bit(Attribute attribute) { return 1u << attribute; }
constexpr unsigned ofEveryFeature = bit(Name) | bit(Required) | bit(Opif);
constexpr unsigned ofEveryValued = ofEveryFeature | bit(Default) | bit(DefaultSpecified);

struct FeatureElement {
    std::wstring_view name;
    DeviceFeature::Kind kind;
    unsigned attributes;
};
constexpr FeatureElement featureElements[] = {
    {L"Option", DeviceFeature::Kind::Option, ofEveryValued | bit(Installable)},
    {L"Integer", DeviceFeature::Kind::Integer, ofEveryValued | bit(Min) | bit(Max)},
    {L"Text", DeviceFeature::Kind::Text, ofEveryValued | bit(MinLength) | bit(MaxLength)},
    {L"Collection", DeviceFeature::Kind::Collection, ofEveryFeature},
};

const FeatureElement* findFeatureElement(std::wstring_view name) {
    const auto* const found = std::find_if(std::begin(featureElements), std::end(featureElements),
                                           [&](const FeatureElement& row) { return row.name == name; });
    return found == std::end(featureElements) ? nullptr : found;
}

std::wstring_view viewOf(const wchar_t* text, int length) {
    return text == nullptr ? std::wstring_view() : std::wstring_view(text, static_cast<std::size_t>(length));
}

CXString toCXString(std::wstring_view text) { return CXString(text.data(), static_cast<int>(text.size())); }

bool isXmlSpace(wchar_t unit) { return unit == L' ' || unit == L'\t' || unit == L'\r' || unit == L'\n'; }

template <typename Value>
std::optional<Value> parseDecimal(std::string_view text) {
    Value value{};
    const char* const end = text.data() + text.size();
    const auto [stopped, error] = std::from_chars(text.data(), end, value);
    if (error != std::errc() || stopped != end) return std::nullopt;
    return value;
}

/// The attributes of one element, by Attribute; and which of them the element has.
class ElementAttributes {
public:
    bool Has(Attribute attribute) const noexcept { return (m_present & bit(attribute)) != 0; }
    const CXString& Text(Attribute attribute) const noexcept { return m_texts[attribute]; }
    void Take(Attribute attribute, std::wstring_view text) {
        m_texts[attribute] = toCXString(text);
        m_present |= bit(attribute);
    }

private:
    std::array<CXString, AttributeCount> m_texts;
    unsigned m_present = 0;
};

/// Builds the features from the reader's events.
class DocumentHandler final : public SaxContentListener, public ISAXErrorHandler {
public:
    /// Throws what was wrong with the document, if anything was.
    std::unique_ptr<const DeviceFeatureList> TakeFeatures(HRESULT result) {
        if (m_failure) std::rethrow_exception(m_failure);
        ThrowIfFailed(result, WithPlace(m_syntaxError));
        return std::move(m_features);
    }

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID interfaceId, void** object) override {
        if (object == nullptr || interfaceId != __uuidof(ISAXErrorHandler))
            return SaxContentListener::QueryInterface(interfaceId, object);
        *object = static_cast<ISAXErrorHandler*>(this);
        return S_OK;
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return 1; }
    ULONG STDMETHODCALLTYPE Release() override { return 1; }

    HRESULT STDMETHODCALLTYPE startElement(const wchar_t* uri, int uriLength, const wchar_t* name,
                                           int nameLength, const wchar_t*, int,
                                           ISAXAttributes* attributes) override {
        return Guarded([&] { StartElement(viewOf(uri, uriLength), viewOf(name, nameLength), *attributes); });
    }
    HRESULT STDMETHODCALLTYPE endElement(const wchar_t*, int, const wchar_t*, int, const wchar_t*,
                                         int) override {
        return Guarded([&] { EndElement(); });
    }
    HRESULT STDMETHODCALLTYPE characters(const wchar_t* text, int length) override {
        return Guarded([&] {
            const std::wstring_view view = viewOf(text, length);
            if (m_levelsPassedOver == 0 && !std::all_of(view.begin(), view.end(), isXmlSpace))
                Refuse("there is text where only elements stand");
        });
    }
    HRESULT STDMETHODCALLTYPE putDocumentLocator(ISAXLocator* locator) override {
        m_locator = locator;
        return S_OK;
    }

    HRESULT STDMETHODCALLTYPE error(ISAXLocator*, const wchar_t*, HRESULT) override { return S_OK; }
    HRESULT STDMETHODCALLTYPE fatalError(ISAXLocator* locator, const wchar_t* message, HRESULT) override {
        // A refusal of ours ends the parse too.
        if (m_failure) return S_OK;
        return Guarded([&] {
            m_syntaxError = FormatStdString("%s", CXString(message).TrimRight());
            NoteLine(locator);
        });
    }
    HRESULT STDMETHODCALLTYPE ignorableWarning(ISAXLocator*, const wchar_t*, HRESULT) override {
        return S_OK;
    }

private:
    /// What stands between an element's tags. Without a feature it is the root or a value.
    struct OpenElement {
        DeviceFeatureList* features; // null where no features may stand
        std::unique_ptr<DeviceFeature> feature;
    };

    /// No exception may cross the reader; it is thrown when the reader has come back.
    template <typename Action>
    HRESULT Guarded(Action action) noexcept {
        try {
            action();
            return S_OK;
        } catch (...) {
            m_failure = std::current_exception();
            return E_FAIL;
        }
    }

    void NoteLine(ISAXLocator* locator) {
        if (locator == nullptr || FAILED(locator->getLineNumber(&m_line))) m_line = 0;
    }

    std::string WithPlace(const std::string& problem) const {
        if (problem.empty()) return "the device capabilities cannot be read";
        return FormatStdString("device capabilities, line %d: %s", m_line, problem);
    }

    template <typename... Arguments>
    [[noreturn]] void Refuse(const char* format, const Arguments&... arguments) {
        NoteLine(m_locator);
        ThrowComException(HRESULT_FROM_WIN32(ERROR_INVALID_DATA),
                          WithPlace(FormatStdString(format, arguments...)));
    }

    void StartElement(std::wstring_view uri, std::wstring_view name, ISAXAttributes& attributes) {
        if (m_open.size() + m_levelsPassedOver >= mostLevelsOfElements)
            Refuse("the elements are nested more than %d levels deep",
                   static_cast<int>(mostLevelsOfElements));
        if (m_levelsPassedOver != 0) {
            ++m_levelsPassedOver;
        } else if (m_open.empty()) {
            StartRoot(uri, name, attributes);
        } else if (!uri.empty()) {
            m_levelsPassedOver = 1; // of someone else
        } else if (name == valueElement) {
            StartValue(attributes);
        } else if (const FeatureElement* const element = findFeatureElement(name)) {
            StartFeature(*element, attributes);
        } else {
            if (!m_isOfNewerVersion) Refuse("the element <%s> is not known", toCXString(name));
            m_levelsPassedOver = 1;
        }
    }

    void EndElement() {
        if (m_levelsPassedOver != 0) {
            --m_levelsPassedOver;
            return;
        }
        std::unique_ptr<DeviceFeature> feature = std::move(m_open.back().feature);
        m_open.pop_back();
        if (feature == nullptr) return;
        if (feature->kind == DeviceFeature::Kind::Option) CheckValues(*feature);
        m_open.back().features->Add(std::move(feature));
    }

    void StartRoot(std::wstring_view uri, std::wstring_view name, ISAXAttributes& attributes) {
        if (!uri.empty() || name != rootElement)
            Refuse("the root is <%s> and not <%s>", toCXString(name), toCXString(rootElement));
        // Only the version says which attributes are known, so it comes before the others.
        const wchar_t* text = nullptr;
        int length = 0;
        const std::wstring_view attribute = attributeNames[Version];
        const HRESULT result = attributes.getValueFromName(
            L"", 0, attribute.data(), static_cast<int>(attribute.size()), &text, &length);
        if (result == E_INVALIDARG) Refuse("<%s> has no version", toCXString(rootElement));
        ThrowIfFailed(result);
        TakeVersion(CPString(toCXString(viewOf(text, length))));
        ReadAttributes(rootElement, bit(Version), attributes);
        m_open.push_back({m_features.get(), nullptr});
    }

    void TakeVersion(const CPString& text) {
        const std::string_view version = text.view();
        const std::size_t dot = (std::min)(version.find('.'), version.size());
        const auto major = parseDecimal<unsigned>(version.substr(0, dot));
        const auto minor = parseDecimal<unsigned>(version.substr((std::min)(dot + 1, version.size())));
        if (!major || !minor) Refuse("the version '%s' is not of the form 1.0", text);
        if (*major != majorVersion) Refuse("version %s is not known, only %u.x", text, majorVersion);
        m_isOfNewerVersion = *minor > minorVersion;
    }

    void StartValue(ISAXAttributes& attributes) {
        DeviceFeature* const option = m_open.back().feature.get();
        if (option == nullptr || option->kind != DeviceFeature::Kind::Option)
            Refuse("a <%s> stands elsewhere than in an <Option>", toCXString(valueElement));
        const ElementAttributes read = ReadAttributes(valueElement, bit(Name), attributes);
        option->values.push_back(RequireName(read, valueElement));
        m_open.push_back({nullptr, nullptr});
    }

    void StartFeature(const FeatureElement& element, ISAXAttributes& attributes) {
        DeviceFeatureList* const place = m_open.back().features;
        if (place == nullptr) Refuse("<%s> stands where no feature can be", toCXString(element.name));
        if (m_open.size() > mostLevelsOfFeatures)
            Refuse("a feature stands in more than %d collections",
                   static_cast<int>(mostLevelsOfFeatures) - 1);
        if (++m_featureCount > mostFeatures)
            Refuse("there are more than %d features", static_cast<int>(mostFeatures));
        const ElementAttributes read = ReadAttributes(element.name, element.attributes, attributes);
        auto feature = std::make_unique<DeviceFeature>();
        feature->kind = element.kind;
        feature->name = RequireName(read, element.name);
        if (place->Find(feature->name.view()) != nullptr)
            Refuse("there are two features '%s' in one place", feature->name);
        feature->isRequired = Flag(read, Required, false);
        feature->isOutputInOpif = Flag(read, Opif, false);
        feature->isInstallable = Flag(read, Installable, false);
        if (feature->isInstallable && m_open.size() != 1)
            Refuse("the installable option '%s' stands in a collection", feature->name);
        TakeDefault(*feature, read);
        if (element.kind == DeviceFeature::Kind::Integer) TakeRange(*feature, read);
        if (element.kind == DeviceFeature::Kind::Text) TakeLengthRange(*feature, read);
        if (element.kind == DeviceFeature::Kind::Collection)
            feature->members = std::make_unique<DeviceFeatureList>();
        DeviceFeatureList* const members = feature->members.get();
        m_open.push_back({members, std::move(feature)});
    }

    ElementAttributes ReadAttributes(std::wstring_view element, unsigned known, ISAXAttributes& attributes) {
        ElementAttributes read;
        int count = 0;
        ThrowIfFailed(attributes.getLength(&count));
        for (int i = 0; i < count; ++i) {
            std::wstring_view uri, localName, qualifiedName, value;
            GetAttribute(attributes, i, uri, localName, qualifiedName, value);
            const bool isDeclaration = qualifiedName == L"xmlns" || qualifiedName.starts_with(L"xmlns:");
            if (!uri.empty() || isDeclaration) continue;
            const auto found = std::find(attributeNames.begin(), attributeNames.end(), localName);
            const auto attribute = static_cast<Attribute>(found - attributeNames.begin());
            if (attribute != AttributeCount && (known & bit(attribute)) != 0) {
                read.Take(attribute, value);
            } else if (!m_isOfNewerVersion) {
                Refuse("the attribute %s is not known in <%s>", toCXString(localName), toCXString(element));
            }
        }
        return read;
    }

    static void GetAttribute(ISAXAttributes& attributes, int index, std::wstring_view& uri,
                             std::wstring_view& localName, std::wstring_view& qualifiedName,
                             std::wstring_view& value) {
        const wchar_t* texts[4] = {};
        int lengths[4] = {};
        ThrowIfFailed(attributes.getName(index, &texts[0], &lengths[0], &texts[1], &lengths[1], &texts[2],
                                         &lengths[2]));
        ThrowIfFailed(attributes.getValue(index, &texts[3], &lengths[3]));
        uri = viewOf(texts[0], lengths[0]);
        localName = viewOf(texts[1], lengths[1]);
        qualifiedName = viewOf(texts[2], lengths[2]);
        value = viewOf(texts[3], lengths[3]);
    }

    /// A text that says something: neither empty nor endless, nor such that nobody sees how it differs.
    CPString CheckedText(const ElementAttributes& read, Attribute attribute, std::wstring_view element) {
        const std::wstring_view text = read.Text(attribute).View();
        const auto isControl = [](wchar_t unit) { return unit < L' ' || unit == 0x7F; };
        if (text.empty() || text.size() > longestText || isXmlSpace(text.front()) ||
            isXmlSpace(text.back()) || std::any_of(text.begin(), text.end(), isControl))
            Refuse("the attribute %s of <%s> is not a text of 1 to %d characters without blanks at its ends",
                   toCXString(attributeNames[attribute]), toCXString(element), static_cast<int>(longestText));
        return CPString(read.Text(attribute));
    }

    CPString RequireName(const ElementAttributes& read, std::wstring_view element) {
        if (!read.Has(Name)) Refuse("<%s> has no name", toCXString(element));
        return CheckedText(read, Name, element);
    }

    bool Flag(const ElementAttributes& read, Attribute attribute, bool ifAbsent) {
        if (!read.Has(attribute)) return ifAbsent;
        const std::wstring_view text = read.Text(attribute).View();
        const bool isSet = text == L"true" || text == L"1";
        if (!isSet && text != L"false" && text != L"0")
            Refuse("the attribute %s is '%s' and not true or false", toCXString(attributeNames[attribute]),
                   read.Text(attribute));
        return isSet;
    }

    template <typename Value>
    Value Decimal(const ElementAttributes& read, Attribute attribute, Value ifAbsent) {
        if (!read.Has(attribute)) return ifAbsent;
        const auto value = parseDecimal<Value>(CPString(read.Text(attribute)).view());
        if (!value)
            Refuse("the attribute %s is '%s' and not a number in range",
                   toCXString(attributeNames[attribute]), read.Text(attribute));
        return *value;
    }

    void TakeDefault(DeviceFeature& feature, const ElementAttributes& read) {
        if (read.Has(DefaultSpecified) && !read.Has(Default))
            Refuse("'%s' says how its default is meant and has none", feature.name);
        if (!read.Has(Default)) return;
        feature.hasDefault = true;
        feature.isDefaultSpecified = Flag(read, DefaultSpecified, true);
        const bool mayBeAnyText = feature.kind == DeviceFeature::Kind::Text;
        feature.factoryDefault =
            mayBeAnyText ? CPString(read.Text(Default)) : CheckedText(read, Default, L"Option");
    }

    void TakeRange(DeviceFeature& feature, const ElementAttributes& read) {
        feature.smallest = Decimal(read, Min, feature.smallest);
        feature.largest = Decimal(read, Max, feature.largest);
        if (feature.smallest > feature.largest) Refuse("'%s' has a min above its max", feature.name);
        if (!feature.hasDefault) return;
        feature.integerDefault = Decimal(read, Default, 0);
        if (feature.integerDefault < feature.smallest || feature.integerDefault > feature.largest)
            Refuse("the default of '%s' is out of its range", feature.name);
    }

    void TakeLengthRange(DeviceFeature& feature, const ElementAttributes& read) {
        feature.hasLengthRange = read.Has(MaxLength);
        feature.shortest = Decimal(read, MinLength, 0u);
        feature.longest = Decimal(read, MaxLength, 0u);
        if (read.Has(MinLength) && !feature.hasLengthRange)
            Refuse("'%s' has a minLength and no maxLength", feature.name);
        if (feature.shortest > feature.longest)
            Refuse("'%s' has a minLength above its maxLength", feature.name);
    }

    void CheckValues(const DeviceFeature& option) {
        if (option.values.empty()) Refuse("the option '%s' has no values", option.name);
        std::vector<std::string_view> sorted;
        for (const CPString& value : option.values)
            sorted.push_back(value.view());
        std::sort(sorted.begin(), sorted.end());
        const auto twice = std::adjacent_find(sorted.begin(), sorted.end());
        if (twice != sorted.end())
            Refuse("'%s' has the value '%s' twice", option.name, CPString(std::string(*twice)));
        if (option.hasDefault &&
            !std::binary_search(sorted.begin(), sorted.end(), option.factoryDefault.view()))
            Refuse("the default of '%s', '%s', is none of its values", option.name, option.factoryDefault);
    }

    std::unique_ptr<DeviceFeatureList> m_features = std::make_unique<DeviceFeatureList>();
    std::vector<OpenElement> m_open;
    std::size_t m_levelsPassedOver = 0;
    std::size_t m_featureCount = 0;
    bool m_isOfNewerVersion = false;
    CComPtr<ISAXLocator> m_locator;
    int m_line = 0;
    std::string m_syntaxError;
    std::exception_ptr m_failure;
};

} // namespace

std::unique_ptr<const DeviceFeatureList> DeviceCapabilitiesReader::Read(std::string_view xml) {
    const OperationScope operation("DeviceCapabilitiesReader::Read");
    if (xml.find_first_not_of(" \t\r\n") == std::string_view::npos)
        return std::make_unique<DeviceFeatureList>();
    if (xml.size() > largestDocument)
        ThrowComException(HRESULT_FROM_WIN32(ERROR_INVALID_DATA),
                          FormatStdString("the device capabilities have more than %d bytes",
                                          static_cast<int>(largestDocument)));
    CComPtr<IStream> stream;
    ThrowIfFailed(WindowsDesktopUtilities::CreateReadOnlyIStreamFromBuffer(&stream, xml.data(), xml.size()));
    DocumentHandler handler; // before the reader, which refers to it until its own end
    CComPtr<ISAXXMLReader> reader;
    ThrowIfFailed(CoCreateInstance(__uuidof(SAXXMLReader60), nullptr, CLSCTX_INPROC_SERVER,
                                   __uuidof(ISAXXMLReader), reinterpret_cast<void**>(&reader)));
    ThrowIfFailed(reader->putContentHandler(&handler));
    ThrowIfFailed(reader->putErrorHandler(&handler));
    return handler.TakeFeatures(reader->parse(CComVariant(static_cast<IUnknown*>(stream))));
}
