#include "DataModelLessFeatureAccess.h"

#include <DataModel/NativeXmlConfigFeatureDictionary.h>
#include <DeviceDescription/IPrintTicketAccess.h>
#include <DeviceDescription/SimpleOcapParser.h>
#include <Encryption/DataEncrypter.h>
#include <LowLevelFacilities/CPException.h>
#include <SystemServices/Printer.h>
#include <Xml/MicrosoftXmlParser.h>

#include <algorithm>
#include <iterator>

using namespace DataModelIds;

namespace {

constexpr tagFeatureEnum integersOfAttributeBytes[] = {
    FEAT_LIGHTNESS,
    FEAT_CONTRAST,
    FEAT_SATURATION,
    FEAT_COLORBALANCE_CYAN_RED,
    FEAT_COLORBALANCE_MAGENTA_GREEN,
    FEAT_COLORBALANCE_YELLOW_BLUE,
};

constexpr tagFeatureEnum stringsOfDocumentOrAttributeBytes[] = {
    FEAT_CREATOR_VERSION_ATTRIBUTES, FEAT_CREATOR_NAME_PDL,    FEAT_CREATOR_VERSION_PDL,
    FEAT_CURRENT_USER_NAME,          FEAT_CURRENT_USER_DOMAIN,
};

template <std::size_t Count>
bool Contains(const tagFeatureEnum (&features)[Count], tagFeatureEnum feature) {
    return std::find(std::begin(features), std::end(features), feature) != std::end(features);
}

int Rounded(const Number& number) { return number.GetIntValue(0.499999); } // to nearest

} // namespace

// ---- What the caller of the constructor knows

CXString DataModelLessFeatureAccess::GetPrintJobDocumentName() const { return m_documentName; }

CXString DataModelLessFeatureAccess::GetPrintJobUserName() const { return m_userName; }

CXString DataModelLessFeatureAccess::GetPrintJobUserDomainName() const { return m_userDomainName; }

bool DataModelLessFeatureAccess::GetBooleanValue(tagFeatureEnum feature, bool& value) const {
    value = false;
    if (feature != FEAT_START_SHEET_FROM_APPLICATION) return false;
    value = Printer(m_printer).IsMSSeparatorPageSelected();
    return true;
}

// ---- Integers and dimensions

bool DataModelLessFeatureAccess::GetIntegerValue(tagFeatureEnum feature, int& value) const {
    FeatureValueSource source{};
    return GetIntegerValue(feature, value, source);
}

bool DataModelLessFeatureAccess::GetIntegerValue(tagFeatureEnum feature, int& value,
                                                 FeatureValueSource& source) const {
    value = 0;
    source = FeatureValueSource::None;
    if (feature == FEAT_COPIES) {
        if (!IsSupportedFeature(feature)) return false;
        value = m_ticket.GetCurrentValueIntegerFeature(GetFeaturePrintTicketName(feature));
        source = FeatureValueSource::PrintTicket;
        return true;
    }
    if (!Contains(integersOfAttributeBytes, feature) || !IsSupportedFeature(feature)) return false;
    bool isSpecified = false;
    value = TryGetIntegerValueFromAttributeBytesIfExists(feature, isSpecified);
    const bool hadValue = isSpecified || value != 0;
    if (hadValue) source = FeatureValueSource::AttributeBytes;
    if (EnforceRequiredIntegerFeatureIfNecessary(feature, value, isSpecified) && !hadValue)
        source = FeatureValueSource::FactoryDefault;
    return isSpecified;
}

bool DataModelLessFeatureAccess::GetIntegerValue(tagFeatureEnum parent, tagFeatureEnum feature,
                                                 int& value) const {
    FeatureValueSource source{};
    return GetIntegerValue(parent, feature, value, source);
}

bool DataModelLessFeatureAccess::GetIntegerValue(tagFeatureEnum parent, tagFeatureEnum feature, int& value,
                                                 FeatureValueSource& source) const {
    if (parent == FEAT_WHOLE_JOB) return GetIntegerValue(feature, value, source);
    value = 0;
    source = FeatureValueSource::None;
    if (parent != FEAT_MEDIA_COL || feature != FEAT_MEDIA_WEIGHT) return false;
    bool isSpecified = false;
    CXString text;
    if (GetCurrentValueAsStringForOrvelPublicDocSettingsFeature(GetFeatureCpssName(feature), isSpecified,
                                                                text) == S_OK) {
        if (isSpecified) value = Rounded(Number(text, false));
        source = FeatureValueSource::PublicDocumentSettings;
        return isSpecified;
    }
    value = TryGetIntegerValueFromAttributeBytesIfExists(parent, feature, isSpecified);
    if (isSpecified || value != 0) source = FeatureValueSource::AttributeBytes;
    return isSpecified;
}

bool DataModelLessFeatureAccess::GetIntegerValue(tagFeatureEnum, tagFeatureEnum, tagFeatureEnum,
                                                 int& value) const {
    value = 0;
    return false;
}

bool DataModelLessFeatureAccess::GetIntegerValue(tagFeatureEnum, tagFeatureEnum, unsigned int, tagFeatureEnum,
                                                 int& value) const {
    value = 0;
    return false;
}

bool DataModelLessFeatureAccess::GetDimensionValue(tagFeatureEnum feature, Dimension& value) const {
    FeatureValueSource source{};
    return GetDimensionValue(feature, value, source);
}

bool DataModelLessFeatureAccess::GetDimensionValue(tagFeatureEnum feature, Dimension& value,
                                                   FeatureValueSource& source) const {
    value = Dimension();
    source = FeatureValueSource::None;
    if (!IsSupportedFeature(feature)) return false;
    bool isSpecified = false;
    value = TryGetDimensionValueFromAttributeBytesIfExists(feature, isSpecified);
    const bool hadValue = isSpecified || !(value.GetValue() == Number(0));
    if (hadValue) source = FeatureValueSource::AttributeBytes;
    if (EnforceRequiredDimensionFeatureIfNecessary(feature, value, isSpecified) && !hadValue)
        source = FeatureValueSource::FactoryDefault;
    return isSpecified;
}

// ---- Required features, and what the factory set

bool DataModelLessFeatureAccess::EnforceRequiredIntegerFeatureIfNecessary(tagFeatureEnum feature, int& value,
                                                                          bool& isSpecified) const {
    if (!MustEnforce(feature, isSpecified)) return false;
    if (value == 0) GetFactoryDefaultIntegerValue(feature, value);
    isSpecified = true;
    return true;
}

bool DataModelLessFeatureAccess::EnforceRequiredDimensionFeatureIfNecessary(tagFeatureEnum feature,
                                                                            Dimension& value,
                                                                            bool& isSpecified) const {
    if (!MustEnforce(feature, isSpecified)) return false;
    if (value.GetValue() == Number(0)) GetFactoryDefaultDimensionValue(feature, value);
    isSpecified = true;
    return true;
}

bool DataModelLessFeatureAccess::GetFactoryDefaultIntegerValue(tagFeatureEnum feature, int& value) const {
    bool isThere = false;
    value = m_capabilities.GetFactoryDefaultValueAsInteger(
        m_featureDictionary->GetEntry(feature).cpssFeatureName, isThere, false);
    return isThere;
}

bool DataModelLessFeatureAccess::GetFactoryDefaultDimensionValue(tagFeatureEnum feature,
                                                                 Dimension& value) const {
    int length = 0;
    const bool isThere = GetFactoryDefaultIntegerValue(feature, length);
    value.SetValue(length, Dimension::HundredthOfMillimeter);
    return isThere;
}

// ---- Strings

bool DataModelLessFeatureAccess::GetStringValue(tagFeatureEnum feature, CXString& value) const {
    FeatureValueSource source{};
    return GetStringValue(feature, value, source);
}

bool DataModelLessFeatureAccess::GetStringValue(tagFeatureEnum feature, CXString& value,
                                                FeatureValueSource& source) const {
    value.Empty();
    source = FeatureValueSource::None;
    if (feature == FEAT_JOB_NAME) return GetJobName(value, source);
    if (feature == FEAT_MS_PIN_PRINTING_STRING) {
        m_ticket.GetCurrentValueStringFeature(GetFeaturePrintTicketName(feature), value);
        if (!value.IsEmpty()) source = FeatureValueSource::PrintTicket;
        return !value.IsEmpty();
    }
    return Contains(stringsOfDocumentOrAttributeBytes, feature) &&
           GetStringFromDocumentOrAttributeBytes(GetFeatureCpssName(feature), feature, value, source);
}

bool DataModelLessFeatureAccess::GetStringFromDocumentOrAttributeBytes(const CXString& cpssName,
                                                                       tagFeatureEnum feature,
                                                                       CXString& value,
                                                                       FeatureValueSource& source) const {
    bool isSpecified = false;
    if (GetCurrentValueAsStringForOrvelPublicDocSettingsFeature(cpssName, isSpecified, value) == S_OK) {
        source = FeatureValueSource::PublicDocumentSettings;
        return isSpecified;
    }
    value = TryGetStringValueFromAttributeBytesIfExists(feature, isSpecified);
    if (isSpecified || !value.IsEmpty()) source = FeatureValueSource::AttributeBytes;
    return isSpecified;
}

/// Deliberate: only a secure job has a name that its user chose; all others have that of the document.
bool DataModelLessFeatureAccess::GetJobName(CXString& name, FeatureValueSource& source) const {
    name = m_documentName;
    source = name.IsEmpty() ? FeatureValueSource::None : FeatureValueSource::Rule;
    CXString chosen;
    FeatureValueSource chosenSource{};
    // It has no name in the settings, so that only the attribute bytes can hold the text.
    const bool isChosen = GetStringFromDocumentOrAttributeBytes(GetFeatureCpssName(FEAT_SECURE_JOB_NAME),
                                                                FEAT_JOB_NAME, chosen, chosenSource);
    if (isChosen && !chosen.IsEmpty() &&
        GetOptionValue(FEAT_JOB_TYPE).GetValuePlusSpecifiedState() == VAL_JOB_TYPE_SECURE_PRINT) {
        name = chosen;
        source = chosenSource;
    }
    return !name.IsEmpty();
}

bool DataModelLessFeatureAccess::GetStringValue(tagFeatureEnum, tagFeatureEnum, unsigned int, tagFeatureEnum,
                                                CXString& value) const {
    value.Empty();
    return false;
}

bool DataModelLessFeatureAccess::GetStringValue(tagFeatureEnum, tagFeatureEnum, tagFeatureEnum,
                                                CXString& value) const {
    value.Empty();
    return false;
}

bool DataModelLessFeatureAccess::GetStringValue(tagFeatureEnum, tagFeatureEnum, CXString& value) const {
    value.Empty();
    return false;
}

bool DataModelLessFeatureAccess::GetStringValue(tagFeatureEnum, unsigned int, tagFeatureEnum,
                                                CXString& value) const {
    value.Empty();
    return false;
}

// ---- Passwords

bool DataModelLessFeatureAccess::GetUnencodedPassword(ByteBuffer&, tagFeatureEnum, tagFeatureEnum,
                                                      tagFeatureEnum) const {
    return false;
}

bool DataModelLessFeatureAccess::GetUnencodedPassword(ByteBuffer& password, tagFeatureEnum feature) const {
    if (feature != FEAT_JOB_PASSWORD) return false;
    password.clear();
    if (IsSupportedFeature(FEAT_MS_PIN_PRINTING_STRING)) {
        CXString pin;
        GetStringValue(FEAT_MS_PIN_PRINTING_STRING, pin);
        if (!pin.IsBlank()) {
            password.appendAsUtf8(pin);
            return true;
        }
    }
    bool isSpecified = false;
    CXString digits;
    if (GetCurrentValueAsStringForOrvelPublicDocSettingsFeature(GetFeatureCpssName(feature), isSpecified,
                                                                digits) != S_OK)
        return false;
    if (!isSpecified) digits.Empty();
    ByteBuffer scrambled;
    if (!ByteBuffer::ConvertHexBinaryStringToByteBuffer(digits, scrambled, true)) return false;
    try {
        password = DataEncrypter::DecryptStringWithOrvelSimple1(scrambled.getAsCXStringFromUtf8Buffer());
    } catch (const CPExceptionInvalidArgument&) {
        return false; // It was damaged on the way: no job is to wait for a password that nobody knows.
    }
    return isSpecified;
}

// ---- What no feature has

bool DataModelLessFeatureAccess::GetDateTimeValue(tagFeatureEnum, tagFeatureEnum, UtcTime& value) const {
    value = UtcTime();
    return false;
}

bool DataModelLessFeatureAccess::GetDateTimeValue(tagFeatureEnum, UtcTime& value) const {
    value = UtcTime();
    return false;
}

bool DataModelLessFeatureAccess::GetBytesValue(tagFeatureEnum, tagFeatureEnum, tagFeatureEnum,
                                               ByteBuffer&) const {
    return false;
}

bool DataModelLessFeatureAccess::GetBytesValue(tagFeatureEnum, tagFeatureEnum, ByteBuffer&) const {
    return false;
}

bool DataModelLessFeatureAccess::GetBytesValue(tagFeatureEnum, ByteBuffer&) const { return false; }
