#pragma once

#include "ComSupport/FilterUtilitiesExport.h"
#include "FeatureAccess/IFilterFeatureAccess.h"

/// Answers everything as another access does: the base of those that change or note some of the answers.
class OV_FILTER_UTILITIES_API ForwardedFeatureAccess : public IFilterFeatureAccess {
public:
    /// The access must outlive this object.
    explicit ForwardedFeatureAccess(IFilterFeatureAccess& access);
    ForwardedFeatureAccess(const ForwardedFeatureAccess&) = delete;
    ForwardedFeatureAccess& operator=(const ForwardedFeatureAccess&) = delete;
    ~ForwardedFeatureAccess() override;

    [[nodiscard]] bool IsSupportedFeature(tagFeatureEnum grandparent, tagFeatureEnum parent,
                                          tagFeatureEnum feature) const override;
    [[nodiscard]] bool IsSupportedFeature(tagFeatureEnum parent, tagFeatureEnum feature) const override;
    [[nodiscard]] bool IsSupportedFeature(tagFeatureEnum feature) const override;
    [[nodiscard]] CXString GetPrintJobDocumentName() const override;
    [[nodiscard]] CXString GetPrintJobUserName() const override;
    [[nodiscard]] CXString GetPrintJobUserDomainName() const override;
    bool GetUnencodedPassword(ByteBuffer& password, tagFeatureEnum grandparent, tagFeatureEnum parent,
                              tagFeatureEnum feature) const override;
    bool GetUnencodedPassword(ByteBuffer& password, tagFeatureEnum feature) const override;
    bool GetDimensionValue(tagFeatureEnum feature, Dimension& value) const override;
    bool GetIntegerValue(tagFeatureEnum grandparent, tagFeatureEnum parent, unsigned int index,
                         tagFeatureEnum feature, int& value) const override;
    bool GetIntegerValue(tagFeatureEnum grandparent, tagFeatureEnum parent, tagFeatureEnum feature,
                         int& value) const override;
    bool GetIntegerValue(tagFeatureEnum parent, tagFeatureEnum feature, int& value) const override;
    bool GetIntegerValue(tagFeatureEnum feature, int& value) const override;
    bool GetStringValue(tagFeatureEnum grandparent, tagFeatureEnum parent, unsigned int index,
                        tagFeatureEnum feature, CXString& value) const override;
    bool GetStringValue(tagFeatureEnum grandparent, tagFeatureEnum parent, tagFeatureEnum feature,
                        CXString& value) const override;
    bool GetStringValue(tagFeatureEnum parent, tagFeatureEnum feature, CXString& value) const override;
    bool GetStringValue(tagFeatureEnum parent, unsigned int index, tagFeatureEnum feature,
                        CXString& value) const override;
    bool GetStringValue(tagFeatureEnum feature, CXString& value) const override;
    [[nodiscard]] SimpleOptionValue GetOptionValue(tagFeatureEnum feature) const override;
    [[nodiscard]] SimpleOptionValue GetOptionValueWithContext(tagFeatureEnum grandparent,
                                                              tagFeatureEnum parent,
                                                              tagFeatureEnum feature) const override;
    [[nodiscard]] SimpleOptionValue GetOptionValueWithContext(tagFeatureEnum parent,
                                                              tagFeatureEnum feature) const override;
    bool GetBooleanValue(tagFeatureEnum feature, bool& value) const override;
    bool GetDateTimeValue(tagFeatureEnum parent, tagFeatureEnum feature, UtcTime& value) const override;
    bool GetDateTimeValue(tagFeatureEnum feature, UtcTime& value) const override;
    [[nodiscard]] bool IsCollectionSpecified(tagFeatureEnum grandparent, tagFeatureEnum parent,
                                             tagFeatureEnum feature) const override;
    [[nodiscard]] bool IsCollectionSpecified(tagFeatureEnum parent, tagFeatureEnum feature) const override;
    [[nodiscard]] bool IsCollectionSpecified(tagFeatureEnum feature) const override;
    bool GetBytesValue(tagFeatureEnum grandparent, tagFeatureEnum parent, tagFeatureEnum feature,
                       ByteBuffer& value) const override;
    bool GetBytesValue(tagFeatureEnum parent, tagFeatureEnum feature, ByteBuffer& value) const override;
    bool GetBytesValue(tagFeatureEnum feature, ByteBuffer& value) const override;
    [[nodiscard]] DataModelIds::tagValueEnum GetEffectiveOrientation() const override;
    bool GetOutputSize(tagFeatureEnum feature, unsigned int index, Dimension& first,
                       Dimension& second) const override;
    bool GetOutputSize(tagFeatureEnum feature, Dimension& first, Dimension& second) const override;
    bool GetOutputSize(Dimension& first, Dimension& second) const override;
    [[nodiscard]] unsigned int
    GetCountOfSpecified1SetOfCollectionElements(tagFeatureEnum parent, tagFeatureEnum feature) const override;
    [[nodiscard]] unsigned int
    GetCountOfSpecified1SetOfCollectionElements(tagFeatureEnum feature) const override;
    [[nodiscard]] SimpleOptionValue GetFactoryDefaultOptionValue(tagFeatureEnum feature) const override;
    bool GetFactoryDefaultIntegerValue(tagFeatureEnum feature, int& value) const override;
    bool GetFactoryDefaultDimensionValue(tagFeatureEnum feature, Dimension& value) const override;
    void SetStringValue(tagFeatureEnum feature, const CXString& text, bool isSpecified) override;
    void SetOptionValue(tagFeatureEnum feature, const SimpleOptionValue& value) override;
    [[nodiscard]] CPString GetDumpDisplayString(const SimpleOptionValue& value) const override;

protected:
    [[nodiscard]] IFilterFeatureAccess& Access() const { return m_access; }

private:
    IFilterFeatureAccess& m_access;
};
