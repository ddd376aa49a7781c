#include "Spooler/QueueText.h"

#include "Locale/Utf16.h"

#include <unicode/unistr.h>

namespace OvPlatform {

std::wstring FoldQueueName(std::wstring_view name) {
    const std::u16string own = ToUtf16(name);
    icu::UnicodeString units(own.data(), static_cast<std::int32_t>(own.size()));
    units.foldCase();
    return FromUtf16({units.getBuffer(), static_cast<std::size_t>(units.length())});
}

} // namespace OvPlatform
