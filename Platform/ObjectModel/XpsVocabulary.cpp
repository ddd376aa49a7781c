#include "ObjectModel/XpsVocabulary.h"

#include "Package/PartName.h"

#include <array>

namespace OvPlatform {

namespace {

constexpr std::string_view xpsBase = "http://schemas.microsoft.com/xps/2005/06";
constexpr std::string_view openXpsBase = "http://schemas.openxps.org/oxps/v1.0";
constexpr std::string_view packageBase = "http://schemas.openxmlformats.org/package/2006/relationships";

struct RelationName {
    Relation relation;
    std::string_view tail;
    bool ofPackages; // under the base of packages, not of XPS
};

constexpr std::array relationNames{
    RelationName{Relation::FixedRepresentation, "/fixedrepresentation", false},
    RelationName{Relation::RequiredResource, "/required-resource", false},
    RelationName{Relation::PrintTicket, "/printticket", false},
    RelationName{Relation::RestrictedFont, "/restricted-font", false},
    RelationName{Relation::DocumentStructure, "/documentstructure", false},
    RelationName{Relation::StoryFragments, "/storyfragments", false},
    RelationName{Relation::SignatureDefinitions, "/signature-definitions", false},
    RelationName{Relation::DiscardControl, "/discard-control", false},
    RelationName{Relation::Thumbnail, "/metadata/thumbnail", true},
    RelationName{Relation::CoreProperties, "/metadata/core-properties", true},
    RelationName{Relation::SignatureOrigin, "/digital-signature/origin", true},
};

struct TypeName {
    std::string_view contentType;
    PartKind kind;
};

// The first row of a kind is what a new part gets.
constexpr std::array typeNames{
    TypeName{sequenceContentType, PartKind::Sequence},
    TypeName{documentContentType, PartKind::Document},
    TypeName{pageContentType, PartKind::Page},
    TypeName{fontContentType, PartKind::Font},
    TypeName{obfuscatedFontContentType, PartKind::Font},
    TypeName{"application/vnd.ms-color.iccprofile", PartKind::ColorProfile},
    TypeName{dictionaryContentType, PartKind::ResourceDictionary},
    TypeName{ticketContentType, PartKind::PrintTicket},
    TypeName{"image/png", PartKind::Image},
    TypeName{"image/jpeg", PartKind::Image},
    TypeName{"image/tiff", PartKind::Image},
    TypeName{"image/vnd.ms-photo", PartKind::Image},
    TypeName{"image/jxr", PartKind::Image},
};

struct ExtensionName {
    std::string_view extension;
    std::string_view contentType;
};

constexpr std::array extensions{
    ExtensionName{"ttf", fontContentType},
    ExtensionName{"otf", fontContentType},
    ExtensionName{"ttc", fontContentType},
    ExtensionName{"odttf", obfuscatedFontContentType},
    ExtensionName{"png", "image/png"},
    ExtensionName{"jpg", "image/jpeg"},
    ExtensionName{"jpeg", "image/jpeg"},
    ExtensionName{"tif", "image/tiff"},
    ExtensionName{"tiff", "image/tiff"},
    ExtensionName{"wdp", "image/vnd.ms-photo"},
    ExtensionName{"jxr", "image/vnd.ms-photo"},
    ExtensionName{"icc", "application/vnd.ms-color.iccprofile"},
    ExtensionName{"icm", "application/vnd.ms-color.iccprofile"},
    ExtensionName{"dict", dictionaryContentType},
};

// Names of parts are compared so, too.
bool EqualIgnoringAsciiCase(std::string_view one, std::string_view other) {
    return ComparePartNames(one, other) == 0;
}

std::string_view WithoutParameters(std::string_view contentType) {
    contentType = contentType.substr(0, contentType.find(';'));
    while (!contentType.empty() && contentType.back() == ' ')
        contentType.remove_suffix(1);
    return contentType;
}

PartKind KindOfType(std::string_view contentType) {
    for (const TypeName& row : typeNames)
        if (EqualIgnoringAsciiCase(row.contentType, contentType)) return row.kind;
    return PartKind::Unknown;
}

std::string_view TypeOfExtension(std::string_view partName) {
    const std::size_t dot = partName.rfind('.');
    if (dot == std::string_view::npos) return {};
    for (const ExtensionName& row : extensions)
        if (EqualIgnoringAsciiCase(row.extension, partName.substr(dot + 1))) return row.contentType;
    return {};
}

} // namespace

Relation RelationOf(std::string_view type) {
    for (const RelationName& row : relationNames) {
        const auto isIt = [&](std::string_view base) {
            return type.size() == base.size() + row.tail.size() && type.starts_with(base) &&
                   type.ends_with(row.tail);
        };
        if (row.ofPackages ? isIt(packageBase) : isIt(xpsBase) || isIt(openXpsBase)) return row.relation;
    }
    return Relation::Other;
}

std::string RelationType(Relation relation, XpsFlavour flavour) {
    for (const RelationName& row : relationNames) {
        if (row.relation != relation) continue;
        std::string type(row.ofPackages                   ? packageBase
                         : flavour == XpsFlavour::OpenXps ? openXpsBase
                                                          : xpsBase);
        return type += row.tail;
    }
    return {};
}

bool IsOpenXpsType(std::string_view type) { return type.starts_with(openXpsBase); }

const char* MarkupNamespace(XpsFlavour flavour) {
    return flavour == XpsFlavour::OpenXps ? openXpsBase.data() : xpsBase.data();
}

bool IsMarkupNamespace(std::string_view uri) { return uri == xpsBase || uri == openXpsBase; }

PartKind KindOf(std::string_view contentType, std::string_view partName) {
    const PartKind kind = KindOfType(WithoutParameters(contentType));
    return kind != PartKind::Unknown ? kind : KindOfType(TypeOfExtension(partName));
}

bool IsResource(PartKind kind) {
    return kind == PartKind::Font || kind == PartKind::Image || kind == PartKind::ColorProfile ||
           kind == PartKind::ResourceDictionary;
}

std::string DefaultContentType(PartKind kind, std::string_view partName) {
    const std::string_view byName = TypeOfExtension(partName);
    if (!byName.empty() && KindOfType(byName) == kind) return std::string(byName);
    for (const TypeName& row : typeNames)
        if (row.kind == kind) return std::string(row.contentType);
    return "application/octet-stream";
}

const char* KindName(PartKind kind) {
    switch (kind) {
    case PartKind::Sequence:
        return "document sequence";
    case PartKind::Document:
        return "document";
    case PartKind::Page:
        return "page";
    case PartKind::Font:
        return "font";
    case PartKind::Image:
        return "image";
    case PartKind::ColorProfile:
        return "colour profile";
    case PartKind::ResourceDictionary:
        return "resource dictionary";
    case PartKind::PrintTicket:
        return "print ticket";
    case PartKind::Unknown:
        break;
    }
    return "part";
}

const char* DescribeType(std::string_view contentType, std::string_view partName) {
    if (const PartKind kind = KindOf(contentType, partName); kind != PartKind::Unknown) return KindName(kind);
    const std::string type = FoldPartName(WithoutParameters(contentType));
    const auto says = [&](std::string_view words) { return type.find(words) != std::string::npos; };
    if (says("signature")) return "signature";
    if (says("storyfragments")) return "story fragments";
    if (says("documentstructure")) return "document structure";
    if (says("core-properties")) return "core properties";
    return "foreign";
}

bool IsObfuscatedFontType(std::string_view contentType) {
    return EqualIgnoringAsciiCase(WithoutParameters(contentType), obfuscatedFontContentType);
}

} // namespace OvPlatform
