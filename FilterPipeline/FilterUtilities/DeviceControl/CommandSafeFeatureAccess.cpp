#include "DeviceControl/CommandSafeFeatureAccess.h"

#include "DataModel/FeatureNameTable.h"
#include "DeviceControl/CommandSafeText.h"

#include <algorithm>

namespace {

std::string NameOf(DataModelIds::tagFeatureEnum feature) {
    const char* const name = FindFeatureName(feature);
    return name != nullptr ? name : "feature " + std::to_string(feature);
}

} // namespace

CommandSafeFeatureAccess::CommandSafeFeatureAccess(IFilterFeatureAccess& access, const DeviceFamily& family,
                                                   OnChange onChange)
    : ForwardedFeatureAccess(access), m_family(family), m_onChange(std::move(onChange)) {}

CommandSafeFeatureAccess::~CommandSafeFeatureAccess() = default;

std::string CommandSafeFeatureAccess::Warning(const std::string& what) {
    return what + " holds characters that would end a command of the device: they are blanks in what it gets";
}

void CommandSafeFeatureAccess::Clean(CXString& text, const std::string& what) const {
    if (!CommandSafeText::Clean(text) || std::ranges::find(m_told, what) != m_told.end()) return;
    m_told.push_back(what);
    if (m_onChange) m_onChange(what);
}

CXString CommandSafeFeatureAccess::Cleaned(CXString text, const char* what) const {
    Clean(text, what);
    return text;
}

bool CommandSafeFeatureAccess::CleanText(bool isSpecified, tagFeatureEnum feature, CXString& text) const {
    if (isSpecified) Clean(text, NameOf(feature));
    return isSpecified;
}

// The number of a card stands as it is in each family that writes one.
bool CommandSafeFeatureAccess::CleanPassword(bool isSpecified, tagFeatureEnum feature,
                                             ByteBuffer& password) const {
    const bool isPlain = m_family.writesPlainPasswords || feature == DataModelIds::FEAT_FAX_CREDIT_CARD;
    if (!isSpecified || !isPlain) return isSpecified;
    CXString text = password.getAsCXStringFromUtf8Buffer();
    Clean(text, NameOf(feature));
    password.clear();
    password.appendAsUtf8(text);
    return true;
}

CXString CommandSafeFeatureAccess::GetPrintJobDocumentName() const {
    return Cleaned(Access().GetPrintJobDocumentName(), "the document's name");
}

CXString CommandSafeFeatureAccess::GetPrintJobUserName() const {
    return Cleaned(Access().GetPrintJobUserName(), "the user's name");
}

CXString CommandSafeFeatureAccess::GetPrintJobUserDomainName() const {
    return Cleaned(Access().GetPrintJobUserDomainName(), "the user's domain");
}

bool CommandSafeFeatureAccess::GetUnencodedPassword(ByteBuffer& password, tagFeatureEnum grandparent,
                                                    tagFeatureEnum parent, tagFeatureEnum feature) const {
    return CleanPassword(Access().GetUnencodedPassword(password, grandparent, parent, feature), feature,
                         password);
}

bool CommandSafeFeatureAccess::GetUnencodedPassword(ByteBuffer& password, tagFeatureEnum feature) const {
    return CleanPassword(Access().GetUnencodedPassword(password, feature), feature, password);
}

bool CommandSafeFeatureAccess::GetStringValue(tagFeatureEnum grandparent, tagFeatureEnum parent,
                                              unsigned int index, tagFeatureEnum feature,
                                              CXString& value) const {
    return CleanText(Access().GetStringValue(grandparent, parent, index, feature, value), feature, value);
}

bool CommandSafeFeatureAccess::GetStringValue(tagFeatureEnum grandparent, tagFeatureEnum parent,
                                              tagFeatureEnum feature, CXString& value) const {
    return CleanText(Access().GetStringValue(grandparent, parent, feature, value), feature, value);
}

bool CommandSafeFeatureAccess::GetStringValue(tagFeatureEnum parent, tagFeatureEnum feature,
                                              CXString& value) const {
    return CleanText(Access().GetStringValue(parent, feature, value), feature, value);
}

bool CommandSafeFeatureAccess::GetStringValue(tagFeatureEnum parent, unsigned int index,
                                              tagFeatureEnum feature, CXString& value) const {
    return CleanText(Access().GetStringValue(parent, index, feature, value), feature, value);
}

bool CommandSafeFeatureAccess::GetStringValue(tagFeatureEnum feature, CXString& value) const {
    return CleanText(Access().GetStringValue(feature, value), feature, value);
}
