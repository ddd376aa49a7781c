#pragma once

/// How a diagnostic build dumps a value. This build dumps nothing and has nothing to choose.
struct DumpArgs {};
