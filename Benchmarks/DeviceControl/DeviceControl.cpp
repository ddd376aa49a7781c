// What a family's whole header costs for a job that asks for everything, beside one PJL line by snprintf in
// the same run; and with the settings of a real job in the place of a table, beside that header.

#include "ApartmentBenchmarks.h"

#include <DeviceControl/DeviceFamily.h>
#include <DeviceControl/PrintInstructionGenerator.h>
#include <DeviceControl/ProductPdlData.h>
#include <DeviceDescription/OrvelDriverPropertyBag.h>
#include <FeatureAccess/JobSettings.h>
#include <Support/DeviceBag.h>
#include <Support/TalkativeJob.h>

#include <benchmark/benchmark.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>

namespace {

using namespace DataModelIds;
using Clock = std::chrono::steady_clock;

double MedianOf(std::vector<double>& values) {
    const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
    std::nth_element(values.begin(), middle, values.end());
    return *middle;
}

std::string ReadSample(const char* name) {
    std::ifstream file(std::filesystem::path(OV_SOURCE_DIR) / "Samples/Queues/ColorOffice" / name,
                       std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

CXString Text(const char* sample) { return CXString(ReadSample(sample).c_str()); }

DeviceBag Bag() {
    DeviceBag bag;
    bag.productData = ReadSample("product-data.xml");
    bag.deviceCapabilities = ReadSample("device-capabilities.xml");
    return bag;
}

TableFeatureAccess JobWithEverything() {
    TableFeatureAccess job = TalkativeJob();
    const auto saved = [](tagFeatureEnum feature) {
        return FeaturePath(FEAT_SAVE_COL, FEAT_SAVE_INFO_COL, feature);
    };
    job.Choose(FEAT_JOB_TYPE, VAL_JOB_TYPE_SAVED_PRINT)
        .Choose({FEAT_SAVE_COL, FEAT_SAVE_DISPOSITION}, VAL_SAVE_DISPOSITION_PRINT_SAVE)
        .Choose(saved(FEAT_SAVE_LOCATION), VAL_SAVE_ACCESS_PUBLIC)
        .Choose(saved(FEAT_SAVE_ACCESS), VAL_SAVE_ACCESS_PRIVATE)
        .SetFlag(FEAT_START_SHEET_FROM_APPLICATION, true)
        .Choose({FEAT_JOB_ACCT_COL, FEAT_DEV_INSTALLABLE_JOB_ACCT_SYSTEM_ACTUAL},
                VAL_JOB_ACCT_SYSTEM_STANDARD)
        .Choose(FEAT_JOB_ACCT_ACCOUNT_TYPE, VAL_ACCT_GROUP_ACCOUNT)
        .Choose(FEAT_PRINT_QUALITY_LEVEL, VAL_QUALITY_ENHANCED)
        .Choose(FEAT_FINISHING_STAPLE, VAL_FINISHING_1_STAPLE)
        .Choose(FEAT_FINISHING_HOLE_PUNCH, VAL_FINISHING_2_HOLE_PUNCH)
        .Choose(FEAT_FINISHING_BOOKLET, VAL_FINISHING_BOOKLET_FOLD_STAPLE)
        .Choose(FEAT_FINISHING_FOLD, VAL_FINISHING_C_FOLD_PI)
        .Choose(FEAT_TRAPPING, VAL_TRAPPING_ON)
        .Choose(FEAT_JOB_OFFSET_API, VAL_JOB_OFFSET_SET)
        .Choose(FEAT_DISPLAY_COLOR_CORRECTION, VAL_CUSTOM_COLOR_CORRECTION)
        .Choose(FEAT_SOURCE_RGB_COLOR, VAL_SOURCE_RGB_SRGB)
        .Choose(FEAT_SOURCE_CMYK_COLOR, VAL_SOURCE_CMYK_SWOP)
        .Choose(FEAT_SOURCE_SPOT_COLOR, VAL_SOURCE_SPOT_SPOT_COLOR)
        .Choose(FEAT_SOURCE_GRAY_COLOR, VAL_SOURCE_RGB_SRGB)
        .Choose(FEAT_OUTPUT_RENDERING_INTENT, VAL_OUTPUT_RENDERING_PERCEPTUAL)
        .Choose(FEAT_CIE_APPLY_EMBEDDED_PROFILES, VAL_CIE_PROFILES_AUTOMATIC)
        .Choose(FEAT_GRAY_LINE, VAL_GRAY_LINE_AUTOMATIC)
        .Choose(FEAT_TONER_SAVER, VAL_TONER_SAVER_ON)
        .Choose(FEAT_OUTPUT_FACE, VAL_OUTPUT_FACE_UP)
        .Choose(FEAT_PRINT_RESOLUTION, VAL_RESOLUTION_1200)
        .Choose(FEAT_COLLATION, VAL_COLLATION_COLLATED)
        .Choose(FEAT_COVER_OPTIONS, VAL_COVER_BOTH_SAME)
        .Choose({FEAT_FRONT_COVER, FEAT_MEDIA_COL, FEAT_INPUT_TRAY}, VAL_INPUT_TRAY_3)
        .Choose({FEAT_FRONT_COVER, FEAT_MEDIA_COL, FEAT_EFFECTIVE_MEDIA_TYPE}, VAL_MEDIA_TYPE_BOND)
        .Choose({FEAT_FRONT_COVER, FEAT_MEDIA_COL, FEAT_MEDIA_COLOR}, VAL_MEDIA_COLOR_BLUE)
        .Choose(FEAT_PAGE_LAYOUT, VAL_PAGE_LAYOUT_NUP_4)
        .Choose({FEAT_MEDIA_COL, FEAT_EFFECTIVE_MEDIA_TYPE}, VAL_MEDIA_TYPE_BOND)
        .Choose({FEAT_MEDIA_COL, FEAT_INPUT_TRAY}, VAL_INPUT_TRAY_3)
        .Choose(FEAT_SIDES_IMAGED, VAL_SIDES_TWO_SIDED_FLIP_LONG_EDGE);
    return job;
}

/// One of the header's PJL lines as a program without this library would write it.
void FormatLine(const char* name, const char* value) {
    char line[256];
    std::snprintf(line, sizeof line, "@PJL COMMENT OID_ATT_ACCOUNTING_INFORMATION_AVP \"%s,%s\";\r\n", name,
                  value);
    benchmark::DoNotOptimize(line[0]);
    benchmark::ClobberMemory();
}

/// Seconds that an operation takes, the median of many batches.
template <typename Operation>
double SecondsOf(int times, Operation operation) {
    std::vector<double> seconds;
    for (int batch = 0; batch < 15; ++batch) {
        const auto start = Clock::now();
        for (int i = 0; i < times; ++i)
            operation();
        seconds.push_back(std::chrono::duration<double>(Clock::now() - start).count() / times);
    }
    return MedianOf(seconds);
}

void Header(benchmark::State& state) {
    const DeviceFamily& family = DeviceFamilies()[static_cast<std::size_t>(state.range(0))];
    state.SetLabel(std::string(family.name));
    DeviceBag bag = Bag();
    OrvelDriverPropertyBag device(bag);
    TableFeatureAccess table = JobWithEverything();
    PrintInstructionGenerator generator(table, device);
    JobSettings settings(
        Text("default-ticket.xml"), Text("capabilities.xml"),
        OvlSharedPtr<SimpleOcapParser>(new SimpleOcapParser(ReadSample("device-capabilities.xml").c_str())));
    DataModelLessFeatureAccess& access = settings.Features();
    PrintInstructionGenerator real(access, device);
    DeviceInstructions texts;
    for ([[maybe_unused]] auto _ : state) {
        const double line = SecondsOf(2000, [] { FormatLine("OVL_GROUPACCT", "Stra\u00DFe 7"); });
        const double header = SecondsOf(100, [&] { family.generate(generator, texts); });
        const int length = texts.pjlCommands.GetLength() + texts.setupCommands.GetLength();
        const double whole = SecondsOf(100, [&] { family.generate(real, texts); });
        state.SetIterationTime(header);
        state.counters["ratio"] = header / line;
        state.counters["ratioWithSettings"] = whole / header;
        state.counters["characters"] = length;
        const std::string name(family.name);
        Limits::Report(name + ": a header, in formatted lines", header / line, 60);
        Limits::Report(name + ": a header of settings, in headers of answers ready", whole / header, 8);
    }
}

BENCHMARK(Header)->DenseRange(0, 7)->UseManualTime()->Iterations(5);

} // namespace

int main(int argumentCount, char** arguments) { return RunBenchmarksInApartment(argumentCount, arguments); }
