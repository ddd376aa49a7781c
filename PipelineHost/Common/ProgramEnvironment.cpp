#include "Common/ProgramEnvironment.h"

#include <unistd.h>

#include <string_view>

namespace OvPipeline {

ProgramEnvironment::ProgramEnvironment(const std::filesystem::path& folder) {
    for (char** at = environ; *at != nullptr; ++at) {
        const std::string_view variable = *at;
        if (!variable.starts_with("GS_") && !variable.starts_with("TMPDIR=") &&
            !variable.starts_with("TEMP="))
            m_variables.emplace_back(variable);
    }
    m_variables.push_back("TMPDIR=" + std::filesystem::absolute(folder).string());
    m_pointers.reserve(m_variables.size() + 1);
    for (std::string& variable : m_variables)
        m_pointers.push_back(variable.data());
    m_pointers.push_back(nullptr);
}

} // namespace OvPipeline
