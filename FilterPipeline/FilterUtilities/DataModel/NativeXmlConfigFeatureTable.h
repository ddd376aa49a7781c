#pragma once

#include "DataModel/NativeXmlConfigFeatureEntry.h"

#include <span>

/// The features as data.
struct NativeXmlConfigFeatureRow {
    static constexpr DataModelIds::tagFeatureEnum noParent{};
    /// Of a ticket name that is the configuration's, too.
    static constexpr const wchar_t* sameName = nullptr;

    DataModelIds::tagFeatureEnum feature;
    NativeXmlConfigFeatureEntry::ModeEnum mode;
    NativeXmlConfigFeatureEntry::SyntaxEnum syntax;
    const char* cpssName;
    const char* xmlConfigName;
    const wchar_t* printTicketName;
    NativeXmlConfigFeatureEntry::TicketKindEnum ticketKind;
    DataModelIds::tagFeatureEnum parent = noParent;
};

[[nodiscard]] std::span<const NativeXmlConfigFeatureRow> GetNativeXmlConfigFeatureRows() noexcept;
