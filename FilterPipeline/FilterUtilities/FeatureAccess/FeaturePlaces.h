#pragma once

#include "FeatureAccess/AttributeBytesSettings.h"
#include "FeatureAccess/DeviceSettings.h"
#include "FeatureAccess/DocumentSettings.h"
#include "FeatureAccess/FeatureRuleTable.h"
#include "FeatureAccess/TicketSettings.h"

class NativeXmlConfigFeatureDictionary;

/// The places of a job that know its features, asked by rules: those of the table, or a caller's own.
///
/// A question to a feature that the dictionary does not have throws CPExceptionUnknownKeyRequest where the
/// rule wants the feature to be supported, or has the dictionary's words.
class FeaturePlaces {
public:
    struct Places {
        TicketSettings ticket;
        DocumentSettings document;
        AttributeBytesSettings attributeBytes;
        DeviceSettings device;
    };

    /// The flag: whether a feature that the device requires has the factory default where no one specified
    /// it.
    FeaturePlaces(Places places, bool enforcesRequired);

    [[nodiscard]] const TicketSettings& Ticket() const { return m_places.ticket; }
    [[nodiscard]] const DocumentSettings& Document() const { return m_places.document; }
    [[nodiscard]] const AttributeBytesSettings& AttributeBytes() const { return m_places.attributeBytes; }
    [[nodiscard]] const DeviceSettings& Device() const { return m_places.device; }

    /// What a rule asks for of the feature at a path; the ticket's name is that of the dictionary.
    [[nodiscard]] WantedFeature Wanted(const FeaturePath& path, const FeatureWords& words = {}) const;

    /// A published feature is supported where the ticket's capabilities have it, a private one where the
    /// device does.
    [[nodiscard]] bool IsSupported(const FeaturePath& path) const;

    /// The name under which the ticket has a feature that is supported; null for one that is not.
    [[nodiscard]] const CXString* FindSupportedName(const FeaturePath& path) const;

    // The answer by a rule's reading, without a look at its oddity.
    template <typename Value>
    [[nodiscard]] FeatureAnswer<Value> Ask(const FeatureRule& rule, const FeaturePath& path) const;
    /// Of a feature that is supported, under this name of the ticket.
    template <typename Value>
    [[nodiscard]] FeatureAnswer<Value> Ask(const FeatureRule& rule, const WantedFeature& wanted) const;
    /// What the places say, without a default.
    template <typename Value>
    [[nodiscard]] FeatureAnswer<Value> Read(const FeatureRule& rule, const WantedFeature& wanted) const;

    /// Whether the device wants a value that no one specified.
    [[nodiscard]] bool MustEnforce(const WantedFeature& wanted, bool isSpecified) const;
    /// Makes such an answer specified, with the factory default if it has no value, and says whether it did.
    /// Deliberate: it is specified then even if the device has no default, or one that is not specified.
    template <typename Value>
    bool Enforce(const WantedFeature& wanted, FeatureAnswer<Value>& answer) const;

    // By the table's rules. A feature that cannot be set is passed over.
    void SetOption(const FeaturePath& path, const SimpleOptionValue& value) const;
    void SetText(const FeaturePath& path, const CXString& text, bool isSpecified) const;

private:
    [[nodiscard]] bool IsSupportedInCollection(const FeaturePath& path) const;
    template <typename Value>
    bool Ask(FeaturePlace place, const WantedFeature& wanted, FeatureAnswer<Value>& answer) const;

    Places m_places;
    const NativeXmlConfigFeatureDictionary* m_features;
    bool m_enforcesRequired;
};

template <typename Value>
bool FeaturePlaces::Ask(FeaturePlace place, const WantedFeature& wanted, FeatureAnswer<Value>& answer) const {
    switch (place) {
    case FeaturePlace::Ticket:
        return Ticket().Ask(wanted, answer);
    case FeaturePlace::DocumentSettings:
        return Document().Ask(wanted, answer);
    case FeaturePlace::AttributeBytes:
        return AttributeBytes().Ask(wanted, answer);
    case FeaturePlace::Nowhere:
        break;
    }
    return false;
}

template <typename Value>
FeatureAnswer<Value> FeaturePlaces::Ask(const FeatureRule& rule, const FeaturePath& path) const {
    WantedFeature wanted = Wanted(path, rule.words);
    if (rule.reading.onlyIfSupported) {
        wanted.ticketName = FindSupportedName(path);
        if (wanted.ticketName == nullptr) return {};
    }
    return Ask<Value>(rule, wanted);
}

template <typename Value>
FeatureAnswer<Value> FeaturePlaces::Ask(const FeatureRule& rule, const WantedFeature& wanted) const {
    FeatureAnswer<Value> answer = Read<Value>(rule, wanted);
    if (rule.reading.orDefault && answer.source != FeatureValueSource::PrintTicket) Enforce(wanted, answer);
    return answer;
}

template <typename Value>
FeatureAnswer<Value> FeaturePlaces::Read(const FeatureRule& rule, const WantedFeature& wanted) const {
    FeatureAnswer<Value> answer;
    for (const FeaturePlace place : rule.reading.places) {
        if (place == FeaturePlace::Nowhere) break;
        answer = {};
        if (Ask(place, wanted, answer)) break;
    }
    return answer;
}

template <typename Value>
bool FeaturePlaces::Enforce(const WantedFeature& wanted, FeatureAnswer<Value>& answer) const {
    if (!MustEnforce(wanted, answer.isSpecified)) return false;
    if (IsNoFeatureValue(answer.value)) {
        answer = {};
        const bool hasDefault = Device().Ask(wanted, answer);
        answer.source = hasDefault ? FeatureValueSource::FactoryDefault : FeatureValueSource::Rule;
    }
    answer.isSpecified = true;
    return true;
}
