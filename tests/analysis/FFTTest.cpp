#include "analysis/FFT.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <climits>
#include <string>
#include <vector>

#include "tests/support/SignalGenerators.h"

using testing::Each;
using testing::ElementsAre;
using testing::ExitedWithCode;
using testing::FloatNear;
using testing::Le;

namespace {

std::vector<float> windowed(int which, std::vector<float> data) {
    WindowFunc(which, static_cast<int>(data.size()), data.data());
    return data;
}

std::vector<float> ones(std::size_t count) {
    return std::vector<float>(count, 1.0f);
}

std::vector<float> powers(const std::vector<float>& in) {
    std::vector<float> out(in.size() / 2, -99.0f);
    PowerSpectrum(static_cast<int>(in.size()), in.data(), out.data());
    return out;
}

/// Calls each transform with 64 samples in every array, whatever size it is told.
struct Misuse {
    std::vector<float> in = ones(64);
    std::vector<float> real = ones(64);
    std::vector<float> imag = ones(64);

    void complex(int size) { FFT(size, false, in.data(), nullptr, real.data(), imag.data()); }
    void ofReal(int size) { RealFFT(size, in.data(), real.data(), imag.data()); }
    void power(int size) { PowerSpectrum(size, in.data(), real.data()); }
};

}  // namespace

TEST(PowersOfTwo, AreTwoAndItsDoubles) {
    EXPECT_FALSE(IsPowerOfTwo(1));
    EXPECT_TRUE(IsPowerOfTwo(2));
    EXPECT_FALSE(IsPowerOfTwo(0));
    for (const int negative : {-1, -2, -4, INT_MIN}) {
        EXPECT_FALSE(IsPowerOfTwo(negative)) << negative;
    }
    for (int power = 2; power < 1 << 30; power *= 2) {
        EXPECT_TRUE(IsPowerOfTwo(power));
        EXPECT_FALSE(IsPowerOfTwo(power + 1));
        EXPECT_EQ(IsPowerOfTwo(power - 1), false) << power - 1;
    }
    EXPECT_TRUE(IsPowerOfTwo(1 << 30));
    EXPECT_FALSE(IsPowerOfTwo(INT_MAX));
}

TEST(PowersOfTwo, NeedAsManyBitsAsTheirLogarithm) {
    EXPECT_EQ(NumberOfBitsNeeded(2), 1);
    EXPECT_EQ(NumberOfBitsNeeded(4096), 12);
    EXPECT_EQ(NumberOfBitsNeeded(1 << 30), 30);
    EXPECT_EQ(NumberOfBitsNeeded(12), 2);
    EXPECT_EQ(NumberOfBitsNeeded(7), 0);
}

TEST(BitReversal, ReversesTheLowestBits) {
    EXPECT_EQ(ReverseBits(1, 3), 4);
    EXPECT_EQ(ReverseBits(6, 3), 3);
    EXPECT_EQ(ReverseBits(0, 5), 0);
    EXPECT_EQ(ReverseBits(5, 0), 0);
    EXPECT_EQ(ReverseBits(1, 20), 1 << 19);
}

TEST(BitReversal, TableAgreesWithTheLoopForEveryEntryAndBeyondItsEnd) {
    InitFFT();
    for (int bits = 1; bits <= 18; ++bits) {
        for (int i = 0; i < 1 << bits; i += bits <= 16 ? 1 : 777) {
            ASSERT_EQ(FastReverseBits(i, bits), ReverseBits(i, bits)) << bits << " bits";
        }
    }
}

TEST(FFT, ForwardTurnsCounterclockwiseAndLeavesTheScaleAlone) {
    // exp(-2 pi i j / 4) for j = 0 to 3: all of it in bin 1.
    const std::vector<float> realIn{1, 0, -1, 0};
    const std::vector<float> imagIn{0, -1, 0, 1};
    std::vector<float> real(4);
    std::vector<float> imag(4);
    FFT(4, false, realIn.data(), imagIn.data(), real.data(), imag.data());
    EXPECT_THAT(real, ElementsAre(FloatNear(0, 1e-15f), 4, FloatNear(0, 1e-15f), FloatNear(0, 1e-15f)));
    EXPECT_THAT(imag, Each(FloatNear(0, 1e-15f)));
}

TEST(FFT, InverseUndoesForward) {
    for (int size = 2; size <= 65536; size *= 2) {
        const auto count = static_cast<std::size_t>(size);
        const std::vector<float> realIn = signals::noise(2, 1.0f, count);
        const std::vector<float> imagIn = signals::noise(3, 1.0f, count);
        std::vector<float> real(count);
        std::vector<float> imag(count);
        FFT(size, false, realIn.data(), imagIn.data(), real.data(), imag.data());
        std::vector<float> realBack(count);
        std::vector<float> imagBack(count);
        FFT(size, true, real.data(), imag.data(), realBack.data(), imagBack.data());
        for (std::size_t i = 0; i < count; ++i) {
            ASSERT_NEAR(realBack[i], realIn[i], 1e-6f) << size << " samples";
            ASSERT_NEAR(imagBack[i], imagIn[i], 1e-6f) << size << " samples";
        }
    }
}

TEST(RealFFT, PacksTheLastBinBehindTheFirst) {
    // 3 of the first bin, 2 of the last one.
    const std::vector<float> in{5, 1, 5, 1, 5, 1, 5, 1};
    std::vector<float> real(4);
    std::vector<float> imag(4);
    RealFFT(8, in.data(), real.data(), imag.data());
    EXPECT_THAT(real, ElementsAre(24, 0, 0, 0));
    EXPECT_THAT(imag, ElementsAre(16, 0, 0, 0));
}

TEST(PowerSpectrum, OfAConstantIsAllInTheFirstBin) {
    for (std::size_t count = 4; count <= 4096; count *= 2) {
        const std::vector<float> out = powers(ones(count));
        const auto all = static_cast<float>(count * count);
        EXPECT_EQ(out[0], all);
        // 280 dB below it: the recurrence's cosine of a quarter turn is not quite zero.
        EXPECT_THAT(std::vector<float>(out.begin() + 1, out.end()), Each(Le(1e-28f * all)));
    }
}

TEST(PowerSpectrum, FourSamplesAreTheFewest) {
    EXPECT_THAT(powers({1, 2, 3, 4}), ElementsAre(10 * 10 + 2 * 2, 2 * 2 + 2 * 2));
}

using TransformDeathTest = testing::Test;

TEST(TransformDeathTest, SizeThatIsNoPowerOfTwoIsFatal) {
    Misuse misuse;
    for (const int size : {3, 1, 0, -8}) {
        const std::string said = "^" + std::to_string(size) + " is not a power of two\n$";
        EXPECT_EXIT(misuse.complex(size), ExitedWithCode(1), said);
    }
    for (const int size : {24, 2, 0, -8}) {
        const std::string said = "^" + std::to_string(size / 2) + " is not a power of two\n$";
        EXPECT_EXIT(misuse.ofReal(size), ExitedWithCode(1), said);
        EXPECT_EXIT(misuse.power(size), ExitedWithCode(1), said);
    }
    EXPECT_EXIT(NumberOfBitsNeeded(1), ExitedWithCode(1), "^Error: FFT called with size 1\n$");
    EXPECT_EXIT(NumberOfBitsNeeded(-3), ExitedWithCode(1), "^Error: FFT called with size -3\n$");
}

TEST(Windows, RectangularAndUnknownOnesChangeNothing) {
    EXPECT_EQ(NumWindowFuncs(), 4);
    const std::vector<float> data = signals::noise(4, 1.0f, 33);
    for (const int which : {0, -1, 4, 100}) {
        EXPECT_EQ(windowed(which, data), data) << which;
    }
}

TEST(Windows, TriangularRisesToTheMiddleAndFallsAndLeavesTheLastOfAnOddNumberAlone) {
    EXPECT_THAT(windowed(1, ones(8)), ElementsAre(0, 0.25f, 0.5f, 0.75f, 1, 0.75f, 0.5f, 0.25f));
    EXPECT_THAT(windowed(1, ones(5)), ElementsAre(0, 0.5f, 1, 0.5f, 1));
}

TEST(Windows, HammingIsEightHundredthsAtBothEndsAndOneInTheMiddle) {
    for (const std::size_t count : {3u, 5u, 101u, 4097u}) {
        const std::vector<float> window = windowed(2, ones(count));
        EXPECT_FLOAT_EQ(window.front(), 0.08f);
        EXPECT_FLOAT_EQ(window.back(), 0.08f);
        EXPECT_FLOAT_EQ(window[count / 2], 1.0f);
    }
}

TEST(Windows, AnswerForTheirOwnLengthWhateverTheLengthBefore) {
    const std::vector<float> first = windowed(2, ones(64));
    const std::vector<float> other = windowed(2, ones(128));
    EXPECT_NE(other[1], first[1]);
    EXPECT_EQ(windowed(2, ones(64)), first);
    EXPECT_NE(windowed(3, ones(64)), first);
    EXPECT_EQ(windowed(2, ones(64)), first);
}
