#include "Platform/Spooler/SampleQueue.h"
#include "Support/Rows.h"

#include <Com/FaultInjection.h>
#include <Spooler/DevmodeLayout.h>
#include <Spooler/QueueRegistry.h>

#include <gtest/gtest.h>
#include <winspool.h>

#include <cstring>
#include <functional>

using namespace OvPlatform;

namespace {

using Query = std::function<BOOL(BYTE* buffer, DWORD size, DWORD* needed)>;

class Spooler : public testing::Test {
protected:
    void SetUp() override {
        m_queue = SampleQueue();
        DEVMODEW mode{};
        mode.dmSize = sizeof mode;
        mode.dmDriverExtra = 5;
        mode.dmFields = DM_ORIENTATION | DM_COPIES;
        mode.dmOrientation = 2;
        mode.dmCopies = 3;
        mode.dmDeviceName[0] = L'\x00E9';
        mode.dmFormName[31] = L'\xFFFE';
        mode.dmLogPixels = 600;
        mode.dmPanningHeight = 0xDEADBEEF;
        m_devmode.resize(sizeof mode + 5, 0xAB);
        std::memcpy(m_devmode.data(), &mode, sizeof mode);
        m_queue.jobs[0].devmode = StoreDevmode(m_devmode);
        QueueRegistry::Clear();
        QueueRegistry::Add(std::make_shared<QueueFolder>(m_queue));
        ASSERT_TRUE(OpenPrinterW(m_queue.printerName.data(), &m_printer, nullptr));
    }
    void TearDown() override {
        ClosePrinter(m_printer);
        QueueRegistry::Clear();
    }

    // Runs the two-call protocol, and checks that a byte less does not do and that nothing is written beyond.
    std::vector<BYTE> Fetch(const Query& query) {
        DWORD needed = 0;
        EXPECT_FALSE(query(nullptr, 0, &needed));
        EXPECT_EQ(GetLastError(), DWORD{ERROR_INSUFFICIENT_BUFFER});
        std::vector<BYTE> buffer(needed + 1, 0xEE);
        DWORD again = 0;
        EXPECT_FALSE(query(buffer.data(), needed - 1, &again));
        EXPECT_EQ(again, needed);
        EXPECT_EQ(buffer, std::vector<BYTE>(needed + 1, 0xEE)) << "written although it does not fit";
        EXPECT_TRUE(query(buffer.data(), needed, &again));
        EXPECT_EQ(buffer.back(), 0xEE) << "written beyond the size";
        m_begin = buffer.data();
        m_end = buffer.data() + needed;
        return buffer;
    }

    // The text, which must stand wholly in the buffer fetched last.
    std::wstring Packed(const wchar_t* text) {
        const auto* place = reinterpret_cast<const BYTE*>(text);
        if (place < m_begin || place >= m_end) return L"outside the buffer";
        if (reinterpret_cast<std::uintptr_t>(place) % alignof(wchar_t) != 0) return L"not aligned";
        const std::wstring copy(text);
        return place + (copy.size() + 1) * sizeof(wchar_t) <= m_end ? copy : L"beyond the buffer";
    }

    QueueDescription m_queue;
    std::vector<std::uint8_t> m_devmode;
    HANDLE m_printer = nullptr;
    const BYTE* m_begin = nullptr;
    const BYTE* m_end = nullptr;
};

} // namespace

TEST_F(Spooler, PacksThePrinter) {
    const auto one = Fetch([&](auto... a) { return GetPrinterW(m_printer, 1, a...); });
    const auto& first = *reinterpret_cast<const PRINTER_INFO_1W*>(one.data());
    EXPECT_EQ(Packed(first.pName), m_queue.printerName);
    EXPECT_EQ(Packed(first.pDescription), m_queue.printerName + L",Lobby V4," + m_queue.location);

    const auto two = Fetch([&](auto... a) { return GetPrinterW(m_printer, 2, a...); });
    const auto& info = *reinterpret_cast<const PRINTER_INFO_2W*>(two.data());
    EXPECT_EQ(Packed(info.pPrinterName), m_queue.printerName);
    EXPECT_EQ(Packed(info.pPortName), L"FILE:");
    EXPECT_EQ(Packed(info.pParameters), L"");
    EXPECT_EQ(info.pDevMode, nullptr);
    EXPECT_EQ(info.cJobs, 2u);
}

TEST_F(Spooler, PacksAJob) {
    const auto one = Fetch([&](auto... a) { return GetJobW(m_printer, 7, 1, a...); });
    const auto& first = *reinterpret_cast<const JOB_INFO_1W*>(one.data());
    EXPECT_EQ(first.JobId, 7u);
    EXPECT_EQ(first.Position, 2u);
    EXPECT_EQ(first.pStatus, nullptr);
    EXPECT_EQ(Packed(first.pDocument), m_queue.jobs[1].document);

    const auto two = Fetch([&](auto... a) { return GetJobW(m_printer, 41, 2, a...); });
    const auto& info = *reinterpret_cast<const JOB_INFO_2W*>(two.data());
    EXPECT_EQ(Packed(info.pNotifyName), L"anna") << "the user is told where nobody is named";
    EXPECT_EQ(Packed(info.pStatus), L"waiting");
    EXPECT_EQ(info.Size, 4000000000u);
    const SYSTEMTIME& time = info.Submitted;
    EXPECT_EQ(time.wYear, 2026);
    EXPECT_EQ(time.wDay, 28);
    EXPECT_EQ(time.wMilliseconds, 7);
    ASSERT_NE(info.pDevMode, nullptr);
    EXPECT_EQ(std::memcmp(info.pDevMode, m_devmode.data(), m_devmode.size()), 0);
}

TEST_F(Spooler, ListsJobsInTheOrderOfPrinting) {
    DWORD returned = 99, needed = 0;
    const auto buffer =
        Fetch([&](BYTE* b, DWORD s, DWORD* n) { return EnumJobsW(m_printer, 0, 9, 2, b, s, n, &returned); });
    const auto* jobs = reinterpret_cast<const JOB_INFO_2W*>(buffer.data());
    ASSERT_EQ(returned, 2u);
    EXPECT_EQ(jobs[0].JobId, 41u);
    EXPECT_EQ(jobs[1].Position, 2u);
    EXPECT_EQ(Packed(jobs[1].pNotifyName), L"ben");
    EXPECT_TRUE(EnumJobsW(m_printer, 2, 9, 1, nullptr, 0, &needed, &returned));
    EXPECT_EQ(returned, 0u);
}

TEST_F(Spooler, RefusesWithThePublishedError) {
    DWORD needed = 0;
    HANDLE closed = nullptr, none = nullptr;
    ASSERT_TRUE(OpenPrinterW(m_queue.printerName.data(), &closed, nullptr));
    ASSERT_TRUE(ClosePrinter(closed));
    wchar_t unknown[] = L"unknown";
    const Rows<const char*, std::function<BOOL()>, DWORD> rows{
        {"unknown printer", [&] { return OpenPrinterW(unknown, &none, nullptr); },
         ERROR_INVALID_PRINTER_NAME},
        {"no handle wanted", [&] { return OpenPrinterW(unknown, nullptr, nullptr); },
         ERROR_INVALID_PARAMETER},
        {"closed twice", [&] { return ClosePrinter(closed); }, ERROR_INVALID_HANDLE},
        {"closed handle", [&] { return GetPrinterW(closed, 2, nullptr, 0, &needed); }, ERROR_INVALID_HANDLE},
        {"level 3", [&] { return GetPrinterW(m_printer, 3, nullptr, 0, &needed); }, ERROR_INVALID_LEVEL},
        {"job level 0", [&] { return GetJobW(m_printer, 7, 0, nullptr, 0, &needed); }, ERROR_INVALID_LEVEL},
        {"no such job", [&] { return GetJobW(m_printer, 8, 1, nullptr, 0, &needed); },
         ERROR_INVALID_PARAMETER},
        {"no size wanted", [&] { return GetPrinterW(m_printer, 2, nullptr, 0, nullptr); },
         ERROR_INVALID_PARAMETER},
    };
    for (const auto& [what, call, error] : rows) {
        SetLastError(0);
        EXPECT_FALSE(call()) << what;
        EXPECT_EQ(GetLastError(), error) << what;
    }
    const FaultInjectionScope fault(1);
    EXPECT_FALSE(GetPrinterW(m_printer, 2, nullptr, 0, &needed));
    EXPECT_EQ(GetLastError(), DWORD{ERROR_OUTOFMEMORY});
}

TEST(DevmodeLayout, RefusesSizesThatLie) {
    std::vector<std::uint8_t> stored(220);
    EXPECT_TRUE(LoadDevmode({}).empty());
    EXPECT_TRUE(LoadDevmode(stored).empty()) << "dmSize 0";
    stored[68] = 220;
    EXPECT_EQ(LoadDevmode(stored).size(), sizeof(DEVMODEW));
    stored[70] = 1;
    EXPECT_TRUE(LoadDevmode(stored).empty()) << "driver bytes that are not there";
    stored[68] = 100; // an old, short one with one byte of the driver's
    stored[100] = 0x77;
    EXPECT_EQ(LoadDevmode(stored).back(), 0x77);
    EXPECT_TRUE(StoreDevmode(std::vector<std::uint8_t>(sizeof(DEVMODEW))).empty());
}
