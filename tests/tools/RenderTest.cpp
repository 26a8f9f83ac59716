#include "tools/zanto-song/Render.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <vector>

namespace {

PlayedNote noteAt(double startSeconds, double soundingSeconds, double frequencyHz = 523.25) {
    return {0, frequencyHz, startSeconds, soundingSeconds};
}

std::vector<float> render(Renderer& renderer, std::size_t blockSize) {
    std::vector<float> all;
    std::vector<float> block(blockSize);
    while (std::size_t const count = renderer.next(block)) {
        all.insert(all.end(), block.begin(), block.begin() + static_cast<std::ptrdiff_t>(count));
    }
    return all;
}

float loudest(std::vector<float> const& sound, double fromSeconds, double toSeconds) {
    float most = 0.0f;
    for (double at = fromSeconds * Renderer::sampleRate; at < toSeconds * Renderer::sampleRate; ++at) {
        most = std::max(most, std::abs(sound.at(static_cast<std::size_t>(at))));
    }
    return most;
}

}  // namespace

TEST(Renderer, lastsAsLongAsItIsTold) {
    Renderer renderer({noteAt(0.2, 0.2)}, 1.5, *findInstrument("sine"));
    EXPECT_EQ(render(renderer, 1000).size(), 72000u);
}

TEST(Renderer, soundsWhereTheNotesAreAndNowhereElse) {
    Renderer renderer({noteAt(0.5, 0.25), noteAt(1.25, 0.25)}, 2.0, *findInstrument("sine"));
    std::vector<float> const sound = render(renderer, 4096);
    EXPECT_EQ(loudest(sound, 0.0, 0.5), 0.0f);
    EXPECT_GT(loudest(sound, 0.55, 0.75), 0.6f);
    EXPECT_EQ(loudest(sound, 0.8, 1.25), 0.0f);
    EXPECT_GT(loudest(sound, 1.3, 1.5), 0.6f);
    EXPECT_EQ(loudest(sound, 1.55, 2.0), 0.0f);
}

TEST(Renderer, theSizeOfTheBlocksChangesNothing) {
    std::vector<PlayedNote> const notes = {noteAt(0.1, 0.5), noteAt(0.3, 0.1, 660.0), noteAt(0.9, 0.05)};
    Renderer whole(notes, 1.2, *findInstrument("piano"));
    Renderer inPieces(notes, 1.2, *findInstrument("piano"));
    EXPECT_EQ(render(whole, 100000), render(inPieces, 777));
}

TEST(Renderer, chordsStayBelowFullScale) {
    Renderer renderer({noteAt(0.0, 1.0), noteAt(0.0, 1.0), noteAt(0.0, 1.0)}, 1.2, *findInstrument("sine"));
    float const most = loudest(render(renderer, 4096), 0.0, 1.2);
    EXPECT_LE(most, 0.7f);
    EXPECT_GT(most, 0.65f);
}

TEST(Renderer, notesOneAfterTheOtherAreAsLoudAsOneAlone) {
    Renderer renderer({noteAt(0.5, 0.3), noteAt(0.0, 0.3)}, 1.0, *findInstrument("sine"));
    EXPECT_GT(loudest(render(renderer, 4096), 0.0, 0.5), 0.65f);
}

TEST(Renderer, theMetronomeTicksWhenSlotsOpenStrongerAtTheBarLines) {
    Renderer renderer({}, 4.5, *findInstrument("sine"));
    renderer.addMetronome();
    std::vector<float> const sound = render(renderer, 4096);
    EXPECT_EQ(loudest(sound, 0.0, 0.25), 0.0f);
    for (int slot = -3; slot < 5; ++slot) {
        double const opening = 1.75 + 0.5 * slot;
        float const level = loudest(sound, opening, opening + 0.04);
        if (slot % 4 == 0) {
            EXPECT_GT(level, 0.1f);
        } else {
            EXPECT_GT(level, 0.03f);
            EXPECT_LT(level, 0.09f);
        }
        EXPECT_EQ(loudest(sound, opening + 0.05, opening + 0.49), 0.0f);
    }
}

TEST(Renderer, withoutNotesThereIsSilence) {
    Renderer renderer({}, 0.5, *findInstrument("flute"));
    EXPECT_EQ(loudest(render(renderer, 4096), 0.0, 0.5), 0.0f);
}
