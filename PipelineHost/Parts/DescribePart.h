#pragma once

#include "Report/Trace.h"
#include "Streams/StreamMaker.h"

#include <windows.h>

#include <memory>
#include <string>

namespace OvPipeline {

/// "page /Documents/1/Pages/1.fpage", for the trace; notes the part as the one that the calling thread has in
/// hand.
std::string DescribePart(IUnknown* part);

/// Notes and traces that the calling thread got a part; null is the end of them. From now on it is the
/// holder's to write. What failed before did not stop the filter, and is forgotten.
void NoteReceived(IUnknown* part, Trace& log, const std::shared_ptr<const StreamMaker>& holder = {});

} // namespace OvPipeline
