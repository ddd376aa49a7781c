#pragma once

#include "LowLevelFacilities/UtilitiesExport.h"

#include <string>

/// Where in the source something happened, by pointers that must outlive it (literals do).
class DebugContextReference {
public:
    /// The size that every location carries.
    static constexpr unsigned int usualSize = 256;

    constexpr DebugContextReference(const char* file, int line, const char* function,
                                    unsigned int size = usualSize, unsigned int reserved = 0) noexcept
        : m_file(file), m_function(function), m_line(line), m_size(size), m_reserved(reserved) {}

    [[nodiscard]] constexpr const char* file() const noexcept { return m_file; }
    [[nodiscard]] constexpr int line() const noexcept { return m_line; }
    [[nodiscard]] constexpr const char* function() const noexcept { return m_function; }
    [[nodiscard]] constexpr unsigned int size() const noexcept { return m_size; }

private:
    const char* m_file;
    const char* m_function;
    int m_line;
    unsigned int m_size;
    [[maybe_unused]] unsigned int m_reserved;
};

/// The same, with copies of the texts, as an exception object needs it.
class OV_UTILITIES_API DebugContextCopy {
public:
    DebugContextCopy(const DebugContextReference& location);

    [[nodiscard]] const std::string& file() const noexcept { return m_file; }
    [[nodiscard]] int line() const noexcept { return m_line; }
    [[nodiscard]] const std::string& function() const noexcept { return m_function; }
    [[nodiscard]] unsigned int size() const noexcept { return m_size; }

private:
    std::string m_file;
    std::string m_function;
    int m_line;
    unsigned int m_size;
};
