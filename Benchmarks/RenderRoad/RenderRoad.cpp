// ov-pipeline run with the filter that images pages, against its renderer alone on the same pages of the same
// package, page by page into a file, each in a process of its own. Two figures count: the time beyond that of
// the renderer (at most 5 %, at 10, 100 and 1,000 pages), and peak memory at 1,000 pages against 100.
#include "Limits.h"
#include "MeasuredCommand.h"
#include "PipelineRun/LargeJob.h"

#include <libgxps/gxps.h>

#include <cairo-ps.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <functional>
#include <iterator>
#include <memory>
#include <random>
#include <stdexcept>
#include <string>
#include <vector>

namespace fs = std::filesystem;

namespace {

constexpr int rounds = 5;
constexpr double pointsPerUnit = 72.0 / 96.0;

struct Unreference {
    void operator()(gpointer object) const { g_object_unref(object); }
};
template <class Object>
using Reference = std::unique_ptr<Object, Unreference>;

cairo_status_t Write(void* file, const unsigned char* bytes, unsigned int count) noexcept {
    return std::fwrite(bytes, 1, count, static_cast<std::FILE*>(file)) == count ? CAIRO_STATUS_SUCCESS
                                                                                : CAIRO_STATUS_WRITE_ERROR;
}

void ImagePage(GXPSPage* page, std::FILE* out) {
    double width = 0;
    double height = 0;
    gxps_page_get_size(page, &width, &height);
    cairo_surface_t* const surface =
        cairo_ps_surface_create_for_stream(Write, out, width * pointsPerUnit, height * pointsPerUnit);
    cairo_ps_surface_set_eps(surface, 1);
    cairo_t* const context = cairo_create(surface);
    cairo_scale(context, pointsPerUnit, pointsPerUnit);
    GError* error = nullptr; // libgxps looks into it
    const bool isDrawn = gxps_page_render(page, context, &error);
    g_clear_error(&error);
    cairo_show_page(context);
    cairo_destroy(context);
    cairo_surface_finish(surface);
    const cairo_status_t status = cairo_surface_status(surface);
    cairo_surface_destroy(surface);
    if (!isDrawn || status != CAIRO_STATUS_SUCCESS) throw std::runtime_error("a page cannot be imaged");
}

void ImageAll(const char* job, const char* output) {
    const Reference<GFile> file(g_file_new_for_path(job));
    const Reference<GXPSFile> package(gxps_file_new(file.get(), nullptr));
    if (!package) throw std::runtime_error(std::string("no XPS file: ") + job);
    const std::unique_ptr<std::FILE, int (*)(std::FILE*)> out(std::fopen(output, "wb"), std::fclose);
    if (!out) throw std::runtime_error(std::string("cannot be written: ") + output);
    const Reference<GXPSDocument> document(gxps_file_get_document(package.get(), 0, nullptr));
    for (guint number = 0; number < gxps_document_get_n_pages(document.get()); ++number) {
        const Reference<GXPSPage> page(gxps_document_get_page(document.get(), number, nullptr));
        if (!page) throw std::runtime_error("a page cannot be read");
        ImagePage(page.get(), out.get());
    }
}

std::string Bytes(const fs::path& file) {
    std::ifstream stream(file, std::ios::binary);
    if (!stream) throw std::runtime_error("wants the font " + file.string() + " (fonts-urw-base35)");
    return {std::istreambuf_iterator<char>(stream), {}};
}

cairo_status_t Append(void* text, const unsigned char* bytes, unsigned int count) {
    static_cast<std::string*>(text)->append(reinterpret_cast<const char*>(bytes), count);
    return CAIRO_STATUS_SUCCESS;
}

// As detailed as a photograph, which does not get much smaller.
std::string Photograph() {
    constexpr int width = 600;
    constexpr int height = 450;
    cairo_surface_t* const surface = cairo_image_surface_create(CAIRO_FORMAT_RGB24, width, height);
    std::mt19937 generator(4);
    const auto stride = static_cast<std::size_t>(cairo_image_surface_get_stride(surface));
    unsigned char* const pixels = cairo_image_surface_get_data(surface);
    for (std::size_t i = 0; i < stride * height; ++i)
        pixels[i] = static_cast<unsigned char>(i / stride / 2 + generator() % 16);
    cairo_surface_mark_dirty(surface);
    std::string bytes;
    cairo_surface_write_to_png_stream(surface, Append, &bytes);
    cairo_surface_destroy(surface);
    return bytes;
}

std::string Dot() {
    std::string bytes;
    cairo_surface_t* const surface = cairo_image_surface_create(CAIRO_FORMAT_RGB24, 1, 1);
    cairo_surface_write_to_png_stream(surface, Append, &bytes);
    cairo_surface_destroy(surface);
    return bytes;
}

/// Pages of one kind, to be imaged by both.
struct Kind {
    const char* name;
    std::vector<std::size_t> pages;
    std::function<void(const fs::path& job, std::size_t pages)> write;
};

void Compare(const Kind& kind, const std::string& self, const fs::path& scratch) {
    using M = MeasuredCommand;
    const std::string binaries = OV_BINARY_DIR;
    std::vector<double> peaks;
    for (const std::size_t pages : kind.pages) {
        const std::string job = scratch / (std::to_string(pages) + ".xps");
        kind.write(job, pages);
        MeasuredCommand alone;
        MeasuredCommand road;
        for (int round = 0; round < (pages == kind.pages.back() ? 1 : rounds); ++round) {
            alone.Run({self, "--alone", job, scratch / "alone.ps"});
            road.Run({binaries + "/bin/ov-pipeline", "run", "--queue",
                      std::string(OV_SOURCE_DIR) + "/Samples/Queues/ColorOffice", "--filter",
                      binaries + "/lib/libDeviceStream.so", "-o", scratch / "road.prn", job});
        }
        peaks.push_back(road.peakMegabytes);
        std::printf("%-16s %6zu %11.3f %11.3f %7.3f %9.3f %8.1f\n", kind.name, pages,
                    M::Median(alone.seconds), M::Median(road.seconds),
                    M::Median(road.seconds) / M::Median(alone.seconds),
                    M::Median(road.processorSeconds) / M::Median(alone.processorSeconds), road.peakMegabytes);
        if (pages == kind.pages.back())
            Limits::Report(std::string(kind.name) + ", " + std::to_string(pages) +
                               " pages, beside the renderer",
                           M::Median(road.seconds) / M::Median(alone.seconds), 1.05);
    }
    std::printf("%-16s peak memory, the last against the one before: %+.1f MB\n", kind.name,
                peaks.back() - peaks[peaks.size() - 2]);
}

// As scripts/make-sample-job has them made, over and over.
void WriteProducedJob(const fs::path& job, std::size_t pages) {
    constexpr std::size_t pagesOfSample = 3;
    std::string command = "gs -q -dBATCH -dNOPAUSE -dSAFER -sDEVICE=xpswrite -sOutputFile=" + job.string();
    for (std::size_t page = 0; page < pages; page += pagesOfSample)
        command += " " OV_SOURCE_DIR "/Samples/Jobs/sample.ps";
    if (std::system(command.c_str()) != 0) throw std::runtime_error("Ghostscript makes no job");
}

int CompareAll(const std::string& self) {
    const fs::path scratch = fs::temp_directory_path() / ("ov-bench-" + std::to_string(getpid()));
    fs::create_directories(scratch);
    const fs::path fonts = "/usr/share/fonts/opentype/urw-base35";
    LargeJobResources resources{Bytes(fonts / "NimbusRoman-Regular.otf"),
                                Bytes(fonts / "NimbusRoman-Bold.otf"), Photograph()};
    LargeJobResources texts = resources;
    texts.picture = Dot();
    // The lightest are drawn within two milliseconds: a few of them take no longer than the pipeline's start.
    const Kind kinds[] = {
        {"a producer's own", {12, 99}, WriteProducedJob},
        {"a photograph",
         {10, 100, 1000},
         [&](const fs::path& job, std::size_t pages) { WriteLargeJob(job, pages, resources); }},
        {"text alone",
         {10, 100, 1000},
         [&](const fs::path& job, std::size_t pages) { WriteLargeJob(job, pages, texts); }},
    };
    std::printf("%-16s %6s %11s %11s %7s %9s %8s\n", "pages", "count", "renderer s", "pipeline s", "ratio",
                "CPU ratio", "peak MB");
    for (const Kind& kind : kinds)
        Compare(kind, self, scratch);
    fs::remove_all(scratch);
    return Limits::Conclude();
}

} // namespace

int main(int count, char** arguments) {
    try {
        if (count == 4 && std::string(arguments[1]) == "--alone") {
            ImageAll(arguments[2], arguments[3]);
            return 0;
        }
        return CompareAll(fs::read_symlink("/proc/self/exe"));
    } catch (const std::exception& failure) {
        std::fprintf(stderr, "bench.RenderRoad: %s\n", failure.what());
        return 1;
    }
}
