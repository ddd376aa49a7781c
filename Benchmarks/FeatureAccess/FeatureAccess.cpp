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

void AllOptions(benchmark::State& state) {
    // The sample printer, and its default ticket with settings of every kind in it.
    JobSettings settings(
        Text("default-ticket.xml"), Text("capabilities.xml"),
        OvlSharedPtr<SimpleOcapParser>(new SimpleOcapParser(ReadSample("device-capabilities.xml").c_str())));
    const DataModelLessFeatureAccess& access = settings.Features();
    std::vector<const NativeXmlConfigFeatureEntry*> features;
    NativeXmlConfigFeatureDictionary::Instance()->GetAllEntries(features);

    CPString text;
    settings.TicketAccess().GetPrintTicketAsXmlString(text, false);
    xmlDoc* tree = xmlReadMemory(text.utf8Bytes(), static_cast<int>(text.view().size()), nullptr, nullptr,
                                 XML_PARSE_NONET);
    xmlXPathContext* context = xmlXPathNewContext(tree);
    xmlXPathRegisterNs(context, reinterpret_cast<const xmlChar*>("psf"),
                       reinterpret_cast<const xmlChar*>(frameworkUri));
    xmlXPathCompExpr* query = xmlXPathCompile(
        reinterpret_cast<const xmlChar*>("//psf:Feature[@name = \"psk:PageMediaSize\"]/psf:Option"));

    PairedTimes::Compare(
        state, "all feature questions of a level, in XPath evaluations", 6,
        [&] {
            for (const NativeXmlConfigFeatureEntry* const feature : features)
                benchmark::DoNotOptimize(access.GetOptionValue(feature->feature));
        },
        [&] { xmlXPathFreeObject(xmlXPathCompiledEval(query, context)); });
    state.counters["features"] = static_cast<double>(features.size());
    xmlXPathFreeCompExpr(query);
    xmlXPathFreeContext(context);
    xmlFreeDoc(tree);
}

BENCHMARK(AllOptions)->UseManualTime();

} // namespace

int main(int argumentCount, char** arguments) { return RunBenchmarksInApartment(argumentCount, arguments); }
