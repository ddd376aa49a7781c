#include "Limits.h"

#include <algorithm>
#include <cstdio>
#include <vector>

namespace {

struct Figure {
    std::string what;
    double value;
    double limit;
    Bound bound;

    bool IsMet() const { return bound == Bound::AtMost ? value <= limit : value >= limit; }
};

std::vector<Figure> figures;

} // namespace

void Limits::Report(const std::string& what, double value, double limit, Bound bound) {
    std::erase_if(figures, [&](const Figure& figure) { return figure.what == what; });
    figures.push_back({what, value, limit, bound});
}

int Limits::Conclude() {
    for (const Figure& figure : figures)
        std::printf("limit  %s  %s: %.2f (at %s %.2f)\n", figure.IsMet() ? "met   " : "MISSED",
                    figure.what.c_str(), figure.value, figure.bound == Bound::AtMost ? "most" : "least",
                    figure.limit);
    return std::all_of(figures.begin(), figures.end(), [](const Figure& figure) { return figure.IsMet(); })
               ? 0
               : 1;
}
