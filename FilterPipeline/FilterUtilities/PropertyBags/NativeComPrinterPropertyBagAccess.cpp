#include "PropertyBags/NativeComPrinterPropertyBagAccess.h"

#include "ComSupport/FailureBarrier.h"
#include "ComSupport/ThrowHresult.h"

#include <limits>
#include <memory>
#include <string>
#include <utility>

namespace {

CComBSTR ToBstr(const CXString& text) {
    CComBSTR result;
    result.Attach(SysAllocStringLen(text, static_cast<UINT>(text.GetLength())));
    if (!result) ThrowComException(E_OUTOFMEMORY);
    return result;
}

// What a bag says of a value that it does not have, or not of that type.
bool IsMissing(HRESULT hr) { return hr == HRESULT_FROM_WIN32(ERROR_NOT_FOUND) || hr == E_INVALIDARG; }

// Other failures are reported; the value then counts as missing, too.
HRESULT Got(HRESULT hr) { return IsMissing(hr) ? hr : ReportIfFailed(hr); }

struct TaskMemoryDeleter {
    void operator()(void* block) const { CoTaskMemFree(block); }
};

// The size of the stream, or false where it cannot be had or is more than one read can take.
bool TryGetSize(IStream& stream, ULONG& size) {
    STATSTG status{};
    if (FAILED(ReportIfFailed(stream.Stat(&status, STATFLAG_NONAME)))) return false;
    if (status.cbSize.QuadPart > (std::numeric_limits<ULONG>::max)()) return false;
    size = static_cast<ULONG>(status.cbSize.QuadPart);
    return true;
}

// Into bytes that hold the stream's whole size: a value that comes short would be a partial one, and is none.
bool TryReadWhole(IStream& stream, void* bytes, ULONG size) {
    ULONG count = 0;
    return SUCCEEDED(ReportIfFailed(stream.Read(bytes, size, &count))) && count == size;
}

// From where the stream stands, which then ends there.
bool TryWriteWhole(IStream& stream, const ByteBuffer& value) {
    ULONG written = 0;
    if (!value.empty() && FAILED(ReportIfFailed(stream.Write(value.getLpbyte(), value.getDword(), &written))))
        return false;
    // Cuts off what a longer value left behind.
    ULARGE_INTEGER size{};
    size.QuadPart = value.getDword();
    return SUCCEEDED(ReportIfFailed(stream.SetSize(size)));
}

} // namespace

NativeComPrinterPropertyBagAccess::NativeComPrinterPropertyBagAccess(
    IPrinterPropertyBag& bag, tagNativeComPrinterPropertyBagAccessAssertionPolicy policy)
    : m_bag(&bag), m_policy(policy) {}

NativeComPrinterPropertyBagAccess::~NativeComPrinterPropertyBagAccess() = default;

bool NativeComPrinterPropertyBagAccess::IsPropertyBagNull() { return false; }

bool NativeComPrinterPropertyBagAccess::GetPrinterPropertyBagBool(const CXString& key) const {
    const OperationScope operation("NativeComPrinterPropertyBagAccess::GetPrinterPropertyBagBool");
    BOOL value = FALSE;
    Got(m_bag->GetBool(ToBstr(key), &value));
    return value != FALSE;
}

int NativeComPrinterPropertyBagAccess::GetPrinterPropertyBagInteger(const CXString& key) const {
    const OperationScope operation("NativeComPrinterPropertyBagAccess::GetPrinterPropertyBagInteger");
    LONG value = 0;
    Got(m_bag->GetInt32(ToBstr(key), &value));
    return value;
}

void NativeComPrinterPropertyBagAccess::GetPrinterPropertyBagString(const CXString& key,
                                                                    CXString& out) const {
    const OperationScope operation("NativeComPrinterPropertyBagAccess::GetPrinterPropertyBagString");
    CComBSTR value;
    Got(m_bag->GetString(ToBstr(key), &value));
    out = CXString(value, static_cast<int>(value.Length()));
}

void NativeComPrinterPropertyBagAccess::GetPrinterPropertyBagBytes(const CXString& key,
                                                                   ByteBuffer& out) const {
    const OperationScope operation("NativeComPrinterPropertyBagAccess::GetPrinterPropertyBagBytes");
    const CComBSTR name = ToBstr(key);
    out.clear();
    DWORD size = 0;
    BYTE* bytes = nullptr;
    const HRESULT hr = Got(m_bag->GetBytes(name, &size, &bytes));
    const std::unique_ptr<BYTE, TaskMemoryDeleter> block(bytes);
    if (SUCCEEDED(hr) && size != 0) out.setWithLpbyte(bytes, size);
}

void NativeComPrinterPropertyBagAccess::GetPrinterPropertyBagStreamBuffer(const CXString& key,
                                                                          ByteBuffer& out) const {
    const OperationScope operation("NativeComPrinterPropertyBagAccess::GetPrinterPropertyBagStreamBuffer");
    CComPtr<IStream> stream;
    const HRESULT hr = Got(m_bag->GetReadStream(ToBstr(key), &stream));
    out.clear();
    if (SUCCEEDED(hr) && stream) out = ConvertStreamToByteBuffer(stream);
}

void NativeComPrinterPropertyBagAccess::GetPrinterPropertyBagStreamAsCPString(const CXString& key,
                                                                              CPString& out) const {
    const OperationScope operation(
        "NativeComPrinterPropertyBagAccess::GetPrinterPropertyBagStreamAsCPString");
    CComPtr<IStream> stream;
    const HRESULT hr = Got(m_bag->GetReadStream(ToBstr(key), &stream));
    out.clear();
    if (SUCCEEDED(hr) && stream) out = ConvertStreamToCPString(stream);
}

void NativeComPrinterPropertyBagAccess::GetPrinterPropertyBagCompressedStreamBuffer(const CXString& key,
                                                                                    ByteBuffer& out) const {
    GetPrinterPropertyBagStreamBuffer(key, out);
}

void NativeComPrinterPropertyBagAccess::SetPrinterPropertyBagBool(const CXString& key, bool value) {
    const OperationScope operation("NativeComPrinterPropertyBagAccess::SetPrinterPropertyBagBool");
    ReportIfFailed(m_bag->SetBool(ToBstr(key), value ? TRUE : FALSE));
}

void NativeComPrinterPropertyBagAccess::SetPrinterPropertyBagInteger(const CXString& key, int value) {
    const OperationScope operation("NativeComPrinterPropertyBagAccess::SetPrinterPropertyBagInteger");
    ReportIfFailed(m_bag->SetInt32(ToBstr(key), value));
}

void NativeComPrinterPropertyBagAccess::SetPrinterPropertyBagString(const CXString& key,
                                                                    const CXString& value) {
    const OperationScope operation("NativeComPrinterPropertyBagAccess::SetPrinterPropertyBagString");
    ReportIfFailed(m_bag->SetString(ToBstr(key), ToBstr(value)));
}

void NativeComPrinterPropertyBagAccess::SetPrinterPropertyBagBytes(const CXString& key,
                                                                   const ByteBuffer& value) {
    const OperationScope operation("NativeComPrinterPropertyBagAccess::SetPrinterPropertyBagBytes");
    // The published operation takes the bytes without const; it only reads them.
    ReportIfFailed(m_bag->SetBytes(ToBstr(key), value.getDword(), const_cast<BYTE*>(value.getLpbyte())));
}

void NativeComPrinterPropertyBagAccess::SetPrinterPropertyBagStreamBuffer(const CXString& key,
                                                                          const ByteBuffer& value) {
    const OperationScope operation("NativeComPrinterPropertyBagAccess::SetPrinterPropertyBagStreamBuffer");
    ByteBuffer old;
    GetPrinterPropertyBagStreamBuffer(key, old);
    CComPtr<IStream> stream;
    const HRESULT hr = ReportIfFailed(m_bag->GetWriteStream(ToBstr(key), &stream));
    if (FAILED(hr) || !stream) return;
    if (TryWriteWhole(*stream, value)) return;
    // Half of the new value, or its start with the end of the old one, is neither.
    if (SUCCEEDED(stream->Seek({}, STREAM_SEEK_SET, nullptr))) TryWriteWhole(*stream, old);
}

ByteBuffer NativeComPrinterPropertyBagAccess::ConvertStreamToByteBuffer(CComPtr<IStream>& stream) {
    const OperationScope operation("NativeComPrinterPropertyBagAccess::ConvertStreamToByteBuffer");
    ULONG size = 0;
    if (!TryGetSize(*stream, size)) return {};
    ByteBuffer result;
    result.resize(size);
    if (!TryReadWhole(*stream, result.data(), size)) return {};
    return result;
}

CPString NativeComPrinterPropertyBagAccess::ConvertStreamToCPString(CComPtr<IStream>& stream) {
    const OperationScope operation("NativeComPrinterPropertyBagAccess::ConvertStreamToCPString");
    ULONG size = 0;
    if (!TryGetSize(*stream, size)) return {};
    std::string bytes(size, '\0');
    if (!TryReadWhole(*stream, bytes.data(), size)) return {};
    return CPString(std::move(bytes));
}
