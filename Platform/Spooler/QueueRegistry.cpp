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

// The queue folders below the folders of the search variable, in a stable order.
std::vector<std::filesystem::path> SearchFolders() {
    std::vector<std::filesystem::path> folders;
    const char* variable = std::getenv(QueueRegistry::searchVariable);
    std::istringstream parents(variable != nullptr ? variable : "");
    for (std::string parent; std::getline(parents, parent, ':');) {
        std::error_code failure;
        std::vector<std::filesystem::path> children;
        for (const auto& entry : std::filesystem::directory_iterator(parent, failure))
            if (std::filesystem::exists(entry.path() / QueueFolder::descriptionFile, failure))
                children.push_back(entry.path());
        std::sort(children.begin(), children.end());
        folders.insert(folders.end(), children.begin(), children.end());
    }
    return folders;
}

std::shared_ptr<const QueueFolder> Search(const std::wstring& foldedName) {
    for (const auto& folder : SearchFolders()) {
        try {
            auto queue = QueueFolder::Load(folder);
            if (FoldCase(queue->PrinterName()) == foldedName) return queue;
        } catch (const QueueFolderError&) {
            // A damaged folder hides no other printer; loading it by name says what is wrong with it.
        }
    }
    return nullptr;
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
    auto queue = Search(name); // outside the lock: it reads files
    if (!queue) return nullptr;
    const std::lock_guard guard(TheRegistry().lock);
    return TheRegistry().queues.emplace(name, queue).first->second;
}

void QueueRegistry::Clear() {
    const std::lock_guard guard(TheRegistry().lock);
    TheRegistry().queues.clear();
}

} // namespace OvPlatform
