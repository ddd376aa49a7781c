#pragma once

#include "HtmlReport/HtmlText.h"
#include "HtmlReport/JobOutline.h"
#include "HtmlReport/PagePictures.h"
#include "HtmlReport/SharedTables.h"

#include <string>

namespace OvPipeline {

/// All that a report says.
struct ReportContents {
    std::string queue;
    const JobOutline* outline = nullptr;
    const SharedTables* settings = nullptr;
    const SharedTables* annotations = nullptr;
    HtmlText features; // of the job
    HtmlText policy;
    HtmlText device;
    HtmlText times;
    DrawnPages input;
    DrawnPages output;
};

/// The report as one file without references to others. Only the script that stands in it may run.
std::string ReportPage(const ReportContents& contents);

} // namespace OvPipeline
