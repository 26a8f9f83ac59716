#include "bench/hearing/Recording.h"

#include <aubio/aubio.h>

#include <algorithm>
#include <boost/make_shared.hpp>
#include <cmath>
#include <cstddef>
#include <cstdlib>
#include <fstream>
#include <memory>
#include <stdexcept>

#include "analysis/NoteEstimation.h"
#include "analysis/Notes.h"
#include "audio/AudioInput.h"
#include "audio/RingBuffer.h"
#include "bench/hearing/Synth.h"

namespace {

constexpr float keptBelowLoudestDb = 6.0f;
constexpr double frameSeconds = 1.0 / framesPerSecond;

// The peer listens with its customary window, whenever a block has arrived.
constexpr unsigned int peerWindowSamples = 2048;
constexpr float peerSilenceDb = -65.0f;
/// The plain ear looks at what the fine one looked at so many blocks before.
constexpr std::size_t plainDelayBlocks = (rules::copiedSamples - rules::windowSamples) / blockSamples;

std::vector<HeardPeak> peaksOf(const NoteEstimation& estimation) {
    float loudestDb = -1e9f;
    for (const auto& [levelDb, frequencyHz] : estimation.getCandidatePeaks()) {
        loudestDb = std::max(loudestDb, levelDb);
    }
    std::vector<HeardPeak> peaks;
    for (const auto& [levelDb, frequencyHz] : estimation.getCandidatePeaks()) {
        if (levelDb >= loudestDb - keptBelowLoudestDb) {
            const auto bin = std::lround(frequencyHz / estimation.indexToFrequency(1));
            peaks.push_back({static_cast<std::uint16_t>(bin), levelDb});
        }
    }
    return peaks;
}

std::uint8_t bitOf(float pitchHz) {
    constexpr double a4Hz = 440.0;
    if (!(pitchHz > 0.0f)) {
        return 0;
    }
    const long pitch = std::lround(69.0 + 12.0 * std::log2(static_cast<double>(pitchHz) / a4Hz));
    const Notes::NoteID note = pitch >= 0 ? Notes::ofSemitone(static_cast<int>(pitch)) : Notes::NoteID();
    return note < 0 ? 0 : static_cast<std::uint8_t>(1u << static_cast<unsigned int>(note));
}

std::uint8_t bitsOf(const NoteState& held) {
    unsigned int notes = 0;
    for (int note = 0; note < Notes::noteCount; ++note) {
        notes |= held.isDown(note) ? 1u << static_cast<unsigned int>(note) : 0u;
    }
    return static_cast<std::uint8_t>(notes);
}

class Peer {
public:
    /// The note of the newest samples, of which there is one block more.
    std::uint8_t hear(const float* block) {
        std::copy_n(block, blockSamples, in->data);
        aubio_pitch_do(pitch.get(), in.get(), out.get());
        return bitOf(out->data[0]);
    }
    Peer() {
        aubio_pitch_set_unit(pitch.get(), "Hz");
        aubio_pitch_set_silence(pitch.get(), peerSilenceDb);
    }

private:
    std::unique_ptr<aubio_pitch_t, void (*)(aubio_pitch_t*)> pitch{
        new_aubio_pitch("yinfft", peerWindowSamples, blockSamples, soundRateHz), del_aubio_pitch};
    std::unique_ptr<fvec_t, void (*)(fvec_t*)> in{new_fvec(blockSamples), del_fvec};
    std::unique_ptr<fvec_t, void (*)(fvec_t*)> out{new_fvec(1), del_fvec};
};

template <typename Value>
void put(std::ostream& out, Value value) {
    out.write(reinterpret_cast<const char*>(&value), sizeof value);
}

template <typename Value>
Value get(std::istream& in) {
    Value value{};
    in.read(reinterpret_cast<char*>(&value), sizeof value);
    return value;
}

}  // namespace

Recording listen(const std::vector<float>& sound, double minDecibel) {
    ::setenv("ZANTO_MIN_DECIBEL", std::to_string(minDecibel).c_str(), 1);
    NoteEstimation estimation(NoteEstimation::Ear::fine);
    Peer peer;
    const auto ring =
        boost::make_shared<RingBuffer>(AudioInput::blocksKept * static_cast<unsigned int>(blockSamples));
    estimation.update(ring, frameSeconds);
    // By the number of blocks that have arrived.
    std::vector<std::vector<HeardPeak>> peaks = {peaksOf(estimation)};
    std::uint8_t peerNote = 0;

    Recording recording;
    const std::size_t blocks = sound.size() / blockSamples;
    constexpr std::size_t samplesPerFrame = soundRateHz / framesPerSecond;
    for (std::size_t frame = 0; frame * samplesPerFrame <= blocks * blockSamples; ++frame) {
        const std::size_t arrived = peaks.size() - 1;
        if ((arrived + 1) * blockSamples <= frame * samplesPerFrame) {
            const float* const block = &sound[arrived * blockSamples];
            ring->append(block, blockSamples);
            estimation.update(ring, frameSeconds);
            peaks.push_back(peaksOf(estimation));
            recording.blocks.push_back(
                peaks[peaks.size() - 1 - std::min(plainDelayBlocks, peaks.size() - 1)]);
            peerNote = peer.hear(block);
        } else if (frame > 0) {
            // The spectrum is the same as in the frame before.
            estimation.updateNotes(estimation.getPowerSpectrum(), frameSeconds);
        }
        recording.fineNotes.push_back(bitsOf(estimation.getNoteState()));
        recording.peerNotes.push_back(peerNote);
    }
    return recording;
}

void writeRecordings(const std::string& path, const std::vector<Recording>& recordings) {
    std::ofstream out(path + ".part", std::ios::binary);
    put(out, static_cast<std::uint32_t>(recordings.size()));
    for (const Recording& recording : recordings) {
        put(out, static_cast<std::uint32_t>(recording.blocks.size()));
        for (const std::vector<HeardPeak>& peaks : recording.blocks) {
            put(out, static_cast<std::uint16_t>(peaks.size()));
            for (const HeardPeak& peak : peaks) {
                put(out, peak.bin);
                put(out, peak.levelDb);
            }
        }
        put(out, static_cast<std::uint32_t>(recording.fineNotes.size()));
        for (const std::uint8_t notes : recording.fineNotes) {
            put(out, notes);
        }
        put(out, static_cast<std::uint32_t>(recording.peerNotes.size()));
        for (const std::uint8_t notes : recording.peerNotes) {
            put(out, notes);
        }
        put(out, recording.lateDb);
    }
    out.close();
    if (!out || std::rename((path + ".part").c_str(), path.c_str()) != 0) {
        throw std::runtime_error("cannot write " + path);
    }
}

std::vector<Recording> readRecordings(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    std::vector<Recording> recordings(in ? get<std::uint32_t>(in) : 0);
    for (Recording& recording : recordings) {
        recording.blocks.resize(get<std::uint32_t>(in));
        for (std::vector<HeardPeak>& peaks : recording.blocks) {
            peaks.resize(get<std::uint16_t>(in));
            for (HeardPeak& peak : peaks) {
                peak.bin = get<std::uint16_t>(in);
                peak.levelDb = get<float>(in);
            }
        }
        recording.fineNotes.resize(get<std::uint32_t>(in));
        for (std::uint8_t& notes : recording.fineNotes) {
            notes = get<std::uint8_t>(in);
        }
        recording.peerNotes.resize(get<std::uint32_t>(in));
        for (std::uint8_t& notes : recording.peerNotes) {
            notes = get<std::uint8_t>(in);
        }
        recording.lateDb = get<float>(in);
        if (!in) {
            throw std::runtime_error(path + " ends too early");
        }
    }
    return recordings;
}
