#include "LowLevelFacilities/Failures/DebugContext.h"

namespace {

const char* orEmpty(const char* text) noexcept { return text == nullptr ? "" : text; }

} // namespace

DebugContextCopy::DebugContextCopy(const DebugContextReference& location)
    : m_file(orEmpty(location.file())), m_function(orEmpty(location.function())), m_line(location.line()),
      m_size(location.size()) {}
