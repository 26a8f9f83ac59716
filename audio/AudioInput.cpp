#include "audio/AudioInput.h"

AudioInput::~AudioInput() = default;

void AudioInput::tend(double) {
}

bool AudioInput::setFramesPerBuffer(unsigned int frames) {
    if (isRecording()) {
        return false;
    }
    framesPerBuffer = frames;
    return true;
}

bool AudioInput::setSampleRate(unsigned int rateHz) {
    if (isRecording()) {
        return false;
    }
    sampleRate = rateHz;
    return true;
}

bool AudioInput::setStereo(bool wanted) {
    if (isRecording()) {
        return false;
    }
    stereo = wanted;
    return stereo;
}

unsigned int AudioInput::getFramesPerBuffer() const {
    return framesPerBuffer;
}

unsigned int AudioInput::getSampleRate() const {
    return sampleRate;
}

bool AudioInput::getStereo() const {
    return stereo;
}

boost::shared_ptr<RingBuffer> AudioInput::getRingBuffer() {
    return ringBuffer;
}
