#pragma once

#include "Limits.h"

#include <windows.h>
#include <benchmark/benchmark.h>
#include <objbase.h>

/// The main function of benchmarks that use the platform's documents. Gives the exit code of the limits.
inline int RunBenchmarksInApartment(int argumentCount, char** arguments) {
    CoInitializeEx(nullptr, COINIT_MULTITHREADED);
    benchmark::Initialize(&argumentCount, arguments);
    benchmark::RunSpecifiedBenchmarks();
    CoUninitialize();
    return Limits::Conclude();
}
