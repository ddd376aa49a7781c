#include "PrintTicket/PrintTicketProvider.h"

#include <mutex>
#include <thread>
#include <unordered_map>

namespace OvPlatform {
namespace {

struct OpenProvider {
    std::thread::id owner;
    std::shared_ptr<const PrintTicketProvider> provider;
};

std::mutex openMutex;

std::unordered_map<const void*, OpenProvider>& OpenProviders() {
    static std::unordered_map<const void*, OpenProvider> providers;
    return providers;
}

} // namespace

HPTPROVIDER PrintTicketProvider::Open(const std::shared_ptr<const QueueFolder>& queue) {
    auto provider = std::make_shared<const PrintTicketProvider>(queue);
    const void* key = provider.get();
    const std::scoped_lock lock(openMutex);
    OpenProviders()[key] = {std::this_thread::get_id(), std::move(provider)};
    return static_cast<HPTPROVIDER>(const_cast<void*>(key));
}

std::shared_ptr<const PrintTicketProvider> PrintTicketProvider::Find(HPTPROVIDER handle) {
    const std::scoped_lock lock(openMutex);
    const auto found = OpenProviders().find(handle);
    if (found == OpenProviders().end() || found->second.owner != std::this_thread::get_id()) return nullptr;
    return found->second.provider;
}

bool PrintTicketProvider::Close(HPTPROVIDER handle) {
    std::shared_ptr<const PrintTicketProvider> provider = Find(handle);
    if (!provider) return false;
    const std::scoped_lock lock(openMutex);
    OpenProviders().erase(handle);
    return true;
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
