#include "PrintTicket/ImageableSize.h"

#include "PrintTicket/NamespaceScope.h"
#include "PrintTicket/SchemaWords.h"
#include "PrintTicket/SchemaXml.h"

#include <cmath>
#include <optional>

namespace OvPlatform {
namespace {

// Microns; the origin is that of the imageable area on the sheet.
struct Axis {
    long long size;
    long long origin;
    long long extent;
};

std::optional<long long> WholeNumber(std::string_view text) {
    const auto number = NumberOf(text, true);
    if (!number || std::fabs(*number) > 1e12) return std::nullopt;
    return static_cast<long long>(*number);
}

// The chosen option of a public feature, or null.
const SchemaOption* ChosenOption(const CapabilitiesIndex& capabilities, const ValidatedTicket& settings,
                                 const char* name) {
    const std::size_t at = capabilities.FindFeature({SchemaSpace::Keywords, name});
    if (at == CapabilitiesIndex::notFound || settings.features[at].options.empty()) return nullptr;
    return capabilities.Features()[at].options[settings.features[at].options[0].option].schema;
}

std::optional<long long> ScoredLength(const SchemaOption& option, const char* name,
                                      const CapabilitiesIndex& capabilities,
                                      const ValidatedTicket& settings) {
    const SchemaProperty* scored = FindProperty(option.scored, SchemaSpace::Keywords, name);
    if (!scored) return std::nullopt;
    if (scored->value) return WholeNumber(scored->value->text);
    const std::size_t at = capabilities.FindParameter(scored->parameter);
    if (at == CapabilitiesIndex::notFound || !settings.parameters[at]) return std::nullopt;
    return WholeNumber(settings.parameters[at]->text);
}

xmlNode* FindPropertyElement(xmlNode* parent, const NamespaceScope& scope, std::string_view local) {
    for (xmlNode* element = FirstElement(parent, SchemaSpace::Framework); element;
         element = NextElement(element, SchemaSpace::Framework)) {
        if (View(element->name) != SchemaTag::Property) continue;
        const xmlAttr* name = xmlHasNsProp(element, AsXml(SchemaAttribute::Name), nullptr);
        const auto resolved =
            name && name->children ? scope.Resolve(element, View(name->children->content)) : std::nullopt;
        if (resolved && resolved->Is(SchemaSpace::Keywords, local)) return element;
    }
    return nullptr;
}

xmlNode* ValueElement(xmlNode* property) {
    xmlNode* value = property ? FirstElement(property, SchemaSpace::Framework) : nullptr;
    while (value && View(value->name) != SchemaTag::Value)
        value = NextElement(value, SchemaSpace::Framework);
    return value;
}

// The three elements of one axis.
struct AxisElements {
    xmlNode* size = nullptr;
    xmlNode* origin = nullptr;
    xmlNode* extent = nullptr;

    std::optional<Axis> Read() const {
        const auto read = [](const xmlNode* element) {
            return element && element->children ? WholeNumber(View(element->children->content))
                                                : std::nullopt;
        };
        const auto s = read(size), o = read(origin), e = read(extent);
        if (!s || !o || !e) return std::nullopt;
        return Axis{*s, *o, *e};
    }
    void Write(const Axis& axis) const {
        const auto write = [](xmlNode* element, long long number) {
            xmlNodeSetContent(element, AsXml(std::to_string(number).c_str()));
        };
        write(size, axis.size);
        write(origin, axis.origin);
        write(extent, axis.extent);
    }
};

} // namespace

void SetImageableSize(xmlNode* root, const CapabilitiesIndex& capabilities, const ValidatedTicket& settings) {
    const SchemaOption* media = ChosenOption(capabilities, settings, SchemaKeyword::PageMediaSize);
    if (!media) return;
    const NamespaceScope scope(root);
    xmlNode* imageable = FindPropertyElement(root, scope, "PageImageableSize");
    xmlNode* area = imageable ? FindPropertyElement(imageable, scope, "ImageableArea") : nullptr;
    if (!area) return;
    const SchemaOption* borderless = ChosenOption(capabilities, settings, "PageBorderless");
    const bool hasMargins = !borderless || borderless->name.local != "Borderless";

    const auto set = [&](const char* media_property, const char* size, const char* origin,
                         const char* extent) {
        const AxisElements elements{ValueElement(FindPropertyElement(imageable, scope, size)),
                                    ValueElement(FindPropertyElement(area, scope, origin)),
                                    ValueElement(FindPropertyElement(area, scope, extent))};
        const auto axis = elements.Read();
        const auto length = ScoredLength(*media, media_property, capabilities, settings);
        if (!axis || !length) return;
        const long long margins = axis->size - axis->extent;
        elements.Write(hasMargins && *length > margins ? Axis{*length, axis->origin, *length - margins}
                                                       : Axis{*length, 0, *length});
    };
    set(SchemaKeyword::MediaSizeWidth, "ImageableSizeWidth", "OriginWidth", "ExtentWidth");
    set(SchemaKeyword::MediaSizeHeight, "ImageableSizeHeight", "OriginHeight", "ExtentHeight");
}

} // namespace OvPlatform
