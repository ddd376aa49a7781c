// What all questions for the options of a job cost, beside one libxml2 XPath over its ticket in the same run.

#include "ApartmentBenchmarks.h"

#include <DataModel/NativeXmlConfigFeatureDictionary.h>
#include <DeviceDescription/SimpleOcapParser.h>
#include <FeatureAccess/JobSettings.h>

#include <benchmark/benchmark.h>
#include <libxml/parser.h>
#include <libxml/xpath.h>
#include <libxml/xpathInternals.h>

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>

namespace {

constexpr char frameworkUri[] = "http://schemas.microsoft.com/windows/2003/08/printing/printschemaframework";

std::string ReadSample(const char* name) {
    std::ifstream file(std::filesystem::path(OV_SOURCE_DIR) / "Samples/Queues/ColorOffice" / name,
                       std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

CXString Text(const char* sample) { return CXString(ReadSample(sample).c_str()); }

double MedianOf(std::vector<double>& values) {
    const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
    std::nth_element(values.begin(), middle, values.end());
    return *middle;
}

void AllOptions(benchmark::State& state) {
    using Clock = std::chrono::steady_clock;
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

    std::vector<double> ownSeconds;
    std::vector<double> peerSeconds;
    for ([[maybe_unused]] auto _ : state) {
        const auto start = Clock::now();
        for (const NativeXmlConfigFeatureEntry* const feature : features)
            benchmark::DoNotOptimize(access.GetOptionValue(feature->feature));
        const auto between = Clock::now();
        xmlXPathFreeObject(xmlXPathCompiledEval(query, context));
        const auto end = Clock::now();
        const double seconds = std::chrono::duration<double>(between - start).count();
        state.SetIterationTime(seconds);
        ownSeconds.push_back(seconds);
        peerSeconds.push_back(std::chrono::duration<double>(end - between).count());
    }
    state.counters["features"] = static_cast<double>(features.size());
    state.counters["ratio"] = MedianOf(ownSeconds) / MedianOf(peerSeconds);
    state.counters["limit"] = 60;
    xmlXPathFreeCompExpr(query);
    xmlXPathFreeContext(context);
    xmlFreeDoc(tree);
}

BENCHMARK(AllOptions)->UseManualTime();

} // namespace

int main(int argumentCount, char** arguments) { return RunBenchmarksInApartment(argumentCount, arguments); }
