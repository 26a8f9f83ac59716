#include "analysis/NoteState.h"

#include <gtest/gtest.h>

#include <array>
#include <random>
#include <vector>

namespace {

Notes::NoteID const c = 0;
Notes::NoteID const d = 1;
Notes::NoteID const a = 5;

}  // namespace

TEST(NoteState, NothingIsDownAtFirst) {
    NoteState const state;
    EXPECT_FALSE(state.isDown(c));
    EXPECT_EQ(state.downCount(c), 0.0f);
}

TEST(NoteState, HeldNoteCountsUp) {
    NoteState state;
    state.notesDown({c}, 0.02f);
    EXPECT_EQ(state.downCount(c), 0.02f);
    state.notesDown({c}, 0.02f);
    EXPECT_TRUE(state.isDown(c));
    EXPECT_EQ(state.downCount(c), 0.04f);
}

TEST(NoteState, NoteThatIsNotHeardAnyMoreIsReleased) {
    NoteState state;
    state.notesDown({c}, 0.02f);
    state.notesDown({c}, 0.02f);
    state.notesDown({d}, 0.02f);
    EXPECT_FALSE(state.isDown(c));
    EXPECT_EQ(state.downCount(c), 0.0f);
    EXPECT_TRUE(state.isDown(d));
    EXPECT_EQ(state.downCount(d), 0.02f);
}

TEST(NoteState, NoteListedTwiceGainsTwice) {
    NoteState state;
    state.notesDown({a, a}, 0.1f);
    EXPECT_EQ(state.downCount(a), 0.2f);
}

TEST(NoteState, EmptyListReleasesEveryNote) {
    NoteState state;
    state.notesDown({c, d, a}, 0.1f);
    state.notesDown({}, 0.1f);
    for (Notes::NoteID const& note : {c, d, a}) {
        EXPECT_FALSE(state.isDown(note));
        EXPECT_EQ(state.downCount(note), 0.0f);
    }
}

TEST(NoteState, NotePressedAgainStartsFromOneStep) {
    NoteState state;
    state.notesDown({c}, 0.5f);
    state.notesDown({}, 0.5f);
    state.notesDown({c}, 0.02f);
    EXPECT_EQ(state.downCount(c), 0.02f);
}

TEST(NoteState, NoteWithoutTimeIsDownAllTheSame) {
    NoteState state;
    state.notesDown({c}, 0.0f);
    EXPECT_TRUE(state.isDown(c));
    EXPECT_EQ(state.downCount(c), 0.0f);
}

TEST(NoteState, AgreesWithSevenStopwatches) {
    std::mt19937 random(3);
    for (int round = 0; round < 100; ++round) {
        NoteState state;
        std::array<float, 7> held{};
        std::array<bool, 7> down{};
        for (int step = 0; step < 100; ++step) {
            float const dtSeconds = static_cast<float>(random() % 64) / 256.0f;
            std::vector<Notes::NoteID> heard;
            std::array<int, 7> times{};
            for (unsigned i = static_cast<unsigned>(random() % 9); i > 0; --i) {
                heard.emplace_back(static_cast<int>(random() % 7));
                ++times[static_cast<std::size_t>(heard.back())];
            }
            for (std::size_t note = 0; note < held.size(); ++note) {
                down[note] = times[note] > 0;
                held[note] = down[note] ? held[note] + static_cast<float>(times[note]) * dtSeconds : 0.0f;
            }
            state.notesDown(heard, dtSeconds);
            for (int note = 0; note < 7; ++note) {
                ASSERT_EQ(state.isDown(note), down[static_cast<std::size_t>(note)]);
                ASSERT_EQ(state.downCount(note), held[static_cast<std::size_t>(note)]);
            }
        }
    }
}
