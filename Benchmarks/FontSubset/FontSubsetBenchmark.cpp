// A subset of 60 characters through GdiDeviceContext, beside the subsetter by itself on the same face and
// with the same characters, tables and options (at most 1.3 of it). Measured in a process of its own each, by
// what it costs the processor, which finds the font by its name, loads it and cuts it as often as told.

#include "Limits.h"

#include <FontsAndImages/GdiDeviceContext.h>
#include <fontconfig/fontconfig.h>

#include <hb-ot.h>
#include <hb-subset.h>
#include <sys/mman.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <string>

namespace {

constexpr int rounds = 7;

struct Task {
    const char* name;
    const char* face;
    wchar_t first; // of 60 characters
};
constexpr Task tasks[] = {
    {"Latin", "DejaVu Sans", L'A'},
    {"Arabic", "DejaVu Sans", L'\u0621'},
    {"Japanese", "Droid Sans Fallback", L'\u65E0'},
};
constexpr int characters = 60;

void ThroughDeviceContext(const Task& task, int subsets) {
    CXString text;
    for (int index = 0; index < characters; ++index)
        text += static_cast<wchar_t>(task.first + index);
    GdiDeviceContext gdi;
    for (int subset = 0; subset < subsets; ++subset)
        if (gdi.GetFontSubset(task.face, DEFAULT_CHARSET, 12, text).empty()) std::abort();
}

hb_face_t* FindFace(const char* name) {
    FcPattern* asked = FcPatternBuild(nullptr, FC_FAMILY, FcTypeString, name, nullptr);
    FcConfigSubstitute(nullptr, asked, FcMatchPattern);
    FcDefaultSubstitute(asked);
    FcResult result = FcResultNoMatch;
    FcPattern* found = FcFontMatch(nullptr, asked, &result);
    FcChar8* file = nullptr;
    if (found == nullptr || FcPatternGetString(found, FC_FILE, 0, &file) != FcResultMatch) std::abort();
    hb_blob_t* bytes = hb_blob_create_from_file_or_fail(reinterpret_cast<const char*>(file));
    return bytes != nullptr ? hb_face_create(bytes, 0) : nullptr;
}

void SubsetterAlone(const Task& task, int subsets) {
    hb_face_t* face = FindFace(task.face);
    if (face == nullptr) std::abort();
    for (int subset = 0; subset < subsets; ++subset) {
        hb_subset_input_t* input = hb_subset_input_create_or_fail();
        hb_set_add_range(hb_subset_input_unicode_set(input), task.first, task.first + characters - 1);
        for (const char* table : {"GPOS", "MATH", "kern"})
            hb_set_add(hb_subset_input_set(input, HB_SUBSET_SETS_DROP_TABLE_TAG),
                       hb_tag_from_string(table, 4));
        hb_subset_input_set_flags(input, HB_SUBSET_FLAGS_RETAIN_GIDS | HB_SUBSET_FLAGS_NO_HINTING |
                                             HB_SUBSET_FLAGS_NOTDEF_OUTLINE);
        hb_face_t* cut = hb_subset_or_fail(face, input);
        hb_blob_t* bytes = hb_face_reference_blob(cut);
        if (hb_blob_get_length(bytes) == 0) std::abort();
        hb_blob_destroy(bytes);
        hb_face_destroy(cut);
        hb_subset_input_destroy(input);
    }
}

using Work = void(const Task& task, int subsets);

/// Milliseconds of the processor, in a process of its own; the best of several.
double Measure(Work* work, const Task& task, int subsets) {
    auto* const best = static_cast<double*>(
        mmap(nullptr, sizeof(double), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0));
    *best = 1e300;
    for (int round = 0; round < rounds; ++round) {
        const pid_t child = fork();
        if (child == 0) {
            work(task, subsets);
            timespec time = {};
            clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &time);
            *best = std::min(*best, static_cast<double>(time.tv_sec) * 1e3 +
                                        static_cast<double>(time.tv_nsec) * 1e-6);
            _exit(0);
        }
        int status = -1;
        if (child < 0 || waitpid(child, &status, 0) != child || status != 0) std::abort();
    }
    const double result = *best;
    munmap(best, sizeof(double));
    return result;
}

} // namespace

int main() {
    for (const Task& task : tasks)
        for (const int subsets : {1, 500}) {
            const double own = Measure(ThroughDeviceContext, task, subsets);
            const double alone = Measure(SubsetterAlone, task, subsets);
            std::printf("%-10s %3d subsets %8.2f ms  subsetter alone %8.2f ms\n", task.name, subsets, own,
                        alone);
            Limits::Report(std::string(task.name) + ", " + std::to_string(subsets) +
                               " subsets, beside the subsetter alone",
                           own / alone, 1.3);
        }
    return Limits::Conclude();
}
