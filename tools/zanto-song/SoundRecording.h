#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

/// The sound of one channel at 48000 Hz, read from its beginning to its end.
class SampleSource {
public:
    static constexpr int sampleRate = 48000;  ///< Hz

    SampleSource() = default;
    SampleSource(const SampleSource&) = delete;
    SampleSource& operator=(const SampleSource&) = delete;
    virtual ~SampleSource() = default;

    /// Fills `samples` with what comes next and gives how many samples that were: fewer than `count` only at
    /// the end.
    virtual std::size_t read(float* samples, std::size_t count) = 0;
};

/// A sound file as the game's microphone would have delivered it, read bit by bit: WAV, FLAC, Ogg, MP3 and
/// whatever else libsndfile reads. Several channels are averaged into one, another rate is converted.
class SoundRecording : public SampleSource {
public:
    /// Throws a Failure with the reason, without the file's name, when there is no sound to read in it.
    explicit SoundRecording(const std::string& path);
    ~SoundRecording() override;

    /// Its length as its header says; of an MP3 it may be a guess.
    double seconds() const;

    /// Throws a Failure for samples that are no numbers, and where the file is damaged.
    std::size_t read(float* samples, std::size_t count) override;

    /// Throws a Failure when what was read is silent only because its channels cancel each other out.
    void expectAudible() const;

private:
    struct Libraries;

    bool refill();

    std::unique_ptr<Libraries> libraries;
    std::vector<float> frames;    ///< of all channels
    std::vector<float> averaged;  ///< of the file's rate
    std::size_t used = 0;         ///< of those
    std::size_t framesRead = 0;
    float loudestChannel = 0.0f;
    float loudestAverage = 0.0f;
};
