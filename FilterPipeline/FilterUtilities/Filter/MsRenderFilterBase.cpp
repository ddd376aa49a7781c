#include "Filter/MsRenderFilterBase.h"

#include "ComSupport/FailureBarrier.h"
#include "ComSupport/MsSafeVariant.h"
#include "ComSupport/ThrowHresult.h"

#include <utility>

namespace {

constexpr auto temporaryFileProperty =
    L"XPS_FP_FILESPEC_FOR_TEMP_COPY_OF_PRINT_READY_FILE_PASSED_IN_XPS_WRAPPER";

// "No handle yet".
HANDLE AllBitsSet() { return INVALID_HANDLE_VALUE; }

} // namespace

MsRenderFilterBase::MsRenderFilterBase()
    : CUnknown<IPrintPipelineFilter>(__uuidof(IPrintPipelineFilter)), m_printerHandle(AllBitsSet()),
      m_userSecurityToken(AllBitsSet()), m_jobId(0), m_liveness(std::make_unique<FilterLiveness>()),
      m_outputDestination(OutputDestinationNotYetDetermined) {}

MsRenderFilterBase::~MsRenderFilterBase() = default;

HRESULT MsRenderFilterBase::InitializeFilter(IInterFilterCommunicator* communicator,
                                             IPrintPipelinePropertyBag* bag,
                                             IPrintPipelineManagerControl* control) {
    const OperationScope operation("MsRenderFilterBase::InitializeFilter");
    if (!communicator || !bag || control == nullptr) return E_POINTER;
    m_communicator = communicator;
    m_propertyBag = bag;
    m_control = control;
    HRESULT hr = S_OK;
    try {
        InitializeFilter_throws(m_communicator, m_propertyBag);
    }
    CATCH_VARIOUS(hr)
    return hr;
}

void MsRenderFilterBase::InitializeFilter_throws(const CComPtr<IInterFilterCommunicator>& communicator,
                                                 const CComPtr<IPrintPipelinePropertyBag>& bag) {
    const OperationScope operation("MsRenderFilterBase::InitializeFilter_throws");
    MsSafeVariant printerName;
    ThrowIfFailed(bag->GetProperty(XPS_FP_PRINTER_NAME, &printerName));
    if (printerName.vt != VT_BSTR) ThrowComException(DISP_E_TYPEMISMATCH, "PrinterName is no text.");
    m_printerName = printerName.bstrVal;

    MsSafeVariant printerHandle;
    ThrowIfFailed(bag->GetProperty(XPS_FP_PRINTER_HANDLE, &printerHandle));
    m_printerHandle = printerHandle.byref;

    MsSafeVariant userToken;
    ThrowIfFailed(bag->GetProperty(XPS_FP_USER_TOKEN, &userToken));
    m_userSecurityToken = userToken.byref;

    MsSafeVariant jobId;
    ThrowIfFailed(bag->GetProperty(XPS_FP_JOB_ID, &jobId));
    m_jobId = jobId.ulVal;

    ThrowIfFailed(OnInitializeFilter());
    InitializeIO_throws(communicator);
}

HRESULT MsRenderFilterBase::StartOperation() {
    const OperationScope operation("MsRenderFilterBase::StartOperation");
    HRESULT hr = S_OK;
    try {
        StartOperation_throws();
    }
    CATCH_VARIOUS(hr)
    // Also behind a failure, and outside the barrier: the next filter has to see the end of its input.
    CloseWriter();
    return hr;
}

HRESULT MsRenderFilterBase::ShutdownOperation() {
    m_liveness->Cancel();
    if (!m_propertyBag) return S_OK;
    MsSafeVariant path;
    if (SUCCEEDED(m_propertyBag->GetProperty(temporaryFileProperty, &path)) && path.vt == VT_BSTR) {
        DeleteFileW(path.bstrVal);
    }
    return S_OK;
}

void MsRenderFilterBase::InitializeIO_throws(const CComPtr<IInterFilterCommunicator>&) {
    const OperationScope operation("MsRenderFilterBase::InitializeIO_throws");
    ThrowComException(E_NOTIMPL);
}

void MsRenderFilterBase::CloseWriter() {
    const OperationScope operation("MsRenderFilterBase::CloseWriter");
    ThrowComException(E_NOTIMPL);
}

HRESULT MsRenderFilterBase::OnInitializeFilter() { return E_NOTIMPL; }

void MsRenderFilterBase::StartOperation_throws() {
    const OperationScope operation("MsRenderFilterBase::StartOperation_throws");
    ThrowComException(E_NOTIMPL);
}

BOOL MsRenderFilterBase::IsAlive() { return m_liveness->IsAlive(); }

void MsRenderFilterBase::RequestShutdown(HRESULT hr) {
    if (m_control) m_control->RequestShutdown(hr, nullptr);
}

HRESULT MsRenderFilterBase::GetFromPrintPipelinePropertyBag(const wchar_t* name, VARIANT* value) {
    return m_propertyBag->GetProperty(name, value);
}

IPrintPipelinePropertyBag* MsRenderFilterBase::GetIPrintPipelinePropertyBagPtr() { return m_propertyBag; }

PrintTicketManager* MsRenderFilterBase::GetPTManagerPtr() { return m_ticketManager.get(); }
