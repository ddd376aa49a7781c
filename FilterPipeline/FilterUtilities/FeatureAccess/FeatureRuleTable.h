#pragma once

#include "ComSupport/FilterUtilitiesExport.h"
#include "FeatureAccess/FeatureQuestion.h"
#include "FeatureAccess/FeatureWords.h"

#include <LowLevelFacilities/WideStrings/CXString.h>

/// A place of a job that may know a value.
enum class FeaturePlace { Nowhere, Ticket, DocumentSettings, AttributeBytes };

/// How one question about a feature is answered, and what is written where the value is set. A question
/// without a rule has no answer. What a rule must not say does not compile (FeatureRuleTable.cpp); beside the
/// rules, only the functions of the odd ones know single features.
struct FeatureRule {
    /// The places, asked in this order until one decides: a ticket that has a known option or a value,
    /// document settings that have the element, whatever its text, or attribute bytes that have the value.
    struct Reading {
        std::array<FeaturePlace, 3> places = {};
        bool onlyIfSupported = false;
        /// A feature that the device requires, and that no one specified, has the factory default. What the
        /// ticket decides stays.
        bool orDefault = false;
        bool isSecret = false; // nobody is to see the value
        /// Document settings have the member of a collection under a name of its own, which is found wherever
        /// it stands. Without this, it is looked for in the path's collections.
        bool isNamedAlone = false;
    };

    /// What the places alone do not tell: the function of that name in FeatureRules. Some of them read by the
    /// rule's reading; the others know their places, and the rule has none.
    enum class Oddity {
        None,
        AnnotationElements,
        Copies,
        CoverOptions,
        HolePunch,
        JobName,
        JobPassword,
        JobType,
        MediaSize,
        PageLayout,
        Sides,
        Staple,
        StartSheet,
    };

    enum class Writing {
        None,           // it cannot be set
        TicketOption,   // a value without a word is not written
        KeywordElement, // of the document settings; empty for a value without a word
        TextElement,
        NameElement, // a name, or one of the words
    };

    FeatureQuestionKind kind;
    FeaturePath path; // anyFeature: all that have no rule of that kind
    Reading reading = {};
    /// What texts mean in the ticket or in the document settings. Attribute bytes have numbers, and factory
    /// defaults words of the dictionaries.
    FeatureWords words = {};
    Oddity oddity = Oddity::None;
    Writing writing = Writing::None;

    static constexpr DataModelIds::tagFeatureEnum anyFeature{0};

    /// Otherwise own words are those of the document settings.
    [[nodiscard]] constexpr bool HasWordsOfTicket() const {
        return reading.places.front() == FeaturePlace::Ticket;
    }
};

/// Null for a question that nobody here can answer. The position in a path does not matter.
[[nodiscard]] OV_FILTER_UTILITIES_API const FeatureRule* FindFeatureRule(FeatureQuestionKind kind,
                                                                         const FeaturePath& path) noexcept;

/// Whether nobody is to see the answer.
[[nodiscard]] bool IsSecretFeature(FeatureQuestionKind kind, const FeaturePath& path) noexcept;

/// Whether some rule asks the ticket first for what stands at a path: the ticket then also knows whether it
/// is supported.
[[nodiscard]] bool IsFeatureOfTicket(const FeaturePath& path) noexcept;

/// Members of collections that need no device to have them.
[[nodiscard]] bool IsSupportedAnywhere(const FeaturePath& path) noexcept;

/// The names under which tickets have a feature that has several, the better one first; none for others.
[[nodiscard]] std::span<const CXString> FindTicketNames(DataModelIds::tagFeatureEnum feature);

/// All rules, by kind and path.
[[nodiscard]] OV_FILTER_UTILITIES_API std::span<const FeatureRule> GetFeatureRules() noexcept;
