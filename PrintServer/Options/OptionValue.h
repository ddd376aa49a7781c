#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace OvPrintServer {

// How values of options are read.

/// "a, b,c" in pieces, without blanks around them; empty ones are left out.
std::vector<std::string> Pieces(std::string_view list);

/// Some clients write what is enumerated by its number: the attribute's word for it, else the value itself.
std::string WordOf(std::string_view attribute, const std::string& value);

/// "true", "yes", "on" and "1".
bool IsTrue(const std::string& value);

/// "1-4,7,9-": pages from 1, in ranges that do not run backwards.
bool ArePages(const std::string& list);

/// Dots per inch.
struct Resolution {
    long x = 0;
    long y = 0;
};

/// "600dpi" or "1200x600dpi"; nothing for any other text.
std::optional<Resolution> FindResolution(const std::string& value);

} // namespace OvPrintServer
