#pragma once

#include "Xml/XmlPointer.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace OvPlatform {

/// Writes one UTF-8 XML document into memory, escaping as it goes. Throws std::bad_alloc, and
/// std::runtime_error for what XML cannot hold.
class XmlOutput {
public:
    /// indent: each element on a line of its own; otherwise the document is one line after the declaration.
    explicit XmlOutput(bool indent);

    void Start(const char* element);
    void Attribute(const char* name, std::string_view value);
    void Text(std::string_view text);
    void Base64(const std::vector<std::uint8_t>& bytes);
    void End();

    /// Closes what is open and gives the document.
    std::string Finish();

private:
    void Check(int result) const;

    XmlPointer<_xmlBuffer> m_buffer;
    XmlPointer<_xmlTextWriter> m_writer; // writes into the buffer, so it goes first
};

} // namespace OvPlatform
