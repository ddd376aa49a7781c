// What a snapshot of a page and all questions to it cost, beside one libxml2 XPath over the page's ticket in
// the same run.

#include "ApartmentBenchmarks.h"
#include "PairedTimes.h"

#include <JobContext/XpsFilterPrintTicket.h>
#include <Spooler/QueueFolder.h>
#include <Spooler/QueueRegistry.h>
#include <Support/FakeParts.h>
#include <Support/NoDisplayHelp.h>
#include <Support/TicketText.h>
#include <Ticket/PrintTicketManager.h>

#include <benchmark/benchmark.h>
#include <libxml/parser.h>
#include <libxml/xpath.h>
#include <libxml/xpathInternals.h>

#include <cstdlib>

namespace {

using namespace PrintSchema;

constexpr char frameworkUri[] = "http://schemas.microsoft.com/windows/2003/08/printing/printschemaframework";

// One compiled XPath over a ticket, as often as it is asked.
class XPathOver {
public:
    explicit XPathOver(IXMLDOMDocument2* document) {
        CComQIPtr<IStream> stream(document);
        LARGE_INTEGER start{};
        stream->Seek(start, STREAM_SEEK_SET, nullptr);
        std::string text(1 << 20, '\0');
        ULONG read = 0;
        stream->Read(text.data(), static_cast<ULONG>(text.size()), &read);
        m_tree = xmlReadMemory(text.data(), static_cast<int>(read), nullptr, nullptr, XML_PARSE_NONET);
        if (m_tree == nullptr) std::abort();
        m_context = xmlXPathNewContext(m_tree);
        xmlXPathRegisterNs(m_context, reinterpret_cast<const xmlChar*>("psf"),
                           reinterpret_cast<const xmlChar*>(frameworkUri));
        m_query = xmlXPathCompile(
            reinterpret_cast<const xmlChar*>("//psf:Feature[@name = \"psk:PageMediaSize\"]/psf:Option"));
    }
    XPathOver(const XPathOver&) = delete;
    XPathOver& operator=(const XPathOver&) = delete;
    ~XPathOver() {
        xmlXPathFreeCompExpr(m_query);
        xmlXPathFreeContext(m_context);
        xmlFreeDoc(m_tree);
    }
    void Run() { xmlXPathFreeObject(xmlXPathCompiledEval(m_query, m_context)); }

private:
    xmlDoc* m_tree;
    xmlXPathContext* m_context;
    xmlXPathCompExpr* m_query;
};

void AskAll(XpsFilterPrintTicket& ticket) {
    PageOrientation::EOrientationOption orientation;
    JobDuplexAllDocumentsContiguously::EDuplexOption duplex;
    JobIdentification::EJobIdentificationOption identification;
    PageScaling::PageScalingData scaling;
    Binding::BindingData binding;
    NUp::NUpData nUp;
    PageMediaSize::PageMediaSizeData page;
    OutputPaperSize::OutputPaperSizeData sheet;
    bool isAnswered = ticket.GetOrientationSetting(orientation) == S_OK;
    isAnswered &= ticket.GetDuplexSetting(duplex) == S_OK;
    isAnswered &= ticket.GetJobIdSetting(identification) == S_OK;
    benchmark::DoNotOptimize(ticket.IsSidesImagedSpecified());
    isAnswered &= ticket.GetPageScalingSettings(scaling) == S_OK;
    isAnswered &= ticket.GetBookletSettings(binding) == S_OK;
    isAnswered &= ticket.GetNUpSettings(nUp) == S_OK;
    isAnswered &= ticket.GetPageMediaSizeSettings(page) == S_OK;
    isAnswered &= ticket.GetOutputPaperSizeSettings(sheet) == S_OK;
    if (!isAnswered) std::abort(); // the sample's ticket has an answer to each
}

void SnapshotAndAllQuestions(benchmark::State& state, const std::string& what,
                             const std::string& inJobTicket) {
    const auto queue = OvPlatform::QueueFolder::Load(OV_SOURCE_DIR "/Samples/Queues/ColorOffice");
    OvPlatform::QueueRegistry::Add(queue);
    const auto job = MakeFake<FakeFixedDocumentSequence>();
    const auto document = MakeFake<FakeFixedDocument>();
    const auto page = MakeFake<FakeFixedPage>();
    const auto partTicket = [](const wchar_t* uri, const std::string& more) {
        return CComPtr<IPartPrintTicket>(
            new FakePrintTicketPart(uri, TicketText(Choice("psk:PageOrientation", "psk:Landscape") + more)));
    };
    job->ticket = partTicket(L"/job", inJobTicket);
    page->ticket = partTicket(L"/page", "");
    PrintTicketManager manager;
    std::wstring name = queue->PrinterName();
    if (FAILED(
            manager.Initialize(MakeFake<MemoryReadStream>(queue->DefaultTicket()), name.data(), nullptr)) ||
        FAILED(manager.MergeAndValidatePartPrintTicket(job)) ||
        FAILED(manager.MergeAndValidatePartPrintTicket(document)) ||
        FAILED(manager.MergeAndValidatePartPrintTicket(page)))
        std::abort();

    XPathOver peer(manager.GetPtrToPagePrintTicketForReading());
    XpsFilterPrintTicket ticket(&manager, NoDisplayHelp());
    OutputPaperSize::OutputPaperSizeData sheet;
    if (manager.GetSnapshotOfCurrentMergedPartPrintTicket(kPTPageScope, ticket) != S_OK ||
        ticket.GetOutputPaperSizeSettings(sheet) != S_OK || sheet.isSpecified == inJobTicket.empty())
        std::abort();
    PairedTimes::Compare(
        state, what + ": a snapshot of a page and all questions, in XPath evaluations", 12,
        [&] {
            if (manager.GetSnapshotOfCurrentMergedPartPrintTicket(kPTPageScope, ticket) != S_OK) std::abort();
            AskAll(ticket);
        },
        [&] { peer.Run(); });
}

// Pages that come out on another paper: its size stands in the capabilities, which are larger than any
// ticket.
const std::string fitToAnotherPaper =
    std::string("<psf:ParameterInit name='ok:JobOrvelPublicDocSettings' "
                "xmlns:ok='http://schemas.orvel.example/enterprise/print/driver/native/"
                "printSchemaPrivateKeywords/2006/11'><psf:Value xsi:type='xsd:string'>&lt;s>") +
    "&lt;fit-to-new-size-print-ticket-keyword-api>psk:ISOA3&lt;/fit-to-new-size-print-ticket-keyword-api>"
    "&lt;/s></psf:Value></psf:ParameterInit>";

BENCHMARK_CAPTURE(SnapshotAndAllQuestions, AsTheDefault, "paper as the default", "")->UseManualTime();
BENCHMARK_CAPTURE(SnapshotAndAllQuestions, FitToAnotherPaper, "fit to another paper", fitToAnotherPaper)
    ->UseManualTime();

} // namespace

int main(int argumentCount, char** arguments) { return RunBenchmarksInApartment(argumentCount, arguments); }
