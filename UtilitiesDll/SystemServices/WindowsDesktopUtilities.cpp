#include "SystemServices/WindowsDesktopUtilities.h"

#include "LowLevelFacilities/Failures/DebugUtilities.h"
#include "LowLevelFacilities/Strings/CPStringUtils.h"
#include "SystemServices/ReadOnlyMemoryStream.h"

#include <chrono>
#include <future>
#include <thread>

namespace {

constexpr std::chrono::seconds longestWait{60};

/// Owns its texts, since it may outlive the caller.
struct MessageBoxTask {
    HWND window;
    CXString text;
    CXString caption;
    UINT style;

    int operator()() const { return MessageBoxW(window, text, caption, style); }
};

} // namespace

HRESULT WindowsDesktopUtilities::CreateReadOnlyIStreamFromBuffer(IStream** stream, const void* bytes,
                                                                 std::size_t length) noexcept {
    if (stream == nullptr) return E_POINTER;
    *stream = nullptr;
    if (bytes == nullptr && length != 0) return E_POINTER;
    try {
        const auto* const first = static_cast<const unsigned char*>(bytes);
        auto copy = std::make_shared<std::vector<unsigned char>>(first, first + length);
        *stream = new ReadOnlyMemoryStream(std::move(copy));
        return S_OK;
    } catch (...) {
        return E_OUTOFMEMORY;
    }
}

int WindowsDesktopUtilities::noHangDebugMessageBox(HWND window, const CXString& text, const CXString& caption,
                                                   UINT style) noexcept {
    try {
        DebugUtilities::reportErrorForLowLevelUtilities(CPStringUtils::narrowToStdString(text),
                                                        CPStringUtils::narrowToStdString(caption));
        std::packaged_task<int()> task(MessageBoxTask{window, text, caption, style});
        std::future<int> answer = task.get_future();
        std::thread(std::move(task)).detach();
        return answer.wait_for(longestWait) == std::future_status::ready ? answer.get() : 0;
    } catch (...) {
        return 0;
    }
}
