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
    while (const std::size_t count = renderer.next(block)) {
        all.insert(all.end(), block.begin(), block.begin() + static_cast<std::ptrdiff_t>(count));
    }
    return all;
}

float loudest(const std::vector<float>& sound, double fromSeconds, double toSeconds) {
    float most = 0.0f;
    for (double at = fromSeconds * Renderer::sampleRate; at < toSeconds * Renderer::sampleRate; ++at) {
        most = std::max(most, std::abs(sound.at(static_cast<std::size_t>(at))));
    }
    return most;
}

}  // namespace

TEST(Renderer, SoundsWhereTheNotesAreAndNowhereElseAndAsLoudAsThatManyAtOnceMayBe) {
    const auto sounding = [](const std::vector<PlayedNote>& notes) {
        Renderer renderer(notes, 2.0, *findInstrument("sine"));
        return render(renderer, 4096);
    };
    const std::vector<float> sound = sounding({noteAt(1.25, 0.25), noteAt(0.5, 0.25)});
    EXPECT_EQ(sound.size(), 96000u);
    EXPECT_EQ(loudest(sound, 0.0, 0.5), 0.0f);
    EXPECT_EQ(loudest(sound, 0.8, 1.25), 0.0f);
    EXPECT_GT(loudest(sound, 1.3, 1.5), 0.65f);
    EXPECT_EQ(loudest(sound, 1.55, 2.0), 0.0f);
    for (const float most :
         {loudest(sound, 0.55, 0.75), loudest(sounding(std::vector(3, noteAt(0.0, 1.0))), 0.0, 0.5)}) {
        EXPECT_LE(most, 0.7f);
        EXPECT_GT(most, 0.65f);
    }
    // The size of the blocks changes nothing.
    const std::vector<PlayedNote> notes = {noteAt(0.1, 0.5), noteAt(0.3, 0.1, 660.0), noteAt(0.9, 0.05)};
    Renderer whole(notes, 1.2, *findInstrument("piano"));
    Renderer inPieces(notes, 1.2, *findInstrument("piano"));
    EXPECT_EQ(render(whole, 100000), render(inPieces, 777));
}

TEST(Renderer, TheMetronomeTicksWhenSlotsOpenStrongerAtTheBarLines) {
    Renderer renderer({}, 4.5, *findInstrument("sine"));
    renderer.addMetronome();
    const std::vector<float> sound = render(renderer, 4096);
    EXPECT_EQ(loudest(sound, 0.0, 0.25), 0.0f);
    for (int slot = -3; slot < 5; ++slot) {
        const double opening = 1.75 + 0.5 * slot;
        const float level = loudest(sound, opening, opening + 0.04);
        if (slot % 4 == 0) {
            EXPECT_GT(level, 0.1f);
        } else {
            EXPECT_GT(level, 0.03f);
            EXPECT_LT(level, 0.09f);
        }
        EXPECT_EQ(loudest(sound, opening + 0.05, opening + 0.49), 0.0f);
    }
}
