#pragma once

#include "Com/PlatformExport.h"
#include "PrintTicket/KeywordName.h"
#include "PrintTicket/SchemaWords.h"

#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace OvPlatform {

/// The content of a Value element. The text of a QName is its local part, its namespace stands beside it.
struct SchemaValue {
    KeywordName type; // xsi:type; empty where there is none
    std::string text;
    NamespaceUri space;

    bool IsQName() const { return type.Is(SchemaSpace::Types, SchemaType::QName); }
    bool operator==(const SchemaValue&) const = default;
};

/// A Property or a ScoredProperty: a value, or a reference to a parameter, and properties of its own.
struct SchemaProperty {
    KeywordName name;
    std::optional<SchemaValue> value;
    KeywordName parameter; // empty where there is no ParameterRef
    std::vector<SchemaProperty> properties;
    std::vector<SchemaProperty> scored;
};

struct SchemaOption {
    KeywordName name;        // empty: known by its scored properties alone
    KeywordName constrained; // capabilities only
    std::vector<SchemaProperty> scored;
    std::vector<SchemaProperty> properties;
};

struct SchemaFeature {
    KeywordName name;
    std::vector<SchemaProperty> properties;
    std::vector<SchemaOption> options;
    std::vector<SchemaFeature> features;
};

/// A ParameterInit of a ticket.
struct SchemaParameter {
    KeywordName name;
    SchemaValue value;
};

/// A ParameterDef of a capabilities document.
struct SchemaParameterDef {
    KeywordName name;
    std::vector<SchemaProperty> properties;
};

/// A Print Ticket or Print Capabilities document without its XML: prefixes are resolved, foreign elements and
/// attributes left out. Elements stand in the order of the document, repeated ones included.
struct SchemaDocument {
    std::vector<SchemaProperty> properties;
    std::vector<SchemaFeature> features;
    std::vector<SchemaParameter> parameters;
    std::vector<SchemaParameterDef> definitions;
};

/// The property of that name, or null.
OV_PLATFORM_API const SchemaProperty* FindProperty(const std::vector<SchemaProperty>& properties,
                                                   std::string_view space, std::string_view local);

} // namespace OvPlatform
