#pragma once

#include "FilterUtilities/FeatureAccess/FakePrintTicketAccess.h"
#include "Support/NoDisplayHelp.h"

#include <AttributeStore/AttributeBytesIndexedList.h>
#include <ComSupport/MsSafeCoinit.h>
#include <DataModel/NativeXmlConfigFeatureDictionary.h>
#include <DeviceDescription/SimpleOcapParser.h>
#include <EmbeddedSettings/PrintTicketAttributeBytesReaderWriter.h>
#include <FeatureAccess/DataModelLessFeatureAccess.h>

#include <gtest/gtest.h>

#include <memory>
#include <optional>

/// A feature of a device's capabilities.
struct OfferedFeature {
    std::string name;
    std::vector<std::string> values = {};
    bool isRequired = false;
    std::string factoryDefault = {};
    std::vector<OfferedFeature> members = {};
    bool isInteger = false;
};

inline std::string DeviceDocument(const std::vector<OfferedFeature>& features) {
    std::string text;
    for (const OfferedFeature& feature : features) {
        const std::string element = feature.isInteger         ? "Integer"
                                    : feature.members.empty() ? "Option"
                                                              : "Collection";
        text += "<" + element + " name='" + feature.name + "'";
        if (feature.isRequired) text += " required='true'";
        if (!feature.factoryDefault.empty()) text += " default='" + feature.factoryDefault + "'";
        text += ">";
        if (feature.isInteger) {
            text += "</" + element + ">";
            continue;
        }
        std::set<std::string> values(feature.values.begin(), feature.values.end());
        if (!feature.factoryDefault.empty()) values.insert(feature.factoryDefault);
        if (values.empty() && feature.members.empty()) values.insert("an-option-has-some-value");
        // The device's order counts.
        for (const std::string& value : feature.values)
            if (values.erase(value) != 0) text += "<Value name='" + value + "'/>";
        for (const std::string& value : values)
            text += "<Value name='" + value + "'/>";
        text += DeviceDocument(feature.members) + "</" + element + ">";
    }
    return text;
}

/// What the places say of a feature, where they say anything.
struct Given {
    std::optional<std::wstring> option = {}; // of the ticket, which then supports the feature
    std::optional<std::string> text = {};    // of the element in the document settings
    std::string mark = {};                   // on that
    std::optional<AttributeBytesValue> attribute = {};
    std::optional<std::string> required = {}; // the factory default of a feature that the device requires
};

/// A job from its four places. What is put into the places counts until the first question.
class JobUnderTest {
public:
    enum class Kind { OfJob, OfJobWithAttributeBytes, OutsideJob };

    FakePrintTicketAccess ticket;
    std::vector<OfferedFeature> device;
    PrintTicketAttributeBytesReaderWriter attributeBytes{NoDisplayHelp()};
    Kind kind = Kind::OfJobWithAttributeBytes;
    Dimension outputWidth{8.5, Dimension::Inch};
    Dimension outputHeight{11, Dimension::Inch};

    /// An element of the public document settings.
    void AddElement(const std::string& name, const std::string& text, const std::string& attributes = {}) {
        m_elements += "<" + name + " " + attributes + ">" + text + "</" + name + ">";
        ticket.publicSettings = "<OrvelPublicDocSettings>" + m_elements + "</OrvelPublicDocSettings>";
    }
    void AddAttribute(DataModelIds::tagFeatureEnum feature, const AttributeBytesValue& value) {
        attributeBytes.GetAttributeBytesIndexedListRef().AddAttributeBytes(
            AttributeBytes(AttributeBytesFeatureId(feature), value));
    }

    void Put(DataModelIds::tagFeatureEnum feature, const Given& given) {
        const auto& names = NativeXmlConfigFeatureDictionary::Instance()->GetEntry(feature);
        const std::string name(names.cpssFeatureName.view());
        if (given.option) ticket.Choose(std::wstring(names.printTicketFeatureName.View()), *given.option);
        if (given.text) AddElement(name, *given.text, given.mark);
        if (given.attribute) AddAttribute(feature, *given.attribute);
        if (given.required) device.push_back({name, {}, true, *given.required});
    }

    DataModelLessFeatureAccess& Access() {
        if (m_access) return *m_access;
        m_capabilities.emplace(
            CPString(("<DeviceCapabilities version='1.0'>" + DeviceDocument(device) + "</DeviceCapabilities>")
                         .c_str()));
        switch (kind) {
        case Kind::OfJob:
            m_access.emplace(L"document", L"user", L"domain", nullptr, outputWidth, outputHeight,
                             *m_capabilities, ticket);
            break;
        case Kind::OfJobWithAttributeBytes:
            m_access.emplace(L"document", L"user", L"domain", nullptr, outputWidth, outputHeight,
                             *m_capabilities, ticket, attributeBytes);
            break;
        case Kind::OutsideJob:
            m_access.emplace(*m_capabilities, ticket, &attributeBytes);
            break;
        }
        return *m_access;
    }

private:
    MsSafeCoInit m_apartment;
    std::string m_elements;
    std::optional<SimpleOcapParser> m_capabilities;
    std::optional<DataModelLessFeatureAccess> m_access;
};

/// An option's value with the place that decided.
struct Answered {
    bool isSpecified = false;
    int value = DataModelIds::VAL_UNSPECIFIED;
    FeatureValueSource source = FeatureValueSource::None;

    bool operator==(const Answered&) const = default;
};

inline std::ostream& operator<<(std::ostream& out, const Answered& answer) {
    static constexpr const char* sources[] = {"nobody",          "the ticket",  "the document settings",
                                              "attribute bytes", "the factory", "a rule"};
    return out << (answer.isSpecified ? "specified " : "unspecified ") << answer.value << " by "
               << sources[static_cast<std::size_t>(answer.source)];
}

inline const Answered nothing;
inline Answered By(FeatureValueSource source, int value) { return {true, value, source}; }
inline Answered UnspecifiedBy(FeatureValueSource source, int value = DataModelIds::VAL_UNSPECIFIED) {
    return {false, value, source};
}

inline Answered Ask(JobUnderTest& job, DataModelIds::tagFeatureEnum feature) {
    FeatureValueSource source{};
    const SimpleOptionValue value = job.Access().GetOptionValue(feature, source);
    EXPECT_EQ(value, job.Access().GetOptionValue(feature));
    return {value.IsSpecified(), value.GetValue(), source};
}
