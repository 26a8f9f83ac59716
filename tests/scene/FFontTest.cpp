#include "scene/FFont.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstddef>
#include <cstdlib>
#include <memory>
#include <new>

#include "tests/support/RecordingFont.h"
#include "tests/support/RecordingGL.h"

namespace {
/// Blocks of the size of a count that are on the heap.
int countsAlive = 0;
}  // namespace

// Each block begins with its size: not every compiler tells it to the operator that frees. A sanitizer's own
// operators would otherwise serve the calls that must not throw.
void* operator new(std::size_t size, const std::nothrow_t& /*unused*/) noexcept {
    auto* const block = static_cast<char*>(std::malloc(alignof(std::max_align_t) + size));
    if (block == nullptr) {
        return nullptr;
    }
    *reinterpret_cast<std::size_t*>(block) = size;
    countsAlive += size == sizeof(int) ? 1 : 0;
    return block + alignof(std::max_align_t);
}
void* operator new(std::size_t size) {
    if (void* const block = operator new(size, std::nothrow)) {
        return block;
    }
    throw std::bad_alloc();
}
void operator delete(void* memory) noexcept {
    if (memory != nullptr) {
        char* const block = static_cast<char*>(memory) - alignof(std::max_align_t);
        countsAlive -= *reinterpret_cast<std::size_t*>(block) == sizeof(int) ? 1 : 0;
        std::free(block);
    }
}
void operator delete(void* memory, std::size_t) noexcept {
    operator delete(memory);
}

using testing::ElementsAre;

namespace {

class FFontTest : public testing::Test {
protected:
    RecordingGL gl;
    RecordingFont recorded;
    int facesBefore = RecordingFont::facesAlive();

    int facesOfThisTest() const { return RecordingFont::facesAlive() - facesBefore; }
};

TEST_F(FFontTest, AHandleWithoutAPathHasNoFaceButACountThatItsCopiesShare) {
    const int before = countsAlive;
    {
        const FFont font(nullptr, 24);
        EXPECT_EQ(facesOfThisTest(), 0);
        EXPECT_EQ(countsAlive, before + 1);
        const FFont copy(font);
        EXPECT_EQ(countsAlive, before + 1);
    }
    EXPECT_EQ(countsAlive, before);
}

TEST_F(FFontTest, LoadsThePathAtTheSizeAndWritesInOpaqueWhiteAtScaleOne) {
    FFont font("some/face.ttf", 17);
    EXPECT_EQ(facesOfThisTest(), 1);
    EXPECT_EQ(RecordingFont::facesMade().back().path, "some/face.ttf");
    EXPECT_EQ(RecordingFont::facesMade().back().size, 17u);
    font.drawString("Hello", 1.5f, -2.5f, 100.0f, 10.0f);
    ASSERT_EQ(recorded.texts().size(), 1u);
    const RecordingFont::Text& text = recorded.texts()[0];
    EXPECT_EQ(text.text, "Hello");
    EXPECT_EQ(text.x, 1.5f);
    EXPECT_EQ(text.y, -2.5f);
    EXPECT_EQ(text.scaleX, 1.0f);
    EXPECT_EQ(text.scaleY, 1.0f);
    EXPECT_EQ(text.boxWidth, 100.0f);
    EXPECT_EQ(text.boxHeight, 10.0f);
    EXPECT_THAT(text.color, ElementsAre(1.0f, 1.0f, 1.0f, 1.0f));
}

TEST_F(FFontTest, GivesBackWhatTheFaceReturnsAndLeavesItsColourTheCurrentOne) {
    FFont font("face.ttf", 24);
    font.setColor(0.25f, 0.5f, 0.75f, 0.125f);
    EXPECT_EQ(font.drawString("abc", 3.0f, 0.0f, -1.0f, -1.0f), RecordingFont::advance("abc"));
    EXPECT_THAT(gl.color(), ElementsAre(0.25f, 0.5f, 0.75f, 0.125f));
}

TEST_F(FFontTest, ACopyStaysDrawableWhenTheFirstHandleIsGone) {
    auto first = std::make_unique<FFont>("face.ttf", 24);
    auto copy = std::make_unique<FFont>(*first);
    first.reset();
    EXPECT_EQ(facesOfThisTest(), 1);
    copy->drawString("still here", 0.0f, 0.0f, -1.0f, -1.0f);
    EXPECT_EQ(recorded.texts().size(), 1u);

    copy.reset();
    EXPECT_EQ(facesOfThisTest(), 0);
}

TEST_F(FFontTest, ACopyTakesOverScaleAndColourAndThenGoesItsOwnWay) {
    FFont first("face.ttf", 24);
    first.setScale(2.0f, 3.0f);
    first.setColor(0.5f, 0.5f, 0.5f, 0.5f);
    FFont constructed(first);
    FFont assigned(nullptr, 0);
    assigned = first;
    first.setScale(9.0f, 9.0f);
    first.setColor(0.0f, 0.0f, 0.0f, 0.0f);

    for (FFont* copy : {&constructed, &assigned}) {
        recorded.forget();
        copy->drawString("x", 0.0f, 0.0f, -1.0f, -1.0f);
        const RecordingFont::Text& text = recorded.texts().at(0);
        EXPECT_EQ(text.scaleX, 2.0f);
        EXPECT_EQ(text.scaleY, 3.0f);
        EXPECT_THAT(text.color, ElementsAre(0.5f, 0.5f, 0.5f, 0.5f));
    }
    EXPECT_EQ(facesOfThisTest(), 1);
}

TEST_F(FFontTest, AssignmentFreesTheFaceThatNobodyElseHoldsAndToItselfChangesNothing) {
    {
        FFont font("one.ttf", 24);
        font = FFont("other.ttf", 24);
        EXPECT_EQ(facesOfThisTest(), 1);
        font.setScale(2.0f, 3.0f);
        const FFont& itself = font;
        font = itself;
        EXPECT_EQ(facesOfThisTest(), 1);
        font.drawString("x", 0.0f, 0.0f, -1.0f, -1.0f);
        EXPECT_EQ(recorded.texts().at(0).scaleY, 3.0f);
    }
    EXPECT_EQ(facesOfThisTest(), 0);
}

}  // namespace
