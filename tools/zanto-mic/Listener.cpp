#include "tools/zanto-mic/Listener.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "analysis/NoteEstimation.h"
#include "audio/RingBuffer.h"
#include "tools/common/DataFolder.h"
#include "tools/common/QuietStream.h"
#include "tools/zanto-mic/Microphone.h"

namespace {

constexpr int standardOutput = 1;
constexpr int noteCount = 7;
constexpr int lowestBin = 10;  // of those that the game looks at
constexpr float highestHz = 1010.0f;
constexpr std::size_t newestSamples = 4096;

}  // namespace

Listener::Listener(Microphone& microphone_, std::filesystem::path const& dataFolder)
    : microphone(microphone_) {
    QuietDescriptor const quiet(standardOutput);
    WorkingFolder const inData(dataFolder);
    estimation = std::make_unique<NoteEstimation>();
}

Listener::~Listener() = default;

double Listener::minDecibel() const {
    return static_cast<double>(estimation->getMinDecibel());
}

Moment Listener::next() {
    microphone.wait(stepSeconds);
    boost::shared_ptr<RingBuffer const> const ring = microphone.samples();
    {
        QuietDescriptor const quiet(standardOutput);
        estimation->update(ring, stepSeconds);
    }
    Moment moment{-std::numeric_limits<double>::infinity(), 0.0, 0.0, 0.0, {}};
    std::vector<double> levels;
    for (int bin = lowestBin; estimation->indexToFrequency(bin) < highestHz; ++bin) {
        double const level = estimation->getPowerSpectrum().at(static_cast<std::size_t>(bin));
        levels.push_back(level);
        if (level > moment.loudestDb) {
            moment.loudestDb = level;
            moment.loudestHz = static_cast<double>(estimation->indexToFrequency(bin));
        }
    }
    auto const middle = levels.begin() + static_cast<std::ptrdiff_t>(levels.size() / 2);
    std::nth_element(levels.begin(), middle, levels.end());
    moment.noiseDb = *middle;

    std::vector<float> newest(newestSamples);
    ring->copyLatest(newest);
    for (float const sample : newest) {
        moment.peakSample = std::max(moment.peakSample, static_cast<double>(std::abs(sample)));
    }
    for (int note = 0; note < noteCount; ++note) {
        if (estimation->getNoteState().isDown(note)) {
            moment.notes.emplace_back(note);
        }
    }
    return moment;
}
