#include "Options/OptionValue.h"

#include <cups/cups.h>

#include <strings.h>

#include <algorithm>
#include <charconv>
#include <cstdlib>

namespace OvPrintServer {

std::vector<std::string> Pieces(std::string_view list) {
    std::vector<std::string> pieces;
    while (!list.empty()) {
        const std::size_t comma = list.find(',');
        std::string_view piece = list.substr(0, comma);
        list.remove_prefix(comma == std::string_view::npos ? list.size() : comma + 1);
        while (piece.starts_with(' '))
            piece.remove_prefix(1);
        while (piece.ends_with(' '))
            piece.remove_suffix(1);
        if (!piece.empty()) pieces.emplace_back(piece);
    }
    return pieces;
}

std::string WordOf(std::string_view attribute, const std::string& value) {
    int number = 0;
    const auto [end, error] = std::from_chars(value.data(), value.data() + value.size(), number);
    if (error != std::errc() || end != value.data() + value.size()) return value;
    const char* const word = ippEnumString(std::string(attribute).c_str(), number);
    return word != nullptr ? word : value;
}

bool IsTrue(const std::string& value) {
    return strcasecmp(value.c_str(), "true") == 0 || strcasecmp(value.c_str(), "yes") == 0 ||
           strcasecmp(value.c_str(), "on") == 0 || value == "1";
}

bool ArePages(const std::string& list) {
    const std::vector<std::string> pieces = Pieces(list);
    return !pieces.empty() && std::ranges::all_of(pieces, [](const std::string& piece) {
        unsigned long first = 0;
        const char* const end = piece.data() + piece.size();
        auto at = std::from_chars(piece.data(), end, first);
        if (at.ec != std::errc() || first == 0) return false;
        if (at.ptr == end) return true;
        if (*at.ptr != '-') return false;
        if (at.ptr + 1 == end) return true;
        unsigned long last = 0;
        at = std::from_chars(at.ptr + 1, end, last);
        return at.ec == std::errc() && at.ptr == end && last >= first;
    });
}

std::optional<Resolution> FindResolution(const std::string& value) {
    char* rest = nullptr;
    const long x = std::strtol(value.c_str(), &rest, 10);
    const long y = *rest == 'x' ? std::strtol(rest + 1, &rest, 10) : x;
    if (rest == value.c_str() || strcasecmp(rest, "dpi") != 0) return {};
    return Resolution{x, y};
}

} // namespace OvPrintServer
