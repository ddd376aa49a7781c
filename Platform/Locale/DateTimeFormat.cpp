#include "Com/FaultInjection.h"
#include "Locale/LocaleLookup.h"
#include "Locale/LocalePictures.h"
#include "Locale/PictureFields.h"
#include "Locale/Utf16.h"

#include <unicode/calendar.h>
#include <unicode/dtfmtsym.h>
#include <unicode/smpdtfmt.h>

#include <algorithm>
#include <chrono>
#include <limits>
#include <memory>
#include <new>
#include <optional>
#include <string>

namespace {

using namespace OvPlatform;

// Longer ones say nothing to anybody; the results' lengths stay within what the calls can tell.
constexpr std::size_t longestPicture = 0x10000;

constexpr DWORD dateFlags = DATE_SHORTDATE | DATE_LONGDATE | LOCALE_NOUSEROVERRIDE;
constexpr DWORD timeFlags = TIME_NOMINUTESORSECONDS | TIME_NOSECONDS | TIME_NOTIMEMARKER |
                            TIME_FORCE24HOURFORMAT | LOCALE_NOUSEROVERRIDE;

int Fail(DWORD error) {
    SetLastError(error);
    return 0;
}

int Give(const std::wstring& text, LPWSTR buffer, int capacity) {
    if (text.size() >= static_cast<std::size_t>((std::numeric_limits<int>::max)()))
        return Fail(ERROR_INVALID_PARAMETER);
    const int needed = static_cast<int>(text.size()) + 1;
    if (capacity == 0) return needed;
    if (!CopyText(text, buffer, static_cast<std::size_t>(capacity))) return Fail(ERROR_INSUFFICIENT_BUFFER);
    return needed;
}

/// Days since 1970; nothing for a date that is none.
std::optional<int> DayNumber(const SYSTEMTIME& date) {
    const std::chrono::year_month_day day{std::chrono::year{date.wYear}, std::chrono::month{date.wMonth},
                                          std::chrono::day{date.wDay}};
    if (date.wYear < 1601 || date.wYear > 30827 || !day.ok()) return std::nullopt;
    return std::chrono::sys_days{day}.time_since_epoch().count();
}

bool IsTimeOfDay(const SYSTEMTIME& time) {
    return time.wHour <= 23 && time.wMinute <= 59 && time.wSecond <= 59 && time.wMilliseconds <= 999;
}

SYSTEMTIME GivenOrNow(const SYSTEMTIME* time) {
    if (time != nullptr) return *time;
    SYSTEMTIME now{};
    GetLocalTime(&now);
    return now;
}

std::wstring Digits(int number, std::size_t length) {
    std::wstring digits = std::to_wstring(number);
    if (digits.size() < length) digits.insert(0, length - digits.size(), L'0');
    return digits;
}

void Check(UErrorCode status) {
    // The locale's data are there; what can fail is memory.
    if (U_FAILURE(status)) throw std::bad_alloc();
}

/// The names are English where the locale is the invariant one.
icu::Locale LocaleOfNames(const icu::Locale& locale) {
    return locale == icu::Locale::getRoot() ? icu::Locale::getUS() : locale;
}

/// Shows the fields of one date in the calendar that is usual in the locale, with the locale's names.
class DateFields {
public:
    DateFields(const icu::Locale& locale, int dayNumber, bool namesADay) : m_namesADay(namesADay) {
        UErrorCode status = U_ZERO_ERROR;
        m_format =
            std::make_unique<icu::SimpleDateFormat>(icu::UnicodeString(u"y"), LocaleOfNames(locale), status);
        Check(status);
        m_format->setTimeZone(*icu::TimeZone::getGMT());
        constexpr double millisecondsOfDay = 86'400'000;
        m_date = dayNumber * millisecondsOfDay;
        // A copy: the formatter moves its own calendar.
        m_calendar.reset(m_format->getCalendar()->clone());
        if (!m_calendar) throw std::bad_alloc();
        m_calendar->setTime(m_date, status);
        Check(status);
    }

    std::wstring Show(const PictureField& field) {
        switch (field.letter) {
        case L'd':
            if (field.length <= 2) return Digits(Number(UCAL_DATE), field.length);
            return Name(field.length == 3 ? u"ccc" : u"cccc");
        case L'M':
            // A month's number, which a calendar may write otherwise (a leap month).
            if (field.length <= 2) return Digits(Number(UCAL_MONTH) + 1, field.length);
            // In some languages the name has another form beside the number of a day.
            if (m_namesADay) return Name(field.length == 3 ? u"MMM" : u"MMMM");
            return Name(field.length == 3 ? u"LLL" : u"LLLL");
        case L'y':
            if (field.length <= 2) return Digits(Number(UCAL_YEAR) % 100, field.length);
            return Digits(Number(UCAL_YEAR), 4);
        case L'g':
            return Name(u"G");
        default:
            return field.text;
        }
    }

private:
    int Number(UCalendarDateFields field) const {
        UErrorCode status = U_ZERO_ERROR;
        const int number = m_calendar->get(field, status);
        Check(status);
        return number;
    }

    std::wstring Name(const char16_t* pattern) {
        m_format->applyPattern(icu::UnicodeString(pattern));
        icu::UnicodeString name;
        m_format->format(m_date, name);
        return FromUtf16({name.getBuffer(), static_cast<std::size_t>(name.length())});
    }

    bool m_namesADay;
    UDate m_date = 0;
    std::unique_ptr<icu::SimpleDateFormat> m_format;
    std::unique_ptr<icu::Calendar> m_calendar;
};

bool NamesADay(const std::vector<PictureField>& fields) {
    return std::any_of(fields.begin(), fields.end(),
                       [](const PictureField& field) { return field.letter == L'd' && field.length <= 2; });
}

std::wstring ShowDate(const icu::Locale& locale, int dayNumber, std::wstring_view picture) {
    const std::vector<PictureField> fields = ReadPicture(picture, L"dMyg");
    DateFields date(locale, dayNumber, NamesADay(fields));
    std::wstring text;
    for (const PictureField& field : fields)
        text += date.Show(field);
    return text;
}

/// Takes out the fields with one of the letters, with what parts them from the field ahead of them, and with
/// `isMarker` from the one behind.
void RemoveFields(std::vector<PictureField>& fields, std::wstring_view letters, bool isMarker) {
    const auto isText = [](const PictureField& field) { return field.letter == 0; };
    for (std::size_t at = 0; at < fields.size();) {
        if (isText(fields[at]) || letters.find(fields[at].letter) == std::wstring_view::npos) {
            ++at;
            continue;
        }
        std::size_t end = at + 1;
        if (isMarker && end < fields.size() && isText(fields[end])) ++end;
        if (at > 0 && isText(fields[at - 1])) --at;
        fields.erase(fields.begin() + static_cast<std::ptrdiff_t>(at),
                     fields.begin() + static_cast<std::ptrdiff_t>(end));
    }
}

void ApplyFlags(std::vector<PictureField>& fields, DWORD flags) {
    if ((flags & TIME_NOMINUTESORSECONDS) != 0) RemoveFields(fields, L"ms", false);
    if ((flags & TIME_NOSECONDS) != 0) RemoveFields(fields, L"s", false);
    if ((flags & TIME_NOTIMEMARKER) != 0) RemoveFields(fields, L"t", true);
    if ((flags & TIME_FORCE24HOURFORMAT) != 0)
        for (PictureField& field : fields)
            if (field.letter == L'h') field.letter = L'H';
}

std::wstring TimeMarker(const icu::Locale& locale, bool isAfternoon) {
    UErrorCode status = U_ZERO_ERROR;
    const icu::DateFormatSymbols symbols(LocaleOfNames(locale), status);
    Check(status);
    int32_t count = 0;
    const icu::UnicodeString* const markers = symbols.getAmPmStrings(count);
    const int32_t index = isAfternoon ? 1 : 0;
    if (index >= count) return {};
    return FromUtf16({markers[index].getBuffer(), static_cast<std::size_t>(markers[index].length())});
}

std::wstring ShowField(const SYSTEMTIME& time, const PictureField& field, const std::wstring& marker) {
    const std::size_t length = (std::min)(field.length, std::size_t{2});
    switch (field.letter) {
    case L'h':
        return Digits(time.wHour % 12 == 0 ? 12 : time.wHour % 12, length);
    case L'H':
        return Digits(time.wHour, length);
    case L'm':
        return Digits(time.wMinute, length);
    case L's':
        return Digits(time.wSecond, length);
    case L't':
        return length == 1 ? marker.substr(0, 1) : marker;
    default:
        return field.text;
    }
}

std::wstring ShowTime(const icu::Locale& locale, const SYSTEMTIME& time, std::wstring_view picture,
                      DWORD flags) {
    std::vector<PictureField> fields = ReadPicture(picture, L"hHmst");
    ApplyFlags(fields, flags);
    const std::wstring marker = TimeMarker(locale, time.wHour >= 12);
    std::wstring text;
    for (const PictureField& field : fields)
        text += ShowField(time, field, marker);
    return text;
}

/// What both calls check alike, and the way out where memory is out.
template <class Show>
int FormatBy(LPCWSTR localeName, LPCWSTR picture, LPWSTR buffer, int capacity, Show&& show) {
    if (capacity < 0 || (capacity > 0 && buffer == nullptr)) return Fail(ERROR_INVALID_PARAMETER);
    if (picture != nullptr && wcsnlen(picture, longestPicture + 1) > longestPicture)
        return Fail(ERROR_INVALID_PARAMETER);
    try {
        const std::optional<icu::Locale> locale = FindLocale(localeName);
        if (!locale) return Fail(ERROR_INVALID_PARAMETER);
        return Give(show(*locale), buffer, capacity);
    } catch (const std::bad_alloc&) {
        return Fail(ERROR_OUTOFMEMORY);
    }
}

} // namespace

int GetDateFormatEx(LPCWSTR localeName, DWORD flags, const SYSTEMTIME* date, LPCWSTR picture, LPWSTR text,
                    int capacity, LPCWSTR calendar) {
    if (FaultPointHit()) return 0;
    if (calendar != nullptr) return Fail(ERROR_INVALID_PARAMETER);
    const bool isShort = (flags & DATE_SHORTDATE) != 0;
    const bool isLong = (flags & DATE_LONGDATE) != 0;
    if ((flags & ~dateFlags) != 0 || (isShort && isLong) || (picture != nullptr && flags != 0))
        return Fail(ERROR_INVALID_FLAGS);
    const std::optional<int> dayNumber = DayNumber(GivenOrNow(date));
    if (!dayNumber) return Fail(ERROR_INVALID_PARAMETER);
    return FormatBy(localeName, picture, text, capacity, [&](const icu::Locale& locale) {
        if (picture != nullptr) return ShowDate(locale, *dayNumber, picture);
        return ShowDate(locale, *dayNumber, isLong ? LongDatePicture(locale) : ShortDatePicture(locale));
    });
}

int GetTimeFormatEx(LPCWSTR localeName, DWORD flags, const SYSTEMTIME* time, LPCWSTR picture, LPWSTR text,
                    int capacity) {
    if (FaultPointHit()) return 0;
    if ((flags & ~timeFlags) != 0 || (picture != nullptr && (flags & LOCALE_NOUSEROVERRIDE) != 0))
        return Fail(ERROR_INVALID_FLAGS);
    const SYSTEMTIME moment = GivenOrNow(time);
    if (!IsTimeOfDay(moment)) return Fail(ERROR_INVALID_PARAMETER);
    return FormatBy(localeName, picture, text, capacity, [&](const icu::Locale& locale) {
        return ShowTime(locale, moment, picture != nullptr ? picture : TimePicture(locale), flags);
    });
}
