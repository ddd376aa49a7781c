#include "Commands/AnnotationsReport.h"

#include "Commands/ShownAnswer.h"
#include "Common/Text.h"
#include "Report/TextTable.h"

#include <Annotation/AnnotationNumbering.h>
#include <Annotation/AnnotationPlacement.h>
#include <Annotation/AnnotationTextLayout.h>

#include <utf16units.h>

#include <algorithm>
#include <cstdio>
#include <utility>

using namespace DataModelIds;

namespace OvPipeline {

namespace {

constexpr const char* xpsUnits = "1/96 inch";

std::string Decimal(double value) {
    char text[64];
    std::snprintf(text, sizeof text, "%.2f", value);
    return text;
}

std::string Utf8(const CXString& text) { return OvPipeline::Utf8(text.View()); }

const char* KindOf(const AnnotationElementSettings& element) {
    if (element.isJobId) return "mark of the job";
    switch (element.type) {
    case VAL_ANNOTATION_TYPE_TEXT:
        return "text";
    case VAL_ANNOTATION_TYPE_TIME_STAMP:
        return "time stamp";
    case VAL_ANNOTATION_TYPE_PICTURE:
        return "picture";
    case VAL_ANNOTATION_TYPE_BATES_STAMP:
        return "Bates number";
    default:
        return "page number";
    }
}

const char* NameOf(AnnotationOrigin origin) {
    switch (origin) {
    case AnnotationOrigin::DocumentSettings:
        return "document settings in the ticket";
    case AnnotationOrigin::AttributeBytes:
        return "attribute bytes in the ticket";
    case AnnotationOrigin::StoredDefinition:
        return "definition that the queue keeps";
    case AnnotationOrigin::ClientDefinition:
        return "definition that the client sent along";
    case AnnotationOrigin::JobMark:
        return "job identification";
    case AnnotationOrigin::FaxSheet:
        return "fax cover sheet";
    }
    return "";
}

/// Why a text is in its face.
std::string Reason(const PageAnnotation& annotation, const TextShaper& shaper, const CXString& text) {
    const AnnotationElementSettings& element = annotation.element;
    GdiDeviceContext fonts;
    std::string reason = element.faceName.Compare(annotation.wantedFace) == 0
                             ? "as asked for"
                             : "the first that has all characters; asked for: " + Utf8(annotation.wantedFace);
    if (shaper.FaceInUse().CompareNoCase(element.faceName) != 0)
        reason += "; the system lacks it, and takes " + Utf8(shaper.FaceInUse());
    // Characters beyond the first plane are not looked up in fonts one by one.
    const std::wstring_view units = text.View();
    const bool hasPairs = std::ranges::any_of(units, OvPlatform::Utf16::IsSurrogate<wchar_t>);
    std::wstring drawn(units);
    std::erase(drawn, L'\n');
    if (!hasPairs && !fonts.CanFontDisplayString(CXString(std::move(drawn)), element.faceName))
        reason += "; no font of the system has all characters";
    return reason;
}

} // namespace

AnnotationsReport::AnnotationsReport(const std::vector<PageAnnotation>& annotations, Gdiplus::SizeF page,
                                     unsigned number)
    : m_page(page), m_number(number) {
    for (const PageAnnotation& annotation : annotations)
        m_annotations.push_back(FactsOf(annotation, page, number));
}

AnnotationsReport::Facts AnnotationsReport::FactsOf(const PageAnnotation& annotation, Gdiplus::SizeF page,
                                                    unsigned number) {
    const AnnotationElementSettings& element = annotation.element;
    Facts facts{{"kind", "kind", KindOf(element)}, {"from", "from", NameOf(annotation.origin)}};
    if (annotation.fontPartName.IsEmpty())
        AddPicture(facts, annotation, page);
    else
        AddText(facts, annotation, page, number);
    facts.push_back({"opacity", "opacity", Decimal(element.opacity), "", true});
    facts.push_back({"drawn", "drawn",
                     element.drawMode == VAL_ANNOTATION_IN_BACKGROUND ? "behind the page's content"
                                                                      : "over the page's content"});
    facts.push_back(
        {"order", "order",
         element.renderOrder == VAL_ANNOTATION_POST_IMPOSITION ? "after imposition" : "before imposition"});
    facts.push_back({"pages", "pages", element.isFirstPageOnly ? "first only" : "all"});
    return facts;
}

void AnnotationsReport::AddText(Facts& facts, const PageAnnotation& annotation, Gdiplus::SizeF page,
                                unsigned number) {
    const AnnotationElementSettings& element = annotation.element;
    const CXString text = AnnotationTextOfPage(element, number);
    const TextShaper shaper(element.faceName, element.charset);
    const AnnotationTextLayout layout = LayOutText(shaper, text, element.sizeInPoints);
    facts.push_back({"text", "text", Utf8(text)});
    AddPlace(facts, element, page, layout.size);
    facts.push_back({"font", "font", Utf8(element.faceName)});
    facts.push_back({"why this font", "whyFont", Reason(annotation, shaper, text)});
    facts.push_back({"font size", "fontSize", std::to_string(element.sizeInPoints), "point", true});
    facts.push_back({"color", "color", Utf8(element.color)});
    facts.push_back({"characters of the font", "characters", Utf8(annotation.characters)});
    facts.push_back({"part of the font", "fontPart", Utf8(annotation.fontPartName)});
}

void AnnotationsReport::AddPicture(Facts& facts, const PageAnnotation& annotation, Gdiplus::SizeF page) {
    const AnnotationElementSettings& element = annotation.element;
    facts.push_back({"file", "file", Utf8(element.imageFileName)});
    if (!(annotation.pictureSize.Width > 0)) {
        facts.push_back({"problem", "problem", "the file cannot be read, or is no picture"});
        return;
    }
    AddPlace(facts, element, page, annotation.pictureSize);
    facts.push_back({"scale", "scale", Decimal(element.scaling), "percent", true});
    facts.push_back({"horizontal resolution", "horizontalResolution", Decimal(element.horizontalResolution),
                     "dots per inch", true});
    facts.push_back({"vertical resolution", "verticalResolution", Decimal(element.verticalResolution),
                     "dots per inch", true});
    facts.push_back(
        {"part of the picture, without extension", "picturePart", Utf8(annotation.picturePartName)});
}

void AnnotationsReport::AddPlace(Facts& facts, const AnnotationElementSettings& element, Gdiplus::SizeF page,
                                 Gdiplus::SizeF size) {
    const AnnotationPlacement placement = PlaceAnnotation(element, page, size);
    facts.push_back({"left", "left", Decimal(placement.box.X), xpsUnits, true});
    facts.push_back({"top", "top", Decimal(placement.box.Y), xpsUnits, true});
    facts.push_back({"width", "width", Decimal(placement.box.Width), xpsUnits, true});
    facts.push_back({"height", "height", Decimal(placement.box.Height), xpsUnits, true});
    facts.push_back({"angle", "angle", std::to_string(placement.angle), "degree", true});
    facts.push_back(
        {"placed", "placed", element.justificationFlags != 0 ? "by the page's edges" : "by its centre"});
}

std::string AnnotationsReport::AsTable(std::size_t width) const {
    if (m_annotations.empty()) return "The job has no annotations.\n";
    std::string text;
    for (std::size_t index = 0; index < m_annotations.size(); ++index) {
        std::vector<std::vector<std::string>> lines;
        for (const Fact& fact : m_annotations[index])
            lines.push_back({fact.name, fact.value, fact.unit});
        text += (index == 0 ? "" : "\n") + std::to_string(index + 1) + "\n" +
                AlignedTable(std::move(lines), width, "  ");
    }
    return text;
}

JsonText AnnotationsReport::AsJson() const {
    JsonText json;
    json.BeginObject().Key("page").Number(m_number + 1LL);
    json.Key("width").Decimal(Decimal(m_page.Width)).Key("height").Decimal(Decimal(m_page.Height));
    json.Key("unit").Text(xpsUnits).Key("annotations").BeginArray();
    for (const Facts& facts : m_annotations) {
        json.BeginObject();
        for (const Fact& fact : facts) {
            json.Key(fact.key);
            fact.isNumber ? json.Decimal(fact.value) : json.Text(fact.value);
        }
        json.EndObject();
    }
    json.EndArray().EndObject();
    return json;
}

} // namespace OvPipeline
