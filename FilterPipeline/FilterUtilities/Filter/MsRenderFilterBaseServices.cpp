// The operations of the filter base that reach out of the filter: to the tickets, the property bags and the
// port.

#include "ComSupport/MsSafeVariant.h"
#include "ComSupport/ThrowHresult.h"
#include "FeatureAccess/JobSettings.h"
#include "Filter/MsRenderFilterBase.h"

#include <LowLevelFacilities/Failures/CPComException.h>
#include <LowLevelFacilities/WideStrings/ByteBuffer.h>
#include <SystemServices/OperatingSystem.h>
#include <SystemServices/Printer.h>

#include <winspool.h>

#include <cwchar>

namespace {

// A new reference to the interface of the object that the pipeline's property holds.
template <typename Interface>
HRESULT GetInterfaceProperty(IPrintPipelinePropertyBag& bag, const wchar_t* name, CComPtr<Interface>& found) {
    MsSafeVariant value;
    const HRESULT hr = bag.GetProperty(name, &value);
    if (FAILED(hr)) return hr;
    if (value.vt != VT_UNKNOWN || !value.punkVal) return E_NOINTERFACE;
    return value.punkVal->QueryInterface(__uuidof(Interface), reinterpret_cast<void**>(&found));
}

struct HeldBag {
    CComPtr<IPrinterPropertyBag> bag;
};

// The access object takes no reference. A pipeline may make the bag when it is asked for one and keep none
// itself, so the filter's reference lives beside the object, and ends after it.
class HeldBagAccess final : private HeldBag, public NativeComPrinterPropertyBagAccess {
public:
    explicit HeldBagAccess(const CComPtr<IPrinterPropertyBag>& bag)
        : HeldBag{bag}, NativeComPrinterPropertyBagAccess(*bag, AssertionPolicyBagIsHeldElsewhere) {}
};

MsRenderFilterBase::OuputDestinationEnum DestinationOfPort(const wchar_t* portName) {
    if (_wcsicmp(portName, L"FILE:") == 0) return MsRenderFilterBase::OutputDestinationFilePort;
    if (_wcsicmp(portName, L"nul:") == 0) return MsRenderFilterBase::OutputDestinationNulPort;
    const bool isPathOnADrive = portName[0] && portName[1] == L':';
    return isPathOnADrive ? MsRenderFilterBase::OutputDestinationPathPort
                          : MsRenderFilterBase::OutputDestinationDevicePort;
}

} // namespace

HRESULT MsRenderFilterBase::InitializePrintTicketManager() {
    const OperationScope operation("MsRenderFilterBase::InitializePrintTicketManager");
    try {
        return InitializePrintTicketManager_throws();
    } catch (const CPComException& failure) {
        return failure.GetHresult();
    }
}

HRESULT MsRenderFilterBase::InitializePrintTicketManager_throws() {
    // An odd code for a null pointer, but the one that callers know.
    if (!m_propertyBag) ThrowComException(E_PENDING, "NULL property bag pointer.");

    CComPtr<IPrintReadStreamFactory> factory;
    HRESULT hr = GetInterfaceProperty(*m_propertyBag, XPS_FP_USER_PRINT_TICKET, factory);
    if (FAILED(hr)) return hr;
    CComPtr<IPrintReadStream> userTicket;
    hr = factory->GetStream(&userTicket);
    if (FAILED(hr)) return hr;

    CComBSTR printerName;
    if (!m_printerName.IsEmpty()) printerName = CComBSTR(static_cast<const wchar_t*>(m_printerName));
    m_ticketManager = std::make_unique<PrintTicketManager>();
    return m_ticketManager->Initialize(userTicket, printerName, m_userSecurityToken);
}

void MsRenderFilterBase::UnInitializePrintTicketManager() { m_ticketManager.reset(); }

OrvelDriverPropertyBag* MsRenderFilterBase::GetOrCreateOrvelDriverPropertyBagOnFirstUse() {
    if (!m_driverPropertyBagAccess) m_driverPropertyBagAccess = GetDriverPropertyBagAccess();
    if (m_driverPropertyBagAccess && !m_driverPropertyBag) {
        m_driverPropertyBag = std::make_unique<OrvelDriverPropertyBag>(*m_driverPropertyBagAccess);
    }
    return m_driverPropertyBag.get();
}

JobSettings MsRenderFilterBase::JobSettingsOf(EPrintTicketScope level) {
    const OperationScope operation("MsRenderFilterBase::JobSettingsOf");
    if (!m_ticketManager) ThrowComException(E_PENDING, "There is no ticket manager.");
    const OrvelDriverPropertyBag* const driver = GetOrCreateOrvelDriverPropertyBagOnFirstUse();
    if (driver == nullptr) ThrowComException(E_ELEMENT_NOT_FOUND, "The pipeline has no driver property bag.");
    JobDescription job{.printer = m_printerHandle};
    // A job that the spooler does not know has no names, and can be printed.
    static_cast<void>(m_ticketManager->GetJobNameUserNameAndDomainName(
        m_jobId, m_printerHandle, job.documentName, job.userName, job.userDomainName));
    return JobSettings(*m_ticketManager, level, *driver, job);
}

MsRenderFilterBase::DriverPropertyBagAccess MsRenderFilterBase::GetDriverPropertyBagAccess() {
    return GetPropertyBagAccess(XPS_FP_DRIVER_PROPERTY_BAG);
}

MsRenderFilterBase::DriverPropertyBagAccess MsRenderFilterBase::GetQueuePropertyBagAccess() {
    return GetPropertyBagAccess(XPS_FP_QUEUE_PROPERTY_BAG);
}

MsRenderFilterBase::DriverPropertyBagAccess MsRenderFilterBase::GetPropertyBagAccess(const wchar_t* name) {
    CComPtr<IPrinterPropertyBag> bag;
    if (FAILED(GetInterfaceProperty(*m_propertyBag, name, bag))) return {};
    return DriverPropertyBagAccess(new HeldBagAccess(bag));
}

MsRenderFilterBase::OuputDestinationEnum MsRenderFilterBase::GetOutputDestinationEnum() {
    return m_outputDestination;
}

CXString MsRenderFilterBase::GetOutputFilenameIfKnown() { return m_outputFileName; }

bool MsRenderFilterBase::IsJobDefinitelyBeingPrintedToFile() {
    if (m_outputDestination == OutputDestinationNotYetDetermined) DetermineOutputDestination();
    return m_outputDestination >= OutputDestinationFilePort;
}

void MsRenderFilterBase::DetermineOutputDestination() {
    m_outputDestination = OutputDestinationUnknown;
    const bool fileNameCounts = OperatingSystem::IsOsVersionWin7OrLater();
    if (fileNameCounts) {
        MsSafeVariant fileName;
        if (SUCCEEDED(m_propertyBag->GetProperty(XPS_FP_OUTPUT_FILE, &fileName)) && fileName.vt == VT_BSTR) {
            m_outputFileName = fileName.bstrVal;
        }
    }
    if (!m_outputFileName.IsBlank()) {
        m_outputDestination = OutputDestinationNamedFile;
        return;
    }
    ByteBuffer info;
    if (!Printer(m_printerHandle).GetPrinterInfo(2, info) || info.size() < sizeof(PRINTER_INFO_2W)) return;
    const wchar_t* const portName = reinterpret_cast<const PRINTER_INFO_2W*>(info.getLpbyte())->pPortName;
    if (portName == nullptr) return;
    m_outputDestination = DestinationOfPort(portName);
    if (m_outputDestination == OutputDestinationPathPort && fileNameCounts) m_outputFileName = portName;
}
