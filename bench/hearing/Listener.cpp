#include "bench/hearing/Listener.h"

#include <unistd.h>

#include <cstddef>
#include <filesystem>
#include <fstream>
#include <limits>
#include <sstream>
#include <stdexcept>

#include "analysis/SpectrumRules.h"
#include "bench/hearing/Synth.h"

namespace {

constexpr std::size_t binCount = rules::binCount;
constexpr double frameSeconds = 1.0 / framesPerSecond;
constexpr double silenceDb = -std::numeric_limits<double>::infinity();

/// The estimation reads its table from the working directory, so it is made in one that holds the table.
std::unique_ptr<NoteEstimation> estimationWith(const std::string& tableText) {
    namespace fs = std::filesystem;
    const fs::path home = fs::current_path();
    const fs::path folder = fs::temp_directory_path() / ("zanto-hearing-" + std::to_string(::getpid()));
    fs::create_directory(folder);
    std::ofstream(folder / "notes.txt") << tableText;
    fs::current_path(folder);
    auto estimation = std::make_unique<NoteEstimation>();
    fs::current_path(home);
    fs::remove_all(folder);
    return estimation;
}

}  // namespace

Listener::Listener(const std::string& tableText)
    : estimation(estimationWith(tableText)), spectrum(binCount, silenceDb) {
}

void Listener::replay(const Recording& recording,
                      const std::function<void(double, const NoteState&)>& frame) {
    if (estimation) {
        replayPlain(recording, frame);
        return;
    }
    NoteState held;
    const std::vector<std::uint8_t>& frames = recording.*notes;
    for (std::size_t i = 0; i < frames.size(); ++i) {
        std::vector<Notes::NoteID> heard;
        for (int note = 0; note < Notes::noteCount; ++note) {
            if ((frames[i] >> note & 1) != 0) {
                heard.emplace_back(note);
            }
        }
        held.notesDown(heard, static_cast<float>(frameSeconds));
        frame(static_cast<double>(i) * frameSeconds, held);
    }
}

void Listener::replayPlain(const Recording& recording,
                           const std::function<void(double, const NoteState&)>& frame) {
    estimation->updateNotes(spectrum, frameSeconds);
    constexpr int samplesPerFrame = soundRateHz / framesPerSecond;
    const std::size_t frames = recording.blocks.size() * blockSamples / samplesPerFrame;
    for (std::size_t i = 0; i <= frames; ++i) {
        const std::size_t arrived = i * samplesPerFrame / blockSamples;
        if (arrived > 0) {
            for (const HeardPeak& peak : recording.blocks[arrived - 1]) {
                spectrum[peak.bin] = static_cast<double>(peak.levelDb);
            }
        }
        estimation->updateNotes(spectrum, frameSeconds);
        if (arrived > 0) {
            for (const HeardPeak& peak : recording.blocks[arrived - 1]) {
                spectrum[peak.bin] = silenceDb;
            }
        }
        frame(static_cast<double>(i) * frameSeconds, estimation->getNoteState());
    }
    estimation->updateNotes(spectrum, frameSeconds);
}

std::string readText(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    std::ostringstream text;
    text << in.rdbuf();
    if (!in) {
        throw std::runtime_error("cannot read " + path);
    }
    return text.str();
}
