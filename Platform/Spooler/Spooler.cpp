#include "Com/FaultInjection.h"
#include "Spooler/DevmodeLayout.h"
#include "Spooler/InfoPacker.h"
#include "Spooler/PrinterHandles.h"
#include "Spooler/QueueRegistry.h"

#include <winspool.h>

#include <algorithm>
#include <limits>
#include <new>

namespace OvPlatform {

namespace {

// The flag of a printer among other objects that level 1 can list.
constexpr DWORD listedPrinter = 0x00800000; // PRINTER_ENUM_ICON8

BOOL Fail(DWORD error) {
    SetLastError(error);
    return FALSE;
}

// Runs what may throw for want of memory behind a C boundary.
template <class Call>
BOOL Guarded(Call call) {
    if (FaultPointHit()) return FALSE;
    try {
        return call();
    } catch (const std::bad_alloc&) {
        return Fail(ERROR_NOT_ENOUGH_MEMORY);
    }
}

SYSTEMTIME ToSystemTime(std::chrono::sys_time<std::chrono::milliseconds> time) {
    const auto day = std::chrono::floor<std::chrono::days>(time);
    const std::chrono::year_month_day date(day);
    const std::chrono::hh_mm_ss clock(time - day);
    SYSTEMTIME result{};
    result.wYear = static_cast<WORD>(int(date.year()));
    result.wMonth = static_cast<WORD>(unsigned(date.month()));
    result.wDay = static_cast<WORD>(unsigned(date.day()));
    result.wDayOfWeek = static_cast<WORD>(std::chrono::weekday(day).c_encoding());
    result.wHour = static_cast<WORD>(clock.hours().count());
    result.wMinute = static_cast<WORD>(clock.minutes().count());
    result.wSecond = static_cast<WORD>(clock.seconds().count());
    result.wMilliseconds = static_cast<WORD>(clock.subseconds().count());
    return result;
}

void PackPrinter1(InfoPacker& packer, const QueueDescription& queue) {
    PRINTER_INFO_1W info{};
    info.Flags = listedPrinter;
    info.pDescription = packer.Text(queue.printerName + L"," + queue.driverName + L"," + queue.location);
    info.pName = packer.Text(queue.printerName);
    info.pComment = packer.Text(queue.comment);
    packer.Record(0, info);
}

void PackPrinter2(InfoPacker& packer, const QueueDescription& queue) {
    PRINTER_INFO_2W info{};
    info.pServerName = packer.TextOrNull(queue.serverName);
    info.pPrinterName = packer.Text(queue.printerName);
    info.pShareName = packer.Text(queue.shareName);
    info.pPortName = packer.Text(queue.portName);
    info.pDriverName = packer.Text(queue.driverName);
    info.pComment = packer.Text(queue.comment);
    info.pLocation = packer.Text(queue.location);
    info.pDevMode = static_cast<DEVMODEW*>(packer.Block(LoadDevmode(queue.devmode)));
    info.pSepFile = packer.Text(queue.separatorFile);
    info.pPrintProcessor = packer.Text(queue.printProcessor);
    info.pDatatype = packer.Text(queue.datatype);
    info.pParameters = packer.Text(queue.parameters);
    info.Attributes = queue.attributes;
    info.Priority = queue.priority;
    info.DefaultPriority = queue.defaultPriority;
    info.StartTime = queue.startTime;
    info.UntilTime = queue.untilTime;
    info.Status = queue.status;
    info.cJobs = static_cast<DWORD>(queue.jobs.size());
    info.AveragePPM = queue.averagePagesPerMinute;
    packer.Record(0, info);
}

// position: the job's place in the queue, from 0. index: the record's place in the buffer.
void PackJob1(InfoPacker& packer, const QueueDescription& queue, std::size_t position, std::size_t index) {
    const QueueJob& job = queue.jobs[position];
    JOB_INFO_1W info{};
    info.JobId = job.id;
    info.pPrinterName = packer.Text(queue.printerName);
    info.pMachineName = packer.Text(job.machine);
    info.pUserName = packer.Text(job.user);
    info.pDocument = packer.Text(job.document);
    info.pDatatype = packer.Text(job.datatype);
    info.pStatus = packer.TextOrNull(job.statusText);
    info.Status = job.status;
    info.Priority = job.priority;
    info.Position = static_cast<DWORD>(position + 1);
    info.TotalPages = job.totalPages;
    info.PagesPrinted = job.pagesPrinted;
    info.Submitted = ToSystemTime(job.submitted);
    packer.Record(index, info);
}

void PackJob2(InfoPacker& packer, const QueueDescription& queue, std::size_t position, std::size_t index) {
    const QueueJob& job = queue.jobs[position];
    JOB_INFO_2W info{};
    info.JobId = job.id;
    info.pPrinterName = packer.Text(queue.printerName);
    info.pMachineName = packer.Text(job.machine);
    info.pUserName = packer.Text(job.user);
    info.pDocument = packer.Text(job.document);
    info.pNotifyName = packer.Text(job.notify.empty() ? job.user : job.notify);
    info.pDatatype = packer.Text(job.datatype);
    info.pPrintProcessor = packer.Text(queue.printProcessor);
    info.pParameters = packer.Text(job.parameters);
    info.pDriverName = packer.Text(queue.driverName);
    info.pDevMode = static_cast<DEVMODEW*>(packer.Block(LoadDevmode(job.devmode)));
    info.pStatus = packer.TextOrNull(job.statusText);
    info.Status = job.status;
    info.Priority = job.priority;
    info.Position = static_cast<DWORD>(position + 1);
    info.StartTime = job.startTime;
    info.UntilTime = job.untilTime;
    info.TotalPages = job.totalPages;
    info.Size = job.size;
    info.Submitted = ToSystemTime(job.submitted);
    info.Time = job.time;
    info.PagesPrinted = job.pagesPrinted;
    packer.Record(index, info);
}

// The published two-call protocol: count, and lay out if the buffer suffices.
template <class Pack>
BOOL PackInto(BYTE* buffer, DWORD capacity, DWORD* needed, std::size_t recordBytes, Pack pack) {
    InfoPacker counter(nullptr, recordBytes);
    pack(counter);
    if (counter.Used() > (std::numeric_limits<DWORD>::max)()) return Fail(ERROR_NOT_ENOUGH_MEMORY);
    *needed = static_cast<DWORD>(counter.Used());
    if (!buffer || capacity < *needed) return Fail(ERROR_INSUFFICIENT_BUFFER);
    InfoPacker packer(buffer, recordBytes);
    pack(packer);
    return TRUE;
}

using PackJob = void (*)(InfoPacker&, const QueueDescription&, std::size_t position, std::size_t index);
struct JobLevel {
    DWORD level;
    std::size_t recordSize;
    PackJob pack;
};
constexpr JobLevel jobLevels[] = {{1, sizeof(JOB_INFO_1W), PackJob1}, {2, sizeof(JOB_INFO_2W), PackJob2}};

const JobLevel* FindJobLevel(DWORD level) {
    const auto found = std::find_if(std::begin(jobLevels), std::end(jobLevels),
                                    [&](const JobLevel& row) { return row.level == level; });
    return found == std::end(jobLevels) ? nullptr : found;
}

BOOL PackJobs(const QueueDescription& queue, std::size_t first, std::size_t count, const JobLevel& level,
              BYTE* buffer, DWORD capacity, DWORD* needed) {
    return PackInto(buffer, capacity, needed, count * level.recordSize, [&](InfoPacker& packer) {
        for (std::size_t i = 0; i < count; ++i)
            level.pack(packer, queue, first + i, i);
    });
}

} // namespace

} // namespace OvPlatform

using namespace OvPlatform;

BOOL WINAPI OpenPrinterW(LPWSTR pPrinterName, HANDLE* phPrinter, PRINTER_DEFAULTSW*) {
    return Guarded([&] {
        if (phPrinter == nullptr) return Fail(ERROR_INVALID_PARAMETER);
        *phPrinter = nullptr;
        auto queue = QueueRegistry::Find(pPrinterName);
        if (!queue) return Fail(ERROR_INVALID_PRINTER_NAME);
        *phPrinter = PrinterHandles::Open(std::move(queue));
        return BOOL{TRUE};
    });
}

BOOL WINAPI ClosePrinter(HANDLE hPrinter) {
    // No fault point: a caller has no answer to a close that fails, and would leak the handle.
    return PrinterHandles::Close(hPrinter) ? TRUE : Fail(ERROR_INVALID_HANDLE);
}

BOOL WINAPI GetPrinterW(HANDLE hPrinter, DWORD Level, BYTE* pPrinter, DWORD cbBuf, DWORD* pcbNeeded) {
    return Guarded([&] {
        if (pcbNeeded == nullptr) return Fail(ERROR_INVALID_PARAMETER);
        *pcbNeeded = 0;
        const auto queue = PrinterHandles::Find(hPrinter);
        if (!queue) return Fail(ERROR_INVALID_HANDLE);
        const QueueDescription& description = queue->Description();
        if (Level == 1)
            return PackInto(pPrinter, cbBuf, pcbNeeded, sizeof(PRINTER_INFO_1W),
                            [&](InfoPacker& packer) { PackPrinter1(packer, description); });
        if (Level == 2)
            return PackInto(pPrinter, cbBuf, pcbNeeded, sizeof(PRINTER_INFO_2W),
                            [&](InfoPacker& packer) { PackPrinter2(packer, description); });
        return Fail(ERROR_INVALID_LEVEL);
    });
}

BOOL WINAPI GetJobW(HANDLE hPrinter, DWORD JobId, DWORD Level, BYTE* pJob, DWORD cbBuf, DWORD* pcbNeeded) {
    return Guarded([&] {
        if (pcbNeeded == nullptr) return Fail(ERROR_INVALID_PARAMETER);
        *pcbNeeded = 0;
        const auto queue = PrinterHandles::Find(hPrinter);
        if (!queue) return Fail(ERROR_INVALID_HANDLE);
        const JobLevel* level = FindJobLevel(Level);
        if (level == nullptr) return Fail(ERROR_INVALID_LEVEL);
        const QueueJob* job = queue->FindJob(JobId);
        if (job == nullptr) return Fail(ERROR_INVALID_PARAMETER);
        const auto position = static_cast<std::size_t>(job - queue->Jobs().data());
        return PackJobs(queue->Description(), position, 1, *level, pJob, cbBuf, pcbNeeded);
    });
}

BOOL WINAPI EnumJobsW(HANDLE hPrinter, DWORD FirstJob, DWORD NoJobs, DWORD Level, BYTE* pJob, DWORD cbBuf,
                      DWORD* pcbNeeded, DWORD* pcReturned) {
    return Guarded([&] {
        if (pcbNeeded == nullptr || pcReturned == nullptr) return Fail(ERROR_INVALID_PARAMETER);
        *pcbNeeded = *pcReturned = 0;
        const auto queue = PrinterHandles::Find(hPrinter);
        if (!queue) return Fail(ERROR_INVALID_HANDLE);
        const JobLevel* level = FindJobLevel(Level);
        if (level == nullptr) return Fail(ERROR_INVALID_LEVEL);
        const std::size_t all = queue->Jobs().size();
        const std::size_t first = (std::min)(std::size_t{FirstJob}, all);
        const std::size_t count = (std::min)(std::size_t{NoJobs}, all - first);
        if (count == 0) return BOOL{TRUE};
        if (!PackJobs(queue->Description(), first, count, *level, pJob, cbBuf, pcbNeeded)) return BOOL{FALSE};
        *pcReturned = static_cast<DWORD>(count);
        return BOOL{TRUE};
    });
}
