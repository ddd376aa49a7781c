#include "Annotation/DateAndTimeSeparators.h"

#include "ComSupport/FailureBarrier.h"
#include "ComSupport/HresultHelpers.h"

#include <algorithm>
#include <cstddef>
#include <span>
#include <string>
#include <string_view>
#include <utility>

using This = DateAndTimeSeparators;

namespace {

constexpr int pictureUnits = 260;
constexpr std::size_t maxSeparatorUnits = 3;

// Of two that stand at one place the later one is the field: the longer ones come last.
constexpr std::wstring_view dateFields[] = {L"d",   L"M",   L"y",   L"g",    L"dd",   L"MM",   L"yy",   L"gg",
                                            L"ddd", L"MMM", L"yyy", L"dddd", L"MMMM", L"yyyy", L"yyyyy"};
constexpr std::wstring_view timeFields[] = {L"H", L"h", L"m", L"s", L"HH", L"hh", L"mm", L"ss"};

using Fields = std::span<const std::wstring_view>;

/// Where the first field of the picture ends; 0 if there is none.
std::size_t EndOfFirstField(std::wstring_view picture, Fields fields) {
    std::size_t first = picture.size();
    std::size_t end = 0;
    for (const std::wstring_view field : fields) {
        const std::size_t place = picture.find(field);
        if (place == std::wstring_view::npos || place > first) continue;
        first = place;
        end = place + field.size();
    }
    return end;
}

CXString SeparatorIn(std::wstring_view picture, Fields fields, const wchar_t* otherwise) {
    const std::size_t start = EndOfFirstField(picture, fields);
    if (start == 0) return otherwise;
    std::size_t end = std::wstring_view::npos;
    for (const std::wstring_view field : fields)
        end = std::min(end, picture.find(field, start));
    if (end == std::wstring_view::npos || end == start || end - start > maxSeparatorUnits) return otherwise;
    return CXString(std::wstring(picture.substr(start, end - start)));
}

std::wstring PictureOfLocale(LCTYPE type) {
    wchar_t picture[pictureUnits] = {};
    const int length = GetLocaleInfoEx(LOCALE_NAME_USER_DEFAULT, type, picture, pictureUnits);
    if (length > 0) return picture;
    ReportIfFailed(GetLastErrorAsHResult(), "DateAndTimeSeparators::PictureOfLocale");
    return {};
}

} // namespace

DateAndTimeSeparators& This::OfProcess() {
    static DateAndTimeSeparators separators;
    return separators;
}

This::Separators This::Get() const {
    const std::lock_guard guard(m_mutex);
    return m_separators;
}

void This::Set(Separators separators) {
    const std::lock_guard guard(m_mutex);
    m_separators = std::move(separators);
}

void This::SetOnFirstUse(const std::function<Separators()>& read) {
    if (!Get().date.IsEmpty()) return;
    // Not under the lock: this asks a document and the system.
    Separators separators = read();
    const std::lock_guard guard(m_mutex);
    if (m_separators.date.IsEmpty()) m_separators = std::move(separators);
}

// Nothing of the platform tells the separator of every locale, so its picture is taken apart.

CXString This::DateSeparatorOfLocale() { return DateSeparatorIn(PictureOfLocale(LOCALE_SSHORTDATE)); }
CXString This::TimeSeparatorOfLocale() { return TimeSeparatorIn(PictureOfLocale(LOCALE_STIMEFORMAT)); }
CXString This::DateSeparatorIn(std::wstring_view picture) { return SeparatorIn(picture, dateFields, L"//"); }
CXString This::TimeSeparatorIn(std::wstring_view picture) { return SeparatorIn(picture, timeFields, L":"); }
