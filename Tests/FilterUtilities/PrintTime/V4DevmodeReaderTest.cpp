#include "Support/FilterJob.h"
#include "Support/NoDisplayHelp.h"
#include "Support/Rows.h"
#include "Support/VirtualSlots.h"

#include <Com/FaultInjection.h>
#include <ComSupport/MsSafeCoinit.h>
#include <PrintTime/V4DevmodeReader.h>
#include <Spooler/DevmodeLayout.h>

#include <cstring>

namespace {

const NoDisplayHelp helper;

// Converts without the rest.
class OpenReader : public V4DevmodeReader {
public:
    using V4DevmodeReader::ConvertDevmodeToPrintTicketInXmlDom;
};

// A device mode in memory of exactly its bytes, so that a read behind them shows.
struct Record {
    explicit Record(WORD extra = 0, unsigned char filling = 0, std::size_t bytes = 0)
        : memory(bytes != 0 ? bytes : sizeof(DEVMODEW) + extra, filling) {
        DEVMODEW mode{};
        std::wcsncpy(mode.dmDeviceName, SampleQueue::name, CCHDEVICENAME);
        mode.dmSpecVersion = DM_SPECVERSION;
        mode.dmSize = sizeof(mode);
        mode.dmDriverExtra = extra;
        mode.dmFields = DM_ORIENTATION | DM_DUPLEX;
        mode.dmOrientation = DMORIENT_LANDSCAPE;
        mode.dmDuplex = DMDUP_HORIZONTAL;
        std::memcpy(memory.data(), &mode, (std::min)(memory.size(), sizeof mode));
    }
    DEVMODEW* Mode() { return reinterpret_cast<DEVMODEW*>(memory.data()); }

    std::vector<unsigned char> memory;
};

std::wstring Orientation(const V4DevmodeReader& reader) {
    const PrintTicketXmlDocument* const ticket = reader.GetConstPtrToPrintTicket();
    CComBSTR option;
    if (ticket == nullptr) return L"(no ticket)";
    ticket->GetFeatureOption(ticket->GetKeywordsNsPrefix(), L"PageOrientation", &option, nullptr);
    return option.m_str != nullptr ? option.m_str : L"(none)";
}

bool IsEmpty(const V4DevmodeReader& reader) {
    return !reader.IsInitialized() && reader.GetConstPtrToDevmode() == nullptr &&
           reader.GetConstPtrToAttributeBytesReaderWriter() == nullptr &&
           reader.GetConstPtrToPrintTicket() == nullptr;
}

TEST(V4DevmodeReader, TakesItsSizeFromTheTwoSizes) {
    Record record;
    record.Mode()->dmSize = 220;
    record.Mode()->dmDriverExtra = 1000;
    EXPECT_EQ(V4DevmodeReader::GetDevmodeSize(record.Mode()), 1220u);
    record.Mode()->dmSize = 0;
    EXPECT_EQ(V4DevmodeReader::GetDevmodeSize(record.Mode()), 0u);
    EXPECT_EQ(V4DevmodeReader::GetDevmodeSize(nullptr), 0u);
    EXPECT_EQ(SlotOf(&OneMore<V4DevmodeReader>::Next), 2u);
}

TEST(V4DevmodeReader, GivesTheTicketAndTheBytesInIt) {
    const SampleQueue queue;
    Record first(65'535, 0xEE);
    V4DevmodeReader reader(SampleQueue::name, first.Mode(), helper);
    ASSERT_TRUE(reader.IsInitialized());
    EXPECT_EQ(Orientation(reader), L"Landscape");
    EXPECT_NE(reader.GetConstPtrToDevmode(), first.Mode());
    EXPECT_EQ(V4DevmodeReader::GetDevmodeSize(reader.GetConstPtrToDevmode()), first.memory.size());
    // Those of the queue's default ticket, over which the device mode lies.
    EXPECT_FALSE(reader.GetConstPtrToAttributeBytesReaderWriter()->IsAttributeBytesListEmpty());

    // The second takes the place of the first, and may be the first's own.
    EXPECT_TRUE(reader.Init(SampleQueue::name, const_cast<DEVMODEW*>(reader.GetConstPtrToDevmode()), helper));
    EXPECT_EQ(Orientation(reader), L"Landscape");
    Record portrait;
    portrait.Mode()->dmOrientation = DMORIENT_PORTRAIT;
    EXPECT_TRUE(reader.Init(SampleQueue::name, portrait.Mode(), helper));
    EXPECT_EQ(Orientation(reader), L"Portrait");
    EXPECT_FALSE(reader.Init(L"No such printer", portrait.Mode(), helper));
    EXPECT_TRUE(IsEmpty(reader));
}

TEST(V4DevmodeReader, RefusesWhatIsNoDeviceModeWithoutReadingBehindIt) {
    const SampleQueue queue;
    struct Edit {
        std::size_t bytes;
        std::size_t size;
        WORD extra;
    };
    constexpr std::size_t least = offsetof(DEVMODEW, dmFields) + sizeof(DWORD);
    const Rows<Edit, HRESULT, const wchar_t*> cases{
        {{sizeof(DEVMODEW), 0, 0}, E_INVALIDARG, L"(no ticket)"},
        {{sizeof(DEVMODEW), least - 1, 0}, E_INVALIDARG, L"(no ticket)"},
        {{sizeof(DEVMODEW), 1, 20}, E_INVALIDARG, L"(no ticket)"},
        {{least, least, 0}, S_OK, L"Portrait"}, // a version that ends before its orientation
        {{offsetof(DEVMODEW, dmICMMethod), offsetof(DEVMODEW, dmICMMethod), 0}, S_OK, L"Landscape"},
        {{sizeof(DEVMODEW) + 40, sizeof(DEVMODEW) + 40, 0}, S_OK, L"Landscape"}}; // a later version
    for (const auto& [edit, result, orientation] : cases) {
        Record record(0, 0xEE, edit.bytes);
        record.Mode()->dmSize = static_cast<WORD>(edit.size);
        record.Mode()->dmDriverExtra = edit.extra;
        const V4DevmodeReader reader(SampleQueue::name, record.Mode(), helper);
        EXPECT_EQ(Orientation(reader), orientation) << edit.size;
        EXPECT_EQ(reader.IsInitialized(), result == S_OK) << edit.size;
        EXPECT_EQ(IsEmpty(reader), result != S_OK) << edit.size;
        const MsSafeCoInit apartment;
        OpenReader open;
        EXPECT_EQ(open.ConvertDevmodeToPrintTicketInXmlDom(SampleQueue::name, record.Mode()), result);
    }
    Record other; // of another printer: the defaults
    std::wcsncpy(other.Mode()->dmDeviceName, L"Another", CCHDEVICENAME);
    EXPECT_EQ(Orientation(V4DevmodeReader(SampleQueue::name, other.Mode(), helper)), L"Portrait");
    OpenReader open;
    EXPECT_EQ(open.ConvertDevmodeToPrintTicketInXmlDom(L"No such printer", other.Mode()),
              HRESULT_FROM_WIN32(ERROR_INVALID_PRINTER_NAME));
}

TEST(V4DevmodeReader, ReadsTheDeviceModeOfAJob) {
    Record record;
    const std::vector<std::uint8_t> stored = OvPlatform::StoreDevmode(record.memory);
    std::vector<std::uint8_t> cut(stored.begin(), stored.end() - 1);
    const Rows<std::vector<std::uint8_t>, ULONG, bool> cases{
        {stored, 7, true}, {stored, 8, false}, {cut, 7, false}, {{}, 7, false}};
    for (const auto& [devmode, job, isRead] : cases) {
        const SampleQueue queue(L"LPT1:", devmode);
        V4DevmodeReader reader(SampleQueue::name, queue.handle, job, helper);
        EXPECT_EQ(reader.IsInitialized(), isRead) << devmode.size() << " bytes, job " << job;
        EXPECT_EQ(Orientation(reader), isRead ? L"Landscape" : L"(no ticket)");
        if (!isRead) continue;
        EXPECT_FALSE(reader.Init(SampleQueue::name, queue.handle, 99, helper));
        EXPECT_TRUE(IsEmpty(reader));
    }
}

TEST(V4DevmodeReader, AnyFailureOfThePlatformLeavesNothing) {
    const SampleQueue queue;
    const MsSafeCoInit apartment;
    Record record;
    V4DevmodeReader reader;
    OvPlatform::FaultInjection::CountCalls();
    ASSERT_TRUE(reader.Init(SampleQueue::name, record.Mode(), helper));
    OvPlatform::FaultInjection::Reset();
    const LONG calls = OvPlatform::FaultInjection::CallCount();
    EXPECT_GT(calls, 5);
    for (LONG point = 1; point <= calls; ++point) {
        const bool isRead = [&] {
            const OvPlatform::FaultInjectionScope fault(point, E_ABORT);
            return reader.Init(SampleQueue::name, record.Mode(), helper);
        }();
        EXPECT_TRUE(isRead ? Orientation(reader) == L"Landscape" : IsEmpty(reader)) << point;
    }
}

} // namespace
