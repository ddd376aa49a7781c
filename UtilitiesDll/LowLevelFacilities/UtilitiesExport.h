#pragma once

// What ov-Utilities exports. Everything else is hidden.
//
// Deliberate: its users import nothing by name. A class imported in whole would have its constants imported
// too, and those no library exports, so `std::min(n, CPString::npos)` would not link. As it is, each module
// has the constants for itself; functions and tables of virtual functions come through the import library.
#if !defined(_WIN32)
#define OV_UTILITIES_API __attribute__((visibility("default")))
#elif defined(OV_UTILITIES_BUILD)
#define OV_UTILITIES_API __declspec(dllexport)
#else
#define OV_UTILITIES_API
#endif
