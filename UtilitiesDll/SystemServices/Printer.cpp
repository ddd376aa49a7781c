#include "SystemServices/Printer.h"

#include "LowLevelFacilities/Failures/CPExceptionOSApiError.h"
#include "LowLevelFacilities/Failures/ThrowFailure.h"
#include "SystemServices/SpoolerRecord.h"

#include <winspool.h>

Printer::~Printer() { Close(); }

void Printer::CreateHandle(const CXString& name) {
    const OperationScope operation("Printer::CreateHandle");
    CXString writableName(name);
    HANDLE printer = nullptr;
    if (!OpenPrinterW(writableName.GetBuffer(0), &printer, nullptr)) {
        ThrowFailure<CPExceptionOSApiError>([] { return "The printer cannot be opened."; });
    }
    Close();
    m_printer = printer;
    m_isOwned = true;
}

bool Printer::GetPrinterInfo(unsigned int level, ByteBuffer& info) const {
    return ReadSpoolerRecord(info, [this, level](BYTE* buffer, DWORD size, DWORD* needed) {
        return GetPrinterW(m_printer, level, buffer, size, needed);
    });
}

bool Printer::IsMSSeparatorPageSelected() const {
    ByteBuffer info;
    if (!GetPrinterInfo(2, info)) return false;
    const auto* const record = reinterpret_cast<const PRINTER_INFO_2W*>(info.getLpbyte());
    return !CXString(record->pSepFile).IsBlank();
}

void Printer::Close() noexcept {
    if (m_isOwned) ClosePrinter(m_printer);
    m_printer = nullptr;
    m_isOwned = false;
}
