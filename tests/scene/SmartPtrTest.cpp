#include "scene/SmartPtr.h"

#include <gtest/gtest.h>

namespace {

struct Counted {
    static int alive;
    Counted() { ++alive; }
    ~Counted() { --alive; }
    Counted(const Counted&) = delete;
    Counted& operator=(const Counted&) = delete;

    int value = 7;
};
int Counted::alive = 0;

TEST(SmartPtr, AnObjectLivesUntilEveryShareIsReleasedAndAssignmentToItselfIsNone) {
    {
        SmartPtr<Counted> pointer(new Counted);
        const SmartPtr<Counted>& itself = pointer;
        pointer = itself;
        pointer.incRefCnt();
        pointer.decRefCnt();
        EXPECT_EQ(Counted::alive, 1);
        EXPECT_EQ(pointer->value, 7);
    }
    EXPECT_EQ(Counted::alive, 0);
}

TEST(SmartPtr, AfterTheLastReleaseItIsEmptyAndFurtherCallsDoNothing) {
    SmartPtr<Counted> pointer(new Counted);
    pointer.decRefCnt();
    EXPECT_EQ(pointer.operator->(), nullptr);
    pointer.incRefCnt();
    pointer.decRefCnt();
    pointer.decRefCnt();
    EXPECT_EQ(Counted::alive, 0);
}

/// An object that lets go of its holder a second time while the holder destroys it.
struct Ungrateful {
    SmartPtr<Ungrateful>* holder = nullptr;
    ~Ungrateful() { holder->decRefCnt(); }
};

TEST(SmartPtrDeathTest, ACountBelowZeroEndsTheProcessWithStatusOneAndNoMessage) {
    EXPECT_EXIT(
        {
            SmartPtr<Ungrateful> pointer(new Ungrateful);
            pointer->holder = &pointer;
            pointer.decRefCnt();
        },
        testing::ExitedWithCode(1), "^$");
}

}  // namespace
