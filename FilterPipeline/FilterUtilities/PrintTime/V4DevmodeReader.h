#pragma once

#include "ComSupport/FilterUtilitiesExport.h"
#include "EmbeddedSettings/PrintTicketAttributeBytesReaderWriter.h"
#include "PrintSchema/PrintTicketXmlDocument.h"

#include <LowLevelFacilities/WideStrings/ByteBuffer.h>
#include <LowLevelFacilities/WideStrings/CXString.h>
#include <SystemServices/SafeCoInitialize.h>

#include <windows.h>
#include <atlcomcli.h>
#include <msxml6.h>

#include <cstddef>
#include <memory>

/// The driver's settings of a job out of its device mode, for programs that run beside the job: as a ticket,
/// and as the attribute bytes in it.
///
/// Nothing is thrown or reported: whoever has made or initialised a reader asks whether it is initialised. It
/// enters an apartment of its thread, and stays on that thread.
class OV_FILTER_UTILITIES_API V4DevmodeReader {
public:
    V4DevmodeReader();
    V4DevmodeReader(const CXString& printerName, DEVMODEW* devmode,
                    const IAttributeBytesDebugDisplayHelper& helper);
    V4DevmodeReader(const CXString& printerName, void* printerHandle, ULONG jobId,
                    const IAttributeBytesDebugDisplayHelper& helper);
    V4DevmodeReader(const V4DevmodeReader&) = delete;
    V4DevmodeReader& operator=(const V4DevmodeReader&) = delete;
    virtual ~V4DevmodeReader();

    /// Takes a copy of the device mode, which is as long as its own two sizes say, and converts that by the
    /// printer's provider. What an earlier call has made goes first. The result is IsInitialized.
    bool Init(const CXString& printerName, DEVMODEW* devmode,
              const IAttributeBytesDebugDisplayHelper& helper);
    /// The same with the device mode in the spooler's record of a job. False without a job, and for a device
    /// mode that is missing or does not end within the record.
    bool Init(const CXString& printerName, void* printerHandle, ULONG jobId,
              const IAttributeBytesDebugDisplayHelper& helper);

    [[nodiscard]] bool IsInitialized() const;
    // Of this object, until it is initialised anew; null if it is not.
    [[nodiscard]] const DEVMODEW* GetConstPtrToDevmode() const;
    [[nodiscard]] const PrintTicketAttributeBytesReaderWriter*
    GetConstPtrToAttributeBytesReaderWriter() const;
    [[nodiscard]] const PrintTicketXmlDocument* GetConstPtrToPrintTicket() const;

    /// In bytes, the driver's own among them. 0 for null, and for one without a public part.
    [[nodiscard]] static ULONG GetDevmodeSize(const DEVMODEW* devmode);

protected:
    /// E_INVALIDARG for a device mode without a size, else the first failure of the provider or the DOM.
    HRESULT ConvertDevmodeToPrintTicketInXmlDom(const CXString& printerName, DEVMODEW* devmode);

private:
    void Drop() noexcept;
    void Load(const CXString& printerName, DEVMODEW* devmode,
              const IAttributeBytesDebugDisplayHelper& helper);

    bool m_isInitialized;
    ByteBuffer m_devmode;
    CComPtr<IXMLDOMDocument2> m_document;
    std::unique_ptr<PrintTicketXmlDocument> m_ticket;
    std::unique_ptr<PrintTicketAttributeBytesReaderWriter> m_reader;
    SafeCoInitialize m_apartment;
};
