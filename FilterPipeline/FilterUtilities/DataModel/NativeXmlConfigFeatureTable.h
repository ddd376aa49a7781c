#pragma once

#include "NativeXmlConfigFeatureEntry.h"

#include <span>

/// The features as data.
struct NativeXmlConfigFeatureRow {
    static constexpr DataModelIds::tagFeatureEnum noParent{};

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
