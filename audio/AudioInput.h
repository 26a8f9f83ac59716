#pragma once

#include <boost/shared_ptr.hpp>

class RingBuffer;

/// The game's microphone: records into a ring buffer all the time.
///
/// Made by New() and used from the main thread; recording itself runs on a thread of the audio back-end.
/// Change settings while it is idle; they take effect at the next start:
///
///     boost::shared_ptr<AudioInput> input = AudioInput::New();
///     if (input->startRecording()) readFrom(input->getRingBuffer());
class AudioInput {
public:
    static boost::shared_ptr<AudioInput> New();

    AudioInput(const AudioInput&) = delete;
    AudioInput& operator=(const AudioInput&) = delete;

    virtual bool isRecording() = 0;
    /// Starts with a new ring buffer of `blocksKept` blocks. False, with one line on standard error, if the
    /// back-end fails; false and silent if it is recording already.
    virtual bool startRecording() = 0;
    /// False, with one line on standard error, if the back-end fails; false and silent if it is idle.
    virtual bool stopRecording() = 0;
    virtual ~AudioInput();

    /// For the main thread to call again and again, whether frames are drawn or not: an input that can mend
    /// itself does it here. `nowSeconds` is a clock that only goes forward. Does nothing unless overridden.
    virtual void tend(double nowSeconds);

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

    /// Empty before the first start. A restart makes a new buffer, so do not keep the pointer.
    boost::shared_ptr<RingBuffer> getRingBuffer();

    /// A whole number, so that no block crosses the end of the ring buffer and is dropped.
    static constexpr unsigned int blocksKept = 20;

protected:
    AudioInput() = default;

    boost::shared_ptr<RingBuffer> ringBuffer;
    unsigned int framesPerBuffer = 1024;
    unsigned int sampleRate = 48000;
    bool stereo = false;
};
