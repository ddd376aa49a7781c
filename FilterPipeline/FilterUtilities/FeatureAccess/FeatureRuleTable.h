#pragma once

#include "ComSupport/FilterUtilitiesExport.h"
#include "FeatureAccess/FeatureQuestion.h"
#include "FeatureAccess/FeatureWords.h"

/// A place of a job that may know a value.
enum class FeaturePlace { Nowhere, Ticket, DocumentSettings, AttributeBytes };

/// How one question about a feature is answered, and what is written where the value is set. The table of
/// these rules is all that is known of features in jobs: a question without a rule has no answer.
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
    };

    /// What the places alone do not tell: the function of that name in FeatureRules.
    enum class Oddity {
        None,
        AnnotationElements,
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
    /// Of the first place.
    FeatureWords words = {};
    Oddity oddity = Oddity::None;
    Writing writing = Writing::None;

    static constexpr DataModelIds::tagFeatureEnum anyFeature{0};

    [[nodiscard]] constexpr bool HasWordsOfTicket() const {
        return reading.places.front() == FeaturePlace::Ticket;
    }
};

/// Null for a question that nobody here can answer. The position in a path does not matter.
[[nodiscard]] OV_FILTER_UTILITIES_API const FeatureRule* FindFeatureRule(FeatureQuestionKind kind,
                                                                         const FeaturePath& path) noexcept;

/// All of them, by kind and path.
[[nodiscard]] OV_FILTER_UTILITIES_API std::span<const FeatureRule> GetFeatureRules() noexcept;
