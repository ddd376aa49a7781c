#include "Common/SecretSettings.h"

#include <algorithm>

namespace OvPipeline {

namespace {

constexpr std::string_view secretSettings[] = {"JobPasscodeString"};
constexpr std::string_view wordsOfSecretCommands[] = {"PASSWORD"};

} // namespace

bool IsSecretSetting(std::string_view name) {
    name.remove_prefix(name.find_last_of(":/") + 1); // npos + 1 is 0
    return std::ranges::find(secretSettings, name) != std::end(secretSettings);
}

bool IsSecretCommand(std::string_view name) {
    return std::ranges::any_of(wordsOfSecretCommands, [&](std::string_view word) {
        return name.find(word) != std::string_view::npos;
    });
}

} // namespace OvPipeline
