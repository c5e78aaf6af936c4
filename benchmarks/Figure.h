#pragma once

#include <optional>
#include <string>
#include <vector>

namespace pobblewig {

/// Something that was measured, of which less is better.
struct Figure {
    std::string measured;
    double value = 0;
    const char* unit = "ms";
    /// What was measured beside it in the same run, in the same unit.
    const char* peer = "";
    double peerValue = 0;
    /// How much the value, or its ratio to the peer's, may be.
    std::optional<double> most = std::nullopt;
    std::optional<double> mostRatio = std::nullopt;

    /// Prints it, and hands it to the table in which all benchmarks end.
    void report() const;
};

/// The middle one; there has to be one.
double median(std::vector<double> values);

} // namespace pobblewig
