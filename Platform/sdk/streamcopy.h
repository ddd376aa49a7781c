#pragma once

// No published header, but what the stream bodies of both builds share: how bytes go from one stream to
// another. Header only, since the library's own streams need it beside the platform's.

#include <objidl.h>

#include <algorithm>

namespace OvPlatform {

/// Goes on until the target has taken all bytes or fails. `written`: the bytes that it took, whatever the
/// result. STG_E_MEDIUMFULL if it takes none and says nothing, STG_E_WRITEFAULT if it claims to have taken
/// more than it was offered.
inline HRESULT WriteWhole(ISequentialStream* target, const void* bytes, ULONGLONG size, ULONGLONG* written) {
    constexpr ULONGLONG MostAtOnce = 1u << 30;
    for (*written = 0; *written < size;) {
        const auto offered = static_cast<ULONG>((std::min)(size - *written, MostAtOnce));
        ULONG taken = 0;
        const HRESULT result = target->Write(static_cast<const BYTE*>(bytes) + *written, offered, &taken);
        *written += (std::min)(taken, offered);
        if (FAILED(result)) return result;
        if (taken == 0) return STG_E_MEDIUMFULL;
        if (taken > offered) return STG_E_WRITEFAULT;
    }
    return S_OK;
}

/// The body of IStream::CopyTo. `nextChunk(most, bytes, size)` reads on, by at most `most` bytes: it says
/// where they lie until it is called again and how many they are, 0 at the end, or fails. `read` and
/// `written` may be null; they tell what was moved also where that ends in a failure.
template <class NextChunk>
HRESULT CopyStream(NextChunk&& nextChunk, IStream* target, ULARGE_INTEGER count, ULARGE_INTEGER* read,
                   ULARGE_INTEGER* written) {
    ULARGE_INTEGER unasked;
    if (read == nullptr) read = &unasked;
    if (written == nullptr) written = &unasked;
    read->QuadPart = 0;
    written->QuadPart = 0;
    if (target == nullptr) return STG_E_INVALIDPOINTER;
    for (ULONGLONG left = count.QuadPart; left != 0;) {
        const void* bytes = nullptr;
        ULONGLONG size = 0;
        if (const HRESULT result = nextChunk(left, bytes, size); FAILED(result)) return result;
        if (size == 0) break;
        read->QuadPart += size;
        left -= size;
        ULONGLONG taken = 0;
        const HRESULT result = WriteWhole(target, bytes, size, &taken);
        written->QuadPart += taken;
        if (FAILED(result)) return result;
    }
    return S_OK;
}

} // namespace OvPlatform
