#pragma once

// A job on a sample queue, with all that a filter finds in the pipeline's property bag.

#include "Support/FakePipeline.h"

#include <Spooler/QueueFolder.h>
#include <Spooler/QueueRegistry.h>

#include <gtest/gtest.h>
#include <winspool.h>

#include <memory>
#include <string>
#include <vector>

/// The colour sample queue under a name and port of the test's own, known to the spooler for the life of this
/// object.
class SampleQueue {
public:
    explicit SampleQueue(const wchar_t* portName = L"LPT1:",
                         const std::vector<std::uint8_t>& jobDevmode = {}) {
        OvPlatform::QueueDescription description =
            OvPlatform::QueueFolder::Load(std::string(OV_SOURCE_DIR) + "/Samples/Queues/ColorOffice")
                ->Description();
        description.printerName = name;
        description.portName = portName;
        OvPlatform::QueueJob job;
        job.id = 7;
        job.document = L"Report";
        job.user = L"ada";
        job.devmode = jobDevmode;
        description.jobs = {job};
        m_queue = std::make_shared<OvPlatform::QueueFolder>(std::move(description));
        OvPlatform::QueueRegistry::Add(m_queue);
        std::wstring writableName = name;
        EXPECT_TRUE(OpenPrinterW(writableName.data(), &handle, nullptr));
    }
    ~SampleQueue() {
        ClosePrinter(handle);
        OvPlatform::QueueRegistry::Clear();
    }
    SampleQueue(const SampleQueue&) = delete;
    SampleQueue& operator=(const SampleQueue&) = delete;

    static constexpr const wchar_t* name = L"Office Printer";
    HANDLE handle = nullptr;

    std::string DefaultTicket() const { return m_queue->DefaultTicket(); }

private:
    std::shared_ptr<const OvPlatform::QueueFolder> m_queue;
};

/// The property bag and the control of a job on that queue.
struct FilterJob {
    explicit FilterJob(const wchar_t* portName = L"LPT1:") : queue(portName) {
        bag->SetString(L"PrinterName", SampleQueue::name);
        bag->SetHandle(L"PrinterHandle", queue.handle);
        bag->SetHandle(L"UserSecurityToken", nullptr);
        bag->SetNumber(L"PrintJobId", 7);
        bag->SetObject(L"PerUserPrintTicket", userTicket);
    }

    SampleQueue queue;
    CComPtr<MemoryStreamFactory> userTicket = MakeFake<MemoryStreamFactory>(queue.DefaultTicket());
    CComPtr<FakePropertyBag> bag = MakeFake<FakePropertyBag>();
    CComPtr<FakeManagerControl> control = MakeFake<FakeManagerControl>();
};
