#include "System/UserFolder.h"

#include <cstdlib>

namespace OvPlatform {

namespace {

std::filesystem::path Variable(const char* name) {
    const char* value = std::getenv(name);
    return value != nullptr ? value : "";
}

} // namespace

std::filesystem::path PlaceOfUser(const char* variable, const char* name) {
    if (auto named = Variable(variable); !named.empty()) return named;
    if (auto configuration = Variable("XDG_CONFIG_HOME"); !configuration.empty())
        return configuration / "ov-platform" / name;
    const auto home = Variable("HOME");
    return home.empty() ? std::filesystem::path() : home / ".config" / "ov-platform" / name;
}

} // namespace OvPlatform
