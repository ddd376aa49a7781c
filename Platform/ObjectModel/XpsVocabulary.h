#pragma once

#include "Com/PlatformExport.h"

#include <string>
#include <string_view>

namespace OvPlatform {

/// The two vocabularies of one format: they differ in the base of their namespaces and relationship types.
enum class XpsFlavour { Xps, OpenXps };

enum class Relation {
    FixedRepresentation,
    RequiredResource,
    PrintTicket,
    RestrictedFont,
    DocumentStructure,
    StoryFragments,
    SignatureDefinitions,
    DiscardControl,
    Thumbnail,
    CoreProperties,
    SignatureOrigin,
    Other
};

OV_PLATFORM_API Relation RelationOf(std::string_view type);
/// Not for Other.
OV_PLATFORM_API std::string RelationType(Relation relation, XpsFlavour flavour);
/// Which vocabulary a relationship type belongs to, where it belongs to one.
OV_PLATFORM_API bool IsOpenXpsType(std::string_view type);

/// The namespace of sequence, document and page markup.
OV_PLATFORM_API const char* MarkupNamespace(XpsFlavour flavour);
OV_PLATFORM_API bool IsMarkupNamespace(std::string_view uri);

enum class PartKind {
    Sequence,
    Document,
    Page,
    Font,
    Image,
    ColorProfile,
    ResourceDictionary,
    PrintTicket,
    Unknown
};

/// By content type, case and parameters aside; by the name's extension where the type says nothing.
OV_PLATFORM_API PartKind KindOf(std::string_view contentType, std::string_view partName);
/// A part that pages use: font, image, colour profile, dictionary.
OV_PLATFORM_API bool IsResource(PartKind kind);
/// What a new part of that kind is, before a filter says more; for an image and a font its extension decides.
OV_PLATFORM_API std::string DefaultContentType(PartKind kind, std::string_view partName);
OV_PLATFORM_API const char* KindName(PartKind kind);
/// What a part is called, also where the pipeline does not know its kind: "story fragments", "signature",
/// "foreign".
OV_PLATFORM_API const char* DescribeType(std::string_view contentType, std::string_view partName);

OV_PLATFORM_API bool IsObfuscatedFontType(std::string_view contentType);

inline constexpr const char* sequenceContentType = "application/vnd.ms-package.xps-fixeddocumentsequence+xml";
inline constexpr const char* documentContentType = "application/vnd.ms-package.xps-fixeddocument+xml";
inline constexpr const char* pageContentType = "application/vnd.ms-package.xps-fixedpage+xml";
inline constexpr const char* ticketContentType = "application/vnd.ms-printing.printticket+xml";
inline constexpr const char* dictionaryContentType = "application/vnd.ms-package.xps-resourcedictionary+xml";
inline constexpr const char* fontContentType = "application/vnd.ms-opentype";
inline constexpr const char* obfuscatedFontContentType = "application/vnd.ms-package.obfuscated-opentype";

} // namespace OvPlatform
