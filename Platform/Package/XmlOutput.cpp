#include "Package/XmlOutput.h"

#include <new>
#include <stdexcept>

namespace OvPlatform {

namespace {

const xmlChar* Chars(const char* text) { return reinterpret_cast<const xmlChar*>(text); }

} // namespace

XmlOutput::XmlOutput(bool indent) : m_buffer(xmlBufferCreate()), m_writer(nullptr) {
    m_writer = m_buffer ? xmlNewTextWriterMemory(m_buffer, 0) : nullptr;
    if (!m_writer) {
        xmlBufferFree(m_buffer);
        throw std::bad_alloc();
    }
    xmlBufferSetAllocationScheme(m_buffer, XML_BUFFER_ALLOC_DOUBLEIT);
    xmlTextWriterSetIndent(m_writer, indent);
    xmlTextWriterSetIndentString(m_writer, Chars("  "));
    xmlTextWriterStartDocument(m_writer, nullptr, "UTF-8", nullptr);
}

XmlOutput::~XmlOutput() {
    xmlFreeTextWriter(m_writer);
    xmlBufferFree(m_buffer);
}

void XmlOutput::Check(int result) const {
    if (result < 0) throw std::runtime_error("the text cannot be written as XML");
}

void XmlOutput::Start(const char* element) { Check(xmlTextWriterStartElement(m_writer, Chars(element))); }

void XmlOutput::Attribute(const char* name, std::string_view value) {
    Check(xmlTextWriterWriteAttribute(m_writer, Chars(name), Chars(std::string(value).c_str())));
}

void XmlOutput::Text(std::string_view text) {
    Check(xmlTextWriterWriteString(m_writer, Chars(std::string(text).c_str())));
}

void XmlOutput::Base64(const std::vector<std::uint8_t>& bytes) {
    if (bytes.empty()) return;
    Check(xmlTextWriterWriteBase64(m_writer, reinterpret_cast<const char*>(bytes.data()), 0,
                                   static_cast<int>(bytes.size())));
}

void XmlOutput::End() { Check(xmlTextWriterEndElement(m_writer)); }

std::string XmlOutput::Finish() {
    Check(xmlTextWriterEndDocument(m_writer));
    Check(xmlTextWriterFlush(m_writer));
    return {reinterpret_cast<const char*>(xmlBufferContent(m_buffer)),
            static_cast<std::size_t>(xmlBufferLength(m_buffer))};
}

} // namespace OvPlatform
