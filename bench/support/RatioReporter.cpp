#include "bench/support/RatioReporter.h"

#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <iomanip>
#include <sstream>

RatioReporter::RatioReporter(Ratios wanted) : ratios(std::move(wanted)) {
}

bool RatioReporter::ReportContext(const Context& context) {
    PrintBasicContext(&GetErrorStream(), context);
    return true;
}

void RatioReporter::ReportRuns(const std::vector<Run>& runs) {
    for (const Run& run : runs) {
        if (run.run_type == Run::RT_Iteration && !run.error_occurred) {
            const double seconds = run.cpu_accumulated_time / static_cast<double>(run.iterations);
            const auto [entry, isFirst] = quickest.emplace(run.run_name.function_name, seconds);
            entry->second = std::min(entry->second, seconds);
            if (isFirst) {
                names.push_back(run.run_name.function_name);
            }
        }
    }
}

void RatioReporter::Finalize() {
    std::ostream& out = GetOutputStream();
    out << std::fixed;
    std::sort(names.begin(), names.end());
    for (const std::string& name : names) {
        out << std::left << std::setw(28) << name << std::right << std::setprecision(2) << std::setw(12)
            << quickest.at(name) * 1e6 << " us\n";
    }
    for (const auto& [name, peer] : ratios) {
        if (quickest.count(name) != 0 && quickest.count(peer) != 0) {
            out << name << " takes " << std::setprecision(2) << quickest.at(name) / quickest.at(peer)
                << " of " << peer << "\n";
        }
    }
}

int runBenchmarks(int argc, char** argv, const RatioReporter::Ratios& ratios) {
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) {
        return EXIT_FAILURE;
    }
    const int console = dup(STDOUT_FILENO);
    if (console < 0 || std::freopen("/dev/null", "w", stdout) == nullptr) {
        std::perror(argv[0]);
        return EXIT_FAILURE;
    }
    std::ostringstream report;
    RatioReporter reporter(ratios);
    reporter.SetOutputStream(&report);
    benchmark::RunSpecifiedBenchmarks(&reporter);
    std::FILE* const out = fdopen(console, "w");
    std::fputs(report.str().c_str(), out);
    std::fclose(out);
    return EXIT_SUCCESS;
}
