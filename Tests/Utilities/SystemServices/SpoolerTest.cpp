// Printers and jobs of a queue, as the services over the spooler see them.

#include <Com/FaultInjection.h>
#include <LowLevelFacilities/Failures/CPExceptionOSApiError.h>
#include <Spooler/QueueFolder.h>
#include <Spooler/QueueRegistry.h>
#include <SystemServices/PrintJob.h>
#include <SystemServices/Printer.h>

#include <gtest/gtest.h>
#include <winspool.h>

namespace {

class SpoolerServices : public testing::Test {
protected:
    SpoolerServices() { Add(L""); }
    ~SpoolerServices() override { OvPlatform::QueueRegistry::Clear(); }

    static void Add(const wchar_t* separatorFile) {
        OvPlatform::QueueDescription queue;
        queue.printerName = L"Office \u20AC";
        queue.separatorFile = separatorFile;
        OvPlatform::QueueJob job;
        job.id = 7;
        job.document = L"Report";
        job.user = L"anna";
        queue.jobs = {job};
        OvPlatform::QueueRegistry::Add(std::make_shared<OvPlatform::QueueFolder>(queue));
    }
};

TEST_F(SpoolerServices, ReadThePrintersRecordAndCloseWhatTheyOpened) {
    ByteBuffer info;
    HANDLE handle = nullptr;
    {
        Printer printer;
        printer.CreateHandle(L"office \u20AC");
        handle = printer.GetHandle();
        EXPECT_TRUE(Printer(handle).GetPrinterInfo(2, info)); // does not close it
        ByteBuffer original;
        ASSERT_TRUE(printer.GetPrinterInfo(2, original));
        const ByteBuffer moved = std::move(original);
        const auto* record = reinterpret_cast<const PRINTER_INFO_2W*>(moved.getLpbyte());
        EXPECT_STREQ(L"Office \u20AC", record->pPrinterName);
        EXPECT_FALSE(printer.GetPrinterInfo(99, info));
        EXPECT_TRUE(info.empty());
        EXPECT_EQ(static_cast<DWORD>(ERROR_INVALID_LEVEL), GetLastError());
        printer.CreateHandle(L"Office \u20AC");
        EXPECT_FALSE(Printer(handle).GetPrinterInfo(2, info)); // the first is closed
        handle = printer.GetHandle();
    }
    EXPECT_FALSE(Printer(handle).GetPrinterInfo(2, info));
    EXPECT_EQ(static_cast<DWORD>(ERROR_INVALID_HANDLE), GetLastError());
}

TEST_F(SpoolerServices, SayThatAPrinterIsMissing) {
    Printer printer;
    ByteBuffer info(1);
    EXPECT_FALSE(printer.GetPrinterInfo(2, info));
    EXPECT_TRUE(info.empty());
    EXPECT_FALSE(printer.IsMSSeparatorPageSelected());
    printer.CreateHandle(L"Office \u20AC");
    try {
        printer.CreateHandle(L"nobody's");
        FAIL();
    } catch (const CPExceptionOSApiError& failure) {
        EXPECT_EQ(static_cast<DWORD>(ERROR_INVALID_PRINTER_NAME), failure.getLastError());
        EXPECT_EQ(static_cast<DWORD>(ERROR_INVALID_PRINTER_NAME), GetLastError());
    }
    EXPECT_TRUE(printer.GetPrinterInfo(2, info)); // the first is still open
}

TEST_F(SpoolerServices, TellWhetherASeparatorPageIsSelected) {
    for (const wchar_t* const file : {L"", L"pcl.sep"}) {
        Add(file);
        Printer printer;
        printer.CreateHandle(L"Office \u20AC");
        EXPECT_EQ(*file != 0, printer.IsMSSeparatorPageSelected());
    }
}

TEST_F(SpoolerServices, ReadAJobsRecord) {
    Printer printer;
    printer.CreateHandle(L"Office \u20AC");
    const ByteBuffer first = PrintJob::GetJobInfo(printer.GetHandle(), 7, 1, false);
    ASSERT_FALSE(first.empty());
    EXPECT_STREQ(L"Report", reinterpret_cast<const JOB_INFO_1W*>(first.getLpbyte())->pDocument);
    const ByteBuffer second = PrintJob::GetJobInfo(printer.GetHandle(), 7, 2, true);
    EXPECT_STREQ(L"anna", reinterpret_cast<const JOB_INFO_2W*>(second.getLpbyte())->pUserName);

    EXPECT_TRUE(PrintJob::GetJobInfo(printer.GetHandle(), 8, 1, false).empty());
    EXPECT_THROW((void)PrintJob::GetJobInfo(printer.GetHandle(), 8, 1, true), CPExceptionOSApiError);
}

TEST_F(SpoolerServices, SurviveTheFailureOfEachCall) {
    Printer printer;
    printer.CreateHandle(L"Office \u20AC");
    for (LONG call = 1; call <= 2; ++call) {
        const OvPlatform::FaultInjectionScope fault(call, E_ACCESSDENIED);
        ByteBuffer info;
        EXPECT_FALSE(printer.GetPrinterInfo(2, info)) << call;
        EXPECT_TRUE(info.empty());
    }
}

} // namespace
