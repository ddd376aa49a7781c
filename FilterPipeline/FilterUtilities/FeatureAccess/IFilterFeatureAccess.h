#pragma once

#include "DataModel/FeatureIds.h"
#include "DataModel/SimpleOptionValue.h"

#include <LowLevelFacilities/Numbers/Dimension.h>
#include <LowLevelFacilities/Strings/CPString.h>
#include <LowLevelFacilities/WideStrings/ByteBuffer.h>
#include <LowLevelFacilities/WideStrings/CXString.h>
#include <SystemServices/UtcTime.h>

/// What a job asks for, by feature. The answer of a getter with a result argument tells whether the value is
/// specified; a value that no one stated is no failure. Where an operation takes several features, the last
/// is the one asked for and those before it are the collections that hold it, an index between them chooses
/// an entry of a collection. The order of the operations is part of the interface. One thread at a time.
class IFilterFeatureAccess {
protected:
    using tagFeatureEnum = DataModelIds::tagFeatureEnum;

public:
    virtual ~IFilterFeatureAccess() = default;

    /// Whether the device or its print capabilities know the feature.
    [[nodiscard]] virtual bool IsSupportedFeature(tagFeatureEnum grandparent, tagFeatureEnum parent,
                                                  tagFeatureEnum feature) const = 0;
    [[nodiscard]] virtual bool IsSupportedFeature(tagFeatureEnum parent, tagFeatureEnum feature) const = 0;
    [[nodiscard]] virtual bool IsSupportedFeature(tagFeatureEnum feature) const = 0;

    [[nodiscard]] virtual CXString GetPrintJobDocumentName() const = 0;
    [[nodiscard]] virtual CXString GetPrintJobUserName() const = 0;
    [[nodiscard]] virtual CXString GetPrintJobUserDomainName() const = 0;

    /// As UTF-8.
    virtual bool GetUnencodedPassword(ByteBuffer& password, tagFeatureEnum grandparent, tagFeatureEnum parent,
                                      tagFeatureEnum feature) const = 0;
    virtual bool GetUnencodedPassword(ByteBuffer& password, tagFeatureEnum feature) const = 0;

    virtual bool GetDimensionValue(tagFeatureEnum feature, Dimension& value) const = 0;

    virtual bool GetIntegerValue(tagFeatureEnum grandparent, tagFeatureEnum parent, unsigned int index,
                                 tagFeatureEnum feature, int& value) const = 0;
    virtual bool GetIntegerValue(tagFeatureEnum grandparent, tagFeatureEnum parent, tagFeatureEnum feature,
                                 int& value) const = 0;
    virtual bool GetIntegerValue(tagFeatureEnum parent, tagFeatureEnum feature, int& value) const = 0;
    virtual bool GetIntegerValue(tagFeatureEnum feature, int& value) const = 0;

    virtual bool GetStringValue(tagFeatureEnum grandparent, tagFeatureEnum parent, unsigned int index,
                                tagFeatureEnum feature, CXString& value) const = 0;
    virtual bool GetStringValue(tagFeatureEnum grandparent, tagFeatureEnum parent, tagFeatureEnum feature,
                                CXString& value) const = 0;
    virtual bool GetStringValue(tagFeatureEnum parent, tagFeatureEnum feature, CXString& value) const = 0;
    virtual bool GetStringValue(tagFeatureEnum parent, unsigned int index, tagFeatureEnum feature,
                                CXString& value) const = 0;
    virtual bool GetStringValue(tagFeatureEnum feature, CXString& value) const = 0;

    [[nodiscard]] virtual SimpleOptionValue GetOptionValue(tagFeatureEnum feature) const = 0;
    [[nodiscard]] virtual SimpleOptionValue GetOptionValueWithContext(tagFeatureEnum grandparent,
                                                                      tagFeatureEnum parent,
                                                                      tagFeatureEnum feature) const = 0;
    [[nodiscard]] virtual SimpleOptionValue GetOptionValueWithContext(tagFeatureEnum parent,
                                                                      tagFeatureEnum feature) const = 0;

    virtual bool GetBooleanValue(tagFeatureEnum feature, bool& value) const = 0;

    virtual bool GetDateTimeValue(tagFeatureEnum parent, tagFeatureEnum feature, UtcTime& value) const = 0;
    virtual bool GetDateTimeValue(tagFeatureEnum feature, UtcTime& value) const = 0;

    [[nodiscard]] virtual bool IsCollectionSpecified(tagFeatureEnum grandparent, tagFeatureEnum parent,
                                                     tagFeatureEnum feature) const = 0;
    [[nodiscard]] virtual bool IsCollectionSpecified(tagFeatureEnum parent, tagFeatureEnum feature) const = 0;
    [[nodiscard]] virtual bool IsCollectionSpecified(tagFeatureEnum feature) const = 0;

    virtual bool GetBytesValue(tagFeatureEnum grandparent, tagFeatureEnum parent, tagFeatureEnum feature,
                               ByteBuffer& value) const = 0;
    virtual bool GetBytesValue(tagFeatureEnum parent, tagFeatureEnum feature, ByteBuffer& value) const = 0;
    virtual bool GetBytesValue(tagFeatureEnum feature, ByteBuffer& value) const = 0;

    /// The orientation of the sheet: that of the pages, turned where the layout of several pages on a sheet
    /// turns it.
    [[nodiscard]] virtual DataModelIds::tagValueEnum GetEffectiveOrientation() const = 0;

    virtual bool GetOutputSize(tagFeatureEnum feature, unsigned int index, Dimension& first,
                               Dimension& second) const = 0;
    virtual bool GetOutputSize(tagFeatureEnum feature, Dimension& first, Dimension& second) const = 0;
    virtual bool GetOutputSize(Dimension& first, Dimension& second) const = 0;

    [[nodiscard]] virtual unsigned int
    GetCountOfSpecified1SetOfCollectionElements(tagFeatureEnum parent, tagFeatureEnum feature) const = 0;
    [[nodiscard]] virtual unsigned int
    GetCountOfSpecified1SetOfCollectionElements(tagFeatureEnum feature) const = 0;

    // What the device does when nobody says anything. They throw CPExceptionUnknownKeyRequest for a feature
    // that the dictionary does not have.
    [[nodiscard]] virtual SimpleOptionValue GetFactoryDefaultOptionValue(tagFeatureEnum feature) const = 0;
    virtual bool GetFactoryDefaultIntegerValue(tagFeatureEnum feature, int& value) const = 0;
    virtual bool GetFactoryDefaultDimensionValue(tagFeatureEnum feature, Dimension& value) const = 0;

    virtual void SetStringValue(tagFeatureEnum feature, const CXString& text, bool isSpecified) = 0;
    virtual void SetOptionValue(tagFeatureEnum feature, const SimpleOptionValue& value) = 0;

    [[nodiscard]] virtual CPString GetDumpDisplayString(const SimpleOptionValue& value) const = 0;
};
