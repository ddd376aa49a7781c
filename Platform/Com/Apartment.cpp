#include "Com/Apartment.h"

#include "Com/FaultInjection.h"

#include <atomic>

namespace {

enum class Kind { None, SingleThreaded, MultiThreaded };

struct ThreadApartment {
    Kind kind = Kind::None;
    ULONG entries = 0;

    ~ThreadApartment();
};

// Threads in the multi-threaded apartment. While there are any, threads that entered none are in it as well.
std::atomic<LONG> multiThreadedMembers{0};
thread_local ThreadApartment apartment;

ThreadApartment::~ThreadApartment() {
    if (kind == Kind::MultiThreaded) --multiThreadedMembers;
}

} // namespace

namespace OvPlatform {

bool IsInApartment() noexcept { return apartment.kind != Kind::None || multiThreadedMembers.load() > 0; }

} // namespace OvPlatform

HRESULT CoInitializeEx(LPVOID reserved, DWORD flags) {
    if (reserved != nullptr) return E_INVALIDARG;
    if (HRESULT fault = OvPlatform::FaultPoint(); FAILED(fault)) return fault;
    const Kind wanted = (flags & COINIT_APARTMENTTHREADED) != 0 ? Kind::SingleThreaded : Kind::MultiThreaded;
    if (apartment.kind == Kind::None) {
        apartment.kind = wanted;
        apartment.entries = 1;
        if (wanted == Kind::MultiThreaded) ++multiThreadedMembers;
        return S_OK;
    }
    if (apartment.kind != wanted) return RPC_E_CHANGED_MODE;
    ++apartment.entries;
    return S_FALSE;
}

HRESULT CoInitialize(LPVOID reserved) { return CoInitializeEx(reserved, COINIT_APARTMENTTHREADED); }

void CoUninitialize() {
    if (apartment.entries == 0 || --apartment.entries > 0) return;
    if (apartment.kind == Kind::MultiThreaded) --multiThreadedMembers;
    apartment.kind = Kind::None;
}
