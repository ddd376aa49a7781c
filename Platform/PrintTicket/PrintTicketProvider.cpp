#include "PrintTicket/PrintTicketProvider.h"

#include <mutex>
#include <set>
#include <unordered_map>

namespace OvPlatform {
namespace {

// The open handles of one thread. They end with it: nobody else can close them.
class ThreadProviders {
public:
    static ThreadProviders& Own() {
        thread_local ThreadProviders providers;
        return providers;
    }
    // Tells the thread that opened the handle, if one did, that it is needed no longer.
    static void LetGo(HPTPROVIDER handle) {
        const std::scoped_lock lock(Mutex());
        if (const auto owner = Owners().find(handle); owner != Owners().end())
            owner->second->m_letGo.insert(handle);
    }

    ThreadProviders() = default;
    ThreadProviders(const ThreadProviders&) = delete;
    ThreadProviders& operator=(const ThreadProviders&) = delete;
    ~ThreadProviders() {
        const std::scoped_lock lock(Mutex());
        for (const auto& [handle, provider] : m_open)
            Owners().erase(handle);
    }

    void Add(HPTPROVIDER handle, std::shared_ptr<const PrintTicketProvider> provider) {
        std::set<HPTPROVIDER> letGo;
        {
            const std::scoped_lock lock(Mutex());
            letGo.swap(m_letGo);
        }
        for (const HPTPROVIDER old : letGo)
            Remove(old);
        m_open.emplace(handle, std::move(provider));
        const std::scoped_lock lock(Mutex());
        Owners()[handle] = this;
    }
    bool Remove(HPTPROVIDER handle) {
        if (m_open.erase(handle) == 0) return false;
        const std::scoped_lock lock(Mutex());
        Owners().erase(handle);
        return true;
    }
    std::shared_ptr<const PrintTicketProvider> Find(HPTPROVIDER handle) const {
        const auto found = m_open.find(handle);
        return found == m_open.end() ? nullptr : found->second;
    }

private:
    static std::mutex& Mutex() {
        static std::mutex mutex;
        return mutex;
    }
    static std::unordered_map<HPTPROVIDER, ThreadProviders*>& Owners() {
        static std::unordered_map<HPTPROVIDER, ThreadProviders*> owners;
        return owners;
    }

    std::unordered_map<HPTPROVIDER, std::shared_ptr<const PrintTicketProvider>> m_open; // this thread's alone
    std::set<HPTPROVIDER> m_letGo; // closed by others since the last handle was opened
};

} // namespace

HPTPROVIDER PrintTicketProvider::Open(const std::shared_ptr<const QueueFolder>& queue) {
    auto provider = std::make_shared<const PrintTicketProvider>(queue);
    void* const key = const_cast<PrintTicketProvider*>(provider.get());
    const auto handle = static_cast<HPTPROVIDER>(key);
    ThreadProviders::Own().Add(handle, std::move(provider));
    return handle;
}

std::shared_ptr<const PrintTicketProvider> PrintTicketProvider::Find(HPTPROVIDER handle) {
    return ThreadProviders::Own().Find(handle);
}

bool PrintTicketProvider::Close(HPTPROVIDER handle) {
    if (ThreadProviders::Own().Remove(handle)) return true;
    ThreadProviders::LetGo(handle);
    return false;
}

PrintTicketProvider::PrintTicketProvider(const std::shared_ptr<const QueueFolder>& queue) {
    try {
        m_merge.emplace(queue);
    } catch (const PrintTicketError& error) {
        m_error = error;
    }
}

const PrintTicketMerge& PrintTicketProvider::Merge() const {
    if (m_error) throw *m_error;
    return *m_merge;
}

} // namespace OvPlatform
