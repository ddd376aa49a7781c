#include "NativeComPrinterPropertyBagAccess.h"

#include <ComSupport/ThrowHresult.h>

#include <limits>
#include <memory>
#include <string>
#include <utility>

namespace {

CComBSTR ToBstr(const CXString& text, const char* function) {
    CComBSTR result;
    result.Attach(SysAllocStringLen(text, static_cast<UINT>(text.GetLength())));
    if (!result) ThrowComException(E_OUTOFMEMORY, function);
    return result;
}

struct TaskMemoryDeleter {
    void operator()(void* block) const { CoTaskMemFree(block); }
};

// The size of the stream, or false where it cannot be had or is more than one read can take.
bool TryGetSize(IStream& stream, ULONG& size) {
    STATSTG status{};
    if (FAILED(stream.Stat(&status, STATFLAG_NONAME))) return false;
    if (status.cbSize.QuadPart > (std::numeric_limits<ULONG>::max)()) return false;
    size = static_cast<ULONG>(status.cbSize.QuadPart);
    return true;
}

// Into bytes that hold the stream's whole size: a value that comes short would be a partial one, and is none.
bool TryReadWhole(IStream& stream, void* bytes, ULONG size) {
    ULONG count = 0;
    return SUCCEEDED(stream.Read(bytes, size, &count)) && count == size;
}

} // namespace

NativeComPrinterPropertyBagAccess::NativeComPrinterPropertyBagAccess(
    IPrinterPropertyBag& bag, tagNativeComPrinterPropertyBagAccessAssertionPolicy policy)
    : m_bag(&bag), m_policy(policy) {}

NativeComPrinterPropertyBagAccess::~NativeComPrinterPropertyBagAccess() = default;

bool NativeComPrinterPropertyBagAccess::IsPropertyBagNull() { return false; }

bool NativeComPrinterPropertyBagAccess::GetPrinterPropertyBagBool(const CXString& key) const {
    BOOL value = FALSE;
    m_bag->GetBool(ToBstr(key, "NativeComPrinterPropertyBagAccess::GetPrinterPropertyBagBool"), &value);
    return value != FALSE;
}

int NativeComPrinterPropertyBagAccess::GetPrinterPropertyBagInteger(const CXString& key) const {
    LONG value = 0;
    m_bag->GetInt32(ToBstr(key, "NativeComPrinterPropertyBagAccess::GetPrinterPropertyBagInteger"), &value);
    return value;
}

void NativeComPrinterPropertyBagAccess::GetPrinterPropertyBagString(const CXString& key,
                                                                    CXString& out) const {
    CComBSTR value;
    m_bag->GetString(ToBstr(key, "NativeComPrinterPropertyBagAccess::GetPrinterPropertyBagString"), &value);
    out = CXString(value, static_cast<int>(value.Length()));
}

void NativeComPrinterPropertyBagAccess::GetPrinterPropertyBagBytes(const CXString& key,
                                                                   ByteBuffer& out) const {
    const CComBSTR name = ToBstr(key, "NativeComPrinterPropertyBagAccess::GetPrinterPropertyBagBytes");
    out.clear();
    DWORD size = 0;
    BYTE* bytes = nullptr;
    const HRESULT hr = m_bag->GetBytes(name, &size, &bytes);
    const std::unique_ptr<BYTE, TaskMemoryDeleter> block(bytes);
    if (SUCCEEDED(hr) && size != 0) out.setWithLpbyte(bytes, size);
}

void NativeComPrinterPropertyBagAccess::GetPrinterPropertyBagStreamBuffer(const CXString& key,
                                                                          ByteBuffer& out) const {
    CComPtr<IStream> stream;
    const HRESULT hr = m_bag->GetReadStream(
        ToBstr(key, "NativeComPrinterPropertyBagAccess::GetPrinterPropertyBagStreamBuffer"), &stream);
    out.clear();
    if (SUCCEEDED(hr) && stream) out = ConvertStreamToByteBuffer(stream);
}

void NativeComPrinterPropertyBagAccess::GetPrinterPropertyBagStreamAsCPString(const CXString& key,
                                                                              CPString& out) const {
    CComPtr<IStream> stream;
    const HRESULT hr = m_bag->GetReadStream(
        ToBstr(key, "NativeComPrinterPropertyBagAccess::GetPrinterPropertyBagStreamAsCPString"), &stream);
    out.clear();
    if (SUCCEEDED(hr) && stream) out = ConvertStreamToCPString(stream);
}

void NativeComPrinterPropertyBagAccess::GetPrinterPropertyBagCompressedStreamBuffer(const CXString& key,
                                                                                    ByteBuffer& out) const {
    GetPrinterPropertyBagStreamBuffer(key, out);
}

void NativeComPrinterPropertyBagAccess::SetPrinterPropertyBagBool(const CXString& key, bool value) {
    m_bag->SetBool(ToBstr(key, "NativeComPrinterPropertyBagAccess::SetPrinterPropertyBagBool"),
                   value ? TRUE : FALSE);
}

void NativeComPrinterPropertyBagAccess::SetPrinterPropertyBagInteger(const CXString& key, int value) {
    m_bag->SetInt32(ToBstr(key, "NativeComPrinterPropertyBagAccess::SetPrinterPropertyBagInteger"), value);
}

void NativeComPrinterPropertyBagAccess::SetPrinterPropertyBagString(const CXString& key,
                                                                    const CXString& value) {
    constexpr auto function = "NativeComPrinterPropertyBagAccess::SetPrinterPropertyBagString";
    m_bag->SetString(ToBstr(key, function), ToBstr(value, function));
}

void NativeComPrinterPropertyBagAccess::SetPrinterPropertyBagBytes(const CXString& key,
                                                                   const ByteBuffer& value) {
    // The published operation takes the bytes without const; it only reads them.
    m_bag->SetBytes(ToBstr(key, "NativeComPrinterPropertyBagAccess::SetPrinterPropertyBagBytes"),
                    value.getDword(), const_cast<BYTE*>(value.getLpbyte()));
}

void NativeComPrinterPropertyBagAccess::SetPrinterPropertyBagStreamBuffer(const CXString& key,
                                                                          const ByteBuffer& value) {
    CComPtr<IStream> stream;
    const HRESULT hr = m_bag->GetWriteStream(
        ToBstr(key, "NativeComPrinterPropertyBagAccess::SetPrinterPropertyBagStreamBuffer"), &stream);
    if (FAILED(hr) || !stream) return;
    ULONG written = 0;
    stream->Write(value.getLpbyte(), value.getDword(), &written);
    // Cuts off what a longer value left behind.
    ULARGE_INTEGER size{};
    size.QuadPart = value.getDword();
    stream->SetSize(size);
}

ByteBuffer NativeComPrinterPropertyBagAccess::ConvertStreamToByteBuffer(CComPtr<IStream>& stream) {
    ULONG size = 0;
    if (!TryGetSize(*stream, size)) return {};
    ByteBuffer result;
    result.resize(size);
    if (!TryReadWhole(*stream, result.data(), size)) return {};
    return result;
}

CPString NativeComPrinterPropertyBagAccess::ConvertStreamToCPString(CComPtr<IStream>& stream) {
    ULONG size = 0;
    if (!TryGetSize(*stream, size)) return {};
    std::string bytes(size, '\0');
    if (!TryReadWhole(*stream, bytes.data(), size)) return {};
    return CPString(std::move(bytes));
}
