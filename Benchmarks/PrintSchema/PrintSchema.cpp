// What the Print Schema documents cost, beside libxml2 doing the bare work on the same bytes in the same run.

#include "ApartmentBenchmarks.h"
#include "PairedTimes.h"

#include <PrintSchema/DomDocumentCache.h>
#include <PrintSchema/PrintTicketXmlDocument.h>

#include <benchmark/benchmark.h>
#include <libxml/parser.h>
#include <libxml/xpath.h>
#include <libxml/xpathInternals.h>

#include <cstdlib>
#include <string>

namespace {

constexpr char frameworkUri[] = "http://schemas.microsoft.com/windows/2003/08/printing/printschemaframework";

// About 7 KB, as drivers write them: some features with scored properties, a sub-feature, parameters, and
// bytes in Base64.
std::string MakeTicket() {
    const auto property = [](const std::string& name, const std::string& value) {
        return "<psf:ScoredProperty name=\"psk:" + name + "\"><psf:Value xsi:type=\"xsd:integer\">" + value +
               "</psf:Value></psf:ScoredProperty>";
    };
    const auto feature = [](const std::string& name, const std::string& option,
                            const std::string& inside = "") {
        return "<psf:Feature name=\"" + name + "\"><psf:Option name=\"" + option + "\">" + inside +
               "</psf:Option></psf:Feature>";
    };
    std::string ticket =
        "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<psf:PrintTicket xmlns:psf=\"" +
        std::string(frameworkUri) +
        "\" xmlns:xsi=\"http://www.w3.org/2001/XMLSchema-instance\" "
        "xmlns:xsd=\"http://www.w3.org/2001/XMLSchema\" version=\"1\" "
        "xmlns:psk=\"http://schemas.microsoft.com/windows/2003/08/printing/printschemakeywords\">";
    ticket += feature("psk:JobInputBin", "psk:AutoSelect");
    ticket += feature("psk:JobDuplexAllDocumentsContiguously", "psk:TwoSidedLongEdge");
    ticket += feature("psk:DocumentCollate", "psk:Collated");
    ticket += feature("psk:JobStapleAllDocuments", "psk:None");
    ticket += "<psf:Feature name=\"psk:JobNUpAllDocumentsContiguously\"><psf:Option>" +
              property("PagesPerSheet", "4") + "</psf:Option>" +
              feature("psk:PresentationDirection", "psk:RightBottom") + "</psf:Feature>";
    ticket += feature("psk:PageOutputColor", "psk:Color",
                      property("DeviceBitsPerPixel", "24") + property("DriverBitsPerPixel", "24"));
    ticket += feature("psk:PageResolution", "psk:High",
                      property("ResolutionX", "600") + property("ResolutionY", "600"));
    ticket += feature("psk:PageMediaType", "psk:Plain", property("Weight", "80"));
    for (int index = 0; index < 16; ++index)
        ticket += feature("psk:PageVendorSetting" + std::to_string(index),
                          "psk:Choice" + std::to_string(index % 3));
    ticket += feature("psk:PageMediaSize", "psk:ISOA4",
                      property("MediaSizeWidth", "210000") + property("MediaSizeHeight", "297000"));
    ticket += feature("psk:PageOrientation", "psk:Portrait");
    ticket +=
        "<psf:ParameterInit name=\"psk:JobCopiesAllDocuments\"><psf:Value xsi:type=\"xsd:integer\">1"
        "</psf:Value></psf:ParameterInit><psf:ParameterInit name=\"psk:PageDevmodeSnapshot\"><psf:Value "
        "xsi:type=\"xsd:string\">";
    while (ticket.size() < std::size_t{7} << 10)
        ticket += "RABlAHYAbQBvAGQAZQAg";
    return ticket + "</psf:Value></psf:ParameterInit></psf:PrintTicket>";
}

const std::string ticketBytes = MakeTicket();

CComPtr<IStream> TicketStream() {
    CComPtr<IStream> stream;
    ULONG written = 0;
    if (FAILED(CreateStreamOnHGlobal(nullptr, TRUE, &stream)) ||
        FAILED(stream->Write(ticketBytes.data(), static_cast<ULONG>(ticketBytes.size()), &written)))
        std::abort();
    return stream;
}

xmlDoc* ParseWithLibxml() {
    return xmlReadMemory(ticketBytes.data(), static_cast<int>(ticketBytes.size()), nullptr, nullptr,
                         XML_PARSE_NONET);
}

void Load(benchmark::State& state) {
    const CComPtr<IStream> stream = TicketStream();
    PairedTimes::Compare(
        state, "load of a ticket, in parses", 1.05, [&] { const PrintTicketXmlDocument ticket(stream.p); },
        [] { xmlFreeDoc(ParseWithLibxml()); });
}

void Clone(benchmark::State& state) {
    const CComPtr<IStream> stream = TicketStream();
    const PrintTicketXmlDocument ticket(stream.p);
    PairedTimes::Compare(
        state, "clone of a document that nobody opens, in parses", 0.05,
        [&] {
            CComPtr<IXMLDOMDocument2> copy;
            if (FAILED(CreateCopyOfIXMLDOMDocument(ticket.GetDomDocPtr(), &copy))) std::abort();
        },
        [] { xmlFreeDoc(ParseWithLibxml()); });
}

// One compiled query over the ticket, by libxml2.
class Evaluation {
public:
    Evaluation() : m_tree(ParseWithLibxml()), m_context(xmlXPathNewContext(m_tree)) {
        xmlXPathRegisterNs(m_context, reinterpret_cast<const xmlChar*>("psf"),
                           reinterpret_cast<const xmlChar*>(frameworkUri));
        m_query = xmlXPathCompile(
            reinterpret_cast<const xmlChar*>("//psf:Feature[@name = \"psk:PageMediaSize\"]/psf:Option"));
    }
    ~Evaluation() {
        xmlXPathFreeCompExpr(m_query);
        xmlXPathFreeContext(m_context);
        xmlFreeDoc(m_tree);
    }
    Evaluation(const Evaluation&) = delete;
    Evaluation& operator=(const Evaluation&) = delete;

    void operator()() const { xmlXPathFreeObject(xmlXPathCompiledEval(m_query, m_context)); }

private:
    xmlDoc* m_tree;
    xmlXPathContext* m_context;
    xmlXPathCompExpr* m_query;
};

void AskForOption(const PrintTicketXmlDocument& ticket) {
    CComBSTR option;
    CComBSTR prefix;
    if (ticket.GetFeatureOption(L"psk:", L"PageMediaSize", &option, &prefix) != S_OK) std::abort();
}

void GetFeatureOption(benchmark::State& state) {
    const CComPtr<IStream> stream = TicketStream();
    const PrintTicketXmlDocument ticket(stream.p);
    const Evaluation evaluate;
    PairedTimes::Compare(
        state, "option of a feature by name, in XPath evaluations", 0.2, [&] { AskForOption(ticket); },
        evaluate);
}

// What the ticket knows by then, it has found itself.
void GetFirstFeatureOption(benchmark::State& state) {
    const CComPtr<IStream> stream = TicketStream();
    const Evaluation evaluate;
    PairedTimes times;
    for ([[maybe_unused]] auto _ : state) {
        const PrintTicketXmlDocument ticket(stream.p);
        state.SetIterationTime(times.Run([&] { AskForOption(ticket); }, evaluate));
    }
    state.counters["ratio"] = times.Ratio();
    Limits::Report("the first option of a feature by name, in XPath evaluations", times.Ratio(), 0.4);
}

void GetFeatureOptionAfterChange(benchmark::State& state) {
    const CComPtr<IStream> stream = TicketStream();
    PrintTicketXmlDocument ticket(stream.p);
    const Evaluation evaluate;
    PairedTimes times;
    const wchar_t* option = L"Portrait";
    for ([[maybe_unused]] auto _ : state) {
        option = option[0] == L'P' ? L"Landscape" : L"Portrait";
        if (ticket.SetFeatureOption(L"PageOrientation", true, option, true) != S_OK) std::abort();
        state.SetIterationTime(times.Run([&] { AskForOption(ticket); }, evaluate));
    }
    state.counters["ratio"] = times.Ratio();
    Limits::Report("option of a feature by name after a change, in XPath evaluations", times.Ratio(), 0.2);
}

BENCHMARK(Load)->UseManualTime();
BENCHMARK(Clone)->UseManualTime();
BENCHMARK(GetFeatureOption)->UseManualTime();
BENCHMARK(GetFirstFeatureOption)->UseManualTime();
BENCHMARK(GetFeatureOptionAfterChange)->UseManualTime();

} // namespace

int main(int argumentCount, char** arguments) { return RunBenchmarksInApartment(argumentCount, arguments); }
