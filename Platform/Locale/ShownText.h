#pragma once

#include "Com/PlatformExport.h"

#include <string>
#include <string_view>

namespace OvPlatform {

/// A text from outside - of a job, a queue, a filter, the user - as a terminal may get it. Nothing in the
/// result acts on a terminal, breaks the line, hides, or changes the order of what is read:
///   \n \r \t \x1b    control characters of ASCII
///   \u202e           other controls, format characters, separators of lines, noncharacters
///   \xff             bytes that are no UTF-8
/// All other text stays as it is. Where the result would have more characters than the bound, only its
/// beginning and its end stay, and between them stands how many characters of the text were left out.
OV_PLATFORM_API std::string Shown(std::string_view text, std::size_t bound = std::string::npos);

/// An XML text as a terminal may get it, which says the same to a program: what Shown would not let pass
/// stands as character references, but for line breaks and tabs. A comment or the like, which has no
/// references, is written as Shown has it. A name has no other way to be written, and stays; it cannot hold
/// controls.
OV_PLATFORM_API std::string ShownXml(std::string_view xml);

/// A text between quotation marks, as JSON wants it; what Shown would not let pass stands by its number.
/// Bytes that are no UTF-8 count as U+FFFD.
OV_PLATFORM_API std::string ShownJson(std::string_view text);

} // namespace OvPlatform
