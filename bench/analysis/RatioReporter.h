#pragma once

#include <benchmark/benchmark.h>

#include <map>
#include <string>
#include <vector>

/// Reports the quickest repetition of each benchmark, and what share of each one's time a certain one takes.
/// The quickest, because what makes the others slower is the rest of the machine.
class RatioReporter : public benchmark::BenchmarkReporter {
public:
    /// `subject` is the name of the benchmark that is held against the others.
    explicit RatioReporter(std::string subject);

    bool ReportContext(Context const& context) override;
    void ReportRuns(std::vector<Run> const& runs) override;
    void Finalize() override;

private:
    std::string subject;
    /// Processor seconds of one iteration, by benchmark.
    std::map<std::string, double> quickest;
};
