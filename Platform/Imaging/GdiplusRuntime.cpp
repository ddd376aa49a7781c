#include "Imaging/GdiplusRuntime.h"

#include "Com/FaultInjection.h"

#include <gdiplus.h>

#include <mutex>
#include <new>
#include <set>

namespace {

using namespace Gdiplus;

struct Starts {
    std::mutex lock;
    std::set<ULONG_PTR> tokens;
    ULONG_PTR last = 0;
};

// Never destroyed: a filter may shut GDI+ down from a destructor of its own statics.
Starts& AllStarts() {
    static Starts& starts = *new Starts;
    return starts;
}

} // namespace

bool OvPlatform::IsGdiplusRunning() noexcept {
    Starts& starts = AllStarts();
    const std::lock_guard guard(starts.lock);
    return !starts.tokens.empty();
}

Status Gdiplus::GdiplusStartup(ULONG_PTR* token, const GdiplusStartupInput* input, GdiplusStartupOutput*) {
    if (token == nullptr || input == nullptr) return InvalidParameter;
    if (OvPlatform::FaultPointHit()) return OutOfMemory;
    if (input->GdiplusVersion != 1) return UnsupportedGdiplusVersion;
    try {
        Starts& starts = AllStarts();
        const std::lock_guard guard(starts.lock);
        starts.tokens.insert(starts.last + 1);
        *token = ++starts.last;
        return Ok;
    } catch (const std::bad_alloc&) {
        return OutOfMemory;
    }
}

void Gdiplus::GdiplusShutdown(ULONG_PTR token) {
    Starts& starts = AllStarts();
    const std::lock_guard guard(starts.lock);
    starts.tokens.erase(token);
}
