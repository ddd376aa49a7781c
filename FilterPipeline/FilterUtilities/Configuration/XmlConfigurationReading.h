#pragma once

#include "ComSupport/FilterUtilitiesExport.h"
#include "Configuration/ElementLine.h"
#include "Configuration/NativeXmlConfigurationFeature.h"
#include "Configuration/SourceDataIntegratorInterfaces.h"

#include <LowLevelFacilities/Strings/CPString.h>
#include <Xml/XmlDomNode.h>

#include <map>
#include <optional>
#include <utility>
#include <vector>

/// One reading of an administrator's configuration (docs/formats/administrator-configuration.md): the
/// features up to the first fault, and what became of everything else. The feature set stands on it. An empty
/// text holds nothing, and no parser is made for it; any other needs a COM apartment.
class OV_FILTER_UTILITIES_API XmlConfigurationReading {
public:
    using Features = std::map<CPString, NativeXmlConfigurationFeature>;

    enum class Outcome {
        Taken,
        Repeated, // the first of that name counts
        Unknown,  // no feature of that name
        Faulty,   // where reading stopped
        Lost,     // stands behind the fault
    };
    /// An element of the configuration: a feature by its name, anything else as "<name>".
    struct Element {
        CPString name;
        Outcome outcome;
    };
    struct Fault {
        /// What is wrong, in words.
        CPString message;
        /// True where it is XML that is not a configuration; false where it is no XML, or could not be read.
        bool isInContent = false;
        /// Counted from 1, in the text that was read; 0 where it cannot be told. That of an element is the
        /// one on which its start tag ends.
        int line = 0;
    };

    /// Reads the text. The integrator, which may be null, gets it once it has turned out to be XML. Throws
    /// nothing for what the text holds; what goes wrong is the fault.
    explicit XmlConfigurationReading(const CPString& xml,
                                     SourceDataIntegratorInterfaces* integrator = nullptr);

    [[nodiscard]] const Features& GetFeatures() const noexcept { return m_features; }
    /// Leaves none behind.
    [[nodiscard]] Features TakeFeatures() noexcept { return std::move(m_features); }
    /// In the order of the configuration; those that say nothing of features are left out.
    [[nodiscard]] const std::vector<Element>& GetElements() const noexcept { return m_elements; }
    [[nodiscard]] const std::optional<Fault>& GetFault() const noexcept { return m_fault; }

private:
    void Read(const CPString& xml, SourceDataIntegratorInterfaces* integrator);
    void ReadElements(const XmlDomNode& root);
    void ReadElement(XmlDomNode& element);
    void ReadFeature(XmlDomNode& element);
    void NoteLost(const XmlDomNode& faulty) noexcept;

    Features m_features;
    std::vector<Element> m_elements;
    std::optional<Fault> m_fault;
    ElementPlace m_stopped;
};
