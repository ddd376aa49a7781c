#pragma once

// Words of Print Schema documents that several sources of this room read or write. A word that one table or
// one rule alone knows stands there.

namespace OvPlatform {

// Elements, all in the framework namespace.
namespace SchemaTag {
inline constexpr const char* PrintTicket = "PrintTicket";
inline constexpr const char* PrintCapabilities = "PrintCapabilities";
inline constexpr const char* Feature = "Feature";
inline constexpr const char* Option = "Option";
inline constexpr const char* ScoredProperty = "ScoredProperty";
inline constexpr const char* Property = "Property";
inline constexpr const char* ParameterInit = "ParameterInit";
inline constexpr const char* ParameterDef = "ParameterDef";
inline constexpr const char* ParameterRef = "ParameterRef";
inline constexpr const char* Value = "Value";
} // namespace SchemaTag

// Attributes; the type is one of the schema instance's namespace.
namespace SchemaAttribute {
inline constexpr const char* Name = "name";
inline constexpr const char* Version = "version";
inline constexpr const char* Constrained = "constrained";
inline constexpr const char* Type = "type";
} // namespace SchemaAttribute

// Types of values, all in the namespace of types.
namespace SchemaType {
inline constexpr const char* Integer = "integer";
inline constexpr const char* Decimal = "decimal";
inline constexpr const char* String = "string";
inline constexpr const char* QName = "QName";
} // namespace SchemaType

// Public keywords.
namespace SchemaKeyword {
inline constexpr const char* None = "None";
inline constexpr const char* PageMediaSize = "PageMediaSize";
inline constexpr const char* MediaSizeWidth = "MediaSizeWidth";
inline constexpr const char* MediaSizeHeight = "MediaSizeHeight";
inline constexpr const char* PageScaling = "PageScaling";
} // namespace SchemaKeyword

} // namespace OvPlatform
