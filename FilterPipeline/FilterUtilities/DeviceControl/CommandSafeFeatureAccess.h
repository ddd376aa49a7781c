#pragma once

#include "ComSupport/FilterUtilitiesExport.h"
#include "FeatureAccess/ForwardedFeatureAccess.h"

#include <functional>
#include <string>
#include <vector>

/// Answers as another access does, but for texts, names and passwords that could end a command for the
/// device: these come with blanks in the place of what does it. It stands where a program takes a job's texts
/// in and hands them to the instruction generators, which write them as they are.
class OV_FILTER_UTILITIES_API CommandSafeFeatureAccess final : public ForwardedFeatureAccess {
public:
    /// Told once for each text that had to be changed, with what it is ("FEAT_JOB_NAME", "the user's name").
    using OnChange = std::function<void(const std::string& what)>;

    /// The access must outlive this object.
    CommandSafeFeatureAccess(IFilterFeatureAccess& access, OnChange onChange);
    ~CommandSafeFeatureAccess() override;

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

    OnChange m_onChange;
    mutable std::vector<std::string> m_told;
};
