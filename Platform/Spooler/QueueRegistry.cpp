#include "Spooler/QueueRegistry.h"

#include "Locale/CharacterCase.h"

#include <algorithm>
#include <cstdlib>
#include <map>
#include <mutex>
#include <sstream>

namespace OvPlatform {

namespace {

struct Registry {
    std::mutex lock;
    std::map<std::wstring, std::shared_ptr<const QueueFolder>> queues; // by folded name
};

Registry& TheRegistry() {
    static Registry registry;
    return registry;
}

// The queue folders in a folder, in a stable order.
std::vector<std::filesystem::path> QueueFoldersIn(const std::string& parent) {
    std::vector<std::filesystem::path> found;
    std::error_code failure;
    for (std::filesystem::directory_iterator entry(parent, failure), end; !failure && entry != end;
         entry.increment(failure)) {
        std::error_code ignored;
        if (std::filesystem::exists(entry->path() / QueueFolder::descriptionFile, ignored))
            found.push_back(entry->path());
    }
    std::sort(found.begin(), found.end());
    return found;
}

// Reads the queues of the search variable until `take`, which gets each with its folded name, has enough.
template <class Take>
void Search(Take take) {
    const char* variable = std::getenv(QueueRegistry::searchVariable);
    std::istringstream parents(variable != nullptr ? variable : "");
    for (std::string parent; std::getline(parents, parent, ':');)
        for (const auto& folder : QueueFoldersIn(parent)) {
            try {
                auto queue = QueueFolder::Load(folder);
                std::wstring name = FoldCase(queue->PrinterName());
                if (take(std::move(name), std::move(queue))) return;
            } catch (const QueueFolderError&) {
                // A damaged folder hides no other printer; loading it by name says what is wrong with it.
            }
        }
}

} // namespace

void QueueRegistry::Add(std::shared_ptr<const QueueFolder> queue) {
    std::wstring name = FoldCase(queue->PrinterName());
    const std::lock_guard guard(TheRegistry().lock);
    TheRegistry().queues.insert_or_assign(std::move(name), std::move(queue));
}

std::shared_ptr<const QueueFolder> QueueRegistry::Find(const wchar_t* printerName) {
    if (printerName == nullptr || !*printerName) return nullptr;
    const std::wstring name = FoldCase(printerName);
    {
        const std::lock_guard guard(TheRegistry().lock);
        const auto found = TheRegistry().queues.find(name);
        if (found != TheRegistry().queues.end()) return found->second;
    }
    std::shared_ptr<const QueueFolder> queue;
    Search([&](const std::wstring& found, std::shared_ptr<const QueueFolder> read) { // outside the lock
        if (found != name) return false;
        queue = std::move(read);
        return true;
    });
    if (!queue) return nullptr;
    const std::lock_guard guard(TheRegistry().lock);
    return TheRegistry().queues.emplace(name, queue).first->second;
}

std::vector<std::shared_ptr<const QueueFolder>> QueueRegistry::All() {
    std::map<std::wstring, std::shared_ptr<const QueueFolder>> read;
    Search([&](std::wstring name, std::shared_ptr<const QueueFolder> queue) { // outside the lock
        read.emplace(std::move(name), std::move(queue));
        return false;
    });
    const std::lock_guard guard(TheRegistry().lock);
    TheRegistry().queues.merge(read); // what is known already stays
    std::vector<std::shared_ptr<const QueueFolder>> all;
    for (const auto& [name, queue] : TheRegistry().queues)
        all.push_back(queue);
    return all;
}

void QueueRegistry::Clear() {
    const std::lock_guard guard(TheRegistry().lock);
    TheRegistry().queues.clear();
}

} // namespace OvPlatform
