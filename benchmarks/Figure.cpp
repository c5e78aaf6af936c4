#include "Figure.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <memory>

namespace pobblewig {

namespace {

/// As figures.py reads it; an empty field where there is nothing.
void addToTable(const Figure& figure, const char* path)
{
    const std::unique_ptr<std::FILE, decltype(&std::fclose)> table(
        std::fopen(path, "a"), &std::fclose);
    if (!table)
        std::abort();
    const auto text = [](const std::optional<double>& number) {
        return number ? std::to_string(*number) : std::string();
    };
    const auto peerValue = *figure.peer ? std::to_string(figure.peerValue) : std::string();
    std::fprintf(table.get(), "%s\t%f\t%s\t%s\t%s\t%s\t%s\n", figure.measured.c_str(), figure.value,
        figure.unit, figure.peer, peerValue.c_str(), text(figure.most).c_str(),
        text(figure.mostRatio).c_str());
}

} // namespace

void Figure::report() const
{
    std::printf("%s: %.2f %s", measured.c_str(), value, unit);
    if (*peer)
        std::printf(", %s %.2f %s, ratio %.2f", peer, peerValue, unit, value / peerValue);
    if (most)
        std::printf(" (aim: %g %s)", *most, unit);
    if (mostRatio)
        std::printf(" (aim: a ratio of %g)", *mostRatio);
    std::printf("\n");
    if (const auto* path = std::getenv("BENCHMARK_FIGURES"))
        addToTable(*this, path);
}

double median(std::vector<double> values)
{
    std::ranges::sort(values);
    return values[values.size() / 2];
}

} // namespace pobblewig
