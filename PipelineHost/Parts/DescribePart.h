#pragma once

#include "Report/Trace.h"

#include <windows.h>

#include <string>

namespace OvPipeline {

// "page /Documents/1/Pages/1.fpage", for the trace; notes the part as the one that the calling thread has in
// hand.
std::string DescribePart(IUnknown* part);

// Notes and traces that the calling thread got a part; null is the end of them.
void NoteReceived(IUnknown* part, Trace& log);

} // namespace OvPipeline
