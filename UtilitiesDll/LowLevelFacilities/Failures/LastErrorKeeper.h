#pragma once

#include "LowLevelFacilities/UtilitiesExport.h"

/// Remembers the calling thread's last error and puts it back at the end of its life, so that what is done in
/// between (building a message, reporting it) leaves no trace there.
class OV_UTILITIES_API LastErrorKeeper {
public:
    LastErrorKeeper() noexcept : m_lastError(current()) {}
    ~LastErrorKeeper() { set(m_lastError); }
    LastErrorKeeper(const LastErrorKeeper&) = delete;
    LastErrorKeeper& operator=(const LastErrorKeeper&) = delete;

    [[nodiscard]] unsigned int lastError() const noexcept { return m_lastError; }

    [[nodiscard]] static unsigned int current() noexcept;
    static void set(unsigned int lastError) noexcept;

private:
    unsigned int m_lastError;
};
