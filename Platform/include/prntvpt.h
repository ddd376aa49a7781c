#pragma once

// The print ticket provider, as the SDK header of this name publishes it.
//
// Tickets and capabilities travel as XML in streams: an input is read from where its stream stands, a result
// is written there and leaves its stream at the end. Error texts are one line for a person to read, a BSTR
// that the caller frees, and null unless a document is not what it has to be. A provider belongs to the
// thread that opened it; from any other its handle is unknown.

#include <Com/PlatformExport.h>

#include <windows.h>
#include <oleauto.h>

struct HPTPROVIDER__;
typedef struct HPTPROVIDER__* HPTPROVIDER;

#define PRINTTICKET_ISTREAM_APIS 1

#define S_PT_NO_CONFLICT 0x00040001
#define S_PT_CONFLICT_RESOLVED 0x00040002

#define E_PRINTTICKET_FORMAT 0x80040003
#define E_PRINTCAPABILITIES_FORMAT 0x80040004
#define E_DELTA_PRINTTICKET_FORMAT 0x80040005
#define E_PRINTDEVICECAPABILITIES_FORMAT 0x80040006

typedef enum tagEDefaultDevmodeType { kUserDefaultDevmode, kPrinterDefaultDevmode } EDefaultDevmodeType;

// Each scope includes those below it: a job ticket also holds settings of documents and pages.
typedef enum { kPTPageScope, kPTDocumentScope, kPTJobScope } EPrintTicketScope;

extern "C" {

// The highest schema version of the printer, which is 1. A printer that is not there gives
// HRESULT_FROM_WIN32(ERROR_INVALID_PRINTER_NAME), here and below.
OV_PLATFORM_API HRESULT WINAPI PTQuerySchemaVersionSupport(PCWSTR pszPrinterName, DWORD* pMaxVersion);

// Version 0 gives E_INVALIDARG, one above 1 gives 0x80040001.
OV_PLATFORM_API HRESULT WINAPI PTOpenProvider(PCWSTR pszPrinterName, DWORD dwVersion,
                                              HPTPROVIDER* phProvider);

// Opens version 1 for every maximum but 0, whatever is preferred.
OV_PLATFORM_API HRESULT WINAPI PTOpenProviderEx(PCWSTR pszPrinterName, DWORD dwMaxVersion,
                                                DWORD dwPrefVersion, HPTPROVIDER* phProvider,
                                                DWORD* pUsedVersion);

OV_PLATFORM_API HRESULT WINAPI PTCloseProvider(HPTPROVIDER hProvider);

// Frees what a call handed out that is not a BSTR, such as a device mode.
OV_PLATFORM_API HRESULT WINAPI PTReleaseMemory(PVOID pBuffer);

// The capabilities as they are with these settings in force; without a ticket, with the queue's defaults.
OV_PLATFORM_API HRESULT WINAPI PTGetPrintCapabilities(HPTPROVIDER hProvider, IStream* pPrintTicket,
                                                      IStream* pCapabilities, BSTR* pbstrErrorMessage);

// Lays the delta, which may be null, over the base, keeps what lies in the scope, and makes the result one
// that the printer can carry out. S_PT_NO_CONFLICT: the result is what was asked for; S_PT_CONFLICT_RESOLVED:
// some of it had to give way.
OV_PLATFORM_API HRESULT WINAPI PTMergeAndValidatePrintTicket(HPTPROVIDER hProvider, IStream* pBaseTicket,
                                                             IStream* pDeltaTicket, EPrintTicketScope scope,
                                                             IStream* pResultTicket, BSTR* pbstrErrorMessage);

// Not supplied: E_NOTIMPL.
OV_PLATFORM_API HRESULT WINAPI PTConvertPrintTicketToDevMode(HPTPROVIDER hProvider, IStream* pPrintTicket,
                                                             EDefaultDevmodeType baseDevmodeType,
                                                             EPrintTicketScope scope, ULONG* pcbDevmode,
                                                             PDEVMODE* ppDevmode, BSTR* pbstrErrorMessage);

// The settings of the device mode, as far as they lie in the scope and the printer knows them, as a ticket.
OV_PLATFORM_API HRESULT WINAPI PTConvertDevModeToPrintTicket(HPTPROVIDER hProvider, ULONG cbDevmode,
                                                             PDEVMODE pDevmode, EPrintTicketScope scope,
                                                             IStream* pPrintTicket);
}
