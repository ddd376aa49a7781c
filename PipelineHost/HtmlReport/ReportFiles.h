#pragma once

#include "HtmlReport/HtmlText.h"

namespace OvPipeline {

// report.css and report.js, as they stand in a report.
extern const HtmlText::Word reportStyles;
extern const HtmlText::Word reportScript;
/// SHA-256 of the script, in hexadecimal: the only one that a report lets run.
extern const char* const reportScriptHash;

} // namespace OvPipeline
