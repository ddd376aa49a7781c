#include "Commands/DevmodeTicket.h"

#include "Commands/DisplayNames.h"
#include "Commands/JobAtDevice.h"
#include "Commands/TicketText.h"
#include "Common/HostError.h"
#include "Common/Text.h"
#include "Streams/FileStreams.h"

#include <AttributeStore/AttributeBytesIndexedList.h>
#include <AttributeStore/AttributeBytesRawList.h>
#include <FeatureAccess/FeatureRuleTable.h>
#include <Locale/ShownText.h>
#include <PrintTime/V4DevmodeReader.h>
#include <Spooler/DevmodeLayout.h>

#include <algorithm>
#include <cwchar>
#include <limits>

namespace OvPipeline {

namespace {

using Bytes = std::vector<std::uint8_t>;

// No two sizes of a device mode add up to more.
constexpr std::size_t mostBytes = 2 * std::size_t{std::numeric_limits<WORD>::max()};

Bytes ReadFile(const std::string& file) {
    Bytes bytes;
    Drain(*FileContent(file).Open(), [&](const void* chunk, std::size_t size) {
        const auto* const start = static_cast<const std::uint8_t*>(chunk);
        if (bytes.size() + size > mostBytes)
            throw InputError(HRESULT_FROM_WIN32(ERROR_INVALID_DATA), file,
                             file + ": larger than any device mode (" + ByteCount(mostBytes) + ")");
        bytes.insert(bytes.end(), start, start + size);
    });
    return bytes;
}

Bytes LoadRecord(const std::string& file) {
    const Bytes stored = ReadFile(file);
    Bytes record = OvPlatform::LoadDevmode(stored);
    if (record.empty())
        throw InputError(HRESULT_FROM_WIN32(ERROR_INVALID_DATA), file,
                         file + ": not a stored device mode: " + ByteCount(stored.size()) +
                             " are less than its two sizes say, or its public part is too short");
    return record;
}

bool IsSecret(AttributeBytesFeatureId feature) {
    return std::ranges::any_of(GetFeatureRules(), [feature](const FeatureRule& rule) {
        return rule.path.Feature() == feature.GetFeatureId() &&
               (rule.kind == FeatureQuestionKind::Password || rule.reading.isSecret);
    });
}

std::string OneLine(std::wstring_view text) { return OvPlatform::Shown(Utf8(text), 160); }

// The same attributes, with the texts hidden that nobody is to see, and the others in one line each.
AttributeBytesRawList ToShow(const AttributeBytesList& list) {
    AttributeBytesRawList shown;
    for (auto at = list.GetIterator(); list.IsValid(at);) {
        const AttributeBytes& attribute = *list.GetNextAttributeBytes(at);
        const AttributeBytesFeatureId feature = attribute.GetFeatureId();
        const AttributeBytesValue& value = attribute.GetAttributeBytesValue();
        if (value.GetKind() == AttributeBytesValue::Kind::Collection)
            shown.AddAttributeBytes({feature, AttributeBytesValue::FromCollection(
                                                  ToShow(*value.GetCollection()), value.IsSpecified())});
        else if (value.GetKind() == AttributeBytesValue::Kind::CollectionSet)
            shown.AddAttributeBytes({feature, AttributeBytesValue::FromCollectionSet(
                                                  ToShow(*value.GetCollection()), value.IsSpecified())});
        else if (const CXString* const text = value.GetString())
            shown.AddAttributeBytes({feature, AttributeBytesValue::FromString(
                                                  IsSecret(feature) ? CXString(L"(hidden)")
                                                                    : CXString(Wide(OneLine(text->View()))),
                                                  value.IsSpecified())});
        else
            shown.AddAttributeBytes(attribute);
    }
    return shown;
}

// A device mode names its printer, as far as there is room; that of another one makes no settings.
std::string OwnerRemark(const DEVMODEW& devmode, const std::wstring& printer) {
    const wchar_t* const start = devmode.dmDeviceName;
    const std::wstring owner(start, std::find(start, start + CCHDEVICENAME, L'\0'));
    const std::wstring printerStart = printer.substr(0, CCHDEVICENAME - 1);
    if (owner.empty() || _wcsicmp(owner.c_str(), printerStart.c_str()) == 0) return {};
    return "The device mode is of the printer \"" + OneLine(owner) + "\": these are the defaults of \"" +
           OneLine(printer) + "\".\n";
}

// Two hyphens end a comment, and one may not be its last character.
std::string Comment(std::string text) {
    for (std::size_t at = text.find("--"); at != std::string::npos; at = text.find("--", at))
        text.insert(at + 1, " ");
    return "<!--\n" + text + "-->";
}

} // namespace

std::string DevmodeTicket(const std::string& file, const OvPlatform::QueueFolder& queue) {
    Bytes record = LoadRecord(file);
    auto* const devmode = reinterpret_cast<DEVMODEW*>(record.data());
    const V4DevmodeReader reader(queue.PrinterName().c_str(), devmode, DisplayNames());
    if (!reader.IsInitialized())
        throw HostError(E_FAIL, file, file + ": the queue cannot make a ticket of the device mode");
    const PrintTicketAttributeBytesReaderWriter& attributes =
        *reader.GetConstPtrToAttributeBytesReaderWriter();
    CheckAttributeBytes(attributes, file);
    const AttributeBytesRawList shown = ToShow(attributes.GetAttributeBytesIndexedListRef());
    const std::string words =
        OwnerRemark(*devmode, queue.PrinterName()) +
        (shown.IsEmpty()
             ? "No attribute bytes.\n"
             : "Attribute bytes:\n" + std::string(shown.AttributeBytesDump(DisplayNames()).view()));
    return IndentedTicket(reader.GetConstPtrToPrintTicket()->GetDomDocPtr()) + "\n" + Comment(words);
}

} // namespace OvPipeline
