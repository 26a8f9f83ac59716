#pragma once

#include <benchmark/benchmark.h>

#include <map>
#include <string>
#include <utility>
#include <vector>

/// Reports the quickest repetition of each benchmark in processor time, and what certain ones take of others.
/// The quickest, because what makes the others slower is the rest of the machine.
class RatioReporter : public benchmark::BenchmarkReporter {
public:
    /// Names of benchmarks: what is measured, and its peer.
    using Ratios = std::vector<std::pair<std::string, std::string>>;

    explicit RatioReporter(Ratios ratios);

    bool ReportContext(const Context& context) override;
    void ReportRuns(const std::vector<Run>& runs) override;
    void Finalize() override;

private:
    Ratios ratios;
    std::vector<std::string> names;  ///< in the order in which they ran first
    /// Processor seconds of one iteration, by benchmark.
    std::map<std::string, double> quickest;
};

/// Runs what the command line asks for and prints the report. What the program under measurement writes on
/// standard output meanwhile goes nowhere. The result is an exit status.
int runBenchmarks(int argc, char** argv, const RatioReporter::Ratios& ratios);
