#pragma once

#include <filesystem>
#include <functional>
#include <string>
#include <vector>

namespace quillbay {

/// Runs a program to its end and returns the seconds from before its process was made. What it prints is
/// passed over. Throws when it does not end with code 0.
double RunProcess(const std::vector<std::string>& command);

/// Everything written so far is on the disk, so that it does not weigh on what is measured next.
void Settle();

/// The figures of one comparison, in the unit of the measurement.
struct Comparison {
    std::string job;
    std::string peer;
    double atMost; ///< the aim for ours divided by peer's
    std::string unit;
    double ours = 0;
    double theirs = 0;

    double Ratio() const { return ours / theirs; }
};

/// One line of the table and how its two figures are had.
struct Measurement {
    Comparison comparison;
    std::function<double()> ours;
    std::function<double()> theirs;
};

/// Measures both sides `pairs` times, the other one first each time, and keeps the medians.
void MeasurePairs(Comparison& comparison, int pairs, const std::function<double()>& ours,
                  const std::function<double()>& theirs);

/// One Markdown table.
void PrintTable(const std::vector<Comparison>& comparisons);

} // namespace quillbay
