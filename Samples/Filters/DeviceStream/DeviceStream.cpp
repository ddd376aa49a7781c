// XPS in, a device's stream out: the job's instructions by the generator of the device's family, around pages
// that a renderer images into PostScript, with the page-level commands where the sheets change.
#include "DeviceStreamText.h"
#include "FilterModule.h"
#include "PageMedia.h"
#include "PageRenderer.h"
#include "ProgressReport.h"
#include "StreamText.h"

#include <ComSupport/ReportWarning.h>
#include <ComSupport/ThrowHresult.h>
#include <Configuration/NativeXmlConfigurationFilterUtilities.h>
#include <DeviceControl/CommandSafeFeatureAccess.h>
#include <DeviceControl/CreatorName.h>
#include <DeviceControl/DeviceFamily.h>
#include <DeviceControl/PrintInstructionGenerator.h>
#include <FeatureAccess/JobSettings.h>
#include <Filter/XpsInStreamOutFilterBase.h>
#include <LowLevelFacilities/Failures/ThrowFailure.h>
#include <Ticket/PrintTicketManager.h>

#include <future>
#include <optional>
#include <string>
#include <unordered_map>
#include <utility>

namespace {

class DeviceStream final : public XpsInStreamOutFilterBase {
protected:
    HRESULT OnFixedDocumentSequence(IFixedDocumentSequence* sequence) override;
    HRESULT OnFixedDocument(IFixedDocument* document) override;
    HRESULT OnFixedPage(IFixedPage* page) override;
    HRESULT OnFinalize() override;

private:
    const DeviceFamily& Family();
    void MergeAsConfigured(IFixedDocumentSequence& sequence);
    void Begin();
    void AddPendingPage();
    const PageMedia& MediaOf(IFixedPage& page);
    PageMedia OnSheet(const PageMedia& asked, const PageSize& page);

    ProgressReport m_progress;
    std::unique_ptr<PageRenderer> m_renderer;
    std::unique_ptr<JobSettings> m_job;
    CXString m_title; // what could end a command is blank in it
    bool m_jobNamesASize = false;
    bool m_hasWarnedOfSize = false;
    DeviceInstructions m_instructions;
    std::optional<StreamText> m_out;
    std::optional<DeviceStreamText> m_stream;
    PageMedia m_documentMedia; // of pages without a ticket of their own
    // What the document's page tickets say, by their names.
    std::unordered_map<CXString, PageMedia> m_ticketMedia;
    // The page before is imaged on a thread of its own while a page is read.
    PageMedia m_pendingMedia;
    std::future<PageImage> m_pendingPage;
};

bool NamesASize(const std::unique_ptr<PrintTicketXmlDocument>& ticket) {
    return ticket && ticket->FeaturePresent(L"PageMediaSize", true, nullptr) == S_OK;
}

// Of what a job asks for, this filter images the pages, and the family's instructions say what they say.
void WarnOfWhatIsLeft(const IFilterFeatureAccess& features) {
    using namespace DataModelIds;
    int copies = 1;
    if (features.GetIntegerValue(FEAT_COPIES, copies) && copies > 1)
        ReportWarning(
            "the job asks for " + std::to_string(copies) +
            " copies: the stream says of them what the device's family does, and holds its pages once");
    const tagValueEnum layout = features.GetOptionValue(FEAT_PAGE_LAYOUT).GetValuePlusSpecifiedState();
    if (layout != VAL_UNSPECIFIED && layout != VAL_PAGE_LAYOUT_NUP_1)
        ReportWarning("the job asks for several pages on a sheet: each has a sheet of its own in the stream");
    if (features.GetOptionValue(FEAT_BOOKLET).GetValuePlusSpecifiedState() == VAL_BOOKLET_ON)
        ReportWarning("the job asks for a booklet: its pages stand one by one in the stream");
}

HRESULT DeviceStream::OnFixedDocumentSequence(IFixedDocumentSequence* sequence) {
    const OperationScope operation("DeviceStream::OnFixedDocumentSequence");
    m_progress = ProgressReport(*m_propertyBag);
    m_renderer = MakePageRenderer();
    const DeviceFamily& family = Family();
    MergeAsConfigured(*sequence);
    m_jobNamesASize = NamesASize(GetPTManagerPtr()->GetCopyOfCurrentPrintTicketFromPart(sequence));
    // NOLINTNEXTLINE(modernize-make-unique): it cannot be moved
    m_job.reset(new JobSettings(JobSettingsOf(kPTJobScope)));
    CreatorName::FillIn(m_job->Features());
    CommandSafeFeatureAccess features(m_job->Features(), family, [](const std::string& what) {
        ReportWarning(CommandSafeFeatureAccess::Warning(what));
    });
    PrintInstructionGenerator generator(features, *GetOrCreateOrvelDriverPropertyBagOnFirstUse());
    family.generate(generator, m_instructions);
    features.GetStringValue(DataModelIds::FEAT_JOB_NAME, m_title);
    WarnOfWhatIsLeft(features);
    m_progress.Report(XpsJob_DocumentSequenceAdded);
    return S_OK;
}

// The renderer writes PostScript, so the device must take it.
const DeviceFamily& DeviceStream::Family() {
    CXString name;
    const auto properties = GetDriverPropertyBagAccess();
    if (properties) properties->GetPrinterPropertyBagString(deviceFamilyPropertyName, name);
    const CPString family(name);
    const DeviceFamily* const found = FindDeviceFamily(family.view());
    if (found == nullptr)
        ThrowFailure<CPException>([&] {
            return name.IsEmpty()
                       ? std::string("the queue does not say its device's family: a driver property "
                                     "DeviceFamily is missing")
                       : "the queue's DeviceFamily, \"" + std::string(family.view()) + "\", is none";
        });
    if (found->language != DeviceFamily::PageLanguage::PostScript)
        ThrowFailure<CPException>([&] {
            return "devices of the family " + std::string(found->name) +
                   " take no PostScript, and this filter writes nothing else";
        });
    return *found;
}

// What the queue's administrator enforces concerns the job as a whole.
void DeviceStream::MergeAsConfigured(IFixedDocumentSequence& sequence) {
    auto configuration =
        NativeXmlConfigurationFilterUtilities::CreateNativeXmlConfigurationFeatureSetFromPipelineProperties(
            *m_propertyBag, m_printerName);
    NativeXmlConfigurationFeatureSet* enforced = &configuration;
    ThrowIfFailed(GetPTManagerPtr()->MergeAndValidatePartPrintTicketAndSanitizeFromXmlConfig(&sequence,
                                                                                             enforced, true));
}

HRESULT DeviceStream::OnFixedDocument(IFixedDocument* document) {
    const OperationScope operation("DeviceStream::OnFixedDocument");
    m_ticketMedia.clear(); // the same part says other things over another document's ticket
    ThrowIfFailed(GetPTManagerPtr()->MergeAndValidatePartPrintTicket(document));
    JobSettings settings(*GetPTManagerPtr(), kPTDocumentScope, *m_job);
    m_documentMedia = PageMedia::Of(settings, *m_job);
    m_documentMedia.isSizeAsked =
        m_jobNamesASize || NamesASize(GetPTManagerPtr()->GetCopyOfCurrentPrintTicketFromPart(document));
    m_progress.Report(XpsJob_FixedDocumentAdded);
    return S_OK;
}

HRESULT DeviceStream::OnFixedPage(IFixedPage* page) {
    const OperationScope operation("DeviceStream::OnFixedPage");
    std::unique_ptr<ReadPage> read = m_renderer->Read(*page);
    if (!m_stream) Begin();
    const PageMedia media = MediaOf(*page);
    AddPendingPage();
    m_pendingMedia = media;
    m_pendingPage = std::async(std::launch::async, [page = std::move(read)] { return page->Image(); });
    return S_OK;
}

void DeviceStream::AddPendingPage() {
    if (!m_pendingPage.valid()) return;
    const PageImage page = m_pendingPage.get();
    m_stream->AddPage(page, OnSheet(m_pendingMedia, page.size));
    m_progress.Report(XpsJob_FixedPageAdded);
}

void DeviceStream::Begin() {
    m_out.emplace(*m_streamWriter);
    m_stream.emplace(*m_out, m_instructions,
                     GetOrCreateOrvelDriverPropertyBagOnFirstUse()->GetProductPdlDataXml());
    m_stream->Begin(m_title);
    m_out->PassOn(); // the device wakes up while the first page is imaged
}

// A page without a ticket has its document's media, and of pages that share one it is read once.
const PageMedia& DeviceStream::MediaOf(IFixedPage& page) {
    CComPtr<IPartPrintTicket> ticket;
    const HRESULT found = page.GetPrintTicket(&ticket);
    if (found == E_ELEMENT_NOT_FOUND) return m_documentMedia;
    ThrowIfFailed(found);
    CComBSTR name;
    ThrowIfFailed(ticket->GetUri(&name));
    const auto [known, isNew] = m_ticketMedia.try_emplace(CXString(name.m_str));
    if (isNew) {
        ThrowIfFailed(GetPTManagerPtr()->MergeAndValidatePartPrintTicket(&page));
        JobSettings settings(*GetPTManagerPtr(), kPTPageScope, *m_job);
        known->second = PageMedia::Of(settings, *m_job);
        known->second.isSizeAsked = m_documentMedia.isSizeAsked ||
                                    NamesASize(GetPTManagerPtr()->GetCopyOfCurrentPrintTicketFromPart(&page));
        // The merged ticket need not be kept as well, as large as it is.
        GetPTManagerPtr()->ClearPerJobInMemoryDomDocumentCaches();
    }
    return known->second;
}

// The ticket decides on the sheet. But a page that was made for another one is not cut to what the printer
// takes where nobody says anything: it then keeps its own size, and the device sees to it.
PageMedia DeviceStream::OnSheet(const PageMedia& asked, const PageSize& page) {
    PageMedia media = asked;
    const bool hasSize = media.size != SheetSize();
    if (!hasSize || (!asked.isSizeAsked && !Fits(media.size, page))) {
        media.size = SheetOf(page);
        if (hasSize && !std::exchange(m_hasWarnedOfSize, true))
            ReportWarning("pages have another size than the printer's own paper, and no ticket asks for one: "
                          "each keeps its size");
    }
    media.size = Turned(media.size, page);
    return media;
}

HRESULT DeviceStream::OnFinalize() {
    const OperationScope operation("DeviceStream::OnFinalize");
    if (m_stream && IsAlive()) {
        AddPendingPage();
        m_stream->End();
    }
    m_stream.reset();
    m_out.reset();
    m_job.reset(); // its tickets are the manager's, which goes now
    return S_OK;
}

} // namespace

FILTER_MODULE(DeviceStream, {0x51a9d3c4, 0x2b7e, 0x4f60, {0x9c, 0x3d, 0x08, 0x6e, 0xb2, 0x74, 0x1f, 0xa5}})
