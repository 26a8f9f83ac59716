#include "tests/support/ScriptedAudioInput.h"

#include <boost/make_shared.hpp>
#include <cmath>

#include "analysis/SpectrumRules.h"
#include "audio/AudioInput.h"
#include "audio/RingBuffer.h"

namespace scriptedaudio {

namespace {

constexpr double sampleRateHz = rules::sampleRateHz;
constexpr double twoPi = 6.283185307179586;

class ScriptedAudioInput : public AudioInput {
public:
    ScriptedAudioInput() {
        ++script().created;
        ++script().alive;
    }
    ~ScriptedAudioInput() override { --script().alive; }

    bool isRecording() override { return running; }
    bool startRecording() override {
        running = script().records;
        if (running && script().hasRingBuffer) {
            ringBuffer = boost::make_shared<RingBuffer>(framesPerBuffer * blocksKept);
        }
        return running;
    }
    bool stopRecording() override {
        const bool was = running;
        running = false;
        return was;
    }

    void tend(double) override { ++script().tended; }

private:
    bool running = false;
};

}  // namespace

Script& script() {
    static Script instance;
    return instance;
}

void reset() {
    script() = Script();
}

boost::shared_ptr<AudioInput> recording() {
    boost::shared_ptr<AudioInput> input = AudioInput::New();
    input->startRecording();
    return input;
}

void speak(AudioInput& input, const std::vector<float>& samples) {
    const std::size_t block = input.getFramesPerBuffer();
    const boost::shared_ptr<RingBuffer> buffer = input.getRingBuffer();
    for (std::size_t begin = 0; begin + block <= samples.size(); begin += block) {
        buffer->append(samples.data() + begin, static_cast<int>(block));
    }
}

std::vector<float> tone(double frequencyHz, double amplitude, double seconds) {
    std::vector<float> samples(static_cast<std::size_t>(std::lround(seconds * sampleRateHz)));
    for (std::size_t i = 0; i < samples.size(); ++i) {
        const double phase = twoPi * frequencyHz * static_cast<double>(i) / sampleRateHz;
        samples[i] = static_cast<float>(amplitude * std::sin(phase));
    }
    return samples;
}

}  // namespace scriptedaudio

boost::shared_ptr<AudioInput> AudioInput::New() {
    if (!scriptedaudio::script().exists) {
        return boost::shared_ptr<AudioInput>();
    }
    return boost::make_shared<scriptedaudio::ScriptedAudioInput>();
}
