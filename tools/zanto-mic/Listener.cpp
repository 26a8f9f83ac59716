#include "tools/zanto-mic/Listener.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "analysis/NoteEstimation.h"
#include "analysis/SpectrumRules.h"
#include "audio/QuietDescriptor.h"
#include "audio/RingBuffer.h"
#include "tools/common/DataFolder.h"
#include "tools/zanto-mic/Microphone.h"

namespace {

constexpr int standardOutput = 1;
constexpr std::size_t newestSamples = rules::windowSamples;

}  // namespace

Listener::Listener(Microphone& microphone_, const std::filesystem::path& dataFolder)
    : microphone(microphone_) {
    microphone.start();
    const QuietDescriptor quiet(standardOutput);
    const WorkingFolder inData(dataFolder);
    estimation = std::make_unique<NoteEstimation>();
    if (!estimation->hasFineEar()) {
        fineEstimation = std::make_unique<NoteEstimation>(NoteEstimation::Ear::fine);
    }
}

Listener::~Listener() = default;

double Listener::minDecibel() const {
    return static_cast<double>(estimation->getMinDecibel());
}

Moment Listener::next() {
    microphone.wait(stepSeconds);
    const boost::shared_ptr<const RingBuffer> ring = microphone.samples();
    {
        const QuietDescriptor quiet(standardOutput);
        estimation->update(ring, stepSeconds);
        if (fineEstimation) {
            fineEstimation->update(ring, stepSeconds);
        }
    }
    Moment moment{-std::numeric_limits<double>::infinity(), 0.0, 0.0, 0.0, {}, {}};
    std::vector<double> levels;
    for (int bin = rules::lowestPeakBin; bin <= rules::lastNoteBin; ++bin) {
        const double level = estimation->getPowerSpectrum().at(static_cast<std::size_t>(bin));
        levels.push_back(level);
        if (level > moment.loudestDb) {
            moment.loudestDb = level;
            moment.loudestHz = static_cast<double>(estimation->indexToFrequency(bin));
        }
    }
    const auto middle = levels.begin() + static_cast<std::ptrdiff_t>(levels.size() / 2);
    std::nth_element(levels.begin(), middle, levels.end());
    moment.noiseDb = *middle;

    std::vector<float> newest(newestSamples);
    ring->copyLatest(newest);
    for (const float sample : newest) {
        moment.peakSample = std::max(moment.peakSample, static_cast<double>(std::abs(sample)));
    }
    for (int note = 0; note < Notes::noteCount; ++note) {
        if (estimation->getNoteState().isDown(note)) {
            moment.notes.emplace_back(note);
        }
        if (fineEstimation && fineEstimation->getNoteState().isDown(note)) {
            moment.fine.emplace_back(note);
        }
    }
    return moment;
}
