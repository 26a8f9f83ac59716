#include "bench/hearing/Listener.h"

#include <unistd.h>

#include <cstddef>
#include <filesystem>
#include <fstream>
#include <limits>
#include <sstream>
#include <stdexcept>

#include "bench/hearing/Synth.h"

namespace {

constexpr std::size_t binCount = 2048;
constexpr double frameSeconds = 1.0 / framesPerSecond;
constexpr double silenceDb = -std::numeric_limits<double>::infinity();

/// The estimation reads its table from the working directory, so it is made in one that holds the table.
std::unique_ptr<NoteEstimation> estimationWith(std::string const& tableText) {
    namespace fs = std::filesystem;
    fs::path const home = fs::current_path();
    fs::path const folder = fs::temp_directory_path() / ("zanto-hearing-" + std::to_string(::getpid()));
    fs::create_directory(folder);
    std::ofstream(folder / "notes.txt") << tableText;
    fs::current_path(folder);
    auto estimation = std::make_unique<NoteEstimation>();
    fs::current_path(home);
    fs::remove_all(folder);
    return estimation;
}

}  // namespace

Listener::Listener(std::string const& tableText)
    : estimation(estimationWith(tableText)), spectrum(binCount, silenceDb) {
}

void Listener::replay(Recording const& recording,
                      std::function<void(double, NoteState const&)> const& frame) {
    estimation->updateNotes(spectrum, frameSeconds);
    constexpr int samplesPerFrame = soundRateHz / framesPerSecond;
    std::size_t const frames = recording.blocks.size() * blockSamples / samplesPerFrame;
    for (std::size_t i = 0; i <= frames; ++i) {
        std::size_t const arrived = i * samplesPerFrame / blockSamples;
        if (arrived > 0) {
            for (HeardPeak const& peak : recording.blocks[arrived - 1]) {
                spectrum[peak.bin] = static_cast<double>(peak.levelDb);
            }
        }
        estimation->updateNotes(spectrum, frameSeconds);
        if (arrived > 0) {
            for (HeardPeak const& peak : recording.blocks[arrived - 1]) {
                spectrum[peak.bin] = silenceDb;
            }
        }
        frame(static_cast<double>(i) * frameSeconds, estimation->getNoteState());
    }
    estimation->updateNotes(spectrum, frameSeconds);
}

std::string readText(std::string const& path) {
    std::ifstream in(path, std::ios::binary);
    std::ostringstream text;
    text << in.rdbuf();
    if (!in) {
        throw std::runtime_error("cannot read " + path);
    }
    return text.str();
}
