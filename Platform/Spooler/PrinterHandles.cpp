#include "Spooler/PrinterHandles.h"

#include <map>
#include <mutex>

namespace OvPlatform {

namespace {

struct Table {
    std::mutex lock;
    std::map<HANDLE, std::shared_ptr<const QueueFolder>> open;
    std::uintptr_t next = 0x50000;
};

Table& TheTable() {
    static Table table;
    return table;
}

} // namespace

HANDLE PrinterHandles::Open(std::shared_ptr<const QueueFolder> queue) {
    Table& table = TheTable();
    const std::lock_guard guard(table.lock);
    const HANDLE handle = reinterpret_cast<HANDLE>(table.next += 4);
    table.open.emplace(handle, std::move(queue));
    return handle;
}

std::shared_ptr<const QueueFolder> PrinterHandles::Find(HANDLE handle) {
    Table& table = TheTable();
    const std::lock_guard guard(table.lock);
    const auto found = table.open.find(handle);
    return found == table.open.end() ? nullptr : found->second;
}

bool PrinterHandles::Close(HANDLE handle) {
    Table& table = TheTable();
    const std::lock_guard guard(table.lock);
    return table.open.erase(handle) != 0;
}

} // namespace OvPlatform
