#include "DeviceControl/PostScriptPageLevelPDLHelper.h"

#include "DeviceControl/InstructionText.h"
#include "DeviceControl/PageLevelSetting.h"
#include "DeviceControl/PageLevelTables.h"
#include "Media/MediaSizeTable.h"

#include <Xml/MicrosoftXmlParser.h>

#include <algorithm>
#include <cstdlib>
#include <optional>
#include <string_view>

using InstructionText::Append;
using InstructionText::Decimal;
using PageLevelTables::Name;
using Kind = PageLevelSetting::Kind;

namespace {

constexpr const wchar_t* blockStart = L"\n%% *Page-Level Media Commands\n";
constexpr const wchar_t* dictionaryStart = L"mark {\n<<\n";
constexpr const wchar_t* dictionaryEnd = L">> setpagedevice\n} stopped { cleartomark\n"
                                         L"(setpagedevice failed, retrying one value at a time.) =";
constexpr const wchar_t* blockEnd = L"}\n{pop} ifelse\n%% *Page-Level Media Commands\n";

/// A block in the making: the dictionary of all settings, and what is tried one by one where it is refused.
struct Block {
    CXString dictionary;
    CXString trayRetry;
    CXString retry;
};

const wchar_t* Find(std::span<const Name> names, const CXString& from) {
    const auto found =
        std::ranges::find_if(names, [text = from.View()](const Name& each) { return text == each.from; });
    return found == names.end() ? nullptr : found->to;
}

CXString Renamed(std::span<const Name> names, const CXString& name) {
    const wchar_t* const renamed = Find(names, name);
    return renamed == nullptr ? name : CXString(renamed);
}

// NOLINTNEXTLINE(bugprone-incorrect-roundings): lengths are not negative
int Points(int microns) { return static_cast<int>(microns / 25400.0 * 72.0 + 0.5); }

CXString PageSize(const PageLevelSetting& size) {
    CXString entry = L"/PageSize [";
    Append(entry, Decimal(Points(size.width)), L' ', Decimal(Points(size.height)), L']');
    return entry;
}

/// Names the size for readers of the document's structure; empty for one without a name.
CXString SizeComment(const PageLevelSetting& size) {
    const auto matches = [](int left, int right) { return std::abs(left - right) < 2; };
    CXString comment;
    for (const PageLevelTables::SizeName& row : PageLevelTables::sizeNames) {
        if (!matches(row.width, Points(size.width)) || !matches(row.height, Points(size.height))) continue;
        Append(comment, L"%%BeginFeature: *PageSize ", row.name, L"\n%%EndFeature");
        break;
    }
    return comment;
}

/// "/MediaType (name)", or null for the device's word for none.
CXString MediaEntry(const wchar_t* key, const CXString& name, const wchar_t* nameOfNone) {
    CXString entry = key;
    if (name == nameOfNone)
        Append(entry, L" null");
    else
        Append(entry, L" (", name, L')');
    return entry;
}

/// The dictionary entry of a setting by itself; empty where there is none.
CXString EntryOf(const PageLevelSetting& setting) {
    switch (setting.kind) {
    case Kind::MediaSize:
        return PageSize(setting);
    case Kind::MediaType:
        return MediaEntry(L"/MediaType", Renamed(PageLevelTables::mediaTypes, setting.value),
                          L"media-type-api-unspecified");
    case Kind::MediaColor:
        return MediaEntry(L"/MediaColor", Renamed(PageLevelTables::mediaColors, setting.value),
                          L"media-color-unspecified");
    case Kind::Sides: {
        const wchar_t* const entry = Find(PageLevelTables::sides, setting.value);
        return entry == nullptr ? CXString() : CXString(entry);
    }
    default: {
        CXString entry = L"(";
        Append(entry, setting.value == L"AutoSelect" ? CXString(L"automatic") : setting.value,
               L") orvel$MediaInputTray");
        return entry;
    }
    }
}

void AppendEntry(Block& block, const CXString& entry) {
    if (!entry.IsEmpty()) Append(block.dictionary, L'\t', entry, L'\n');
}

void AppendRetry(Block& block, const CXString& entry) {
    if (!entry.IsEmpty())
        Append(block.retry, L"\n\tfeaturebegin{<< ", entry, L" >> setpagedevice}featurecleanup");
}

/// Deliberate: the blanks within the braces differ from case to case.
CXString SizeRetry(const PageLevelSetting& size) {
    const CXString entry = PageSize(size);
    CXString retry;
    if (MediaSizeTable::FindBySize(size.width, size.height) != nullptr)
        Append(retry, L"\n\tfeaturebegin{<< ", entry, L" >> setpagedevice }featurecleanup");
    else
        Append(retry, L"\n\tfeaturebegin{<< /UniversalDetails << /Type 99 ", entry,
               L" >> >> setpagedevice }featurecleanup");
    return retry;
}

} // namespace

PostScriptPageLevelPDLHelper::PostScriptPageLevelPDLHelper() = default;

PostScriptPageLevelPDLHelper::PostScriptPageLevelPDLHelper(const CPString& productData)
    : m_productData(&productData) {
    MicrosoftXmlParser parser(L"product data", false);
    parser.parse(productData);
    m_root = parser.getDocument().GetDocumentElement();
}

PostScriptPageLevelPDLHelper::PostScriptPageLevelPDLHelper(PostScriptPageLevelPDLHelper& other)
    : m_productData(other.m_productData), m_root(std::move(other.m_root)) {}

PostScriptPageLevelPDLHelper& PostScriptPageLevelPDLHelper::operator=(PostScriptPageLevelPDLHelper& other) {
    if (this == &other) return *this;
    m_productData = other.m_productData;
    m_root = std::move(other.m_root);
    return *this;
}

PostScriptPageLevelPDLHelper::~PostScriptPageLevelPDLHelper() = default;

CXString PostScriptPageLevelPDLHelper::GetCPSSMediaTypeStringFromPrintTicketName(CXString& name) {
    return Renamed(PageLevelTables::mediaTypes, name);
}

CXString PostScriptPageLevelPDLHelper::GetCPSSMediaColorStringFromPrintTicketName(CXString& name) {
    return Renamed(PageLevelTables::mediaColors, name);
}

CXString PostScriptPageLevelPDLHelper::GetCommand(const wchar_t* feature, CXString& option) {
    if (!m_root) return {};
    const XmlDomNode::Pointer element = m_root->FindNamedChildElementNodeRecursive(feature, 0);
    if (!element) return {};
    for (XmlDomNode::Pointer child = element->GetFirstChild(); child; child = child->GetNextSibling()) {
        if (child->GetNodeName() != option) continue;
        CXString command;
        child->GetAttribute(L"PS", command);
        return command;
    }
    return {};
}

CXString PostScriptPageLevelPDLHelper::GenerateOcptBasedPageLevelPostScript(std::vector<CXString>& settings) {
    const bool mentionsSize =
        std::ranges::any_of(settings, [](const CXString& text) { return text.Find(L"media-size") >= 0; });
    std::optional<CXString> comment; // of the first size
    Block block;
    for (const CXString& text : settings) {
        const std::optional<PageLevelSetting> setting = PageLevelSetting::Parse(text);
        if (!setting) continue;
        const CXString entry = EntryOf(*setting);
        AppendEntry(block, entry);
        AppendRetry(block, entry);
        if (setting->kind == Kind::MediaSize && !comment) comment = SizeComment(*setting);
    }
    CXString result = blockStart;
    if (mentionsSize)
        Append(result, comment.value_or(CXString()),
               L'\n'); // a line of its own, also where no size has a name
    Append(result, dictionaryStart, block.dictionary, dictionaryEnd, block.retry, blockEnd);
    return result;
}

CXString PostScriptPageLevelPDLHelper::GenerateOcptAndProductSpecificPDLPageLevelPostScript(
    std::vector<CXString>& settings) {
    Block block;
    const auto retryCommand = [&](const wchar_t* feature, CXString option) {
        const CXString command = GetCommand(feature, option);
        if (!command.IsBlank()) Append(block.retry, L"\n\tfeaturebegin{", command, L"} featurecleanup");
    };
    for (const CXString& text : settings) {
        const std::optional<PageLevelSetting> setting = PageLevelSetting::Parse(text);
        if (!setting) continue;
        const CXString entry = EntryOf(*setting);
        AppendEntry(block, entry);
        switch (setting->kind) {
        case Kind::MediaSize:
            block.retry += SizeRetry(*setting);
            break;
        case Kind::MediaType:
            retryCommand(L"media-type-api", Renamed(PageLevelTables::mediaTypes, setting->value));
            break;
        case Kind::MediaColor:
            retryCommand(L"media-color", Renamed(PageLevelTables::mediaColors, setting->value));
            break;
        case Kind::Sides:
            AppendRetry(block, entry);
            break;
        case Kind::Tray: {
            CXString tray = setting->value; // Deliberate: also AutoSelect, as it stands in the list.
            const CXString command = GetCommand(L"input-tray", tray);
            if (!command.IsBlank())
                Append(block.trayRetry, L"\n\tfeaturebegin{ ", command, L" }featurecleanup");
            break;
        }
        }
    }
    CXString result = blockStart;
    Append(result, dictionaryStart, block.dictionary, dictionaryEnd, block.trayRetry, block.retry, L'\n',
           blockEnd);
    return result;
}

CXString PostScriptPageLevelPDLHelper::GeneratePDLFromProductData(std::vector<CXString>& settings) {
    CXString result = L"<<\n";
    const auto orElse = [](const CXString& command, const wchar_t* otherwise) {
        return command.IsBlank() && otherwise != nullptr ? CXString(otherwise) : command;
    };
    const auto commandOf = [&](const PageLevelSetting& setting) -> CXString {
        switch (setting.kind) {
        case Kind::MediaSize:
            return PageSize(setting);
        case Kind::MediaType: {
            CXString name = Renamed(PageLevelTables::mediaTypes, setting.value);
            return GetCommand(L"media-type-api", name);
        }
        case Kind::MediaColor: {
            CXString name = Renamed(PageLevelTables::mediaColors, setting.value);
            return orElse(GetCommand(L"media-color", name), Find(PageLevelTables::colorEntries, name));
        }
        case Kind::Sides: {
            CXString name = setting.value;
            return orElse(GetCommand(L"duplex", name), Find(PageLevelTables::sides, name));
        }
        default: {
            CXString name = setting.value == L"AutoSelect" ? CXString(L"automatic") : setting.value;
            return GetCommand(L"input-tray", name);
        }
        }
    };
    for (const CXString& text : settings) {
        const std::optional<PageLevelSetting> setting = PageLevelSetting::Parse(text);
        if (!setting) continue;
        const CXString command = commandOf(*setting);
        if (!command.IsBlank()) Append(result, L'\t', command, L'\n');
    }
    const bool isPatched =
        m_productData != nullptr && m_productData->find("job-patch-file") != CPString::npos;
    Append(result, isPatched ? L">> orvel$pagedevice copy orvel$setpagedevice\n" : L">> setpagedevice\n");
    return result;
}
