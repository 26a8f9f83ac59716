#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "tools/zanto-song/Take.h"

/// A take with the names of its files, for a report.
struct NamedTake {
    std::string recording;
    Take take;
};

std::size_t awardedIn(const Take& take);

/// "300 points, 3 of 4 notes awarded, 1 penalty".
std::string summaryOf(const Take& take);

/// For people: the score, a line for each note, a line for each penalty. Several takes one after the other,
/// with all scores at the end.
std::string textReport(const std::string& song, const std::vector<NamedTake>& takes);

/// For programs; times in seconds of the recording, levels in dB.
std::string jsonReport(const std::string& song, const std::vector<NamedTake>& takes);

/// For spreadsheets: a heading, then one row for each note and each penalty.
std::string csvReport(const std::string& song, const std::vector<NamedTake>& takes);
