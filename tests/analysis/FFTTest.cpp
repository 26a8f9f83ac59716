#include "analysis/FFT.h"

#include <gtest/gtest.h>

#include <climits>
#include <complex>
#include <string>
#include <vector>

#include "tests/analysis/PlainFFT.h"
#include "tests/support/SignalGenerators.h"

using testing::ExitedWithCode;

// What transforms and the other windows give is compared with plain ones in FFTOracleTest.

TEST(PowersOfTwo, AreTwoAndItsDoublesAndNeedTheirLogarithmOfBits) {
    for (const int other : {0, -1, -2, -4, INT_MIN, INT_MAX}) {
        EXPECT_FALSE(IsPowerOfTwo(other)) << other;
    }
    for (int bits = 1; bits <= 30; ++bits) {
        EXPECT_TRUE(IsPowerOfTwo(1 << bits));
        EXPECT_FALSE(IsPowerOfTwo((1 << bits) + 1));
        EXPECT_FALSE(IsPowerOfTwo((1 << bits) - 1));
        EXPECT_EQ(NumberOfBitsNeeded(1 << bits), bits);
    }
}

TEST(PowersOfTwo, OfOtherNumbersTheLowestBitCounts) {
    EXPECT_EQ(NumberOfBitsNeeded(12), 2);
    EXPECT_EQ(NumberOfBitsNeeded(7), 0);
}

TEST(BitReversal, IsThatOfThePlainLoopForEveryEntryOfTheTablesAndBeyondTheirEnd) {
    InitFFT();
    EXPECT_EQ(ReverseBits(5, 0), 0);
    for (int bits = 1; bits <= 18; ++bits) {
        for (int i = 0; i < 1 << bits; i += bits <= 16 ? 1 : 777) {
            ASSERT_EQ(FastReverseBits(i, bits), plain::reversed(i, bits)) << bits << " bits";
            ASSERT_EQ(ReverseBits(i, bits), plain::reversed(i, bits)) << bits << " bits";
        }
    }
}

TEST(FFT, IsTheSumThatDefinesIt) {
    constexpr int size = 64;
    const std::vector<float> realIn = signals::noise(2, 1.0f, size);
    const std::vector<float> imagIn = signals::noise(3, 1.0f, size);
    for (const bool inverse : {false, true}) {
        float real[size];
        float imag[size];
        FFT(size, inverse, realIn.data(), imagIn.data(), real, imag);
        for (std::size_t bin = 0; bin < size; ++bin) {
            std::complex<double> sum;
            for (std::size_t i = 0; i < size; ++i) {
                // Forward turns counterclockwise; only the inverse is divided by the size.
                const double turn = 2.0 * 3.14159265358979323846 * static_cast<double>(bin * i) / size;
                sum += std::complex<double>(realIn[i], imagIn[i]) * std::polar(1.0, inverse ? -turn : turn);
            }
            EXPECT_NEAR(real[bin], sum.real() / (inverse ? size : 1), 1e-5);
            EXPECT_NEAR(imag[bin], sum.imag() / (inverse ? size : 1), 1e-5);
        }
    }
}

using TransformDeathTest = testing::Test;

TEST(TransformDeathTest, SizeThatIsNoPowerOfTwoIsFatal) {
    const float in[64] = {};
    float real[64];
    float imag[64];
    for (const int size : {3, 1, 0, -8}) {
        const std::string said = "^" + std::to_string(size) + " is not a power of two\n$";
        EXPECT_EXIT(FFT(size, false, in, nullptr, real, imag), ExitedWithCode(1), said);
    }
    for (const int size : {24, 2, 0, -8}) {
        const std::string said = "^" + std::to_string(size / 2) + " is not a power of two\n$";
        EXPECT_EXIT(RealFFT(size, in, real, imag), ExitedWithCode(1), said);
        EXPECT_EXIT(PowerSpectrum(size, in, real), ExitedWithCode(1), said);
    }
    EXPECT_EXIT(NumberOfBitsNeeded(1), ExitedWithCode(1), "^Error: FFT called with size 1\n$");
    EXPECT_EXIT(NumberOfBitsNeeded(-3), ExitedWithCode(1), "^Error: FFT called with size -3\n$");
}

TEST(Windows, RectangularAndUnknownOnesChangeNothing) {
    EXPECT_EQ(NumWindowFuncs(), 4);
    const std::vector<float> data = signals::noise(4, 1.0f, 33);
    for (const int which : {0, -1, 4, 100}) {
        std::vector<float> windowed = data;
        WindowFunc(which, 33, windowed.data());
        EXPECT_EQ(windowed, data) << which;
    }
}
