#include <gtest/gtest.h>

#include <atomic>
#include <boost/shared_ptr.hpp>
#include <thread>
#include <vector>

#include "analysis/NoteEstimation.h"
#include "audio/RingBuffer.h"
#include "tests/support/SignalGenerators.h"
#include "tests/support/TemporaryFolder.h"

namespace {

constexpr int blockLength = 1024;
constexpr int blocksKept = 20;
constexpr int e = 2;
constexpr int g = 4;

std::vector<float> sine(double frequencyHz) {
    return signals::tones({{frequencyHz, 0.25}}, blocksKept * blockLength);
}

class NoteEstimationThreads : public testing::Test {
protected:
    NoteEstimationThreads() {
        folder.write("notes.txt", "E 1 468.75\nG 1 703.125\n");
        testing::internal::CaptureStdout();
    }
    ~NoteEstimationThreads() override { testing::internal::GetCapturedStdout(); }

    TemporaryFolder folder;
};

}  // namespace

TEST_F(NoteEstimationThreads, TornReadDisturbsOneAnalysisOnly) {
    NoteEstimation disturbed;
    NoteEstimation undisturbed;

    // In the middle of the analysed block the samples of another time have got in.
    std::vector<float> const whole = sine(468.75);
    std::vector<float> torn = whole;
    std::vector<float> const other = sine(703.125);
    std::copy_n(other.end() - 4096, blockLength / 2, torn.end() - 4096);

    disturbed.update(signals::ringHolding(torn), 0.25);
    undisturbed.update(signals::ringHolding(whole), 0.25);
    EXPECT_NE(disturbed.getPowerSpectrum(), undisturbed.getPowerSpectrum());

    disturbed.update(signals::ringHolding(whole), 0.25);
    undisturbed.update(signals::ringHolding(whole), 0.25);
    EXPECT_EQ(disturbed.getPowerSpectrum(), undisturbed.getPowerSpectrum());
    EXPECT_EQ(disturbed.getCandidatePeaks(), undisturbed.getCandidatePeaks());
    EXPECT_TRUE(disturbed.getNoteState().isDown(e));
    EXPECT_FALSE(disturbed.getNoteState().isDown(g));
}

TEST_F(NoteEstimationThreads, TornReadsOfARunningRecordingLeaveNothingBehind) {
    NoteEstimation estimation;
    boost::shared_ptr<RingBuffer> const ring(new RingBuffer(blocksKept * blockLength));
    std::vector<float> const recording = sine(468.75);

    std::atomic<bool> stopped{false};
    std::atomic<int> appended{0};
    std::thread recorder([&ring, &recording, &stopped, &appended] {
        // Ends only where the store does, so that what is in it at last is the recording from its start.
        while (!stopped || appended % blocksKept != 0) {
            ring->append(recording.data() + appended % blocksKept * blockLength, blockLength);
            ++appended;
        }
    });
    while (appended < blocksKept) {
        std::this_thread::yield();
    }
    for (int step = 0; step < 50; ++step) {
        estimation.update(ring, 0.02);
    }
    stopped = true;
    recorder.join();

    estimation.update(ring, 0.02);
    NoteEstimation fresh;
    fresh.update(signals::ringHolding(recording), 0.02);
    EXPECT_EQ(estimation.getPowerSpectrum(), fresh.getPowerSpectrum());
    EXPECT_EQ(estimation.getCandidatePeaks(), fresh.getCandidatePeaks());
    EXPECT_TRUE(estimation.getNoteState().isDown(e));
}
