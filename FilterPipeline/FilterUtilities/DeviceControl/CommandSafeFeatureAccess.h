#pragma once

#include "ComSupport/FilterUtilitiesExport.h"
#include "DeviceControl/DeviceFamily.h"
#include "FeatureAccess/ForwardedFeatureAccess.h"

#include <functional>
#include <string>
#include <vector>

/// Answers as another access does, but for texts and names that could end a command for the device: these
/// come with blanks in the place of what does it, and so do passwords that the family writes as they are. One
/// that is scrambled first stays what its user types at the device. The access stands where a program takes a
/// job's texts in and hands them to the instruction generators, which write them as they are.
class OV_FILTER_UTILITIES_API CommandSafeFeatureAccess final : public ForwardedFeatureAccess {
public:
    /// Told once for each text that had to be changed, with what it is ("FEAT_JOB_NAME", "the user's name").
    using OnChange = std::function<void(const std::string& what)>;

    /// Access and family must outlive this object.
    CommandSafeFeatureAccess(IFilterFeatureAccess& access, const DeviceFamily& family, OnChange onChange);
    ~CommandSafeFeatureAccess() override;

    /// What a program says of such a text.
    [[nodiscard]] static std::string Warning(const std::string& what);

    [[nodiscard]] CXString GetPrintJobDocumentName() const override;
    [[nodiscard]] CXString GetPrintJobUserName() const override;
    [[nodiscard]] CXString GetPrintJobUserDomainName() const override;
    bool GetUnencodedPassword(ByteBuffer& password, tagFeatureEnum grandparent, tagFeatureEnum parent,
                              tagFeatureEnum feature) const override;
    bool GetUnencodedPassword(ByteBuffer& password, tagFeatureEnum feature) const override;
    bool GetStringValue(tagFeatureEnum grandparent, tagFeatureEnum parent, unsigned int index,
                        tagFeatureEnum feature, CXString& value) const override;
    bool GetStringValue(tagFeatureEnum grandparent, tagFeatureEnum parent, tagFeatureEnum feature,
                        CXString& value) const override;
    bool GetStringValue(tagFeatureEnum parent, tagFeatureEnum feature, CXString& value) const override;
    bool GetStringValue(tagFeatureEnum parent, unsigned int index, tagFeatureEnum feature,
                        CXString& value) const override;
    bool GetStringValue(tagFeatureEnum feature, CXString& value) const override;

private:
    void Clean(CXString& text, const std::string& what) const;
    [[nodiscard]] CXString Cleaned(CXString text, const char* what) const;
    [[nodiscard]] bool CleanText(bool isSpecified, tagFeatureEnum feature, CXString& text) const;
    [[nodiscard]] bool CleanPassword(bool isSpecified, tagFeatureEnum feature, ByteBuffer& password) const;

    const DeviceFamily& m_family;
    OnChange m_onChange;
    mutable std::vector<std::string> m_told;
};
