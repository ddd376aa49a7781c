#pragma once

#include "ComSupport/FilterUtilitiesExport.h"
#include "FeatureAccess/AttributeBytesSettings.h"
#include "FeatureAccess/DeviceSettings.h"
#include "FeatureAccess/DocumentSettings.h"
#include "FeatureAccess/FeatureRuleTable.h"
#include "FeatureAccess/TicketSettings.h"

#include <LowLevelFacilities/WideStrings/ByteBuffer.h>

#include <concepts>

class NativeXmlConfigFeatureDictionary;

/// The places of a job that know its features, asked by rules: those of the table, or a caller's own.
///
/// Which kinds of values a place can hold, its operations tell: a place that has none for a kind knows
/// nothing of it, and the table does not compile with such a row. A question to a feature that the dictionary
/// does not have throws CPExceptionUnknownKeyRequest where the rule wants the feature to be supported.
class OV_FILTER_UTILITIES_API FeaturePlaces {
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

    [[nodiscard]] static constexpr bool CanAnswer(FeaturePlace place, FeatureQuestionKind kind);
    /// Whether the device has factory defaults of that kind.
    [[nodiscard]] static constexpr bool HasDefaults(FeatureQuestionKind kind);

    /// What a rule asks for of the feature at a path; the ticket's name is that of the dictionary.
    [[nodiscard]] WantedFeature Wanted(const FeatureRule& rule, const FeaturePath& path) const;
    /// The same without a rule; document settings are asked by the feature's name alone.
    [[nodiscard]] WantedFeature Wanted(const FeaturePath& path, const FeatureWords& words = {}) const;

    /// A published feature is supported where the ticket's capabilities have it, a private one where the
    /// device does.
    [[nodiscard]] bool IsSupported(const FeaturePath& path) const;

    /// The name under which the ticket has a feature that is supported; null for one that is not.
    [[nodiscard]] const CXString* FindSupportedName(const FeaturePath& path) const;

    /// The answer by a rule's reading, without a look at its oddity.
    template <typename Value>
    [[nodiscard]] FeatureAnswer<Value> Ask(const FeatureRule& rule, const FeaturePath& path) const;
    /// Of a feature that is supported, under this name of the ticket.
    template <typename Value>
    [[nodiscard]] FeatureAnswer<Value> Ask(const FeatureRule& rule, const WantedFeature& wanted) const;
    /// What the places say, without a look at support and a default.
    template <typename Value>
    [[nodiscard]] FeatureAnswer<Value> Read(const FeatureRule& rule, const WantedFeature& wanted) const;

    /// Whether the device wants a value that no one specified.
    [[nodiscard]] bool MustEnforce(const WantedFeature& wanted, bool isSpecified) const;
    /// Makes such an answer specified, with the factory default if it has no value, and says whether it did.
    /// Deliberate: it is specified then even if the device has no default, or one that is not specified.
    template <typename Value>
    bool Enforce(const WantedFeature& wanted, FeatureAnswer<Value>& answer) const;

    /// The same, where the rule wants it.
    template <typename Value>
    void Enforce(const FeatureRule& rule, const WantedFeature& wanted, FeatureAnswer<Value>& answer) const {
        if (rule.reading.orDefault) Enforce(wanted, answer);
    }
    /// Whether the rule lets the feature be asked for: it is supported, or need not be.
    [[nodiscard]] bool MayAsk(const FeatureRule& rule, const FeaturePath& path) const {
        return !rule.reading.onlyIfSupported || IsSupported(path);
    }

    /// By the table's rules. A feature that cannot be set is passed over.
    void SetOption(const FeaturePath& path, const SimpleOptionValue& value) const;
    void SetText(const FeaturePath& path, const CXString& text, bool isSpecified) const;

private:
    template <typename Place, typename Value>
    static constexpr bool canHold = requires(const Place& place, const WantedFeature& wanted,
                                             FeatureAnswer<Value>& answer) {
        { place.Ask(wanted, answer) } -> std::same_as<bool>;
    };
    template <typename Value>
    static constexpr bool CanHold(FeaturePlace place);

    template <typename Value, typename Place>
    static bool AskIfHeld(const Place& place, const WantedFeature& wanted, FeatureAnswer<Value>& answer) {
        if constexpr (canHold<Place, Value>) return place.Ask(wanted, answer);
        return false;
    }
    [[nodiscard]] bool IsSupportedInCollection(const FeaturePath& path) const;
    template <typename Value>
    bool Ask(FeaturePlace place, const WantedFeature& wanted, FeatureAnswer<Value>& answer) const;

    Places m_places;
    const NativeXmlConfigFeatureDictionary* m_features;
    bool m_enforcesRequired;
};

template <typename Value>
constexpr bool FeaturePlaces::CanHold(FeaturePlace place) {
    switch (place) {
    case FeaturePlace::Ticket:
        return canHold<TicketSettings, Value>;
    case FeaturePlace::DocumentSettings:
        return canHold<DocumentSettings, Value>;
    case FeaturePlace::AttributeBytes:
        return canHold<AttributeBytesSettings, Value>;
    case FeaturePlace::Nowhere:
        break;
    }
    return false;
}

constexpr bool FeaturePlaces::CanAnswer(FeaturePlace place, FeatureQuestionKind kind) {
    switch (kind) {
    case FeatureQuestionKind::Option:
    case FeatureQuestionKind::MediaSize:
        return CanHold<DataModelIds::tagValueEnum>(place);
    case FeatureQuestionKind::Integer:
        return CanHold<int>(place);
    case FeatureQuestionKind::Length:
        return CanHold<Dimension>(place);
    case FeatureQuestionKind::Text:
        return CanHold<CXString>(place);
    case FeatureQuestionKind::Flag:
        return CanHold<bool>(place);
    case FeatureQuestionKind::Password:
        return CanHold<ByteBuffer>(place);
    case FeatureQuestionKind::Collection:
        return CanHold<CollectionState>(place);
    case FeatureQuestionKind::Entries:
        return CanHold<unsigned int>(place);
    // Nobody asks the places for these.
    case FeatureQuestionKind::Time:
    case FeatureQuestionKind::Bytes:
    case FeatureQuestionKind::Orientation:
    case FeatureQuestionKind::OutputSize:
        break;
    }
    return false;
}

constexpr bool FeaturePlaces::HasDefaults(FeatureQuestionKind kind) {
    switch (kind) {
    case FeatureQuestionKind::Option:
        return canHold<DeviceSettings, DataModelIds::tagValueEnum>;
    case FeatureQuestionKind::Integer:
        return canHold<DeviceSettings, int>;
    case FeatureQuestionKind::Length:
        return canHold<DeviceSettings, Dimension>;
    default:
        return false;
    }
}

template <typename Value>
bool FeaturePlaces::Ask(FeaturePlace place, const WantedFeature& wanted, FeatureAnswer<Value>& answer) const {
    switch (place) {
    case FeaturePlace::Ticket:
        return AskIfHeld(Ticket(), wanted, answer);
    case FeaturePlace::DocumentSettings:
        return AskIfHeld(Document(), wanted, answer);
    case FeaturePlace::AttributeBytes:
        return AskIfHeld(AttributeBytes(), wanted, answer);
    case FeaturePlace::Nowhere:
        break;
    }
    return false;
}

template <typename Value>
FeatureAnswer<Value> FeaturePlaces::Ask(const FeatureRule& rule, const FeaturePath& path) const {
    WantedFeature wanted = Wanted(rule, path);
    if (rule.reading.onlyIfSupported) {
        wanted.ticketName = FindSupportedName(path);
        if (wanted.ticketName == nullptr) return {};
    }
    return Ask<Value>(rule, wanted);
}

template <typename Value>
FeatureAnswer<Value> FeaturePlaces::Ask(const FeatureRule& rule, const WantedFeature& wanted) const {
    FeatureAnswer<Value> answer = Read<Value>(rule, wanted);
    if (answer.source != FeatureValueSource::PrintTicket) Enforce(rule, wanted, answer);
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
        const bool hasDefault = AskIfHeld(Device(), wanted, answer);
        answer.source = hasDefault ? FeatureValueSource::FactoryDefault : FeatureValueSource::Rule;
    }
    answer.isSpecified = true;
    return true;
}
