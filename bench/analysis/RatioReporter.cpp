#include "bench/analysis/RatioReporter.h"

#include <algorithm>
#include <iomanip>
#include <utility>

RatioReporter::RatioReporter(std::string subjectName) : subject(std::move(subjectName)) {
}

bool RatioReporter::ReportContext(Context const& context) {
    PrintBasicContext(&GetErrorStream(), context);
    return true;
}

void RatioReporter::ReportRuns(std::vector<Run> const& runs) {
    for (Run const& run : runs) {
        if (run.run_type == Run::RT_Iteration && !run.error_occurred) {
            double const seconds = run.cpu_accumulated_time / static_cast<double>(run.iterations);
            auto const [entry, isFirst] = quickest.emplace(run.run_name.function_name, seconds);
            entry->second = std::min(entry->second, seconds);
        }
    }
}

void RatioReporter::Finalize() {
    for (auto const& [name, seconds] : quickest) {
        GetOutputStream() << std::left << std::setw(12) << name << std::right << std::fixed
                          << std::setprecision(1) << std::setw(8) << seconds * 1e6 << " us";
        if (auto const own = quickest.find(subject); own != quickest.end()) {
            GetOutputStream() << "; " << subject << " takes " << std::setprecision(2) << own->second / seconds
                              << " of that";
        }
        GetOutputStream() << "\n";
    }
}
