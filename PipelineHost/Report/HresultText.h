#pragma once

#include <windows.h>

#include <string>

namespace OvPipeline {

/// "0x80070490 E_ELEMENT_NOT_FOUND (no such element)": the number, and for a known result its name and what
/// it means.
std::string HresultText(HRESULT result);

/// The meaning alone; empty for a result that is not known.
std::string HresultMeaning(HRESULT result);

} // namespace OvPipeline
