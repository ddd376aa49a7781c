#include <windows.h>

#include <cstdint>
#include <cstdlib>
#include <string>

namespace {

std::wstring Widen(const std::string& bytes, DWORD flags) {
    const int length = static_cast<int>(bytes.size());
    std::wstring text(
        static_cast<std::size_t>(MultiByteToWideChar(CP_UTF8, flags, bytes.data(), length, nullptr, 0)),
        L'\0');
    const int capacity = static_cast<int>(text.size());
    if (capacity > 0 &&
        MultiByteToWideChar(CP_UTF8, flags, bytes.data(), length, text.data(), capacity) != capacity)
        std::abort();
    return text;
}

std::string Narrow(const std::wstring& text) {
    const int length = static_cast<int>(text.size());
    std::string bytes(static_cast<std::size_t>(WideCharToMultiByte(CP_UTF8, WC_ERR_INVALID_CHARS, text.data(),
                                                                   length, nullptr, 0, nullptr, nullptr)),
                      '\0');
    const int capacity = static_cast<int>(bytes.size());
    if (WideCharToMultiByte(CP_UTF8, 0, text.data(), length, bytes.data(), capacity, nullptr, nullptr) !=
        capacity)
        std::abort();
    return bytes;
}

} // namespace

// Decoding always gives well-formed text, which survives the way to bytes and back; bytes that pass the
// strict check survive as they are.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0) return 0;
    const std::string bytes(reinterpret_cast<const char*>(data), size);
    const std::wstring text = Widen(bytes, 0);
    if (text.empty()) std::abort();
    const std::string again = Narrow(text);
    if (again.empty() || Widen(again, MB_ERR_INVALID_CHARS) != text) std::abort();
    const std::wstring strict = Widen(bytes, MB_ERR_INVALID_CHARS);
    if (!strict.empty() && again != bytes) std::abort();
    return 0;
}
