#pragma once

#include <libxml/tree.h>

#include <string>

// What white space means in a tree, and where a text ends its lines.

namespace OvPlatform {

constexpr const char* xmlBlanks = " \t\r\n";

/// Whether the node is character data: a text or a CDATA section.
bool IsText(const xmlNode* node) noexcept;

/// What an element says by xml:space about the blanks in it.
enum class SpaceRule { AsAround, Preserve, Default };
SpaceRule SpaceRuleOf(const xmlNode* element) noexcept;

/// Whether blanks count in an element, by its own word or that of one around it. False for null and for what
/// is no element.
bool SpaceIsPreserved(const xmlNode* element) noexcept;

/// CR LF and CR become LF, as a reader makes them.
void NormalizeLineEnds(std::string& text);

} // namespace OvPlatform
