#pragma once

// What ov-FilterUtilities exports. Everything else is hidden.
// Users import nothing by name, for the reason that UtilitiesExport.h gives.
#if !defined(_WIN32)
#define OV_FILTER_UTILITIES_API __attribute__((visibility("default")))
#elif defined(OV_FILTER_UTILITIES_BUILD)
#define OV_FILTER_UTILITIES_API __declspec(dllexport)
#else
#define OV_FILTER_UTILITIES_API
#endif
