#include "Support/ComFake.h"
#include "Support/EnvironmentVariable.h"
#include "Support/FailureSweep.h"
#include "Support/ReportRecorder.h"
#include "Support/Rows.h"
#include "Support/TemporaryFolder.h"

#include <Com/Dispatch.h>
#include <PrintTime/PrinterContextForConsoleApps.h>
#include <Spooler/QueueRegistry.h>
#include <System/MessageQueue.h>
#include <SystemServices/SafeCoInitialize.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/wait.h>

#include <chrono>
#include <cstdio>
#include <string>
#include <thread>

using namespace OvPlatform;

namespace {

constexpr auto driver = L"{1F0C3AD2-94B1-4F6E-8A77-215C0E6D439B}";

class OpenContext : public PrinterContextForConsoleApps {
public:
    using PrinterContextForConsoleApps::PrinterContextForConsoleApps;
    using PrinterContextForConsoleApps::RunMessageLoop;
};

void AddQueue(const wchar_t* name) {
    QueueDescription queue;
    queue.printerName = name;
    queue.defaultTicket =
        "<f:PrintTicket version='1' "
        "xmlns:f='http://schemas.microsoft.com/windows/2003/08/printing/printschemaframework'/>";
    queue.driverProperties = {{L"Of", std::wstring(L"driver")}};
    queue.queueProperties = {{L"Of", std::wstring(L"queue")}};
    QueueRegistry::Add(std::make_shared<QueueFolder>(std::move(queue)));
}

std::wstring TextOf(IPrinterPropertyBag* bag) {
    CComBSTR text;
    return bag != nullptr && SUCCEEDED(bag->GetString(CComBSTR(L"Of"), &text)) ? std::wstring(text) : L"?";
}

class PrinterContext : public testing::Test {
protected:
    PrinterContext() {
        m_apartment.TryInitializeCom(COINIT_APARTMENTTHREADED, true);
        QueueRegistry::Clear();
        AddQueue(L"Attic");
        AddQueue(L"Lobby");
    }
    ~PrinterContext() override { QueueRegistry::Clear(); }

    SafeCoInitialize m_apartment;
    TemporaryFolder m_folder;
    EnvironmentVariable m_users{"OV_USER_PROPERTIES", m_folder.Path().string()};
};

TEST_F(PrinterContext, ReachesAllThatBelongsToThePrinter) {
    PrinterContextForConsoleApps context(L"LOBBY", driver);
    EXPECT_EQ(std::wstring(L"LOBBY"), context.GetPrinterName());
    EXPECT_EQ(std::wstring(driver), context.GetPrinterDriverID());
    EXPECT_TRUE(context.IsPrinterContextAvailable());
    QueueRegistry::Clear(); // the printer goes; what is held stays

    CComPtr<IPrinterQueue> queue;
    CComPtr<IPrintSchemaTicket> ticket;
    CComPtr<IPrinterPropertyBag> user, ofDriver, ofQueue;
    CComBSTR name;
    ASSERT_EQ(S_OK, context.get_PrinterQueue(&queue));
    EXPECT_EQ(S_OK, queue->get_Name(&name));
    EXPECT_EQ(L"Lobby", std::wstring(name));
    EXPECT_EQ(S_OK, context.get_PrintSchemaTicket(&ticket));
    EXPECT_TRUE(ticket);
    ASSERT_EQ(S_OK, context.GetUserPropertyBag(&user));
    EXPECT_EQ(S_OK, user->SetString(CComBSTR(L"Of"), CComBSTR(L"user")));
    ASSERT_EQ(S_OK, context.GetDriverPropertyBag(&ofDriver));
    ASSERT_EQ(S_OK, context.GetQueuePropertyBag(&ofQueue));
    EXPECT_EQ(L"user", TextOf(user));
    EXPECT_EQ(L"driver", TextOf(ofDriver));
    EXPECT_EQ(L"queue", TextOf(ofQueue));

    EXPECT_EQ(E_FAIL, context.get_PrinterQueue(nullptr));
    EXPECT_EQ(E_FAIL, context.GetQueuePropertyBag(nullptr));
}

TEST_F(PrinterContext, HasOneTry) {
    const std::wstring longName(260, L'n');
    AddQueue(std::wstring(longName, 0, 259).c_str());
    const Rows<const char*, const wchar_t*, const wchar_t*> rows{
        {"no GUID", L"Lobby", L"Office Color V4"},
        {"no driver", L"Lobby", L""},
        {"null driver", L"Lobby", nullptr},
        {"the null GUID", L"Lobby", L"{00000000-0000-0000-0000-000000000000}"},
        {"an id that goes on", L"Lobby", L"{1F0C3AD2-94B1-4F6E-8A77-215C0E6D439B}x"},
        {"no such printer", L"Cellar", driver},
        {"null printer", nullptr, driver},
        {"its beginning is a printer's", longName.c_str(), driver},
    };
    for (const auto& [what, printer, id] : rows) {
        PrinterContextForConsoleApps context(printer, id);
        CComPtr<IPrinterQueue> queue;
        CComPtr<IPrinterPropertyBag> bag;
        EXPECT_TRUE(FAILED(context.get_PrinterQueue(&queue))) << what;
        EXPECT_FALSE(context.IsPrinterContextAvailable()) << what;
        if (printer != nullptr) AddQueue(printer); // too late
        EXPECT_EQ(E_FAIL, context.GetQueuePropertyBag(&bag)) << what;
        EXPECT_EQ(E_FAIL, context.GetUserPropertyBag(&bag)) << what;
        EXPECT_FALSE(queue) << what;
    }
    PrinterContextForConsoleApps noGuid(L"Lobby", L"Lobby");
    CComPtr<IPrintSchemaTicket> ticket;
    const ReportRecorder recorder;
    EXPECT_EQ(E_FAIL, noGuid.get_PrintSchemaTicket(&ticket));
    EXPECT_EQ(E_FAIL, noGuid.get_PrintSchemaTicket(&ticket));
    EXPECT_EQ(1u, ReportRecorder::reports().size()) << "told once";
}

TEST_F(PrinterContext, DispatchesWhatComesWhileItWaits) {
    OpenContext context(L"Lobby", driver);
    HANDLE const event = CreateEventW(nullptr, TRUE, FALSE, nullptr);
    int done = 0;
    const auto queue = MessageQueue::OfThread();
    std::thread other([&] {
        for (int i = 0; i < 3; ++i) {
            std::this_thread::sleep_for(std::chrono::milliseconds(20));
            queue->Post([&] {
                if (++done == 3) SetEvent(event);
            });
        }
    });
    EXPECT_TRUE(context.RunMessageLoop(event, 30000));
    other.join();
    EXPECT_EQ(3, done);
    CloseHandle(event);
    EXPECT_FALSE(context.RunMessageLoop(event, 30000)) << "no event";
    HANDLE const never = CreateEventW(nullptr, TRUE, FALSE, nullptr);
    EXPECT_FALSE(context.RunMessageLoop(never, 1));
    CloseHandle(never);
}

// Whose entries fail in their own ways.
class FailingPrinters : public Dispatch<ComFake<IPrinterExtensionContextCollection>> {
public:
    ~FailingPrinters() override = default;

    HRESULT counts = S_OK;

    HRESULT STDMETHODCALLTYPE get_Count(ULONG* count) override {
        *count = 3;
        return counts;
    }
    HRESULT STDMETHODCALLTYPE GetAt(ULONG index, IPrinterExtensionContext** context) override {
        *context = nullptr;
        return index == 1 ? E_ACCESSDENIED : S_OK; // with nothing in it
    }
    HRESULT STDMETHODCALLTYPE get__NewEnum(IUnknown**) override { return E_NOTIMPL; }
};

TEST_F(PrinterContext, SetsItsSinksEventWhateverItIsTold) {
    HANDLE const event = CreateEventW(nullptr, FALSE, FALSE, nullptr);
    const auto isSet = [&] { return MsgWaitForMultipleObjects(1, &event, FALSE, 0, 0) == WAIT_OBJECT_0; };
    CComPtr<IXDriverEventSink> sink;
    sink.Attach(new IXDriverEventSink(L"Lobby", event));
    const auto printers = MakeFake<FailingPrinters>();
    EXPECT_EQ(E_FAIL, sink->OnPrinterQueuesEnumerated(printers));
    EXPECT_TRUE(isSet());
    printers->counts = E_ACCESSDENIED;
    EXPECT_EQ(E_ACCESSDENIED, sink->OnPrinterQueuesEnumerated(printers));
    EXPECT_TRUE(isSet());
    EXPECT_EQ(E_FAIL, sink->OnPrinterQueuesEnumerated(nullptr));
    EXPECT_TRUE(isSet());
    sink->Forget();
    EXPECT_EQ(E_FAIL, sink->OnPrinterQueuesEnumerated(printers));
    EXPECT_FALSE(isSet());
    EXPECT_EQ(nullptr, sink->GetContext());
    CloseHandle(event);

    EXPECT_TRUE((CComQIPtr<IPrinterExtensionEvent>(sink.p)));
    EXPECT_TRUE((CComQIPtr<IDispatch>(sink.p)));
    EXPECT_FALSE((CComQIPtr<IPrinterQueueEvent>(sink.p)));
}

// The sample, in a process of its own; what it prints, and its exit code at the end.
std::string RunSample(const std::string& arguments) {
    const std::string command = OV_BINARY_DIR "/bin/PrintTimeQuestions " + arguments + " 2>&1";
    std::FILE* const pipe = popen(command.c_str(), "r");
    if (pipe == nullptr) return "cannot be started";
    std::string printed;
    char block[4096];
    while (const std::size_t count = std::fread(block, 1, sizeof block, pipe))
        printed.append(block, count);
    return printed + std::to_string(WEXITSTATUS(pclose(pipe)));
}

TEST_F(PrinterContext, ServesTheSampleProgram) {
    const EnvironmentVariable queues(QueueRegistry::searchVariable, OV_SOURCE_DIR "/Samples/Queues");
    const std::string id = " '{1f0c3ad2-94b1-4f6e-8a77-215c0e6d439b}'";
    const auto answers = [](const char* times) {
        return "asks for accounting data: VAL_ACCT_PROMPT_FOR_COLOR\nonly secure prints: no\n"
               "only black and white: no\ntells the user of finished jobs: yes\nasked before: " +
               std::string(times) + " times\n0";
    };
    EXPECT_EQ(answers("0"), RunSample("'color office'" + id));
    EXPECT_EQ(answers("1"), RunSample("'Color Office'" + id));
    EXPECT_EQ("PrintTimeQuestions: the printer cannot be reached: 0x80004005\n1", RunSample("Lobby" + id));
    m_folder.Write("color office.xml", "damaged");
    EXPECT_THAT(RunSample("'Color Office'" + id),
                testing::AllOf(testing::HasSubstr("the user's settings cannot be written: 0x80070570\n"),
                               testing::EndsWith("\n1")));
}

struct World {
    std::string State() const { return {}; }
};

TEST_F(PrinterContext, TellsOfEachCallThatFails) {
    const CComBSTR name(L"Of");
    FailureSweep<World>([] { return std::make_unique<World>(); },
                        [&](World&) -> SweptAnswer {
                            PrinterContextForConsoleApps context(L"Lobby", driver);
                            CComPtr<IPrinterPropertyBag> bag, user;
                            HRESULT hr = context.GetQueuePropertyBag(&bag);
                            if (SUCCEEDED(hr)) hr = context.GetUserPropertyBag(&user);
                            if (FAILED(hr)) return hr;
                            CComBSTR text;
                            hr = bag->GetString(name, &text);
                            return FAILED(hr) ? SweptAnswer(hr) : SweptAnswer(std::string("found"));
                        })
        .Run("a connection");
}

} // namespace
