#pragma once

#include <boost/shared_ptr.hpp>

class RingBuffer;

/// The microphone of the game: records without pause into a ring buffer that others read.
///
/// Made by New() and used from the main thread; recording itself runs on a thread of the audio back-end.
/// Settings are changed while idle and hold from the next start:
///
///     boost::shared_ptr<AudioInput> input = AudioInput::New();
///     if (input->startRecording()) readFrom(input->getRingBuffer());
class AudioInput {
public:
    static boost::shared_ptr<AudioInput> New();

    AudioInput(AudioInput const&) = delete;
    AudioInput& operator=(AudioInput const&) = delete;

    virtual bool isRecording() = 0;
    /// Starts with a new ring buffer of 20 blocks. False, with one line on standard error, if the back-end
    /// fails; false and silent if it is recording already.
    virtual bool startRecording() = 0;
    /// False, with one line on standard error, if the back-end fails; false and silent if it is idle.
    virtual bool stopRecording() = 0;
    virtual ~AudioInput();

    /// Samples in one captured block. False, and nothing changed, while recording.
    bool setFramesPerBuffer(unsigned int frames);
    /// In Hz. False, and nothing changed, while recording.
    bool setSampleRate(unsigned int rateHz);
    /// Gives back the setting itself, so switching stereo off gives false although it succeeds; false, and
    /// nothing changed, while recording. In stereo the first half of every interleaved block is kept.
    bool setStereo(bool wanted);

    unsigned int getFramesPerBuffer() const;
    unsigned int getSampleRate() const;
    bool getStereo() const;

    /// Empty before the first start; a restart brings another buffer, which is a reason not to keep this one.
    boost::shared_ptr<RingBuffer> getRingBuffer();

protected:
    AudioInput() = default;

    boost::shared_ptr<RingBuffer> ringBuffer;
    unsigned int framesPerBuffer = 1024;
    unsigned int sampleRate = 48000;
    bool stereo = false;
};
