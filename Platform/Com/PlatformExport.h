#pragma once

// What ov-Platform exports: the platform's functions, and the rooms' own classes that the pipeline host and
// the tests use. Everything else is hidden.
#define OV_PLATFORM_API __attribute__((visibility("default")))
