#include "Xml/XmlOutput.h"

#include "Xml/XmlString.h"

#include <libxml/xmlwriter.h>

#include <new>
#include <stdexcept>

namespace OvPlatform {

XmlOutput::XmlOutput(bool indent)
    : m_buffer(xmlBufferCreate()), m_writer(m_buffer ? xmlNewTextWriterMemory(m_buffer.get(), 0) : nullptr) {
    if (!m_writer) throw std::bad_alloc();
    xmlBufferSetAllocationScheme(m_buffer.get(), XML_BUFFER_ALLOC_DOUBLEIT);
    xmlTextWriterSetIndent(m_writer.get(), indent);
    xmlTextWriterSetIndentString(m_writer.get(), AsXml("  "));
    xmlTextWriterStartDocument(m_writer.get(), nullptr, "UTF-8", nullptr);
}

void XmlOutput::Check(int result) const {
    if (result < 0) throw std::runtime_error("the text cannot be written as XML");
}

void XmlOutput::Start(const char* element) {
    Check(xmlTextWriterStartElement(m_writer.get(), AsXml(element)));
}

void XmlOutput::Attribute(const char* name, std::string_view value) {
    Check(xmlTextWriterWriteAttribute(m_writer.get(), AsXml(name), AsXml(std::string(value).c_str())));
}

void XmlOutput::Text(std::string_view text) {
    Check(xmlTextWriterWriteString(m_writer.get(), AsXml(std::string(text).c_str())));
}

void XmlOutput::Base64(const std::vector<std::uint8_t>& bytes) {
    if (bytes.empty()) return;
    Check(xmlTextWriterWriteBase64(m_writer.get(), reinterpret_cast<const char*>(bytes.data()), 0,
                                   static_cast<int>(bytes.size())));
}

void XmlOutput::End() { Check(xmlTextWriterEndElement(m_writer.get())); }

std::string XmlOutput::Finish() {
    Check(xmlTextWriterEndDocument(m_writer.get()));
    Check(xmlTextWriterFlush(m_writer.get()));
    return {reinterpret_cast<const char*>(xmlBufferContent(m_buffer.get())),
            static_cast<std::size_t>(xmlBufferLength(m_buffer.get()))};
}

} // namespace OvPlatform
