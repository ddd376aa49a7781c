#include "PrintTime/V4DevmodeReader.h"

#include "ComSupport/ThrowHresult.h"

#include <SystemServices/PrintJob.h>

#include <prntvpt.h>
#include <winspool.h>

#include <functional>
#include <utility>

namespace {

// The device mode of a job, if all of it lies in the spooler's record; otherwise null.
DEVMODEW* FindDevmode(const ByteBuffer& record) {
    if (record.size() < sizeof(JOB_INFO_2W)) return nullptr;
    DEVMODEW* const devmode = reinterpret_cast<const JOB_INFO_2W*>(record.getLpbyte())->pDevMode;
    const auto* const start = reinterpret_cast<const unsigned char*>(devmode);
    const unsigned char* const end = record.getLpbyte() + record.size();
    const std::less<> isBefore;
    if (devmode == nullptr || isBefore(start, record.getLpbyte()) || !isBefore(start, end)) return nullptr;
    const auto room = static_cast<std::size_t>(end - start);
    constexpr std::size_t sizes = offsetof(DEVMODEW, dmFields);
    return room >= sizes && V4DevmodeReader::GetDevmodeSize(devmode) <= room ? devmode : nullptr;
}

HRESULT WriteTicket(HPTPROVIDER provider, ByteBuffer& devmode, IXMLDOMDocument2* document) {
    const CComQIPtr<IStream> stream(document);
    if (!stream) return E_NOINTERFACE;
    const HRESULT hr = ::PTConvertDevModeToPrintTicket(
        provider, devmode.getDword(), reinterpret_cast<DEVMODEW*>(devmode.getLpbyte()), kPTJobScope, stream);
    return FAILED(hr) ? hr : stream->Seek(LARGE_INTEGER{}, STREAM_SEEK_SET, nullptr);
}

} // namespace

V4DevmodeReader::V4DevmodeReader() : m_isInitialized(false) {}

V4DevmodeReader::V4DevmodeReader(const CXString& printerName, DEVMODEW* devmode,
                                 const IAttributeBytesDebugDisplayHelper& helper)
    : V4DevmodeReader() {
    Init(printerName, devmode, helper);
}

V4DevmodeReader::V4DevmodeReader(const CXString& printerName, void* printerHandle, ULONG jobId,
                                 const IAttributeBytesDebugDisplayHelper& helper)
    : V4DevmodeReader() {
    Init(printerName, printerHandle, jobId, helper);
}

// The apartment is the last member, and must be left last.
V4DevmodeReader::~V4DevmodeReader() { Drop(); }

void V4DevmodeReader::Drop() noexcept {
    m_isInitialized = false;
    m_reader.reset();
    m_ticket.reset();
    m_document.Release();
    m_devmode = {};
}

bool V4DevmodeReader::Init(const CXString& printerName, DEVMODEW* devmode,
                           const IAttributeBytesDebugDisplayHelper& helper) {
    // The caller may hand in the one that this object gave.
    const ByteBuffer previous = std::move(m_devmode);
    Drop();
    try {
        Load(printerName, devmode, helper);
    } catch (...) {
        Drop();
    }
    return m_isInitialized;
}

bool V4DevmodeReader::Init(const CXString& printerName, void* printerHandle, ULONG jobId,
                           const IAttributeBytesDebugDisplayHelper& helper) {
    Drop();
    try {
        const ByteBuffer record = PrintJob::GetJobInfo(printerHandle, jobId, 2, false);
        if (DEVMODEW* const devmode = FindDevmode(record)) Init(printerName, devmode, helper);
    } catch (...) {
        Drop();
    }
    return m_isInitialized;
}

void V4DevmodeReader::Load(const CXString& printerName, DEVMODEW* devmode,
                           const IAttributeBytesDebugDisplayHelper& helper) {
    const OperationScope operation("V4DevmodeReader::Load");
    constexpr bool onlyThisMode = false;
    if (!m_apartment.TryInitializeCom(COINIT_APARTMENTTHREADED, onlyThisMode)) ThrowComException(E_FAIL);
    ThrowIfFailed(ConvertDevmodeToPrintTicketInXmlDom(printerName, devmode));
    m_ticket = std::make_unique<PrintTicketXmlDocument>(m_document);
    m_reader = std::make_unique<PrintTicketAttributeBytesReaderWriter>(m_ticket.get(), helper, false);
    m_isInitialized = true;
}

HRESULT V4DevmodeReader::ConvertDevmodeToPrintTicketInXmlDom(const CXString& printerName, DEVMODEW* devmode) {
    const ULONG size = GetDevmodeSize(devmode);
    if (size == 0) return E_INVALIDARG;
    m_devmode.setWithLpbyte(reinterpret_cast<const unsigned char*>(devmode), size);
    HPTPROVIDER provider = nullptr;
    HRESULT hr = ::PTOpenProvider(printerName, 1, &provider);
    if (FAILED(hr)) return hr;
    m_document.Release();
    hr = m_document.CoCreateInstance(__uuidof(DOMDocument60), nullptr, CLSCTX_ALL);
    if (SUCCEEDED(hr)) hr = WriteTicket(provider, m_devmode, m_document);
    const HRESULT closed = ::PTCloseProvider(provider);
    return FAILED(hr) ? hr : closed;
}

bool V4DevmodeReader::IsInitialized() const { return m_isInitialized; }

const DEVMODEW* V4DevmodeReader::GetConstPtrToDevmode() const {
    return m_isInitialized ? reinterpret_cast<const DEVMODEW*>(m_devmode.getLpbyte()) : nullptr;
}

const PrintTicketAttributeBytesReaderWriter*
V4DevmodeReader::GetConstPtrToAttributeBytesReaderWriter() const {
    return m_reader.get();
}

const PrintTicketXmlDocument* V4DevmodeReader::GetConstPtrToPrintTicket() const { return m_ticket.get(); }

ULONG V4DevmodeReader::GetDevmodeSize(const DEVMODEW* devmode) {
    if (devmode == nullptr || devmode->dmSize == 0) return 0;
    return ULONG{devmode->dmSize} + devmode->dmDriverExtra;
}
