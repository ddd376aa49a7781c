#pragma once

#include <DataAccess/IPrintTicketAccess.h>

#include <map>
#include <set>
#include <stdexcept>
#include <string>

/// A ticket of a few texts.
class FakePrintTicketAccess : public IPrintTicketAccess {
public:
    std::set<std::wstring> supported;
    std::map<std::wstring, std::wstring> options;
    std::map<std::wstring, std::vector<std::wstring>> offeredOptions;
    std::map<std::wstring, std::wstring> strings;
    std::map<std::wstring, int> integers;
    std::string publicSettings;
    bool isReadOnly = false;
    bool fails = false; // at every question for an option
    mutable int settingsReads = 0;

    /// A supported feature with an option.
    void Choose(const std::wstring& feature, const std::wstring& option) {
        supported.insert(feature);
        options[feature] = option;
    }

    bool IsSupportedPrintTicketFeature(const CXString& feature) const override {
        return supported.contains(std::wstring(feature.View()));
    }
    void GetFeatureDisplayName(const CXString&, CXString& out) const override { out.Empty(); }
    void GetRangeCapability(const CXString&, std::pair<int, int>&) const override {}
    void GetCapabilitiesOptionFeature(const CXString& feature,
                                      std::vector<OptionCapability>& out) const override {
        out.clear();
        const auto found = offeredOptions.find(std::wstring(feature.View()));
        if (found == offeredOptions.end()) return;
        for (const std::wstring& name : found->second)
            out.emplace_back(name.c_str(), CXString(), KeywordsNamespace, CXString(), ConstrainedNone);
    }
    void GetCapabilitiesMediaSizeFeature(const CXString&,
                                         std::vector<MediaSizeCapability>& out) const override {
        out.clear();
    }
    void GetCurrentValueOptionFeature(const CXString& feature, CXString& value) const override {
        if (fails) throw std::runtime_error("the ticket cannot be read");
        value = Get(options, feature).c_str();
    }
    void GetCurrentValueMediaSizeFeature(const CXString& feature, CXString& option, Dimension& width,
                                         Dimension& height) const override {
        option = Get(options, feature).c_str();
        width = Dimension(0, Dimension::Micron);
        height = Dimension(0, Dimension::Micron);
    }
    int GetCurrentValueIntegerFeature(const CXString& feature) const override {
        return Get(integers, feature);
    }
    void GetCurrentValueStringFeature(const CXString& feature, CXString& value) const override {
        const auto number = integers.find(std::wstring(feature.View()));
        value = (number != integers.end() ? std::to_wstring(number->second) : Get(strings, feature)).c_str();
    }
    void GetCurrentValueJobSimpleSecurePrintPassword(CXString& password) const override { password.Empty(); }
    void GetCurrentValueBase64EncodedCompleteDocSettings(CXString& text) const override { text.Empty(); }
    void GetJobOrvelPublicDocSettingsXml(CPString& xml) const override {
        ++settingsReads;
        xml = publicSettings.c_str();
    }

    void SetJobOrvelPublicDocSettingsXml(const CPString& xml) override {
        if (!isReadOnly) publicSettings = xml.utf8Bytes();
    }
    void SetCurrentValueIntegerFeature(const CXString& feature, int value) override {
        integers[std::wstring(feature.View())] = value;
    }
    void SetCurrentValueStringFeature(const CXString& feature, const CXString& value) override {
        strings[std::wstring(feature.View())] = value.View();
    }
    void SetCurrentValueOptionFeature(const CXString& feature, const CXString& value) override {
        options[std::wstring(feature.View())] = value.View();
    }
    void SetCurrentValueMediaSizeFeature(const CXString& feature, const CXString& option, int, int) override {
        SetCurrentValueOptionFeature(feature, option);
    }
    void SetCurrentValueBase64EncodedCompleteDocSettings(const CXString&) override {}
    void CommitPrintTicketChanges() override {}
    void RemoveSecurePrintFeature() override {}
    CPString GetPrintTicketImplementationNameForDebug() const override { return "FakePrintTicketAccess"; }
    void GetPrintTicketAsXmlString(CPString& out, bool) const override { out.clear(); }
    void GetPrintCapabilitiesAsXmlString(CPString& out, bool) const override { out.clear(); }

private:
    template <typename Value>
    static Value Get(const std::map<std::wstring, Value>& values, const CXString& feature) {
        const auto found = values.find(std::wstring(feature.View()));
        return found == values.end() ? Value() : found->second;
    }
};
