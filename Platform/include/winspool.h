#pragma once

// Printers and jobs, as the SDK header of this name publishes them: the part that is used. The printers are
// those of the queue folders (Spooler/QueueRegistry.h).

#include <Com/PlatformExport.h>

#include <windows.h>

struct PRINTER_DEFAULTSW {
    LPWSTR pDatatype;
    DEVMODEW* pDevMode;
    DWORD DesiredAccess;
};
using LPPRINTER_DEFAULTSW = PRINTER_DEFAULTSW*;

struct PRINTER_INFO_1W {
    DWORD Flags;
    LPWSTR pDescription;
    LPWSTR pName;
    LPWSTR pComment;
};

struct PRINTER_INFO_2W {
    LPWSTR pServerName;
    LPWSTR pPrinterName;
    LPWSTR pShareName;
    LPWSTR pPortName;
    LPWSTR pDriverName;
    LPWSTR pComment;
    LPWSTR pLocation;
    DEVMODEW* pDevMode;
    LPWSTR pSepFile;
    LPWSTR pPrintProcessor;
    LPWSTR pDatatype;
    LPWSTR pParameters;
    PVOID pSecurityDescriptor;
    DWORD Attributes;
    DWORD Priority;
    DWORD DefaultPriority;
    DWORD StartTime;
    DWORD UntilTime;
    DWORD Status;
    DWORD cJobs;
    DWORD AveragePPM;
};

struct JOB_INFO_1W {
    DWORD JobId;
    LPWSTR pPrinterName;
    LPWSTR pMachineName;
    LPWSTR pUserName;
    LPWSTR pDocument;
    LPWSTR pDatatype;
    LPWSTR pStatus;
    DWORD Status;
    DWORD Priority;
    DWORD Position;
    DWORD TotalPages;
    DWORD PagesPrinted;
    SYSTEMTIME Submitted;
};

struct JOB_INFO_2W {
    DWORD JobId;
    LPWSTR pPrinterName;
    LPWSTR pMachineName;
    LPWSTR pUserName;
    LPWSTR pDocument;
    LPWSTR pNotifyName;
    LPWSTR pDatatype;
    LPWSTR pPrintProcessor;
    LPWSTR pParameters;
    LPWSTR pDriverName;
    DEVMODEW* pDevMode;
    LPWSTR pStatus;
    PVOID pSecurityDescriptor;
    DWORD Status;
    DWORD Priority;
    DWORD Position;
    DWORD StartTime;
    DWORD UntilTime;
    DWORD TotalPages;
    DWORD Size;
    SYSTEMTIME Submitted;
    DWORD Time;
    DWORD PagesPrinted;
};

using LPPRINTER_INFO_1W = PRINTER_INFO_1W*;
using LPPRINTER_INFO_2W = PRINTER_INFO_2W*;
using LPJOB_INFO_1W = JOB_INFO_1W*;
using LPJOB_INFO_2W = JOB_INFO_2W*;
using PPRINTER_INFO_1W = PRINTER_INFO_1W*;
using PPRINTER_INFO_2W = PRINTER_INFO_2W*;
using PJOB_INFO_1W = JOB_INFO_1W*;
using PJOB_INFO_2W = JOB_INFO_2W*;

#define PRINTER_ATTRIBUTE_QUEUED 0x00000001
#define PRINTER_ATTRIBUTE_DIRECT 0x00000002
#define PRINTER_ATTRIBUTE_DEFAULT 0x00000004
#define PRINTER_ATTRIBUTE_SHARED 0x00000008
#define PRINTER_ATTRIBUTE_NETWORK 0x00000010
#define PRINTER_ATTRIBUTE_HIDDEN 0x00000020
#define PRINTER_ATTRIBUTE_LOCAL 0x00000040
#define PRINTER_ATTRIBUTE_ENABLE_DEVQ 0x00000080
#define PRINTER_ATTRIBUTE_KEEPPRINTEDJOBS 0x00000100
#define PRINTER_ATTRIBUTE_DO_COMPLETE_FIRST 0x00000200
#define PRINTER_ATTRIBUTE_WORK_OFFLINE 0x00000400
#define PRINTER_ATTRIBUTE_ENABLE_BIDI 0x00000800
#define PRINTER_ATTRIBUTE_RAW_ONLY 0x00001000
#define PRINTER_ATTRIBUTE_PUBLISHED 0x00002000

#define PRINTER_STATUS_PAUSED 0x00000001
#define PRINTER_STATUS_ERROR 0x00000002
#define PRINTER_STATUS_PAPER_JAM 0x00000008
#define PRINTER_STATUS_PAPER_OUT 0x00000010
#define PRINTER_STATUS_OFFLINE 0x00000080
#define PRINTER_STATUS_BUSY 0x00000200
#define PRINTER_STATUS_PRINTING 0x00000400

#define JOB_STATUS_PAUSED 0x00000001
#define JOB_STATUS_ERROR 0x00000002
#define JOB_STATUS_DELETING 0x00000004
#define JOB_STATUS_SPOOLING 0x00000008
#define JOB_STATUS_PRINTING 0x00000010
#define JOB_STATUS_OFFLINE 0x00000020
#define JOB_STATUS_PAPEROUT 0x00000040
#define JOB_STATUS_PRINTED 0x00000080

#define PRINTER_ACCESS_ADMINISTER 0x00000004
#define PRINTER_ACCESS_USE 0x00000008

// All give FALSE and set the last error on failure. A handle may be used from any thread; it keeps the queue
// as it was when the handle was opened.
extern "C" {

// ERROR_INVALID_PRINTER_NAME where no queue has that name. The defaults are not used.
OV_PLATFORM_API BOOL WINAPI OpenPrinterW(LPWSTR pPrinterName, HANDLE* phPrinter, PRINTER_DEFAULTSW* pDefault);
OV_PLATFORM_API BOOL WINAPI ClosePrinter(HANDLE hPrinter);

// Levels 1 and 2; another one gives ERROR_INVALID_LEVEL. A buffer that is too small gives
// ERROR_INSUFFICIENT_BUFFER and the size needed in *pcbNeeded. Texts stand in the same buffer, behind the
// record; absent ones are null, except for texts that are published as always there.
OV_PLATFORM_API BOOL WINAPI GetPrinterW(HANDLE hPrinter, DWORD Level, BYTE* pPrinter, DWORD cbBuf,
                                        DWORD* pcbNeeded);
// Levels 1 and 2, as above; ERROR_INVALID_PARAMETER where the queue has no such job.
OV_PLATFORM_API BOOL WINAPI GetJobW(HANDLE hPrinter, DWORD JobId, DWORD Level, BYTE* pJob, DWORD cbBuf,
                                    DWORD* pcbNeeded);
// Levels 1 and 2: the records of up to NoJobs jobs from position FirstJob (counted from 0), in the order of
// printing.
OV_PLATFORM_API BOOL WINAPI EnumJobsW(HANDLE hPrinter, DWORD FirstJob, DWORD NoJobs, DWORD Level, BYTE* pJob,
                                      DWORD cbBuf, DWORD* pcbNeeded, DWORD* pcReturned);
}

#define PRINTER_DEFAULTS PRINTER_DEFAULTSW
#define LPPRINTER_DEFAULTS LPPRINTER_DEFAULTSW
#define PRINTER_INFO_1 PRINTER_INFO_1W
#define PRINTER_INFO_2 PRINTER_INFO_2W
#define LPPRINTER_INFO_1 LPPRINTER_INFO_1W
#define LPPRINTER_INFO_2 LPPRINTER_INFO_2W
#define PPRINTER_INFO_1 PPRINTER_INFO_1W
#define PPRINTER_INFO_2 PPRINTER_INFO_2W
#define JOB_INFO_1 JOB_INFO_1W
#define JOB_INFO_2 JOB_INFO_2W
#define LPJOB_INFO_1 LPJOB_INFO_1W
#define LPJOB_INFO_2 LPJOB_INFO_2W
#define PJOB_INFO_1 PJOB_INFO_1W
#define PJOB_INFO_2 PJOB_INFO_2W
#define OpenPrinter OpenPrinterW
#define GetPrinter GetPrinterW
#define GetJob GetJobW
#define EnumJobs EnumJobsW
