#pragma once

#include <LowLevelFacilities/WideStrings/CXString.h>

#include <windows.h>

#include <functional>
#include <mutex>
#include <string_view>

/// What dates and times are written with between two fields. Those of the process are empty until the first
/// job sets them, for all later jobs. Any thread.
class DateAndTimeSeparators {
public:
    struct Separators {
        CXString date;
        CXString time;
    };

    [[nodiscard]] static DateAndTimeSeparators& OfProcess();

    [[nodiscard]] Separators Get() const;
    /// Keeps what `read` gives, unless there are separators. Of concurrent callers one wins.
    void SetOnFirstUse(const std::function<Separators()>& read);

    // What a picture of the user's locale has between its first two fields; the default if it does not tell.
    [[nodiscard]] static CXString DateSeparatorOfLocale();
    [[nodiscard]] static CXString TimeSeparatorOfLocale();

private:
    mutable std::mutex m_mutex;
    Separators m_separators;
};
