#include "PrintTicket/DevmodeConversion.h"

#include "Locale/CharacterCase.h"
#include "Locale/Utf16.h"
#include "PrintTicket/DevmodeTables.h"
#include "PrintTicket/NamespaceScope.h"
#include "PrintTicket/SchemaWords.h"
#include "Spooler/DevmodeLayout.h"

#include <algorithm>
#include <cstring>
#include <stdexcept>

namespace OvPlatform {
namespace {

constexpr long long micronsPerTenthMillimetre = 100;

KeywordName Public(const char* local) { return {SchemaSpace::Keywords, local}; }

SchemaValue Integer(long long number) {
    return {{SchemaSpace::Types, SchemaType::Integer}, std::to_string(number), {}};
}

SchemaProperty Scored(const char* name, long long number) {
    return {Public(name), Integer(number), {}, {}, {}};
}

SchemaFeature Feature(const char* name, SchemaOption option) {
    return {Public(name), {}, {std::move(option)}, {}};
}

std::string Base64(const std::vector<std::uint8_t>& bytes) {
    constexpr std::string_view digits = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    std::string text;
    text.reserve((bytes.size() + 2) / 3 * 4);
    for (std::size_t at = 0; at < bytes.size(); at += 3) {
        const std::size_t count = (std::min)(bytes.size() - at, std::size_t{3});
        unsigned group = 0;
        for (std::size_t i = 0; i < 3; ++i)
            group = group << 8 | (i < count ? bytes[at + i] : 0u);
        for (std::size_t i = 0; i < 4; ++i)
            text += i <= count ? digits[group >> (18 - 6 * i) & 63] : '=';
    }
    return text;
}

// The option of a feature that shows this name to the user.
const SchemaOption* FindByDisplayName(const CapabilitiesIndex& capabilities, const char* feature,
                                      std::wstring_view name) {
    const std::size_t at = capabilities.FindFeature(Public(feature));
    if (at == CapabilitiesIndex::notFound) return nullptr;
    const std::wstring wanted = FoldCase(name);
    for (const CapabilitiesOption& option : capabilities.Features()[at].options) {
        const SchemaProperty* shown =
            FindProperty(option.schema->properties, SchemaSpace::Keywords, "DisplayName");
        if (shown != nullptr && shown->value && FoldCase(FromUtf8(Trimmed(shown->value->text))) == wanted)
            return option.schema;
    }
    return nullptr;
}

std::wstring_view FixedText(const wchar_t* text, std::size_t limit) {
    std::size_t length = 0;
    while (length < limit && text[length])
        ++length;
    return {text, length};
}

class Conversion {
public:
    Conversion(const DEVMODEW& mode, const CapabilitiesIndex& capabilities)
        : m_mode(mode), m_capabilities(capabilities) {}

    SchemaDocument Run(const std::vector<std::uint8_t>& record) {
        for (const DevmodeField& field : devmodeFields)
            if (Counts(field.flag))
                if (const DevmodeKeyword* row = FindDevmodeRow(field.keywords, field.number(m_mode)))
                    Add(field.feature, row->option);
        AddMediaSize();
        AddResolution();
        if (Counts(DM_COPIES) && m_mode.dmCopies > 0) AddParameter("JobCopiesAllDocuments", m_mode.dmCopies);
        AddScaling();
        AddSnapshot(StoreDevmode(record));
        return std::move(m_ticket);
    }

private:
    bool Counts(DWORD flag) const { return (m_mode.dmFields & flag) != 0; }

    void Add(const char* feature, const char* option) {
        m_ticket.features.push_back(Feature(feature, {Public(option), {}, {}, {}}));
    }
    void AddParameter(const char* name, long long number) {
        m_ticket.parameters.push_back({Public(name), Integer(number)});
    }

    // A published number first, then the name of a form, then the lengths themselves.
    void AddMediaSize() {
        const std::span<const DevmodePaper> papers = devmodePapers;
        const DevmodePaper* paper =
            Counts(DM_PAPERSIZE) ? FindDevmodeRow(papers, m_mode.dmPaperSize) : nullptr;
        if (paper != nullptr) return AddMediaSize(Public(paper->option), paper->width, paper->height);
        if (Counts(DM_FORMNAME))
            if (const SchemaOption* option = FindByDisplayName(m_capabilities, SchemaKeyword::PageMediaSize,
                                                               FixedText(m_mode.dmFormName, CCHFORMNAME))) {
                m_ticket.features.push_back(
                    Feature(SchemaKeyword::PageMediaSize, {option->name, {}, option->scored, {}}));
                return;
            }
        if (Counts(DM_PAPERWIDTH) && Counts(DM_PAPERLENGTH) && m_mode.dmPaperWidth > 0 &&
            m_mode.dmPaperLength > 0)
            AddMediaSize({}, m_mode.dmPaperWidth, m_mode.dmPaperLength);
    }
    void AddMediaSize(KeywordName name, int width, int height) {
        m_ticket.features.push_back(
            Feature(SchemaKeyword::PageMediaSize,
                    {std::move(name),
                     {},
                     {Scored(SchemaKeyword::MediaSizeWidth, width * micronsPerTenthMillimetre),
                      Scored(SchemaKeyword::MediaSizeHeight, height * micronsPerTenthMillimetre)},
                     {}}));
    }

    // A positive print quality is the horizontal resolution, and the vertical one too unless that is given.
    void AddResolution() {
        if (!Counts(DM_PRINTQUALITY) || m_mode.dmPrintQuality <= 0) return;
        const bool hasY = Counts(DM_YRESOLUTION) && m_mode.dmYResolution > 0;
        const int y = hasY ? m_mode.dmYResolution : m_mode.dmPrintQuality;
        m_ticket.features.push_back(
            Feature("PageResolution",
                    {{}, {}, {Scored("ResolutionX", m_mode.dmPrintQuality), Scored("ResolutionY", y)}, {}}));
    }

    void AddScaling() {
        if (!Counts(DM_SCALE) || m_mode.dmScale <= 0) return;
        if (m_mode.dmScale == 100) return Add(SchemaKeyword::PageScaling, SchemaKeyword::None);
        Add(SchemaKeyword::PageScaling, "CustomSquare");
        AddParameter("PageScalingScale", m_mode.dmScale);
    }

    void AddSnapshot(const std::vector<std::uint8_t>& stored) {
        for (const ParameterRules& rules : m_capabilities.Parameters())
            if (rules.Name().local == "PageDevmodeSnapshot" && !stored.empty())
                m_ticket.parameters.push_back(
                    {rules.Name(), {{SchemaSpace::Types, SchemaType::String}, Base64(stored), {}}});
    }

    const DEVMODEW& m_mode;
    const CapabilitiesIndex& m_capabilities;
    SchemaDocument m_ticket;
};

bool IsOfPrinter(const DEVMODEW& mode, const std::wstring& printerName) {
    const std::wstring_view name = FixedText(mode.dmDeviceName, CCHDEVICENAME);
    if (name.empty()) return true;
    // The record has room for 31 units of the name.
    return FoldCase(name) == FoldCase(std::wstring_view(printerName).substr(0, CCHDEVICENAME - 1));
}

} // namespace

SchemaDocument SettingsOfDevmode(const DEVMODEW* devmode, std::size_t size, const std::wstring& printerName,
                                 const CapabilitiesIndex& capabilities) {
    constexpr std::size_t least = offsetof(DEVMODEW, dmFields) + sizeof(DWORD);
    if (devmode == nullptr || size < least) throw std::invalid_argument("the device mode is too short");
    DEVMODEW mode{};
    std::memcpy(&mode, devmode, least);
    const std::size_t whole = std::size_t{mode.dmSize} + mode.dmDriverExtra;
    if (mode.dmSize < least || whole > size)
        throw std::invalid_argument("the device mode is longer than its bytes");
    std::memcpy(&mode, devmode, (std::min)(std::size_t{mode.dmSize}, sizeof(mode)));

    if (!IsOfPrinter(mode, printerName)) return {};
    // The driver's own bytes, behind a public part of full length whatever version the record is of.
    const auto* own = reinterpret_cast<const std::uint8_t*>(devmode) + mode.dmSize;
    std::vector<std::uint8_t> record(sizeof(mode) + mode.dmDriverExtra);
    std::copy_n(own, mode.dmDriverExtra, record.begin() + sizeof(mode));
    mode.dmSize = sizeof(mode);
    std::memcpy(record.data(), &mode, sizeof(mode));
    return Conversion(mode, capabilities).Run(record);
}

} // namespace OvPlatform
