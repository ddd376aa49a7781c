#pragma once

#include "Com/PlatformExport.h"

#include <string>
#include <string_view>

namespace OvPlatform {

/// Where in a document a text stands.
enum class XmlPlace { Content, Attribute };

/// Appends a text in UTF-8 with the characters written by name or number that cannot stand for themselves
/// there, or that reading would change. lineFeed: what a line feed of the content becomes.
OV_PLATFORM_API void AppendXml(std::string& target, std::string_view text, XmlPlace place,
                               std::string_view lineFeed = "\n");

} // namespace OvPlatform
