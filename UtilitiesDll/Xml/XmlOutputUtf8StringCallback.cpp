#include "Xml/XmlOutputUtf8StringCallback.h"

#include <string>

XmlOutputUtf8StringCallback::XmlOutputUtf8StringCallback(CPString& target, EnhanceXmlLegibilityEnum enhance)
    : XmlOutputCallback(enhance), m_target(target) {
    m_target.clear();
}

XmlOutputUtf8StringCallback::~XmlOutputUtf8StringCallback() = default;

void XmlOutputUtf8StringCallback::write(const char* utf8, std::size_t length) {
    m_target += CPString(std::string(utf8, length));
}
