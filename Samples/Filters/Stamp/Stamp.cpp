// XPS in, XPS out: the annotations of the job come out on its pages. Fonts are cut to the characters that all
// annotations of the job need, and each font and picture is written once, whatever number of pages it is on.
#include "FilterModule.h"
#include "PageRewriter.h"
#include "PageStamps.h"

#include <ComSupport/ReportWarning.h>
#include <Configuration/NativeXmlConfigurationFilterUtilities.h>
#include <Filter/XpsFilterBase.h>
#include <LowLevelFacilities/Failures/ThrowComException.h>
#include <XpsParts/PrintStreamSource.h>

#include <msxml6.h>

#include <memory>
#include <optional>

namespace {

// Attributes are shown by name in dumps only, which this filter does not make.
class NoNames final : public IAttributeBytesDebugDisplayHelper {
public:
    std::unique_ptr<IAttributeBytesDebugDisplayHelper> Clone() const override {
        return std::make_unique<NoNames>();
    }
};

class Stamp final : public XpsFilterBase {
protected:
    HRESULT OnFixedDocumentSequence(IFixedDocumentSequence* sequence) override {
        if (sequence == nullptr) return E_POINTER;
        // The administrator may have the job identified.
        auto configuration = NativeXmlConfigurationFilterUtilities::
            CreateNativeXmlConfigurationFeatureSetFromPipelineProperties(*GetIPrintPipelinePropertyBagPtr(),
                                                                         m_printerName);
        NativeXmlConfigurationFeatureSet* enforced = &configuration;
        ThrowIfFailed(GetPTManagerPtr()->MergeAndValidatePartPrintTicketAndSanitizeFromXmlConfig(
            sequence, enforced, true));
        ReadAnnotations();
        return m_writer->SendFixedDocumentSequence(sequence);
    }

    HRESULT OnFixedPage(IFixedPage* page) override {
        if (page == nullptr) return E_POINTER;
        if (!m_stamps) return E_UNEXPECTED; // a job begins with its sequence
        const unsigned number = m_fixedPageCount - 1;
        // Pages that get nothing go as they are.
        if (number == 0 ? m_stamps->HasAny() : m_hasMore) StampPage(*page, number);
        return m_writer->SendFixedPage(page);
    }

private:
    // The settings of annotations are the job's.
    void ReadAnnotations() {
        m_ticket.emplace(GetPTManagerPtr(), NoNames());
        ThrowIfFailed(GetPTManagerPtr()->GetSnapshotOfCurrentMergedPartPrintTicket(kPTJobScope, *m_ticket));
        JobAnnotations::Job job{m_printerHandle, m_jobId};
        CXString domain;
        // A job that the spooler does not know has no names.
        static_cast<void>(GetPTManagerPtr()->GetJobNameUserNameAndDomainName(
            m_jobId, m_printerHandle, job.documentName, job.userName, domain));
        const auto queue = GetQueuePropertyBagAccess();
        m_stamps.emplace(std::make_unique<JobAnnotations>(
            *m_ticket, queue ? JobAnnotations::ReadStore(*queue) : nullptr, std::move(job)));
        m_hasMore = m_stamps->HasMoreThanFirstPage();
        PrintSchema::NUp::NUpData sheet;
        if (m_stamps->HasAny() && m_ticket->GetNUpSettings(sheet) == S_OK && sheet.pagesPerSheet > 1)
            ReportWarning("Pages are not laid out on sheets here: annotations stand on each page");
    }

    void StampPage(IFixedPage& page, unsigned number) {
        CComPtr<IPrintReadStream> source;
        CComPtr<IPrintWriteStream> target;
        ThrowIfFailed(page.GetStream(&source));
        ThrowIfFailed(page.GetWriteStream(&target));
        const auto bind = [&](IResWriter& resource) {
            ThrowIfFailed(m_resourceCache.WriteResource(m_writer, &page, &resource));
        };
        CComPtr<PageRewriter> rewriter;
        rewriter.Attach(new PageRewriter(
            *target, [&](const PageRoot& root) { return m_stamps->OfPage(root, number, bind); }));
        if (!m_markupReader) ThrowIfFailed(m_markupReader.CoCreateInstance(__uuidof(SAXXMLReader60)));
        PrintStreamSource markup(source);
        ThrowIfFailed(m_markupReader->putContentHandler(rewriter));
        const HRESULT hr = m_markupReader->parse(CComVariant(static_cast<IUnknown*>(&markup)));
        m_markupReader->putContentHandler(nullptr);
        rewriter->ThrowFailure();
        ThrowIfFailed(hr, "The markup of a page cannot be read");
        target->Close();
    }

    std::optional<XpsFilterPrintTicket> m_ticket;
    std::optional<PageStamps> m_stamps;
    CComPtr<ISAXXMLReader> m_markupReader;
    bool m_hasMore = false; // behind the first page
};

} // namespace

FILTER_MODULE(Stamp, {0x5b0e92a7, 0xc4d1, 0x47f3, {0x8e, 0x26, 0x1f, 0xa9, 0x73, 0x0c, 0xd8, 0x54}})
