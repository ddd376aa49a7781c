#include "HtmlReport/AnnotationTable.h"

#include "HtmlReport/HtmlTable.h"

#include <Locale/ShownText.h>

namespace OvPipeline {

namespace {

constexpr std::size_t titleBound = 60; // characters

} // namespace

std::string AnnotationTitle(const AnnotationsReport::Facts& facts) {
    std::string title;
    for (const AnnotationsReport::Fact& fact : facts) {
        const std::string_view key = fact.key;
        if (key == "kind") title = fact.value;
        if (key == "text" || key == "file") title += " \"" + OvPlatform::Shown(fact.value, titleBound) + "\"";
    }
    return title + " on";
}

HtmlText AnnotationTable(const AnnotationsReport::Facts& facts) {
    HtmlText html;
    HtmlTable table(html, "Annotation", {"what", "value", "unit"});
    for (const AnnotationsReport::Fact& fact : facts)
        table.Row({fact.name, fact.value, fact.unit});
    return html;
}

} // namespace OvPipeline
