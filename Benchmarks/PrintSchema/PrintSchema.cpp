// What the Print Schema documents cost, beside libxml2 doing the bare work on the same bytes in the same run.

#include "ApartmentBenchmarks.h"

#include <PrintSchema/DomDocumentCache.h>
#include <PrintSchema/PrintTicketXmlDocument.h>

#include <benchmark/benchmark.h>
#include <libxml/parser.h>
#include <libxml/xpath.h>
#include <libxml/xpathInternals.h>

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <functional>
#include <string>
#include <vector>

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

double MedianOf(std::vector<double>& values) {
    const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
    std::nth_element(values.begin(), middle, values.end());
    return *middle;
}

// Alternates the two, so that both see the same machine, and compares their medians: what else runs there
// lengthens some rounds of either.
void Compare(benchmark::State& state, double limit, const std::function<void()>& own,
             const std::function<void()>& peer) {
    using Clock = std::chrono::steady_clock;
    std::vector<double> ownSeconds;
    std::vector<double> peerSeconds;
    for ([[maybe_unused]] auto _ : state) {
        const auto start = Clock::now();
        own();
        const auto between = Clock::now();
        peer();
        const auto end = Clock::now();
        const double seconds = std::chrono::duration<double>(between - start).count();
        state.SetIterationTime(seconds);
        ownSeconds.push_back(seconds);
        peerSeconds.push_back(std::chrono::duration<double>(end - between).count());
    }
    state.counters["ratio"] = MedianOf(ownSeconds) / MedianOf(peerSeconds);
    state.counters["limit"] = limit;
}

void Load(benchmark::State& state) {
    const CComPtr<IStream> stream = TicketStream();
    Compare(
        state, 2.0, [&] { const PrintTicketXmlDocument ticket(stream.p); },
        [] { xmlFreeDoc(ParseWithLibxml()); });
}

void Clone(benchmark::State& state) {
    const CComPtr<IStream> stream = TicketStream();
    const PrintTicketXmlDocument ticket(stream.p);
    Compare(
        state, 2.5,
        [&] {
            CComPtr<IXMLDOMDocument2> copy;
            if (FAILED(CreateCopyOfIXMLDOMDocument(ticket.GetDomDocPtr(), &copy))) std::abort();
        },
        [] { xmlFreeDoc(ParseWithLibxml()); });
}

void GetFeatureOption(benchmark::State& state) {
    const CComPtr<IStream> stream = TicketStream();
    const PrintTicketXmlDocument ticket(stream.p);
    xmlDoc* tree = ParseWithLibxml();
    xmlXPathContext* context = xmlXPathNewContext(tree);
    xmlXPathRegisterNs(context, reinterpret_cast<const xmlChar*>("psf"),
                       reinterpret_cast<const xmlChar*>(frameworkUri));
    xmlXPathCompExpr* query = xmlXPathCompile(
        reinterpret_cast<const xmlChar*>("//psf:Feature[@name = \"psk:PageMediaSize\"]/psf:Option"));
    Compare(
        state, 1.5,
        [&] {
            CComBSTR option;
            CComBSTR prefix;
            if (ticket.GetFeatureOption(L"psk:", L"PageMediaSize", &option, &prefix) != S_OK) std::abort();
        },
        [&] { xmlXPathFreeObject(xmlXPathCompiledEval(query, context)); });
    xmlXPathFreeCompExpr(query);
    xmlXPathFreeContext(context);
    xmlFreeDoc(tree);
}

BENCHMARK(Load)->UseManualTime();
BENCHMARK(Clone)->UseManualTime();
BENCHMARK(GetFeatureOption)->UseManualTime();

} // namespace

int main(int argumentCount, char** arguments) { return RunBenchmarksInApartment(argumentCount, arguments); }
