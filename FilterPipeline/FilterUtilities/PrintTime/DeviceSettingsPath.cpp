#include "PrintTime/DeviceSettingsPath.h"

#include "ComSupport/FailureBarrier.h"
#include "ComSupport/ThrowHresult.h"

#include <Xml/MicrosoftXmlParser.h>

namespace {

bool HasName(const XmlDomNode& node, const CXString& name) {
    if (!node.IsElement()) return false;
    CComBSTR baseName;
    ThrowIfFailed(node.GetInterface()->get_baseName(&baseName));
    return baseName && name.Compare(baseName) == 0;
}

XmlDomNode::Pointer FindChild(const XmlDomNode& parent, const CXString& name) {
    auto child = parent.GetFirstChild();
    while (child && !HasName(*child, name))
        child = child->GetNextSibling();
    return child;
}

} // namespace

DeviceSettingsPath::DeviceSettingsPath(const CXString& path) : m_steps(path.Mid(1).Tokenize(L'/')) {}

CXString DeviceSettingsPath::ValueIn(const CPString& settings) const {
    const OperationScope operation("DeviceSettingsPath::ValueIn");
    if (settings.isEmptyOrOnlyWhitespace()) return {};
    CXString value;
    try {
        value = Find(settings);
    } catch (...) {
        ReportCaughtException();
    }
    value.Trim();
    return value;
}

CXString DeviceSettingsPath::Find(const CPString& settings) const {
    MicrosoftXmlParser parser(L"device settings", false);
    parser.parse(settings);
    auto node = parser.getDocument().GetDocumentElement();
    if (!node || !HasName(*node, m_steps.front())) return {};
    for (std::size_t step = 1; step < m_steps.size() && node; ++step)
        node = FindChild(*node, m_steps[step]);
    return node ? node->GetTextValue() : CXString();
}
