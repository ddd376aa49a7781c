// What all questions for the options of a job cost, beside one libxml2 XPath over its ticket in the same run.

#include "ApartmentBenchmarks.h"
#include "PairedTimes.h"

#include <DataModel/NativeXmlConfigFeatureDictionary.h>
#include <DeviceDescription/SimpleOcapParser.h>
#include <FeatureAccess/JobSettings.h>

#include <benchmark/benchmark.h>
#include <libxml/parser.h>
#include <libxml/xpath.h>
#include <libxml/xpathInternals.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <vector>

namespace {

constexpr char frameworkUri[] = "http://schemas.microsoft.com/windows/2003/08/printing/printschemaframework";

std::string ReadSample(const char* name) {
    std::ifstream file(std::filesystem::path(OV_SOURCE_DIR) / "Samples/Queues/ColorOffice" / name,
                       std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

CXString Text(const char* sample) { return CXString(ReadSample(sample).c_str()); }

// A level that is new in each round, with its documents read beforehand: what it remembers then, it has found
// itself.
void AllOptions(benchmark::State& state) {
    // The sample printer, and its default ticket with settings of every kind in it.
    const CXString ticket = Text("default-ticket.xml");
    const CXString capabilities = Text("capabilities.xml");
    const OvlSharedPtr<SimpleOcapParser> device(
        new SimpleOcapParser(ReadSample("device-capabilities.xml").c_str()));
    std::vector<const NativeXmlConfigFeatureEntry*> features;
    NativeXmlConfigFeatureDictionary::Instance()->GetAllEntries(features);

    CPString text;
    JobSettings(ticket, capabilities, device).TicketAccess().GetPrintTicketAsXmlString(text, false);
    xmlDoc* tree = xmlReadMemory(text.utf8Bytes(), static_cast<int>(text.view().size()), nullptr, nullptr,
                                 XML_PARSE_NONET);
    xmlXPathContext* context = xmlXPathNewContext(tree);
    xmlXPathRegisterNs(context, reinterpret_cast<const xmlChar*>("psf"),
                       reinterpret_cast<const xmlChar*>(frameworkUri));
    xmlXPathCompExpr* query = xmlXPathCompile(
        reinterpret_cast<const xmlChar*>("//psf:Feature[@name = \"psk:PageMediaSize\"]/psf:Option"));
    const auto evaluate = [&] { xmlXPathFreeObject(xmlXPathCompiledEval(query, context)); };

    PairedTimes first;
    PairedTimes again;
    for ([[maybe_unused]] auto _ : state) {
        const JobSettings settings(ticket, capabilities, device);
        const auto askAll = [&] {
            for (const NativeXmlConfigFeatureEntry* const feature : features)
                benchmark::DoNotOptimize(settings.Features().GetOptionValue(feature->feature));
        };
        evaluate(); // lest the peer pays for what the reading of the documents has put out of the caches
        state.SetIterationTime(first.Run(askAll, evaluate));
        again.Run(askAll, evaluate);
    }
    state.counters["features"] = static_cast<double>(features.size());
    state.counters["peer_us"] = first.Peer() * 1e6;
    state.counters["ratio"] = first.Ratio();
    state.counters["again"] = again.Ratio();
    Limits::Report("all feature questions of a level that is new, in XPath evaluations", first.Ratio(), 6);
    Limits::Report("the same questions asked again, in XPath evaluations", again.Ratio(), 3);
    xmlXPathFreeCompExpr(query);
    xmlXPathFreeContext(context);
    xmlFreeDoc(tree);
}

BENCHMARK(AllOptions)->UseManualTime();

} // namespace

int main(int argumentCount, char** arguments) { return RunBenchmarksInApartment(argumentCount, arguments); }
