#pragma once

#include "Report/JsonText.h"

#include <JobContext/JobAnnotations.h>

#include <string>
#include <utility>
#include <vector>

namespace OvPipeline {

/// The annotations of a page with all that was decided for each, for people and for programs.
class AnnotationsReport {
public:
    /// Pages count from 0. Measures texts in the system's fonts: throws what TextShaper throws.
    AnnotationsReport(const std::vector<PageAnnotation>& annotations, Gdiplus::SizeF page, unsigned number);

    /// What is decided, with its unit where it is a number.
    struct Fact {
        const char* name; // for people
        const char* key;  // for programs
        std::string value;
        const char* unit = "";
        bool isNumber = false;
    };
    using Facts = std::vector<Fact>;

    const std::vector<Facts>& Annotations() const { return m_annotations; }
    std::string AsTable(std::size_t width = 0) const;
    /// An object with the page's size and "annotations".
    JsonText AsJson() const;

private:
    static Facts FactsOf(const PageAnnotation& annotation, Gdiplus::SizeF page, unsigned number);
    static void AddText(Facts& facts, const PageAnnotation& annotation, Gdiplus::SizeF page, unsigned number);
    static void AddPicture(Facts& facts, const PageAnnotation& annotation, Gdiplus::SizeF page);
    static void AddPlace(Facts& facts, const AnnotationElementSettings& element, Gdiplus::SizeF page,
                         Gdiplus::SizeF size);

    Gdiplus::SizeF m_page;
    unsigned m_number;
    std::vector<Facts> m_annotations;
};

} // namespace OvPipeline
