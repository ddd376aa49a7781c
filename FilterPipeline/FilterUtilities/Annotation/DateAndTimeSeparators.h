#pragma once

#include "ComSupport/FilterUtilitiesExport.h"

#include <LowLevelFacilities/WideStrings/CXString.h>

#include <windows.h>

#include <functional>
#include <mutex>
#include <string_view>

/// What dates and times are written with between two fields. Those of the process are empty until the first
/// job sets them, for all later jobs. Any thread.
class OV_FILTER_UTILITIES_API DateAndTimeSeparators {
public:
    struct Separators {
        CXString date;
        CXString time;
    };

    [[nodiscard]] static DateAndTimeSeparators& OfProcess();

    [[nodiscard]] Separators Get() const;
    /// In place of those there are; empty ones wait for the next first use.
    void Set(Separators separators);
    /// Keeps what `read` gives, unless there are separators. Of concurrent callers one wins.
    void SetOnFirstUse(const std::function<Separators()>& read);

    // What the user's locale has between the first two fields of a short date and of a time.
    [[nodiscard]] static CXString DateSeparatorOfLocale();
    [[nodiscard]] static CXString TimeSeparatorOfLocale();
    // Of a picture; "//" and ":" if it does not tell, or has more than three units there.
    [[nodiscard]] static CXString DateSeparatorIn(std::wstring_view picture);
    [[nodiscard]] static CXString TimeSeparatorIn(std::wstring_view picture);

private:
    mutable std::mutex m_mutex;
    Separators m_separators;
};
