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
#include "audio/RingBuffer.h"
#include "bench/hearing/Synth.h"

namespace {

constexpr unsigned int ringBlocks = 20;
constexpr float keptBelowLoudestDb = 6.0f;
constexpr double frameSeconds = 1.0 / framesPerSecond;

// The peer listens with its customary window, in steps of a game frame.
constexpr unsigned int peerWindowSamples = 2048;
constexpr unsigned int peerHopSamples = 480;
constexpr float peerSilenceDb = -65.0f;

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

std::vector<float> peerPitches(const std::vector<float>& sound) {
    const std::unique_ptr<aubio_pitch_t, void (*)(aubio_pitch_t*)> pitch(
        new_aubio_pitch("yinfft", peerWindowSamples, peerHopSamples, soundRateHz), del_aubio_pitch);
    const std::unique_ptr<fvec_t, void (*)(fvec_t*)> in(new_fvec(peerHopSamples), del_fvec);
    const std::unique_ptr<fvec_t, void (*)(fvec_t*)> out(new_fvec(1), del_fvec);
    aubio_pitch_set_unit(pitch.get(), "Hz");
    aubio_pitch_set_silence(pitch.get(), peerSilenceDb);
    std::vector<float> heard;
    for (std::size_t done = 0; done + peerHopSamples <= sound.size(); done += peerHopSamples) {
        std::copy_n(sound.begin() + static_cast<std::ptrdiff_t>(done), peerHopSamples, in->data);
        aubio_pitch_do(pitch.get(), in.get(), out.get());
        heard.push_back(out->data[0]);
    }
    return heard;
}

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

/// What the game hears with its fine ear at the time of each frame.
std::vector<std::uint8_t> fineNotesOf(const std::vector<float>& sound) {
    ::setenv("ZANTO_EAR", "fine", 1);
    NoteEstimation estimation;
    ::unsetenv("ZANTO_EAR");
    const auto ring = boost::make_shared<RingBuffer>(ringBlocks * static_cast<unsigned int>(blockSamples));
    std::vector<std::uint8_t> heard;
    constexpr std::size_t samplesPerFrame = soundRateHz / framesPerSecond;
    const std::size_t blocks = sound.size() / blockSamples;
    for (std::size_t arrived = 0; heard.size() * samplesPerFrame <= blocks * blockSamples;) {
        for (; (arrived + 1) * blockSamples <= heard.size() * samplesPerFrame; ++arrived) {
            ring->append(&sound[arrived * blockSamples], blockSamples);
        }
        estimation.update(ring, frameSeconds);
        unsigned int notes = 0;
        for (int note = 0; note < Notes::noteCount; ++note) {
            notes |= estimation.getNoteState().isDown(note) ? 1u << note : 0u;
        }
        heard.push_back(static_cast<std::uint8_t>(notes));
    }
    return heard;
}

}  // namespace

Recording listen(const std::vector<float>& sound, double minDecibel, bool peer) {
    ::setenv("ZANTO_MIN_DECIBEL", std::to_string(minDecibel).c_str(), 1);
    const auto ring = boost::make_shared<RingBuffer>(ringBlocks * static_cast<unsigned int>(blockSamples));
    NoteEstimation estimation;
    Recording recording;
    for (std::size_t done = 0; done + blockSamples <= sound.size(); done += blockSamples) {
        ring->append(&sound[done], blockSamples);
        estimation.update(ring, frameSeconds);
        recording.blocks.push_back(peaksOf(estimation));
    }
    recording.fineNotes = fineNotesOf(sound);
    if (peer) {
        recording.peerHz = peerPitches(sound);
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
        put(out, static_cast<std::uint32_t>(recording.peerHz.size()));
        for (const float pitchHz : recording.peerHz) {
            put(out, pitchHz);
        }
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
        recording.peerHz.resize(get<std::uint32_t>(in));
        for (float& pitchHz : recording.peerHz) {
            pitchHz = get<float>(in);
        }
        if (!in) {
            throw std::runtime_error(path + " ends too early");
        }
    }
    return recordings;
}
