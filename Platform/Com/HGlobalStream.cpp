#include "Com/CountedObject.h"
#include "Com/FaultInjection.h"
#include "Com/GlobalMemory.h"

#include <atlcomcli.h>
#include <streambase.h>

#include <algorithm>
#include <cstring>
#include <limits>
#include <memory>
#include <mutex>
#include <new>

namespace {

using namespace OvPlatform;

// Known to this file only: how GetHGlobalFromStream finds out whether a stream is one of ours.
constexpr IID ownIdentifier = {0x6f1c7e52, 0x0b5d, 0x4d0a, {0x9a, 0x31, 0x52, 0xc4, 0x1e, 0x8f, 0x60, 0x7b}};

/// The bytes that a stream and its clones share.
struct SharedMemory {
    SharedMemory(HGLOBAL block, bool freeAtEnd, std::size_t bytes)
        : memory(block), owned(freeAtEnd), size(bytes) {}
    SharedMemory(const SharedMemory&) = delete;
    SharedMemory& operator=(const SharedMemory&) = delete;
    ~SharedMemory() {
        if (owned) GlobalMemory::Free(memory);
    }

    /// Makes room for `needed` bytes in steps that keep appending linear. The stream's size is as before.
    bool Reserve(ULONGLONG needed) {
        const ULONGLONG capacity = GlobalMemory::Size(memory);
        if (needed <= capacity) return true;
        if (needed > static_cast<ULONGLONG>((std::numeric_limits<std::ptrdiff_t>::max)())) return false;
        return GlobalMemory::Resize(memory, (std::max)(needed, capacity + capacity / 2), false) != nullptr ||
               GlobalMemory::Resize(memory, needed, false) != nullptr;
    }
    bool SetSize(ULONGLONG newSize) {
        if (!Reserve(newSize)) return false;
        if (newSize > size) std::memset(GlobalMemory::Data(memory) + size, 0, newSize - size);
        size = static_cast<std::size_t>(newSize);
        return true;
    }

    std::mutex lock;
    HGLOBAL memory;
    bool owned;
    std::size_t size;
};

class HGlobalStream final : public StreamBase<FaultEntry> {
public:
    HGlobalStream(std::shared_ptr<SharedMemory> shared, std::size_t position)
        : StreamBase(STGM_READWRITE, position, STG_E_SEEKERROR), m_shared(std::move(shared)) {}

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** object) override {
        if (iid != ownIdentifier) return StreamBase::QueryInterface(iid, object);
        *object = this;
        AddRef();
        return S_OK;
    }

    HRESULT STDMETHODCALLTYPE Read(void* buffer, ULONG count, ULONG* got) override {
        if (got != nullptr) *got = 0;
        if (buffer == nullptr) return STG_E_INVALIDPOINTER;
        if (HRESULT fault = FaultPoint(); FAILED(fault)) return fault;
        std::lock_guard guard(m_shared->lock);
        if (m_position >= m_shared->size) return S_OK;
        // The memory may have been made smaller behind the stream.
        const std::size_t end =
            (std::min)(m_shared->size, static_cast<std::size_t>(GlobalMemory::Size(m_shared->memory)));
        const auto taken =
            static_cast<ULONG>((std::min)(std::size_t{count}, end - (std::min)(m_position, end)));
        if (taken > 0) std::memcpy(buffer, GlobalMemory::Data(m_shared->memory) + m_position, taken);
        m_position += taken;
        if (got != nullptr) *got = taken;
        return S_OK;
    }

    HRESULT STDMETHODCALLTYPE Write(const void* bytes, ULONG count, ULONG* written) override {
        if (written != nullptr) *written = 0;
        if (bytes == nullptr) return STG_E_INVALIDPOINTER;
        if (HRESULT fault = FaultPoint(); FAILED(fault)) return fault;
        if (count == 0) return S_OK;
        std::lock_guard guard(m_shared->lock);
        const std::size_t end = m_position + count;
        if (end < m_position) return STG_E_MEDIUMFULL;
        if (end > m_shared->size) {
            if (!m_shared->Reserve(end)) return E_OUTOFMEMORY;
            // A gap that seeking left reads as zeros.
            if (m_position > m_shared->size && !m_shared->SetSize(m_position)) return E_OUTOFMEMORY;
            m_shared->size = end;
        }
        std::memcpy(GlobalMemory::Data(m_shared->memory) + m_position, bytes, count);
        m_position = end;
        if (written != nullptr) *written = count;
        return S_OK;
    }

    HRESULT STDMETHODCALLTYPE SetSize(ULARGE_INTEGER newSize) override {
        if (HRESULT fault = FaultPoint(); FAILED(fault)) return fault;
        std::lock_guard guard(m_shared->lock);
        return m_shared->SetSize(newSize.QuadPart) ? S_OK : E_OUTOFMEMORY;
    }

    HRESULT STDMETHODCALLTYPE Clone(IStream** clone) override {
        if (clone == nullptr) return STG_E_INVALIDPOINTER;
        *clone = nullptr;
        if (HRESULT fault = FaultPoint(); FAILED(fault)) return fault;
        std::lock_guard guard(m_shared->lock);
        auto* copy = new (std::nothrow) HGlobalStream(m_shared, m_position);
        if (copy == nullptr) return E_OUTOFMEMORY;
        *clone = copy;
        return S_OK;
    }

    /// The memory, cut to the stream's size where that is possible, so that its size is the stream's.
    HGLOBAL Memory() {
        std::lock_guard guard(m_shared->lock);
        if (GlobalMemory::Size(m_shared->memory) > m_shared->size)
            GlobalMemory::Resize(m_shared->memory, static_cast<SIZE_T>(m_shared->size), false);
        return m_shared->memory;
    }

private:
    HRESULT Size(std::size_t& size) override {
        size = m_shared->size;
        return S_OK;
    }
    void Hold() override { m_shared->lock.lock(); }
    void LetGo() override { m_shared->lock.unlock(); }

    std::shared_ptr<SharedMemory> m_shared;
};

} // namespace

HRESULT CreateStreamOnHGlobal(HGLOBAL memory, BOOL deleteOnRelease, IStream** stream) {
    if (stream == nullptr) return E_INVALIDARG;
    *stream = nullptr;
    if (HRESULT fault = FaultPoint(); FAILED(fault)) return fault;
    const bool ownBlock = memory == nullptr;
    if (ownBlock) memory = GlobalMemory::Allocate(GMEM_MOVEABLE, 0);
    if (memory == nullptr) return E_OUTOFMEMORY;
    if (!GlobalMemory::IsBlock(memory)) return E_INVALIDARG;
    std::shared_ptr<SharedMemory> shared;
    try {
        shared = std::make_shared<SharedMemory>(memory, false, GlobalMemory::Size(memory));
    } catch (const std::bad_alloc&) {
        if (ownBlock) GlobalMemory::Free(memory);
        return E_OUTOFMEMORY;
    }
    auto* created = new (std::nothrow) HGlobalStream(shared, 0);
    if (created == nullptr) {
        if (ownBlock) GlobalMemory::Free(memory);
        return E_OUTOFMEMORY;
    }
    // Only now: until the stream is made, the caller's memory stays the caller's.
    shared->owned = deleteOnRelease != FALSE;
    *stream = created;
    return S_OK;
}

HRESULT GetHGlobalFromStream(IStream* stream, HGLOBAL* memory) {
    if (stream == nullptr || memory == nullptr) return E_INVALIDARG;
    *memory = nullptr;
    void* own = nullptr;
    if (HRESULT result = stream->QueryInterface(ownIdentifier, &own); FAILED(result))
        return result == E_NOINTERFACE ? E_INVALIDARG : result;
    CComPtr<HGlobalStream> held;
    held.Attach(static_cast<HGlobalStream*>(own));
    *memory = held->Memory();
    return S_OK;
}
