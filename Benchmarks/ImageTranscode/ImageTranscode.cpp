// A picture of an annotation written again as PNG through WICHelper, from a file to a stream, beside the
// image library's own call from a file to a buffer. Reports time as a ratio in the same run.

#include "Limits.h"
#include "Support/TemporaryFolder.h"
#include "Support/TestPictures.h"

#include <FontsAndImages/WICHelper.h>

#include <gdk-pixbuf/gdk-pixbuf.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <string>

namespace {

constexpr int repetitions = 25;

/// Of the process: what the machine does beside it does not count.
double CpuSeconds() {
    timespec time{};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &time);
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) * 1e-9;
}

double SecondsOf(auto action) {
    const double start = CpuSeconds();
    action();
    return CpuSeconds() - start;
}

void Convert(const std::string& file) {
    WICHelper helper(CXString(file.c_str()));
    helper.Initialize();
    IStream* stream = nullptr;
    if (!helper.ConvertImage(GUID_ContainerFormatPng) || !helper.GetTargetStream(&stream)) std::abort();
}

void LoadAndSave(const std::string& file) {
    GdkPixbuf* const picture = gdk_pixbuf_new_from_file(file.c_str(), nullptr);
    gchar* bytes = nullptr;
    gsize size = 0;
    if (picture == nullptr || !gdk_pixbuf_save_to_buffer(picture, &bytes, &size, "png", nullptr, nullptr))
        std::abort();
    g_free(bytes);
    g_object_unref(picture);
}

void Measure(const std::string& what, const std::string& file) {
    // The best of several, taken in turn.
    double own = 1e300;
    double library = 1e300;
    for (int repetition = 0; repetition < repetitions; ++repetition) {
        own = std::min(own, SecondsOf([&] { Convert(file); }));
        library = std::min(library, SecondsOf([&] { LoadAndSave(file); }));
    }
    std::printf("%s: converted %.2f ms, by the image library %.2f ms\n", what.c_str(), own * 1e3,
                library * 1e3);
    Limits::Report(what + ", beside the image library", own / library, 1.3);
}

} // namespace

int main() {
    using namespace TestPictures;
    const TemporaryFolder folder;
    const auto path = [&](const char* name, const std::string& bytes) {
        return folder.Write(name, bytes).string();
    };
    Measure("BMP of 1,000 by 800", path("large.bmp", Bmp(1000, 800)));
    Measure("BMP of 100 by 80", path("small.bmp", Bmp(100, 80)));
    Measure("GIF of 1,000 by 800", path("large.gif", Gif(1000, 800, GifImage(1000, 800, 0))));
    Measure("GIF of 100 by 80", path("small.gif", Gif(100, 80, GifImage(100, 80, 0))));
    return Limits::Conclude();
}
