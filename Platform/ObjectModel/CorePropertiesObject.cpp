#include "ObjectModel/CorePropertiesObject.h"

#include "ObjectModel/Collections.h"
#include "Xml/StrictXml.h"
#include "Xml/TextConversion.h"
#include "Xml/XmlPointer.h"
#include "Xml/XmlString.h"

#include <array>
#include <cstdio>
#include <new>
#include <optional>
#include <string_view>
#include <utility>

namespace OvPlatform {

namespace {

constexpr std::string_view ownNamespace =
    "http://schemas.openxmlformats.org/package/2006/metadata/core-properties";
constexpr std::string_view elementsNamespace = "http://purl.org/dc/elements/1.1/";
constexpr std::string_view termsNamespace = "http://purl.org/dc/terms/";

constexpr std::string_view instanceNamespace = "http://www.w3.org/2001/XMLSchema-instance";
constexpr const char* emptyProperties =
    "<coreProperties xmlns=\"http://schemas.openxmlformats.org/package/2006/metadata/core-properties\"/>";

struct PropertyName {
    std::string_view space;
    const char* prefix; // where the markup has none for it
    std::string_view name;
};
// By property.
constexpr std::array<PropertyName, CorePropertiesObject::propertyCount> names{{
    {ownNamespace, nullptr, "category"},
    {ownNamespace, nullptr, "contentStatus"},
    {ownNamespace, nullptr, "contentType"},
    {termsNamespace, "dcterms", "created"},
    {elementsNamespace, "dc", "creator"},
    {elementsNamespace, "dc", "description"},
    {elementsNamespace, "dc", "identifier"},
    {ownNamespace, nullptr, "keywords"},
    {elementsNamespace, "dc", "language"},
    {ownNamespace, nullptr, "lastModifiedBy"},
    {ownNamespace, nullptr, "lastPrinted"},
    {termsNamespace, "dcterms", "modified"},
    {ownNamespace, nullptr, "revision"},
    {elementsNamespace, "dc", "subject"},
    {elementsNamespace, "dc", "title"},
    {ownNamespace, nullptr, "version"},
}};

// The property that an element says; none for what is not known here.
std::optional<std::size_t> PropertyOf(const xmlNode* node) {
    for (std::size_t i = 0; node->type == XML_ELEMENT_NODE && i < names.size(); ++i)
        if (LocalName(node) == names[i].name && NamespaceOf(node) == names[i].space) return i;
    return std::nullopt;
}

std::string ContentOf(const xmlNode* node) {
    const XmlPointer<xmlChar> text(xmlNodeGetContent(node));
    return std::string(View(text.get()));
}

template <class T>
T* Made(T* made) {
    if (made == nullptr) throw std::bad_alloc();
    return made;
}

void Drop(xmlNode* node) {
    xmlUnlinkNode(node);
    xmlFreeNode(node);
}

// What stands around it stays.
void SetContent(xmlNode* node, const std::string& text) {
    if (ContentOf(node) == text) return;
    while (node->children != nullptr)
        Drop(node->children);
    xmlAddChild(node, Made(xmlNewDocText(node->doc, AsXml(text.c_str()))));
}

xmlNs* NamespaceIn(xmlNode* root, std::string_view space, const char* prefix) {
    const std::string uri(space);
    if (xmlNs* const known = xmlSearchNsByHref(root->doc, root, AsXml(uri.c_str())); known != nullptr)
        return known;
    // The prefix may stand for something else already.
    xmlNs* declared = xmlNewNs(root, AsXml(uri.c_str()), AsXml(prefix));
    constexpr int attempts = 4096; // more than an element may have declarations
    for (int number = 1; declared == nullptr && number < attempts; ++number)
        declared = xmlNewNs(root, AsXml(uri.c_str()), AsXml(("n" + std::to_string(number)).c_str()));
    return Made(declared);
}

void AddProperty(xmlNode* root, const PropertyName& name, const std::string& text) {
    xmlNs* const space = NamespaceIn(root, name.space, name.prefix);
    xmlNode* const node =
        Made(xmlNewDocNode(root->doc, space, AsXml(std::string(name.name).c_str()), nullptr));
    xmlAddChild(root, node);
    xmlAddChild(node, Made(xmlNewDocText(root->doc, AsXml(text.c_str()))));
    if (name.space != termsNamespace) return;
    const std::string type =
        (space->prefix == nullptr ? "" : std::string(View(space->prefix)) + ":") + "W3CDTF";
    Made(xmlNewNsProp(node, NamespaceIn(root, instanceNamespace, "xsi"), AsXml("type"), AsXml(type.c_str())));
}

// "2005-01-31T12:34:56Z", also without the time; in UTC. All zero for what is no date.
SYSTEMTIME DateOf(const std::string& text) {
    unsigned year = 0;
    unsigned month = 0;
    unsigned day = 0;
    unsigned hour = 0;
    unsigned minute = 0;
    unsigned second = 0;
    const int read =
        std::sscanf(text.c_str(), "%4u-%2u-%2uT%2u:%2u:%2u", &year, &month, &day, &hour, &minute, &second);
    SYSTEMTIME date{};
    if (read < 3 || month < 1 || month > 12 || day < 1 || day > 31 || hour > 23 || minute > 59 || second > 59)
        return date;
    date.wYear = static_cast<WORD>(year);
    date.wMonth = static_cast<WORD>(month);
    date.wDay = static_cast<WORD>(day);
    date.wHour = static_cast<WORD>(hour);
    date.wMinute = static_cast<WORD>(minute);
    date.wSecond = static_cast<WORD>(second);
    return date;
}

std::string TextOf(const SYSTEMTIME& date) {
    char text[64];
    std::snprintf(text, sizeof text, "%04u-%02u-%02uT%02u:%02u:%02uZ", date.wYear, date.wMonth, date.wDay,
                  date.wHour, date.wMinute, date.wSecond);
    return text;
}

} // namespace

HRESULT CorePropertiesObject::Create(IOpcPartUri* uri, IXpsOMCoreProperties** properties) {
    return ModelCall(properties, [&] {
        if (uri == nullptr) return E_POINTER;
        *properties = new CorePropertiesObject(PartNameOf(uri), {});
        return S_OK;
    });
}

CorePropertiesObject::CorePropertiesObject(std::string name, SharedContent stored)
    : m_name(std::move(name)), m_stored(std::move(stored)), m_isChanged(!m_stored) {}

void CorePropertiesObject::Read() {
    if (!m_stored) return;
    try {
        m_markup = ReadMarkup(*m_stored, m_name);
        const XmlDocument document = ParseStrictXml(m_markup);
        for (const xmlNode* node = xmlDocGetRootElement(document.get())->children; node != nullptr;
             node = node->next)
            if (const auto property = PropertyOf(node); property) m_values[*property] = ContentOf(node);
    } catch (const StrictXmlError& error) {
        throw PackageError(XPS_E_INVALID_MARKUP, m_name, static_cast<int>(error.Line()), error.what());
    }
    m_stored.reset();
}

std::string CorePropertiesObject::Markup() const {
    const XmlDocument document = ParseStrictXml(m_markup.empty() ? emptyProperties : m_markup);
    xmlNode* const root = xmlDocGetRootElement(document.get());
    std::array<bool, propertyCount> isThere{};
    for (xmlNode *node = root->children, *next = nullptr; node != nullptr; node = next) {
        next = node->next;
        const auto property = PropertyOf(node);
        if (!property) continue;
        if (!m_values[*property] || std::exchange(isThere[*property], true))
            Drop(node);
        else
            SetContent(node, *m_values[*property]);
    }
    for (std::size_t i = 0; i < names.size(); ++i)
        if (m_values[i] && !isThere[i]) AddProperty(root, names[i], *m_values[i]);
    xmlChar* text = nullptr;
    int size = 0;
    xmlDocDumpMemoryEnc(document.get(), &text, &size, "UTF-8");
    const XmlPointer<xmlChar> owned(Made(text));
    return std::string(View(text, size));
}

HRESULT CorePropertiesObject::GiveText(Property property, LPWSTR* text) {
    return ModelCall(text, [&] {
        Read();
        if (!m_values[property]) return S_OK;
        std::wstring wide;
        AppendUtf16(wide, *m_values[property]);
        *text = NewTaskText(wide);
        return S_OK;
    });
}

HRESULT CorePropertiesObject::TakeText(Property property, LPCWSTR text) {
    return ModelCall([&] {
        Read();
        std::string utf8;
        if (text != nullptr && !AppendXmlUtf8(utf8, text)) return E_INVALIDARG;
        m_values[property] = text == nullptr ? std::nullopt : std::optional(std::move(utf8));
        m_isChanged = true;
        return S_OK;
    });
}

HRESULT CorePropertiesObject::GiveDate(Property property, SYSTEMTIME* date) {
    if (date == nullptr) return E_POINTER;
    *date = SYSTEMTIME{};
    return ModelCall([&] {
        Read();
        if (m_values[property]) *date = DateOf(*m_values[property]);
        return S_OK;
    });
}

HRESULT CorePropertiesObject::TakeDate(Property property, const SYSTEMTIME* date) {
    return ModelCall([&] {
        Read();
        m_values[property] = date == nullptr ? std::nullopt : std::optional(TextOf(*date));
        m_isChanged = true;
        return S_OK;
    });
}

HRESULT CorePropertiesObject::GetPartName(IOpcPartUri** uri) { return GivePartUri(m_name, uri); }
HRESULT CorePropertiesObject::SetPartName(IOpcPartUri* uri) {
    return ModelCall([&] {
        Read();
        const HRESULT result = TakePartName(uri, m_name);
        if (SUCCEEDED(result)) m_isChanged = true;
        return result;
    });
}

HRESULT CorePropertiesObject::GetOwner(IXpsOMPackage** package) {
    return ModelCall(package, [&] {
        *package = CComPtr<IXpsOMPackage>(m_owner).Detach();
        return S_OK;
    });
}

HRESULT CorePropertiesObject::GetCategory(LPWSTR* category) { return GiveText(Category, category); }
HRESULT CorePropertiesObject::SetCategory(LPCWSTR category) { return TakeText(Category, category); }
HRESULT CorePropertiesObject::GetContentStatus(LPWSTR* contentStatus) {
    return GiveText(ContentStatus, contentStatus);
}
HRESULT CorePropertiesObject::SetContentStatus(LPCWSTR contentStatus) {
    return TakeText(ContentStatus, contentStatus);
}
HRESULT CorePropertiesObject::GetContentType(LPWSTR* contentType) {
    return GiveText(ContentType, contentType);
}
HRESULT CorePropertiesObject::SetContentType(LPCWSTR contentType) {
    return TakeText(ContentType, contentType);
}
HRESULT CorePropertiesObject::GetCreated(SYSTEMTIME* created) { return GiveDate(Created, created); }
HRESULT CorePropertiesObject::SetCreated(const SYSTEMTIME* created) { return TakeDate(Created, created); }
HRESULT CorePropertiesObject::GetCreator(LPWSTR* creator) { return GiveText(Creator, creator); }
HRESULT CorePropertiesObject::SetCreator(LPCWSTR creator) { return TakeText(Creator, creator); }
HRESULT CorePropertiesObject::GetDescription(LPWSTR* description) {
    return GiveText(Description, description);
}
HRESULT CorePropertiesObject::SetDescription(LPCWSTR description) {
    return TakeText(Description, description);
}
HRESULT CorePropertiesObject::GetIdentifier(LPWSTR* identifier) { return GiveText(Identifier, identifier); }
HRESULT CorePropertiesObject::SetIdentifier(LPCWSTR identifier) { return TakeText(Identifier, identifier); }
HRESULT CorePropertiesObject::GetKeywords(LPWSTR* keywords) { return GiveText(Keywords, keywords); }
HRESULT CorePropertiesObject::SetKeywords(LPCWSTR keywords) { return TakeText(Keywords, keywords); }
HRESULT CorePropertiesObject::GetLanguage(LPWSTR* language) { return GiveText(Language, language); }
HRESULT CorePropertiesObject::SetLanguage(LPCWSTR language) { return TakeText(Language, language); }
HRESULT CorePropertiesObject::GetLastModifiedBy(LPWSTR* lastModifiedBy) {
    return GiveText(LastModifiedBy, lastModifiedBy);
}
HRESULT CorePropertiesObject::SetLastModifiedBy(LPCWSTR lastModifiedBy) {
    return TakeText(LastModifiedBy, lastModifiedBy);
}
HRESULT CorePropertiesObject::GetLastPrinted(SYSTEMTIME* lastPrinted) {
    return GiveDate(LastPrinted, lastPrinted);
}
HRESULT CorePropertiesObject::SetLastPrinted(const SYSTEMTIME* lastPrinted) {
    return TakeDate(LastPrinted, lastPrinted);
}
HRESULT CorePropertiesObject::GetModified(SYSTEMTIME* modified) { return GiveDate(Modified, modified); }
HRESULT CorePropertiesObject::SetModified(const SYSTEMTIME* modified) { return TakeDate(Modified, modified); }
HRESULT CorePropertiesObject::GetRevision(LPWSTR* revision) { return GiveText(Revision, revision); }
HRESULT CorePropertiesObject::SetRevision(LPCWSTR revision) { return TakeText(Revision, revision); }
HRESULT CorePropertiesObject::GetSubject(LPWSTR* subject) { return GiveText(Subject, subject); }
HRESULT CorePropertiesObject::SetSubject(LPCWSTR subject) { return TakeText(Subject, subject); }
HRESULT CorePropertiesObject::GetTitle(LPWSTR* title) { return GiveText(Title, title); }
HRESULT CorePropertiesObject::SetTitle(LPCWSTR title) { return TakeText(Title, title); }
HRESULT CorePropertiesObject::GetVersion(LPWSTR* version) { return GiveText(Version, version); }
HRESULT CorePropertiesObject::SetVersion(LPCWSTR version) { return TakeText(Version, version); }

HRESULT CorePropertiesObject::Clone(IXpsOMCoreProperties** properties) {
    return ModelCall(properties, [&] {
        Read();
        CComPtr<CorePropertiesObject> clone;
        clone.Attach(new CorePropertiesObject(m_name, {}));
        clone->m_markup = m_markup;
        clone->m_values = m_values;
        *properties = clone.Detach();
        return S_OK;
    });
}

} // namespace OvPlatform
