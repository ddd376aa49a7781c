#pragma once

#include "DataModel/FeatureIds.h"

#include <array>
#include <cstddef>
#include <optional>
#include <span>

/// Where a feature stands: alone, or inside collections, of which the last may be a set whose entries have
/// positions.
class FeaturePath {
public:
    using tagFeatureEnum = DataModelIds::tagFeatureEnum;

    /// Of no feature: that of a question about the job as a whole.
    constexpr FeaturePath() = default;
    constexpr FeaturePath(tagFeatureEnum feature) : m_features{feature}, m_count(1) {}
    constexpr FeaturePath(tagFeatureEnum collection, tagFeatureEnum feature)
        : m_features{collection, feature}, m_count(2) {}
    constexpr FeaturePath(tagFeatureEnum outerCollection, tagFeatureEnum collection, tagFeatureEnum feature)
        : m_features{outerCollection, collection, feature}, m_count(3) {}

    /// The same feature in the entry of the last collection that has this position, from 0.
    [[nodiscard]] constexpr FeaturePath At(unsigned int index) const {
        FeaturePath path = *this;
        path.m_index = index;
        return path;
    }

    /// From the outermost collection to the feature.
    [[nodiscard]] constexpr std::span<const tagFeatureEnum> Features() const {
        return std::span(m_features).first(m_count);
    }
    [[nodiscard]] constexpr std::span<const tagFeatureEnum> Collections() const {
        return Features().first(m_count == 0 ? 0 : m_count - 1);
    }
    /// 0, which no feature has, for a path of none.
    [[nodiscard]] constexpr tagFeatureEnum Feature() const {
        return m_features[m_count == 0 ? 0 : m_count - 1];
    }
    [[nodiscard]] constexpr std::optional<unsigned int> Index() const { return m_index; }

    constexpr bool operator==(const FeaturePath&) const = default;
    /// By length, then by numbers, whatever the positions.
    [[nodiscard]] constexpr bool StandsBefore(const FeaturePath& other) const {
        if (m_count != other.m_count) return m_count < other.m_count;
        for (std::size_t at = 0; at < m_count; ++at)
            if (m_features[at] != other.m_features[at]) return m_features[at] < other.m_features[at];
        return false;
    }

private:
    std::array<tagFeatureEnum, 3> m_features{};
    std::size_t m_count = 0;
    std::optional<unsigned int> m_index;
};

/// What is asked of a feature.
enum class FeatureQuestionKind {
    Option,
    Integer,
    Length,
    Text,
    Flag,
    Password,
    Time,
    Bytes,
    Collection, // whether it is specified
    Entries,    // how many a collection has
    // Of the job as a whole.
    MediaSize,
    Orientation,
    OutputSize,
};

struct FeatureQuestion {
    FeatureQuestionKind kind;
    FeaturePath path = {};

    constexpr bool operator==(const FeatureQuestion&) const = default;
};
