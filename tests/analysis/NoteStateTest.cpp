#include "analysis/NoteState.h"

#include <gtest/gtest.h>

namespace {

const Notes::NoteID c = 0;
const Notes::NoteID d = 1;
const Notes::NoteID a = 5;

}  // namespace

TEST(NoteState, NothingIsDownAtFirst) {
    const NoteState state;
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

TEST(NoteState, NoteWithoutTimeIsDownAllTheSame) {
    NoteState state;
    state.notesDown({c}, 0.0f);
    EXPECT_TRUE(state.isDown(c));
    EXPECT_EQ(state.downCount(c), 0.0f);
}
