#pragma once

#include <boost/shared_ptr.hpp>
#include <vector>

class AudioInput;

/// An audio input without a device: a test program that links zanto_scripted_audio gets `AudioInput::New()`
/// from here. What it can do is scripted, and the test speaks into the ring buffer itself.
namespace scriptedaudio {

struct Script {
    bool exists = true;         ///< whether New() makes one
    bool records = true;        ///< whether recording starts
    bool hasRingBuffer = true;  ///< whether a started recording has a ring buffer
    int created = 0;
    int alive = 0;
    int tended = 0;  ///< calls of tend()
};

Script& script();
void reset();

/// An input that records already, for tests that need no start-up.
boost::shared_ptr<AudioInput> recording();

/// Appends samples to the input's ring buffer in blocks, as the audio thread does; a rest that fills no whole
/// block is left out.
void speak(AudioInput& input, const std::vector<float>& samples);

/// `seconds` of a sine at 48 kHz.
std::vector<float> tone(double frequencyHz, double amplitude, double seconds);

}  // namespace scriptedaudio
