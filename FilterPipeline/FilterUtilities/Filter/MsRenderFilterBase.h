#pragma once

#include "ComSupport/CUnknown.h"
#include "ComSupport/FilterUtilitiesExport.h"
#include "Filter/FilterLiveness.h"
#include "PropertyBags/NativeComPrinterPropertyBagAccess.h"
#include "Ticket/PrintTicketManager.h"

#include <DeviceDescription/OrvelDriverPropertyBag.h>
#include <LowLevelFacilities/Ownership/OvlUniquePtr.h>
#include <LowLevelFacilities/WideStrings/CXString.h>

#include <atlcomcli.h>
#include <filterpipeline.h>

#include <memory>

class JobSettings;

/// Base of every filter of the driver. Turns the pipeline's three calls into the steps that a derived class
/// supplies, reads the pipeline's properties, and turns every failure into the one HRESULT that the pipeline
/// sees.
///
/// One instance serves one job: InitializeFilter, StartOperation, Release. ShutdownOperation may come at any
/// time, also from another thread; all else belongs to the thread that runs the job. That thread's apartment
/// is up to whoever runs filter code (MsSafeCoInit); InitializeFilter does not enter one.
///
/// The order of the virtual operations and of the fields is part of the library's binary interface.
class OV_FILTER_UTILITIES_API MsRenderFilterBase : public CUnknown<IPrintPipelineFilter> {
public:
    using DriverPropertyBagAccess = OvlUniquePtr<NativeComPrinterPropertyBagAccess, AlwaysOwned,
                                                 UniquePtrCompare<NativeComPrinterPropertyBagAccess>>;

    /// Where the output goes. 4 and above is a file. The type's name is spelled so for good.
    enum OuputDestinationEnum : unsigned int {
        OutputDestinationNotYetDetermined = 0xFFFFFFFFU,
        OutputDestinationUnknown = 0,
        OutputDestinationDevicePort = 2,
        OutputDestinationNulPort = 3,
        OutputDestinationFilePort = 4,
        OutputDestinationPathPort = 5,
        OutputDestinationNamedFile = 6
    };

    MsRenderFilterBase();
    MsRenderFilterBase(const MsRenderFilterBase&) = delete;
    MsRenderFilterBase& operator=(const MsRenderFilterBase&) = delete;

    /// Keeps the three interfaces, reads the job's properties, and has the derived class set up. E_POINTER if
    /// one is null, and then nothing is kept; any other failure leaves what was reached.
    HRESULT STDMETHODCALLTYPE InitializeFilter(IInterFilterCommunicator* communicator,
                                               IPrintPipelinePropertyBag* bag,
                                               IPrintPipelineManagerControl* control) override;

    /// Cancels the job and deletes the temporary print-ready file, if the property bag names one. Never
    /// fails.
    HRESULT STDMETHODCALLTYPE ShutdownOperation() override;

    /// Runs the job on the caller's thread, then closes the writer, whatever came of it. Not to be called on
    /// a filter whose InitializeFilter failed.
    HRESULT STDMETHODCALLTYPE StartOperation() override;

    ~MsRenderFilterBase() override;

    BOOL IsAlive();

    /// Asks the pipeline to shut down with this result. The library itself never does.
    void RequestShutdown(HRESULT hr);

    /// The pipeline's property as it stands; only for a filter that was initialised.
    HRESULT GetFromPrintPipelinePropertyBag(const wchar_t* name, VARIANT* value);

    /// Without a reference; null if there is none.
    IPrintPipelinePropertyBag* GetIPrintPipelinePropertyBagPtr();
    PrintTicketManager* GetPTManagerPtr();

    // Both are what IsJobDefinitelyBeingPrintedToFile found; they do not call it.
    OuputDestinationEnum GetOutputDestinationEnum();
    CXString GetOutputFilenameIfKnown();

    /// Whether the output certainly goes to a file: the job names one, or the printer's port is one. The NUL
    /// port is none. Worked out on the first call.
    bool IsJobDefinitelyBeingPrintedToFile();

    /// Makes the ticket manager of the job from the user's ticket and the printer. E_PENDING without a
    /// property bag. Throws nothing but what is no CPComException, such as std::bad_alloc.
    HRESULT InitializePrintTicketManager();
    void UnInitializePrintTicketManager();

    /// The filter keeps the bag; null if the pipeline has none, and the next call asks again.
    OrvelDriverPropertyBag* GetOrCreateOrvelDriverPropertyBagOnFirstUse();

    /// A new access object over the pipeline's bag; empty if there is none. The bag lives at least as long as
    /// the object, whether or not the pipeline keeps it.
    DriverPropertyBagAccess GetDriverPropertyBagAccess();
    DriverPropertyBagAccess GetQueuePropertyBagAccess();

protected:
    // The steps of a derived class; each is E_NOTIMPL here. OnInitializeFilter sees the job's four values,
    // but no reader, writer or ticket manager yet.
    virtual void InitializeIO_throws(const CComPtr<IInterFilterCommunicator>& communicator);
    virtual void CloseWriter();
    virtual HRESULT OnInitializeFilter();
    virtual void StartOperation_throws();

    void InitializeFilter_throws(const CComPtr<IInterFilterCommunicator>& communicator,
                                 const CComPtr<IPrintPipelinePropertyBag>& bag);

    /// What a level of the job asks for, once it is merged, with the names that the spooler knows of the job;
    /// empty ones where it knows none. The manager must stay as long as the result. Each call reads the
    /// printer's capabilities: further levels are made of the first result. Throws CPComException, E_PENDING
    /// without a ticket manager and for a level that is not merged, E_ELEMENT_NOT_FOUND where the pipeline
    /// has no driver property bag; what JobSettings throws passes.
    JobSettings JobSettingsOf(EPrintTicketScope level);

private:
    DriverPropertyBagAccess GetPropertyBagAccess(const wchar_t* name);
    HRESULT InitializePrintTicketManager_throws();
    void DetermineOutputDestination();

protected:
    CXString m_printerName;
    HANDLE m_printerHandle;
    HANDLE m_userSecurityToken;
    ULONG m_jobId;
    CComPtr<IPrintPipelinePropertyBag> m_propertyBag;
    CComPtr<IPrintPipelineManagerControl> m_control;
    std::unique_ptr<FilterLiveness> m_liveness;
    CComPtr<IInterFilterCommunicator> m_communicator;
    std::unique_ptr<PrintTicketManager> m_ticketManager;
    DriverPropertyBagAccess m_driverPropertyBagAccess;
    std::unique_ptr<OrvelDriverPropertyBag> m_driverPropertyBag;
    CXString m_outputFileName;
    OuputDestinationEnum m_outputDestination;
};
