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
constexpr double frameSeconds = 0.01;

// The peer listens with its customary window, in steps of a game frame.
constexpr unsigned int peerWindowSamples = 2048;
constexpr unsigned int peerHopSamples = 480;
constexpr float peerSilenceDb = -65.0f;

std::vector<HeardPeak> peaksOf(NoteEstimation const& estimation) {
    float loudestDb = -1e9f;
    for (auto const& [levelDb, frequencyHz] : estimation.getCandidatePeaks()) {
        loudestDb = std::max(loudestDb, levelDb);
    }
    std::vector<HeardPeak> peaks;
    for (auto const& [levelDb, frequencyHz] : estimation.getCandidatePeaks()) {
        if (levelDb >= loudestDb - keptBelowLoudestDb) {
            auto const bin = std::lround(frequencyHz / estimation.indexToFrequency(1));
            peaks.push_back({static_cast<std::uint16_t>(bin), levelDb});
        }
    }
    return peaks;
}

std::vector<float> peerPitches(std::vector<float> const& sound) {
    std::unique_ptr<aubio_pitch_t, void (*)(aubio_pitch_t*)> const pitch(
        new_aubio_pitch("yinfft", peerWindowSamples, peerHopSamples, soundRateHz), del_aubio_pitch);
    std::unique_ptr<fvec_t, void (*)(fvec_t*)> const in(new_fvec(peerHopSamples), del_fvec);
    std::unique_ptr<fvec_t, void (*)(fvec_t*)> const out(new_fvec(1), del_fvec);
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
    out.write(reinterpret_cast<char const*>(&value), sizeof value);
}

template <typename Value>
Value get(std::istream& in) {
    Value value{};
    in.read(reinterpret_cast<char*>(&value), sizeof value);
    return value;
}

}  // namespace

Recording listen(std::vector<float> const& sound, double minDecibel, bool peer) {
    ::setenv("ZANTO_MIN_DECIBEL", std::to_string(minDecibel).c_str(), 1);
    auto const ring = boost::make_shared<RingBuffer>(ringBlocks * static_cast<unsigned int>(blockSamples));
    NoteEstimation estimation;
    Recording recording;
    for (std::size_t done = 0; done + blockSamples <= sound.size(); done += blockSamples) {
        ring->append(&sound[done], blockSamples);
        estimation.update(ring, frameSeconds);
        recording.blocks.push_back(peaksOf(estimation));
    }
    if (peer) {
        recording.peerHz = peerPitches(sound);
    }
    return recording;
}

void writeRecordings(std::string const& path, std::vector<Recording> const& recordings) {
    std::ofstream out(path + ".part", std::ios::binary);
    put(out, static_cast<std::uint32_t>(recordings.size()));
    for (Recording const& recording : recordings) {
        put(out, static_cast<std::uint32_t>(recording.blocks.size()));
        for (std::vector<HeardPeak> const& peaks : recording.blocks) {
            put(out, static_cast<std::uint16_t>(peaks.size()));
            for (HeardPeak const& peak : peaks) {
                put(out, peak.bin);
                put(out, peak.levelDb);
            }
        }
        put(out, static_cast<std::uint32_t>(recording.peerHz.size()));
        for (float const pitchHz : recording.peerHz) {
            put(out, pitchHz);
        }
    }
    out.close();
    if (!out || std::rename((path + ".part").c_str(), path.c_str()) != 0) {
        throw std::runtime_error("cannot write " + path);
    }
}

std::vector<Recording> readRecordings(std::string const& path) {
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
