#include "tools/zanto-song/TakeReport.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <limits>
#include <regex>
#include <string>

namespace {

// One note of each outcome and one penalty of each cause.
Take variedTake() {
    using Outcome = TakenNote::Outcome;
    using Cause = TakenPenalty::Cause;
    const double silent = -std::numeric_limits<double>::infinity();
    Take take{};
    take.score = 240.0;
    take.minDecibel = -65.0;
    take.notes = {
        {0, 0, 1, Outcome::awarded, 1.75, 1.8, 0.24, 0.225, 2.03, 100.0, {}, -10.0},
        {1, 4, 2, Outcome::awarded, 2.25, 2.3, 0.71, 0.7, 3.0, 200.0, {}, -10.0},
        {3, 2, 1, Outcome::tooShort, 3.25, 3.4, 0.1, 0.225, 0.0, 0.0, {}, -12.0},
        {4, 2, 1, Outcome::otherNotes, 3.75, std::nullopt, 0.0, 0.225, 0.0, 0.0, {0, 1, 5}, -12.0},
        {5, 2, 1, Outcome::noNote, 4.25, std::nullopt, 0.0, 0.225, 0.0, 0.0, {}, -30.0},
        {6, 2, 1, Outcome::tooSoft, 4.75, std::nullopt, 0.0, 0.225, 0.0, 0.0, {}, -72.26},
        {7, 2, 1, Outcome::tooSoft, 5.25, std::nullopt, 0.0, 0.225, 0.0, 0.0, {}, silent},
        {8, 2, 1, Outcome::recordingOver, 5.75, std::nullopt, 0.0, 0.225, 0.0, 0.0, {}, silent},
    };
    take.penalties = {
        {3, 4, Cause::heldOver, 1, 3.36, 1.02, -20.0, {386.72, 773.44}},
        {4, 0, Cause::early, 5, 4.0, 0.36, -20.0, {}},
        {5, 1, Cause::notAskedFor, 0, 4.5, 0.36, -20.0, {585.94}},
    };
    return take;
}

}  // namespace

TEST(TakeReport, TextForPeople) {
    EXPECT_EQ(
        textReport("song.txt", {{"take.wav", variedTake()}}),
        "take.wav plays song.txt: 240 points, 2 of 8 notes awarded, 3 penalties\n"
        "\n"
        " slot  note      due   heard    held  needed  points\n"
        "    0  C        1.75    1.80   0.240   0.225     100\n"
        "    1  G2       2.25    2.30   0.710   0.700     200\n"
        "    3  E        3.25    3.40   0.100   0.225       -  not held long enough\n"
        "    4  E        3.75       -       -   0.225       -  not heard; heard C, D and A\n"
        "    5  E        4.25       -       -   0.225       -  not heard; a sound of -30.0 dB was taken for "
        "no note\n"
        "    6  E        4.75       -       -   0.225       -  not heard; no louder than -72.3 dB, -65.0 dB "
        "are needed\n"
        "    7  E        5.25       -       -   0.225       -  not heard; silent, -65.0 dB are needed\n"
        "    8  E        5.75       -       -   0.225       -  the recording is over\n"
        "\n"
        " slot  note       at    held  points\n"
        "    3  G        3.36   1.020     -20  still sounding from slot 1, heard at 387, 773 Hz\n"
        "    4  C        4.00   0.360     -20  too early for slot 5\n"
        "    5  D        4.50   0.360     -20  nothing asks for it, heard at 586 Hz\n");
}

TEST(TakeReport, CsvForSpreadsheets) {
    const std::string csv = csvReport("my, song", {{"a \"b\".wav", variedTake()}});
    for (const char* const row :
         {"song,recording,kind,slot,note,length,due,heard,held,needed,points,reason\n",
          "\n\"my, song\",\"a \"\"b\"\".wav\",note,1,G,2,2.250,2.300,0.710,0.700,200,awarded\n",
          "note,3,E,1,3.250,3.400,0.100,0.225,0,too-short\n", "0.225,0,other-notes\n", "0.225,0,no-note\n",
          "note,6,E,1,4.750,,0.000,0.225,0,too-soft\n", "0.225,0,recording-over\n",
          "penalty,3,G,,,3.360,1.020,,-20,held-over\n", "-20,early\n", "-20,not-asked-for\n"}) {
        EXPECT_THAT(csv, testing::HasSubstr(row));
    }
    EXPECT_EQ(std::count(csv.begin(), csv.end(), '\n'), 12);
}

TEST(TakeReport, JsonForPrograms) {
    Take take = variedTake();
    take.notes = {take.notes[7]};
    take.penalties = {take.penalties[0]};
    const std::string json = jsonReport("song.txt", {{"take.wav", take}});
    EXPECT_EQ(
        std::regex_replace(json, std::regex("\n *"), ""),
        R"({"song": "song.txt","takes": [{"recording": "take.wav","score": 240,"awarded": 0,)"
        R"("min_decibel": -65.0,"notes": [{"slot": 8,"note": "E","length": 1,"due": 5.750,"heard": null,)"
        R"("held": 0.000,"needed": 0.225,"loudest": null,"others": [],"awarded": null,"points": 0,)"
        R"("reason": "recording-over"}],"penalties": [{"slot": 3,"note": "G","at": 3.360,"held": 1.020,)"
        R"("points": -20,"cause": "held-over","cause_slot": 1,"peaks": [386.7,773.4]}]}]})");
}
