#pragma once

#include <windows.h>

#include <memory>

namespace OvPlatform {

/// What a handle of the system stands for.
class HandleObject {
public:
    HandleObject() = default;
    HandleObject(const HandleObject&) = delete;
    HandleObject& operator=(const HandleObject&) = delete;
    virtual ~HandleObject() = default;
};

/// The open handles of the process. A value is given out once, so that a closed handle is never taken for
/// another.
namespace HandleTable {

/// Throws std::bad_alloc.
HANDLE Open(std::shared_ptr<HandleObject> object);
/// Null if it is no open handle.
std::shared_ptr<HandleObject> Find(HANDLE handle) noexcept;
bool Close(HANDLE handle) noexcept;

/// Null too if the handle stands for something else.
template <typename T>
std::shared_ptr<T> FindAs(HANDLE handle) noexcept {
    return std::dynamic_pointer_cast<T>(Find(handle));
}

} // namespace HandleTable

/// The Win32 error of an errno value.
DWORD ErrorFromErrno(int number) noexcept;

} // namespace OvPlatform
