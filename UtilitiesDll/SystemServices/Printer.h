#pragma once

#include "LowLevelFacilities/UtilitiesExport.h"
#include "LowLevelFacilities/WideStrings/ByteBuffer.h"
#include "LowLevelFacilities/WideStrings/CXString.h"

#include <windows.h>

/// The spooler's printer handle, and its record of the printer.
class OV_UTILITIES_API Printer {
public:
    Printer() noexcept = default;
    /// Uses a handle that the caller keeps and closes.
    explicit Printer(HANDLE printer) noexcept : m_printer(printer) {}
    ~Printer();
    Printer(const Printer&) = delete;
    Printer& operator=(const Printer&) = delete;

    /// Opens the printer of that name; the handle is closed with this object. Throws CPExceptionOSApiError,
    /// with the last error, if there is none; what was open before stays open then.
    void CreateHandle(const CXString& name);
    [[nodiscard]] HANDLE GetHandle() const noexcept { return m_printer; }

    /// Fills the buffer with the record of that level. The record points into the buffer, so a copy of the
    /// buffer is not a record; a moved one is. False, with the last error set and the buffer empty, on
    /// failure.
    bool GetPrinterInfo(unsigned int level, ByteBuffer& info) const;
    /// Whether the spooler puts a separator page before each job. False also if it cannot be asked.
    [[nodiscard]] bool IsMSSeparatorPageSelected() const;

private:
    void Close() noexcept;

    HANDLE m_printer = nullptr;
    bool m_isOwned = false;
};
