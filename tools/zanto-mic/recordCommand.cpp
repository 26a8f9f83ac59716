#include <unistd.h>

#include <algorithm>
#include <array>
#include <iostream>

#include "audio/RingBuffer.h"
#include "game/Rules.h"
#include "tools/common/Arguments.h"
#include "tools/common/DataFolder.h"
#include "tools/common/Files.h"
#include "tools/common/Text.h"
#include "tools/common/WavFile.h"
#include "tools/zanto-mic/LevelLine.h"
#include "tools/zanto-mic/Listener.h"
#include "tools/zanto-mic/Microphone.h"
#include "tools/zanto-mic/commands.h"

const char* const micRecordUsage =
    "zanto-mic record OUT.wav [--silence SECONDS] [--seconds N] [--data FOLDER] [--force]\n"
    "    Counts in and records until you are silent, or until Ctrl-C. Play the first note when \"play\" "
    "appears:\n"
    "    the recording then fits zanto-song perform, and its beat is the game's, two a second.\n"
    "    --silence SECONDS   so much silence ends it, 1 to 60; 4 unless said otherwise\n"
    "    --seconds N         and so much time in any case, 1 to 3600; 600 unless said otherwise\n"
    "    --data FOLDER       where the game's notes.txt is, if it is not found\n"
    "    --force             replace OUT.wav if there is such a file\n"
    "    Try it: zanto-mic record take.wav && zanto-song perform song.txt take.wav\n";

namespace {

constexpr int settlingSteps = 10;         // half a second: a recording begins with clicks
constexpr double patienceSeconds = 15.0;  // for the first sound

// The last word comes when the first slot opens, the others a slot before each other.
constexpr std::array<const char*, 4> countIn = {"3", "2", "1", "play"};
constexpr double firstSlotSeconds = rules::leadInSeconds + rules::slotOpensSeconds(0.0);

// What arrives in a microphone's ring buffer, all of it.
class Tape {
public:
    Tape(Microphone& microphone_, WavFile& file_)
        : microphone(microphone_), file(file_), position(microphone_.samples()->position()) {}

    /// To be called more often than the ring buffer turns.
    void take() {
        const boost::shared_ptr<const RingBuffer> ring = microphone.samples();
        const std::uint32_t now = ring->position();
        const std::uint32_t count = (now + ring->capacity() - position) % ring->capacity();
        std::vector<float> samples(count);
        ring->copyLatest(samples);
        file.write(samples, count);
        position = now;
        written += count;
    }

    double seconds() const { return static_cast<double>(written) / Microphone::gameRate; }

private:
    Microphone& microphone;
    WavFile& file;
    std::uint32_t position;
    std::size_t written = 0;
};

struct Ending {
    double silenceSeconds;
    double longestSeconds;
};

void countTo(double seconds, std::size_t& said) {
    while (said < countIn.size() &&
           seconds >=
               firstSlotSeconds - static_cast<double>(countIn.size() - 1 - said) * rules::secondsPerSlot) {
        std::cout << countIn.at(said) << (said + 1 == countIn.size() ? "\n" : " ") << std::flush;
        ++said;
    }
}

void record(Listener& listener, Tape& tape, const Ending& ending) {
    const bool isTerminal = isatty(STDOUT_FILENO) == 1;
    std::size_t said = 0;
    double lastSound = 0.0;
    double loudestDb = listener.minDecibel();
    while (!micInterrupted && tape.seconds() < ending.longestSeconds) {
        const Moment moment = listener.next();
        tape.take();
        countTo(tape.seconds(), said);
        if (said < countIn.size()) {
            continue;
        }
        if (moment.loudestDb > listener.minDecibel()) {
            lastSound = tape.seconds();
            loudestDb = std::max(loudestDb, moment.loudestDb);
        }
        if (isTerminal) {
            std::cout << '\r' << levelLine(moment, listener.minDecibel()) << std::flush;
        }
        if (lastSound == 0.0 && tape.seconds() > firstSlotSeconds + patienceSeconds) {
            throw Failure("nothing was heard; zanto-mic check says why");
        }
        if (lastSound > 0.0 && tape.seconds() > lastSound + ending.silenceSeconds) {
            break;
        }
    }
    if (isTerminal) {
        std::cout << '\n';
    }
    if (lastSound == 0.0) {
        throw Failure("nothing was heard; zanto-mic check says why");
    }
    std::cout << fixed(tape.seconds(), 1) << " s recorded, " << fixed(loudestDb, 1) << " dB at the loudest\n";
}

}  // namespace

int micRecordCommand(const CommandArguments& arguments, Microphone& microphone) {
    const Arguments given(arguments, {"--force"}, {"--silence", "--seconds", "--data"});
    const std::string& path = given.onlyFile("recording");
    const Ending ending = {given.number("--silence", 1.0, 60.0, "seconds, 1 to 60").value_or(4.0),
                           given.number("--seconds", 1.0, 3600.0, "seconds, 1 to 3600").value_or(600.0)};
    NewFile file(path, given.has("--force"));
    Listener listener(microphone, requireDataFolder(given.value("--data")));
    for (int step = 0; step < settlingSteps; ++step) {
        listener.next();
    }
    WavFile wav(file, path);
    Tape tape(microphone, wav);
    record(listener, tape, ending);
    wav.close();
    file.keep();
    return statusDone;
}
