#pragma once

#include <libxml/tree.h>

#include <string_view>

// Nodes by hand, where the tree library's own way does more than is needed. They are its to free.

namespace OvPlatform {

/// A node without anything that belongs to no tree yet but knows its document. Throws std::bad_alloc.
xmlNode* MakeNode(xmlDoc* document, xmlElementType type);
/// Puts a new node last in `parent`.
void AppendNode(xmlNode* parent, xmlNode* node) noexcept;

/// A new attribute behind `last`, the element's last one so far, null for none; its name has to be one that
/// the document's dictionary holds, or the attribute's own.
xmlAttr* AppendAttribute(xmlNode* element, xmlAttr* last);
/// Gives a new attribute its value as one text.
void SetValue(xmlAttr* attribute, std::string_view value);

/// The content of a new text node.
void SetText(xmlNode* text, std::string_view content);

/// A copy for the tree library to free. Throws std::bad_alloc.
xmlChar* DuplicateText(std::string_view text);

} // namespace OvPlatform
