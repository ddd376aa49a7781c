#include "Chain/JobProperties.h"

#include "Chain/Connections.h"
#include "Streams/PrintReadStream.h"

#include <Spooler/QueuePropertyBag.h>
#include <Spooler/QueueRegistry.h>
#include <SystemServices/User.h>

#include <winspool.h>

#include <algorithm>
#include <chrono>

namespace OvPipeline {

namespace {

// The pseudo handle of the process's own token: jobs run as who started them.
const HANDLE processToken = reinterpret_cast<HANDLE>(static_cast<LONG_PTR>(-4));

constexpr const wchar_t* deviceCapabilitiesProperty = XPS_FP_PRINTDEVICECAPABILITIES;

// As the other commands name the user.
std::wstring UserName() {
    CXString name;
    User::GetCurrentUserName(name);
    return name.IsEmpty() ? L"user" : std::wstring(name.View());
}

void Add(PropertyBag* bag, PCWSTR name, const VARIANT& value) {
    if (const HRESULT hr = bag->AddProperty(name, &value); FAILED(hr))
        throw HostError(hr, Utf8(name), "the property " + Utf8(name) + " cannot be set");
}

void AddText(PropertyBag* bag, PCWSTR name, const std::wstring& text) {
    CComVariant value;
    value.bstrVal = SysAllocStringLen(text.data(), static_cast<UINT>(text.size()));
    if (!value.bstrVal) throw std::bad_alloc();
    value.vt = VT_BSTR;
    Add(bag, name, value);
}

void AddHandle(PropertyBag* bag, PCWSTR name, HANDLE handle) {
    VARIANT value;
    VariantInit(&value);
    value.vt = VT_BYREF;
    value.byref = handle;
    Add(bag, name, value);
}

void AddObject(PropertyBag* bag, PCWSTR name, IUnknown* object) { Add(bag, name, CComVariant(object)); }

void AddDocument(PropertyBag* bag, PCWSTR name, std::string bytes) {
    CComPtr<IUnknown> factory;
    factory.Attach(new ContentStreamFactory(std::make_shared<MemoryContent>(std::move(bytes))));
    AddObject(bag, name, factory);
}

void AddQueueBag(PropertyBag* bag, PCWSTR name, const OvPlatform::QueueValues& values,
                 OvPlatform::QueuePropertyBag::Access access) {
    CComPtr<IPrinterPropertyBag> properties;
    if (const HRESULT hr = OvPlatform::QueuePropertyBag::Create(values, access, &properties); FAILED(hr))
        throw HostError(hr, Utf8(name), "the property " + Utf8(name) + " cannot be made");
    AddObject(bag, name, properties);
}

} // namespace

JobPrinter::JobPrinter(const JobDescription& job) {
    for (const auto& other : job.queue->Jobs())
        m_jobId = std::max(m_jobId, other.id + 1);
    if (job.id != 0) m_jobId = job.id;
    OvPlatform::QueueJob queued;
    queued.id = m_jobId;
    queued.document =
        Wide(job.title.empty() ? std::filesystem::path(job.file.name).filename().string() : job.title);
    queued.user = job.user.empty() ? UserName() : Wide(job.user);
    queued.status = JOB_STATUS_PRINTING;
    std::error_code error;
    const auto size = std::filesystem::file_size(job.file.path, error);
    if (!error) queued.size = static_cast<std::uint32_t>(std::min<std::uintmax_t>(size, UINT32_MAX));
    queued.submitted =
        std::chrono::time_point_cast<std::chrono::milliseconds>(std::chrono::system_clock::now());
    m_queue = job.queue->WithJob(std::move(queued));
    OvPlatform::QueueRegistry::Add(m_queue);
    std::wstring name = m_queue->PrinterName();
    if (!OpenPrinterW(name.data(), &m_handle, nullptr)) {
        const DWORD lastError = GetLastError();
        throw HostError(HRESULT_FROM_WIN32(lastError), Utf8(name),
                        "the printer \"" + Utf8(name) + "\" cannot be opened");
    }
}

JobPrinter::~JobPrinter() {
    if (m_handle != nullptr) ClosePrinter(m_handle);
}

void AddJobProperties(PropertyBag* bag, const JobPrinter& printer, const JobDescription& job,
                      XpsFlavour flavour, const std::shared_ptr<JobState>& state) {
    const OvPlatform::QueueFolder& queue = printer.Queue();
    AddText(bag, XPS_FP_PRINTER_NAME, queue.PrinterName());
    AddHandle(bag, XPS_FP_PRINTER_HANDLE, printer.Handle());
    AddHandle(bag, XPS_FP_USER_TOKEN, processToken);
    VARIANT id;
    VariantInit(&id);
    id.vt = VT_UI4;
    id.ulVal = printer.JobId();
    Add(bag, XPS_FP_JOB_ID, id);
    AddDocument(bag, XPS_FP_USER_PRINT_TICKET, queue.DefaultTicket());
    AddQueueBag(bag, XPS_FP_DRIVER_PROPERTY_BAG, queue.DriverProperties(),
                OvPlatform::QueuePropertyBag::Access::ReadOnly);
    AddQueueBag(bag, XPS_FP_QUEUE_PROPERTY_BAG, queue.QueueProperties(),
                OvPlatform::QueuePropertyBag::Access::ReadWrite);
    if (job.outputIsNamed)
        AddText(bag, XPS_FP_OUTPUT_FILE, Wide(std::filesystem::absolute(job.output).string()));
    else
        Add(bag, XPS_FP_OUTPUT_FILE, CComVariant());
    AddText(bag, XPS_FP_MS_CONTENT_TYPE,
            flavour == XpsFlavour::OpenXps ? XPS_FP_MS_CONTENT_TYPE_OPENXPS : XPS_FP_MS_CONTENT_TYPE_XPS);
    CComPtr<IUnknown> progress;
    progress.Attach(new ProgressReport(state));
    AddObject(bag, XPS_FP_PROGRESS_REPORT, progress);
    // The driver's own document, of another form than Print Capabilities; a queue may have it in its driver's
    // bag.
    const auto device = queue.DriverProperties().find(deviceCapabilitiesProperty);
    if (device != queue.DriverProperties().end())
        if (const auto* stream = std::get_if<OvPlatform::QueueStream>(&device->second))
            AddDocument(bag, XPS_FP_PRINTDEVICECAPABILITIES,
                        std::string(stream->bytes.begin(), stream->bytes.end()));
}

} // namespace OvPipeline
