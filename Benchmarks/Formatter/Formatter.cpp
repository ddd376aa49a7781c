// Messages of the usual shapes through the typed formatter, beside snprintf into a buffer of the stack and a
// string made of it. Reports time as a ratio in the same run, and the allocations of a message.

#include "Limits.h"

#include <LowLevelFacilities/Formatter/CPFormat.h>
#include <LowLevelFacilities/WideStrings/CXString.h>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <new>
#include <string>

namespace {

std::size_t allocations = 0;

void* allocate(std::size_t size) {
    ++allocations;
    void* const memory = std::malloc(size == 0 ? 1 : size);
    if (memory == nullptr) throw std::bad_alloc();
    return memory;
}

} // namespace

[[gnu::noinline]] void* operator new(std::size_t size) { return allocate(size); }
[[gnu::noinline]] void operator delete(void* memory) noexcept { std::free(memory); }
[[gnu::noinline]] void operator delete(void* memory, std::size_t) noexcept { std::free(memory); }

namespace {

constexpr int rounds = 200'000;
constexpr int repetitions = 5;

struct Cost {
    double nanoseconds;
    double allocations;
};

/// The best of several repetitions.
template <typename Action>
Cost Measure(Action action) {
    Cost best{1e300, 0};
    for (int repetition = 0; repetition < repetitions; ++repetition) {
        const std::size_t before = allocations;
        std::size_t length = 0;
        const auto start = std::chrono::steady_clock::now();
        for (int i = 0; i < rounds; ++i)
            length += action(i).size();
        const std::chrono::duration<double, std::nano> elapsed = std::chrono::steady_clock::now() - start;
        if (length == 0) std::abort();
        best = {std::min(best.nanoseconds, elapsed.count() / rounds),
                static_cast<double>(allocations - before) / rounds};
    }
    return best;
}

template <typename... Arguments>
std::string printed(const char* format, Arguments... arguments) {
    char text[1024];
    const int length = std::snprintf(text, sizeof text, format, arguments...);
    return std::string(text, static_cast<std::size_t>(length));
}

void report(const std::string& name, const Cost& typed, const Cost& runtime) {
    std::printf("%-28s %7.0f ns  snprintf %7.0f ns\n", name.c_str(), typed.nanoseconds, runtime.nanoseconds);
    Limits::Report(name + ", in messages by snprintf", typed.nanoseconds / runtime.nanoseconds, 1.2);
    Limits::Report(name + ", allocations", typed.allocations, 1);
}

} // namespace

int main() {
    const std::string narrow = "psk:JobDuplexAllDocumentsContiguously";
    const CXString wide(L"psk:JobDuplexAllDocumentsContiguously");
    const std::string wideAsNarrow = narrow;
    const std::string paragraph(900, 'x');
    report("text and numbers",
           Measure([&](int i) { return FormatStdString("%s: option %d of %u", narrow, i, 7u); }),
           Measure([&](int i) { return printed("%s: option %d of %u", narrow.c_str(), i, 7u); }));
    report("width, precision, hex", Measure([&](int i) {
               return FormatStdString("Failed HRESULT (0x%08x) at %8.3f, line %5d", i, 1.5, i);
           }),
           Measure([&](int i) { return printed("Failed HRESULT (0x%08x) at %8.3f, line %5d", i, 1.5, i); }));
    report("wide text", Measure([&](int i) { return FormatStdString("%S has no option %d", wide, i); }),
           Measure([&](int i) { return printed("%s has no option %d", wideAsNarrow.c_str(), i); }));
    report("near the end of the area", Measure([&](int i) { return FormatStdString("%s %d", paragraph, i); }),
           Measure([&](int i) { return printed("%s %d", paragraph.c_str(), i); }));
    return Limits::Conclude();
}
