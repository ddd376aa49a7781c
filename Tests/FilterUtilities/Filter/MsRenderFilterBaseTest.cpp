#include "Support/FilterJob.h"
#include "Support/Rows.h"
#include "Support/VirtualSlots.h"

#include <ComSupport/ThrowHresult.h>
#include <Filter/StreamFilterBase.h>
#include <Filter/XpsInStreamOutFilterBase.h>
#include <LowLevelFacilities/Failures/CPComException.h>

#include <dlfcn.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <functional>
#include <stdexcept>

namespace {

// A filter that does in each step what the test says, and shows what it holds.
class SomeFilter : public MsRenderFilterBase {
public:
    Journal journal;
    std::function<HRESULT()> initialize = [] { return S_OK; };
    std::function<void()> connect = [] {};
    std::function<void()> start = [] {};
    std::function<void()> close = [] {};

    using MsRenderFilterBase::CloseWriter;
    using MsRenderFilterBase::InitializeIO_throws;
    using MsRenderFilterBase::m_communicator;
    using MsRenderFilterBase::m_control;
    using MsRenderFilterBase::m_driverPropertyBag;
    using MsRenderFilterBase::m_driverPropertyBagAccess;
    using MsRenderFilterBase::m_jobId;
    using MsRenderFilterBase::m_liveness;
    using MsRenderFilterBase::m_outputDestination;
    using MsRenderFilterBase::m_outputFileName;
    using MsRenderFilterBase::m_printerHandle;
    using MsRenderFilterBase::m_printerName;
    using MsRenderFilterBase::m_propertyBag;
    using MsRenderFilterBase::m_ticketManager;
    using MsRenderFilterBase::m_userSecurityToken;
    using MsRenderFilterBase::OnInitializeFilter;
    using MsRenderFilterBase::StartOperation_throws;

protected:
    HRESULT OnInitializeFilter() override {
        journal.push_back("initialize");
        return initialize();
    }
    void InitializeIO_throws(const CComPtr<IInterFilterCommunicator>&) override {
        journal.push_back("connect");
        connect();
    }
    void StartOperation_throws() override {
        journal.push_back("start");
        start();
    }
    void CloseWriter() override {
        journal.push_back("close");
        close();
    }
};

struct MsRenderFilterBaseTest : testing::Test {
    FilterJob job;
    CComPtr<FakeCommunicator> communicator =
        MakeFake<FakeCommunicator>(MakeFake<MemoryReadStream>("in"), MakeFake<MemoryWriteStream>());
    CComPtr<SomeFilter> filter = [] {
        CComPtr<SomeFilter> made;
        made.Attach(new SomeFilter); // born with its first reference
        return made;
    }();

    HRESULT Initialize() { return filter->InitializeFilter(communicator, job.bag, job.control); }
};

TEST_F(MsRenderFilterBaseTest, InitializeReadsTheJobThenRunsTheSteps) {
    filter->initialize = [&] {
        EXPECT_STREQ(filter->m_printerName, SampleQueue::name);
        EXPECT_EQ(filter->m_printerHandle, job.queue.handle);
        EXPECT_EQ(filter->m_userSecurityToken, nullptr);
        EXPECT_EQ(filter->m_jobId, 7u);
        EXPECT_EQ(filter->GetPTManagerPtr(), nullptr);
        return S_OK;
    };
    EXPECT_EQ(Initialize(), S_OK);
    EXPECT_EQ(job.bag->reads, (std::vector<std::wstring>{L"PrinterName", L"PrinterHandle",
                                                         L"UserSecurityToken", L"PrintJobId"}));
    EXPECT_EQ(filter->journal, (Journal{"initialize", "connect"}));
    EXPECT_EQ(filter->GetIPrintPipelinePropertyBagPtr(), static_cast<IPrintPipelinePropertyBag*>(job.bag));
    filter.Release();
    EXPECT_EQ(job.bag->References(), 1u);
    EXPECT_EQ(job.control->References(), 1u);
    EXPECT_EQ(communicator->References(), 1u);
}

TEST_F(MsRenderFilterBaseTest, NullArgumentsAreRefusedAndNothingIsKept) {
    EXPECT_EQ(filter->InitializeFilter(nullptr, job.bag, job.control), E_POINTER);
    EXPECT_EQ(filter->InitializeFilter(communicator, nullptr, job.control), E_POINTER);
    EXPECT_EQ(filter->InitializeFilter(communicator, job.bag, nullptr), E_POINTER);
    EXPECT_FALSE(filter->m_communicator || filter->m_propertyBag || filter->m_control);
    EXPECT_EQ(filter->m_printerHandle, INVALID_HANDLE_VALUE);
    EXPECT_TRUE(filter->journal.empty());
}

TEST_F(MsRenderFilterBaseTest, MissingPropertyEndsInitializationThere) {
    const wchar_t* const names[] = {L"PrinterName", L"PrinterHandle", L"UserSecurityToken", L"PrintJobId"};
    for (std::size_t failing = 0; failing < 4; ++failing) {
        job.bag->failures = {{names[failing], E_ACCESSDENIED}};
        job.bag->reads.clear();
        EXPECT_EQ(Initialize(), E_ACCESSDENIED) << failing;
        EXPECT_EQ(job.bag->reads.size(), failing + 1);
    }
    EXPECT_TRUE(filter->journal.empty());
    // What was reached stays.
    EXPECT_STREQ(filter->m_printerName, SampleQueue::name);
    EXPECT_EQ(filter->m_jobId, 0u);
    EXPECT_TRUE(filter->m_propertyBag);
}

TEST_F(MsRenderFilterBaseTest, EveryFailureInAStepBecomesTheOneResult) {
    const Rows<std::function<void()>, HRESULT> cases{
        {[] { ThrowComException(E_PENDING); }, E_PENDING},
        {[] { throw 7; }, E_UNEXPECTED},
    };
    for (const auto& [fail, expected] : cases) {
        filter->journal.clear();
        filter->initialize = [] { return S_OK; };
        filter->connect = fail;
        EXPECT_EQ(Initialize(), expected);
        filter->initialize = [&, &fail = fail] { return fail(), S_OK; };
        EXPECT_EQ(Initialize(), expected);
        filter->start = fail;
        EXPECT_EQ(filter->StartOperation(), expected);
        EXPECT_EQ(filter->journal, (Journal{"initialize", "connect", "initialize", "start", "close"}));
    }
    filter->journal.clear();
    filter->initialize = [] { return E_ACCESSDENIED; };
    EXPECT_EQ(Initialize(), E_ACCESSDENIED);
    EXPECT_EQ(filter->journal, (Journal{"initialize"}));
    // Closing stands outside the barrier.
    filter->close = [] { throw std::runtime_error("no"); };
    EXPECT_THROW(filter->StartOperation(), std::runtime_error);
}

class BareFilter : public MsRenderFilterBase {};

TEST_F(MsRenderFilterBaseTest, FilterWithoutStepsIsNotImplemented) {
    CComPtr<BareFilter> bare;
    bare.Attach(new BareFilter);
    EXPECT_EQ(bare->InitializeFilter(communicator, job.bag, job.control), E_NOTIMPL);
    EXPECT_TRUE(communicator->journal.empty());
    EXPECT_THROW(bare->StartOperation(), CPComException); // out of CloseWriter
}

TEST_F(MsRenderFilterBaseTest, ShutdownCancelsForGood) {
    EXPECT_TRUE(filter->IsAlive());
    EXPECT_EQ(filter->m_liveness->Continue(), S_OK);
    EXPECT_EQ(filter->ShutdownOperation(), S_OK); // before there is a property bag
    EXPECT_FALSE(filter->IsAlive());
    EXPECT_EQ(filter->m_liveness->Continue(), HRESULT_FROM_WIN32(ERROR_PRINT_CANCELLED));
    EXPECT_EQ(Initialize(), S_OK);
    EXPECT_FALSE(filter->IsAlive());
    EXPECT_EQ(filter->ShutdownOperation(), S_OK);
}

TEST_F(MsRenderFilterBaseTest, ShutdownDeletesTheTemporaryPrintReadyFile) {
    constexpr auto temporaryFile = L"XPS_FP_FILESPEC_FOR_TEMP_COPY_OF_PRINT_READY_FILE_PASSED_IN_XPS_WRAPPER";
    const auto path = std::filesystem::temp_directory_path() / "ov-print-ready-copy.tmp";
    std::ofstream(path) << "page";
    job.bag->SetString(temporaryFile, path.wstring().c_str());
    ASSERT_EQ(Initialize(), S_OK);
    EXPECT_EQ(filter->ShutdownOperation(), S_OK);
    EXPECT_FALSE(std::filesystem::exists(path));
    EXPECT_EQ(filter->ShutdownOperation(), S_OK); // nothing there any more
    job.bag->SetNumber(temporaryFile, 7);         // and no text
    EXPECT_EQ(filter->ShutdownOperation(), S_OK);
    job.bag->SetNumber(L"PrinterName", 7);
    EXPECT_EQ(Initialize(), DISP_E_TYPEMISMATCH);
}

TEST_F(MsRenderFilterBaseTest, RequestShutdownGoesToThePipeline) {
    filter->RequestShutdown(E_FAIL);
    ASSERT_EQ(Initialize(), S_OK);
    filter->RequestShutdown(E_ABORT);
    EXPECT_EQ(job.control->shutdowns, std::vector<HRESULT>{E_ABORT});
    VARIANT value{};
    EXPECT_EQ(filter->GetFromPrintPipelinePropertyBag(L"PrintJobId", &value), S_OK);
    EXPECT_EQ(value.ulVal, 7u);
}

TEST(MsRenderFilterBase, KeepsItsSlots) {
    // A destructor takes two.
    EXPECT_EQ(SlotOf(&FilterLiveness::Continue), 2u);
    EXPECT_EQ(SlotOf(&MsRenderFilterBase::InitializeFilter), 3u);
    EXPECT_EQ(SlotOf(&MsRenderFilterBase::ShutdownOperation), 4u);
    EXPECT_EQ(SlotOf(&MsRenderFilterBase::StartOperation), 5u);

    struct Steps : XpsFilterBase {
        static std::vector<std::size_t> Slots() {
            return {SlotOf(&Steps::InitializeIO_throws), SlotOf(&Steps::CloseWriter),
                    SlotOf(&Steps::OnInitializeFilter),  SlotOf(&Steps::StartOperation_throws),
                    SlotOf(&Steps::OnXpsDocument),       SlotOf(&Steps::OnFixedDocumentSequence),
                    SlotOf(&Steps::OnFixedDocument),     SlotOf(&Steps::OnFixedPage),
                    SlotOf(&Steps::OnFinalize)};
        }
    };
    EXPECT_EQ(Steps::Slots(), (std::vector<std::size_t>{8, 9, 10, 11, 12, 13, 14, 15, 16}));
}

template <typename... Fields>
bool StandInOrder(const Fields&... fields) {
    const std::vector<const void*> addresses{std::addressof(fields)...};
    return std::is_sorted(addresses.begin(), addresses.end());
}

TEST_F(MsRenderFilterBaseTest, KeepsTheOrderOfItsFields) {
    EXPECT_TRUE(StandInOrder(filter->m_printerName, filter->m_printerHandle, filter->m_userSecurityToken,
                             filter->m_jobId, filter->m_propertyBag, filter->m_control, filter->m_liveness,
                             filter->m_communicator, filter->m_ticketManager,
                             filter->m_driverPropertyBagAccess, filter->m_driverPropertyBag,
                             filter->m_outputFileName, filter->m_outputDestination));
    struct XpsFields : XpsInStreamOutFilterBase {
        bool AreInOrder() const {
            return StandInOrder(m_reader, m_writer, m_resourceCache, m_fixedDocumentCount, m_fixedPageCount,
                                m_streamWriter);
        }
    };
    struct StreamFields : StreamFilterBase {
        bool AreInOrder() const { return StandInOrder(m_reader, m_writer, m_first, m_second, m_third); }
    };
    EXPECT_TRUE(XpsFields().AreInOrder());
    EXPECT_TRUE(StreamFields().AreInOrder());
}

// ---- Streams

class BareStreamFilter : public StreamFilterBase {};

// The sample's filter, as a pipeline gets it.
CComPtr<IPrintPipelineFilter> StreamCopyFilter() {
    static void* const module = dlopen(OV_BINARY_DIR "/lib/libStreamCopy.so", RTLD_NOW | RTLD_NODELETE);
    using GetClassObject = HRESULT(WINAPI*)(REFCLSID, REFIID, void**);
    const auto getClassObject =
        module ? reinterpret_cast<GetClassObject>(dlsym(module, "DllGetClassObject")) : nullptr;
    CComPtr<IClassFactory> factory;
    CComPtr<IPrintPipelineFilter> filter;
    if (getClassObject &&
        SUCCEEDED(getClassObject(GUID{}, __uuidof(IClassFactory), reinterpret_cast<void**>(&factory)))) {
        factory->CreateInstance(nullptr, __uuidof(IPrintPipelineFilter), reinterpret_cast<void**>(&filter));
    }
    return filter;
}

TEST(StreamFilterBase, CopiesByLittleAndClosesTheStreamBehindAFailure) {
    const std::string bytes(100, 'x');
    CComPtr<BareStreamFilter> bare;
    bare.Attach(new BareStreamFilter);
    // A stream that takes nothing calls that a success.
    const Rows<CComPtr<IPrintPipelineFilter>, ULONG, HRESULT, std::string> cases{
        {StreamCopyFilter(), 3, S_OK, bytes},
        {StreamCopyFilter(), 0, E_FAIL, ""},
        {bare.p, 3, E_NOTIMPL, ""}};
    for (const auto& [filter, mostBytesTaken, result, written] : cases) {
        FilterJob job;
        const auto reader = MakeFake<MemoryReadStream>(bytes);
        reader->mostBytesAtATime = 7;
        const auto writer = MakeFake<MemoryWriteStream>();
        writer->mostBytesAtATime = mostBytesTaken;
        ASSERT_TRUE(filter);
        ASSERT_EQ(filter->InitializeFilter(MakeFake<FakeCommunicator>(reader, writer), job.bag, job.control),
                  S_OK);
        EXPECT_EQ(filter->StartOperation(), result);
        EXPECT_EQ(writer->bytes, written);
        EXPECT_EQ(writer->timesClosed, 1);
    }
}

class BareXpsFilter : public XpsFilterBase {};
class BareXpsInStreamOutFilter : public XpsInStreamOutFilterBase {};

TEST(FilterConnections, PipelineOfTheWrongShapeFailsAheadOfTheJob) {
    FilterJob job;
    const CComPtr<IUnknown> provider = MakeFake<FakeXpsProvider>().p;
    const CComPtr<IUnknown> consumer = MakeFake<FakeXpsConsumer>().p;
    const CComPtr<IUnknown> readStream = MakeFake<MemoryReadStream>("").p;
    const CComPtr<IUnknown> writeStream = MakeFake<MemoryWriteStream>().p;
    const auto connect = [&](MsRenderFilterBase* made, FakeCommunicator* communicator) {
        CComPtr<MsRenderFilterBase> filter;
        filter.Attach(made);
        return filter->InitializeFilter(communicator, job.bag, job.control);
    };
    const Rows<std::function<MsRenderFilterBase*()>, IUnknown*, IUnknown*> cases{
        {[] { return new BareXpsFilter; }, provider, consumer},
        {[] { return new BareXpsInStreamOutFilter; }, provider, writeStream},
        {[] { return new BareStreamFilter; }, readStream, writeStream},
    };
    for (const auto& row : cases) {
        SCOPED_TRACE(&row - cases.data());
        const auto& [make, reader, writer] = row;
        const auto communicator = MakeFake<FakeCommunicator>(reader, writer);
        EXPECT_EQ(connect(make(), communicator), S_OK);
        EXPECT_EQ(communicator->journal, (Journal{"reader", "writer"}));
        EXPECT_EQ(connect(make(), MakeFake<FakeCommunicator>(writer, writer)), E_NOINTERFACE);
        EXPECT_EQ(connect(make(), MakeFake<FakeCommunicator>(reader, reader)), E_NOINTERFACE);
        communicator->writerResult = E_PENDING;
        EXPECT_EQ(connect(make(), communicator), E_PENDING);
        communicator->readerResult = E_ABORT;
        EXPECT_EQ(connect(make(), communicator), E_ABORT);
    }
}

} // namespace
