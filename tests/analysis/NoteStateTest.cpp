#include "analysis/NoteState.h"

#include <gtest/gtest.h>

namespace {

const Notes::NoteID c = 0;
const Notes::NoteID d = 1;

}  // namespace

TEST(NoteState, ANoteCountsUpWhileItIsHeldTwiceWhenItIsListedTwiceAndIsReleased) {
    NoteState state;
    EXPECT_FALSE(state.isDown(c));
    EXPECT_EQ(state.downCount(c), 0.0f);
    state.notesDown({c}, 0.0f);
    EXPECT_TRUE(state.isDown(c));
    EXPECT_EQ(state.downCount(c), 0.0f);
    state.notesDown({c, d, d}, 0.02f);
    state.notesDown({c, d}, 0.02f);
    EXPECT_EQ(state.downCount(c), 0.04f);
    EXPECT_EQ(state.downCount(d), 0.06f);
    state.notesDown({d}, 0.02f);
    EXPECT_FALSE(state.isDown(c));
    EXPECT_EQ(state.downCount(c), 0.0f);
    EXPECT_TRUE(state.isDown(d));
}
