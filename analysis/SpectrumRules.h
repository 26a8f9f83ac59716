#pragma once

/// The numbers of the note estimation: what it looks at in a spectrum, and which of that counts.
namespace rules {

constexpr int sampleRateHz = 48000;

constexpr int windowSamples = 4096;                   ///< the length of the transform
constexpr int copiedSamples = windowSamples * 3 / 2;  ///< the plain ear analyses the oldest of them
constexpr int binCount = windowSamples / 2;
constexpr double binWidthHz = static_cast<double>(sampleRateHz) / windowSamples;  ///< 11.71875

constexpr int lowestPeakBin = 10;             ///< 117.1875 Hz
constexpr int highestPeakBin = binCount - 2;  ///< a peak has a neighbour on both sides
constexpr double lastPeakHz = 1000.0;         ///< the first peak above this is the last one looked at
constexpr int lastNoteBin = static_cast<int>(lastPeakHz / binWidthHz) + 1;  ///< 1007.8 Hz, the first above

constexpr float usualMinDecibel = -65.0f;  ///< dB; a peak must be louder
constexpr float levelOriginDb = -100.0f;   ///< the strength of a peak is its level above this
constexpr double strongShare = 0.95;       ///< of the loudest peak's strength; a peak that counts has more

constexpr float toleranceHz = 5.0f;  ///< a table entry must be nearer to a peak

}  // namespace rules
