#include "analysis/PartialRows.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <bitset>
#include <cmath>
#include <random>
#include <tuple>
#include <vector>

#include "analysis/SpectrumRules.h"

using testing::ContainerEq;

namespace {

constexpr double thresholdDb = -65.0;
constexpr double silenceDb = -150.0;

struct Top {
    double hz;
    double levelDb;
};

/// Silence with a parabola around each top, as wide as the main lobe of the analysis window.
std::vector<double> spectrum(const std::vector<Top>& tops) {
    constexpr double dbPerLine = 6.0;  // one line beside the top
    std::vector<double> levels(SpectrumPeaks::lineCount, silenceDb);
    for (const Top& top : tops) {
        for (std::size_t line = 0; line < levels.size(); ++line) {
            const double away = static_cast<double>(line) - top.hz / rules::binWidthHz;
            if (std::abs(away) < 2.0) {
                levels[line] = std::max(levels[line], top.levelDb - dbPerLine * away * away);
            }
        }
    }
    return levels;
}

using Found = std::vector<std::tuple<double, double, double, double>>;

Found notesIn(PartialRows& rows, const std::vector<double>& levels) {
    rows.find(levels, thresholdDb, std::bitset<12>());
    Found found;
    for (const PartialRows::Note& note : rows) {
        found.emplace_back(note.hz, note.score, note.pitch, note.power);
    }
    return found;
}

TEST(PartialRowsTest, PeakLiesAtTheTopOfTheParabolaThroughThreeLines) {
    PartialRows rows(440.0);
    for (double hz = 600.0; hz < 700.0; hz += 1.7) {
        const Found found = notesIn(rows, spectrum({{hz, -20.0}}));
        ASSERT_EQ(found.size(), 1u) << hz;
        EXPECT_NEAR(std::get<0>(found[0]), hz, 1e-6);
        EXPECT_NEAR(std::get<3>(found[0]), 0.01, 1e-8);
    }
}

TEST(PartialRowsTest, FundamentalIsTheMeanOverItsPartials) {
    // The second partial is 2 Hz sharp; both are equally strong and it counts by its number.
    PartialRows rows(440.0);
    const Found found = notesIn(rows, spectrum({{600.0, -20.0}, {1202.0, -20.0}}));
    ASSERT_EQ(found.size(), 1u);
    EXPECT_NEAR(std::get<0>(found[0]), (600.0 + 2.0 * 1202.0) / 5.0, 1e-6);
}

TEST(PartialRowsTest, NotesDoNotDependOnTheSpectraBefore) {
    std::mt19937 random(7);
    const auto below = [&](double end) { return end * static_cast<double>(random() >> 1) / 2147483648.0; };
    PartialRows used(440.0);
    std::size_t withNotes = 0;
    for (int i = 0; i < 300; ++i) {
        std::vector<Top> tops(random() % 12);
        for (Top& top : tops) {
            top = {70.0 + below(2000.0), -60.0 + below(55.0)};
        }
        const std::vector<double> levels = spectrum(tops);
        PartialRows fresh(440.0);
        const Found expected = notesIn(fresh, levels);
        ASSERT_THAT(notesIn(used, levels), ContainerEq(expected)) << i;
        withNotes += expected.empty() ? 0 : 1;
    }
    EXPECT_GT(withNotes, 200u);
}

}  // namespace
