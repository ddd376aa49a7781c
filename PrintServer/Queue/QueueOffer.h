#pragma once

#include <Spooler/QueueFolder.h>

#include <libxml/tree.h>

#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace OvPrintServer {

// What a queue's documents offer to those who choose: names are without their prefixes, unless they are
// called names as they are written. Texts are UTF-8.

struct OfferedScore {
    std::string name;      // as it is written
    std::string localName; // "MediaSizeWidth"
    std::string value;     // empty where a parameter holds it
    std::string valueType; // "xsd:integer"
    std::string parameter; // as it is written; empty where there is a value
};

struct OfferedOption {
    std::string name; // as it is written; empty: the scores alone say what it is
    std::string localName;
    std::string displayName;
    std::vector<OfferedScore> scores;

    /// The number that a score holds; nothing where it has none.
    std::optional<long> Number(std::string_view localScore) const;
    bool IsCustom() const; // parameters hold what it says
};

struct OfferedFeature {
    std::string name; // as it is written
    std::string localName;
    std::string displayName;
    std::string outer;                  // of a nested one, the name of that around it
    std::vector<OfferedOption> options; // less those that are ruled out for every ticket
    const OfferedOption* byDefault = nullptr;

    const OfferedOption* Find(std::string_view localOption) const;
};

struct OfferedParameter {
    std::string name; // as it is written
    bool isInteger = false;
    std::optional<long> min; // the value, or the number of characters
    std::optional<long> max;

    /// Nothing where the value is one; else what is wrong, without the value.
    std::string ProblemOf(std::string_view value) const;
};

/// What a printer leaves blank of every paper, in microns.
struct PaperMargins {
    long left = 0;
    long top = 0;
    long right = 0;
    long bottom = 0;
};

/// Options that cannot be had together: names of two features and of options of each.
struct OfferedConstraint {
    struct Choice {
        std::string feature;
        std::vector<std::string> options;
    };
    std::vector<Choice> choices;
};

/// A queue's capabilities, the choices of its default ticket, and the settings of its device.
class QueueOffer {
public:
    /// Throws OvPlatform::QueueFolderError where a document of the queue cannot be read.
    explicit QueueOffer(std::shared_ptr<const OvPlatform::QueueFolder> queue);
    QueueOffer(const QueueOffer&) = delete;
    QueueOffer& operator=(const QueueOffer&) = delete;

    const OvPlatform::QueueFolder& Queue() const { return *m_queue; }
    const std::shared_ptr<const OvPlatform::QueueFolder>& SharedQueue() const { return m_queue; }

    /// Null where the printer has none.
    const OfferedFeature* Feature(std::string_view localName) const;
    const OfferedParameter* Parameter(std::string_view localName) const;
    const PaperMargins& Margins() const { return m_margins; }
    const std::vector<OfferedConstraint>& Constraints() const { return m_constraints; }
    /// The namespaces of the printer's settings: prefixes and names.
    const std::vector<std::pair<std::string, std::string>>& Namespaces() const { return m_namespaces; }
    /// The text of a parameter in the default ticket; empty where it has none.
    std::string DefaultOf(std::string_view localParameter) const;

    /// Whether the device has a setting, by its own names, with that value.
    bool HasSetting(std::string_view setting, std::string_view value) const;
    bool HasSetting(std::string_view setting) const { return m_settings.contains(setting); }

private:
    void ReadCapabilities();
    void ReadMargins(const xmlNode* root);
    void ReadDefaults();
    void ReadSettings();

    std::shared_ptr<const OvPlatform::QueueFolder> m_queue;
    std::map<std::string, OfferedFeature, std::less<>> m_features;
    std::map<std::string, OfferedParameter, std::less<>> m_parameters;
    std::map<std::string, std::string, std::less<>> m_defaults;
    std::map<std::string, std::vector<std::string>, std::less<>> m_settings;
    std::vector<OfferedConstraint> m_constraints;
    PaperMargins m_margins;
    std::vector<std::pair<std::string, std::string>> m_namespaces;
};

/// A name without its prefix.
std::string_view LocalPart(std::string_view name);

/// Names of people and of documents differ in case and signs: "StapleTopLeft" is "staple-top-left".
bool AreAlike(std::string_view one, std::string_view other);

} // namespace OvPrintServer
