#include "Platform/Spooler/SampleQueue.h"
#include "Support/ComFake.h"
#include "Support/EnvironmentVariable.h"
#include "Support/TemporaryFolder.h"

#include <Com/Dispatch.h>
#include <Spooler/QueueFolderWriter.h>
#include <Spooler/QueueRegistry.h>

#include <gtest/gtest.h>
#include <olectl.h>
#include <printerextension.h>
#include <winspool.h>

#include <functional>
#include <stdexcept>
#include <string>
#include <thread>
#include <utility>
#include <vector>

using namespace OvPlatform;

namespace {

constexpr GUID driver = {0x1f0c3ad2, 0x94b1, 0x4f6e, {0x8a, 0x77, 0x21, 0x5c, 0x0e, 0x6d, 0x43, 0x9b}};

// Does with the printers whatever a test wants.
class Sink : public Dispatch<ComFake<IPrinterExtensionEvent, IDispatch>> {
public:
    using Told = std::function<HRESULT(IPrinterExtensionContextCollection*)>;
    explicit Sink(Told told) : m_told(std::move(told)) {}
    ~Sink() override = default;

    HRESULT STDMETHODCALLTYPE OnDriverEvent(IPrinterExtensionEventArgs*) override { return E_UNEXPECTED; }
    HRESULT STDMETHODCALLTYPE
    OnPrinterQueuesEnumerated(IPrinterExtensionContextCollection* collection) override {
        return m_told(collection);
    }

private:
    Told m_told;
};

QueueDescription Named(const wchar_t* name) {
    QueueDescription queue = SampleQueue();
    queue.printerName = name;
    return queue;
}

std::wstring NameOf(IPrinterExtensionContext* context) {
    CComPtr<IPrinterQueue> queue;
    CComBSTR name;
    if (FAILED(context->get_PrinterQueue(&queue)) || FAILED(queue->get_Name(&name))) return L"?";
    return std::wstring(name);
}

std::vector<CComPtr<IPrinterExtensionContext>> All(IPrinterExtensionContextCollection* collection) {
    std::vector<CComPtr<IPrinterExtensionContext>> contexts;
    ULONG count = 0;
    EXPECT_EQ(S_OK, collection->get_Count(&count));
    for (ULONG i = 0; i < count; ++i) {
        contexts.emplace_back();
        EXPECT_EQ(S_OK, collection->GetAt(i, &contexts.back()));
    }
    CComPtr<IPrinterExtensionContext> behind;
    EXPECT_EQ(E_INVALIDARG, collection->GetAt(count, &behind));
    return contexts;
}

void Pump() {
    for (MSG message; PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE);)
        DispatchMessageW(&message);
}

class ExtensionManager : public testing::Test {
protected:
    ExtensionManager() {
        CoInitialize(nullptr);
        QueueRegistry::Clear();
        QueueRegistry::Add(std::make_shared<QueueFolder>(Named(L"Lobby")));
        EXPECT_EQ(S_OK, m_manager.CoCreateInstance(__uuidof(PrinterExtensionManager)));
        const CComQIPtr<IConnectionPointContainer> container(m_manager);
        EXPECT_EQ(S_OK, container->FindConnectionPoint(__uuidof(IPrinterExtensionEvent), &m_point));
    }
    ~ExtensionManager() override {
        m_point.Release();
        m_manager.Release();
        Pump();
        QueueRegistry::Clear();
        CoUninitialize();
    }

    DWORD Connect(Sink::Told told) {
        DWORD cookie = 0;
        EXPECT_EQ(S_OK, m_point->Advise(MakeFake<Sink>(std::move(told)), &cookie));
        return cookie;
    }
    DWORD Collect() {
        return Connect([this](IPrinterExtensionContextCollection* printers) {
            ++m_told;
            m_contexts = All(printers);
            return S_OK;
        });
    }

    CComPtr<IPrinterExtensionManager> m_manager;
    CComPtr<IConnectionPoint> m_point;
    int m_told = 0;
    std::vector<CComPtr<IPrinterExtensionContext>> m_contexts;
};

TEST_F(ExtensionManager, TellsOfEachPrinterOnceTheThreadPumps) {
    const TemporaryFolder folder;
    WriteQueueFolder(Named(L"Attic"), folder / "attic");
    WriteQueueFolder(Named(L"LOBBY"), folder / "lobby"); // the added one stands for it
    folder.Write("broken/queue.xml", "<Queue");
    const EnvironmentVariable search(QueueRegistry::searchVariable, "/nowhere:" + folder.Path().string());
    Collect();
    ASSERT_EQ(S_OK, m_manager->EnableEvents(driver));
    EXPECT_EQ(0, m_told) << "not before";
    Pump();
    EXPECT_EQ(1, m_told);
    ASSERT_EQ(2u, m_contexts.size());
    EXPECT_EQ(L"Attic", NameOf(m_contexts[0]));
    EXPECT_EQ(L"Lobby", NameOf(m_contexts[1]));
    ASSERT_EQ(S_OK, m_manager->EnableEvents(driver));
    Pump();
    EXPECT_EQ(2, m_told) << "each enabling tells anew";
}

TEST_F(ExtensionManager, TellsNobodyWhoHasLeft) {
    const DWORD cookie = Collect();
    EXPECT_EQ(S_OK, m_manager->EnableEvents(driver));
    EXPECT_EQ(S_OK, m_manager->DisableEvents());
    Pump();
    EXPECT_EQ(0, m_told) << "disabled after it was posted";
    EXPECT_EQ(S_OK, m_manager->EnableEvents(driver));
    EXPECT_EQ(S_OK, m_manager->EnableEvents(driver));
    Pump();
    EXPECT_EQ(1, m_told) << "only the last enabling counts";
    EXPECT_EQ(S_OK, m_manager->EnableEvents(driver));
    EXPECT_EQ(S_OK, m_point->Unadvise(cookie));
    EXPECT_EQ(CONNECT_E_NOCONNECTION, m_point->Unadvise(cookie));
    Pump();
    EXPECT_EQ(1, m_told);
    Collect();
    EXPECT_EQ(S_OK, m_manager->EnableEvents(driver));
    m_point.Release();
    m_manager.Release();
    Pump();
    EXPECT_EQ(1, m_told) << "nor when the manager has gone";
}

TEST_F(ExtensionManager, EnduresItsSinks) {
    DWORD leaving = 0;
    Connect([](IPrinterExtensionContextCollection*) -> HRESULT { throw std::runtime_error("mine"); });
    Connect([&](IPrinterExtensionContextCollection*) {
        m_point->Unadvise(leaving);
        return E_FAIL;
    });
    leaving = Connect([&](IPrinterExtensionContextCollection*) {
        m_told += 100;
        return S_OK;
    });
    Collect();
    EXPECT_EQ(S_OK, m_manager->EnableEvents(driver));
    Pump();
    EXPECT_EQ(1, m_told) << "those behind it are told, but for the one that was taken off meanwhile";

    CComPtr<IStream> noSink;
    ASSERT_EQ(S_OK, CreateStreamOnHGlobal(nullptr, TRUE, &noSink));
    DWORD cookie = 1;
    EXPECT_EQ(CONNECT_E_CANNOTCONNECT, m_point->Advise(noSink, &cookie));
    EXPECT_EQ(E_POINTER, m_point->Advise(nullptr, &cookie));
    CComPtr<IConnectionPoint> other;
    const CComQIPtr<IConnectionPointContainer> container(m_manager);
    EXPECT_EQ(CONNECT_E_NOCONNECTION, container->FindConnectionPoint(__uuidof(IPrinterQueueEvent), &other));
    EXPECT_EQ(E_INVALIDARG, m_manager->EnableEvents(GUID{}));
}

TEST_F(ExtensionManager, GivesNoTicketWhileItTells) {
    CComPtr<IPrinterExtensionContext> context;
    bool isFirst = true;
    Connect([&](IPrinterExtensionContextCollection* printers) {
        context.Release();
        EXPECT_EQ(S_OK, printers->GetAt(0, &context));
        if (std::exchange(isFirst, false)) { // a sink may pump, and be told anew
            EXPECT_EQ(S_OK, m_manager->EnableEvents(driver));
            Pump();
        }
        CComPtr<IPrintSchemaTicket> ticket;
        EXPECT_EQ(E_ILLEGAL_METHOD_CALL, context->get_PrintSchemaTicket(&ticket));
        return S_OK;
    });
    ASSERT_EQ(S_OK, m_manager->EnableEvents(driver));
    Pump();
    CComPtr<IPrintSchemaTicket> ticket;
    EXPECT_EQ(S_OK, context->get_PrintSchemaTicket(&ticket));
}

TEST_F(ExtensionManager, KeepsAContextWhoseQueueVanishes) {
    const TemporaryFolder folder;
    WriteQueueFolder(Named(L"Attic"), folder / "attic");
    const EnvironmentVariable search(QueueRegistry::searchVariable, folder.Path().string());
    const EnvironmentVariable users("OV_USER_PROPERTIES", folder.Path().string());
    Collect();
    ASSERT_EQ(S_OK, m_manager->EnableEvents(driver));
    Pump();
    ASSERT_EQ(2u, m_contexts.size());
    const CComPtr<IPrinterExtensionContext> context(m_contexts[0]);
    std::filesystem::remove_all(folder / "attic");
    QueueRegistry::Clear();

    CComPtr<IPrinterQueue> queue;
    ASSERT_EQ(S_OK, context->get_PrinterQueue(&queue));
    HANDLE printer = nullptr;
    ASSERT_EQ(S_OK, queue->get_Handle(&printer));
    DWORD needed = 0;
    EXPECT_FALSE(GetPrinterW(printer, 2, nullptr, 0, &needed));
    EXPECT_EQ(DWORD{ERROR_INSUFFICIENT_BUFFER}, GetLastError()) << "the handle is good";

    CComPtr<IPrinterPropertyBag> bag, again, driverBag, userBag;
    const CComBSTR name(L"text"), flag(L"Flag");
    BOOL isSet = FALSE;
    ASSERT_EQ(S_OK, queue->GetProperties(&bag));
    EXPECT_EQ(S_OK, bag->SetString(name, CComBSTR(L"kept")));
    ASSERT_EQ(S_OK, queue->GetProperties(&again));
    CComBSTR text;
    EXPECT_EQ(S_OK, again->GetString(name, &text));
    EXPECT_EQ(L"kept", std::wstring(text)) << "one bag as long as the queue is held";
    ASSERT_EQ(S_OK, context->get_DriverProperties(&driverBag));
    EXPECT_EQ(S_OK, driverBag->GetBool(flag, &isSet));
    EXPECT_EQ(HRESULT_FROM_WIN32(ERROR_ACCESS_DENIED), driverBag->SetBool(flag, FALSE));
    ASSERT_EQ(S_OK, context->get_UserProperties(&userBag));
    EXPECT_EQ(S_OK, userBag->SetBool(flag, TRUE));
    EXPECT_TRUE(std::filesystem::exists(folder / "attic.xml")) << "the user's is not the queue's";

    queue.Release();
    m_contexts.clear();
    EXPECT_EQ(S_OK, context->get_PrinterQueue(&queue));
    EXPECT_EQ(S_OK, m_manager->EnableEvents(driver));
    Pump();
    EXPECT_TRUE(m_contexts.empty());
}

TEST(ExtensionManagerThread, IsTheOneThatMadeIt) {
    CComPtr<IPrinterExtensionManager> manager;
    std::thread([&] {
        CoInitializeEx(nullptr, COINIT_MULTITHREADED);
        EXPECT_EQ(S_OK, manager.CoCreateInstance(__uuidof(PrinterExtensionManager)));
        EXPECT_EQ(S_OK, manager->EnableEvents(driver));
        CoUninitialize();
    }).join();
    EXPECT_EQ(RPC_E_DISCONNECTED, manager->EnableEvents(driver)) << "nobody can be told there any more";
}

} // namespace
