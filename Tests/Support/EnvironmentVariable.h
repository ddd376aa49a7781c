#pragma once

#include <cstdlib>
#include <ctime>
#include <optional>
#include <string>

/// A variable of the process's environment for the life of this object; afterwards it is as it was. The zone
/// of the C library follows where it is TZ.
class EnvironmentVariable {
public:
    EnvironmentVariable(const char* name, const std::string& value) : m_name(name) {
        if (const char* const before = std::getenv(name)) m_before = before;
        Set(value);
    }
    EnvironmentVariable(const EnvironmentVariable&) = delete;
    EnvironmentVariable& operator=(const EnvironmentVariable&) = delete;
    ~EnvironmentVariable() { Set(m_before); }

private:
    void Set(const std::optional<std::string>& value) const {
#if defined(_WIN32)
        _putenv_s(m_name, value.value_or("").c_str()); // without a text there is no variable
        _tzset();
#else
        value ? setenv(m_name, value->c_str(), 1) : unsetenv(m_name);
        tzset();
#endif
    }

    const char* m_name;
    std::optional<std::string> m_before;
};
