#include "Spooler/PropertiesWriter.h"

#include "Locale/Utf16.h"
#include "Spooler/QueueSchema.h"

namespace OvPlatform {

namespace {

struct ValueWriter {
    XmlOutput& xml;
    void operator()(const std::wstring& text) const { xml.Text(ToUtf8(text)); }
    void operator()(bool value) const { xml.Text(value ? "true" : "false"); }
    void operator()(std::int32_t value) const { xml.Text(std::to_string(value)); }
    void operator()(const QueueBytes& value) const { xml.Base64(value.bytes); }
    void operator()(const QueueStream& value) const { xml.Base64(value.bytes); }
};

} // namespace

void WriteValues(XmlOutput& xml, const QueueValues& values) {
    for (const auto& [name, value] : values) {
        xml.Start(QueueSchema::valueElements[value.index()]);
        xml.Attribute("name", ToUtf8(name));
        std::visit(ValueWriter{xml}, value);
        xml.End();
    }
}

void WriteProperties(XmlOutput& xml, const char* element, const QueueValues& values) {
    if (values.empty()) return;
    xml.Start(element);
    WriteValues(xml, values);
    xml.End();
}

} // namespace OvPlatform
