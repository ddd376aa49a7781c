#pragma once

// What ov-FilterUtilities exports. Everything else is hidden.
#if defined(_WIN32)
#if defined(OV_FILTER_UTILITIES_BUILD)
#define OV_FILTER_UTILITIES_API __declspec(dllexport)
#else
#define OV_FILTER_UTILITIES_API __declspec(dllimport)
#endif
#else
#define OV_FILTER_UTILITIES_API __attribute__((visibility("default")))
#endif
