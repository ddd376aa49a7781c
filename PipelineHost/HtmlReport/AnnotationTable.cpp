#include "HtmlReport/AnnotationTable.h"

#include "HtmlReport/HtmlTable.h"

namespace OvPipeline {

HtmlText AnnotationTable(const AnnotationsReport::Facts& facts) {
    HtmlText html;
    HtmlTable table(html, "Annotation", {"what", "value", "unit"});
    for (const AnnotationsReport::Fact& fact : facts)
        table.Row({fact.name,
                   {fact.value, fact.isNumber ? HtmlText::Word("number") : HtmlText::Word("")},
                   fact.unit});
    return html;
}

} // namespace OvPipeline
