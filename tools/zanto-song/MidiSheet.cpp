#include <algorithm>
#include <cmath>
#include <cstdint>
#include <iterator>
#include <map>
#include <string_view>
#include <utility>

#include "tools/common/Command.h"
#include "tools/common/Text.h"
#include "tools/zanto-song/SheetMusic.h"

namespace {

constexpr int percussionChannel = 10;
constexpr std::uint32_t filmFrames = 0x8000;  // a division from here on counts frames of a film
constexpr std::uint32_t longestBeat = 6;      // the power of two of a 64th note
constexpr double microsecondsPerMinute = 60e6;

// The bytes of a MIDI file, read from the front.
class Bytes {
public:
    explicit Bytes(std::string_view rest_) : rest(rest_) {}

    bool empty() const { return rest.empty(); }

    std::string_view take(std::size_t count) {
        if (count > rest.size()) {
            throw Failure("it is a damaged MIDI file: it ends in the middle");
        }
        const std::string_view taken = rest.substr(0, count);
        rest.remove_prefix(count);
        return taken;
    }
    std::uint32_t number(std::size_t bytes) {
        std::uint32_t value = 0;
        for (const char byte : take(bytes)) {
            value = value << 8 | static_cast<unsigned char>(byte);
        }
        return value;
    }
    /// Seven bits to a byte; the last one is below 0x80.
    std::uint32_t variable() {
        std::uint32_t value = 0;
        for (int count = 0; count < 4; ++count) {
            const std::uint32_t byte = number(1);
            value = value << 7 | (byte & 0x7Fu);
            if (byte < 0x80u) {
                return value;
            }
        }
        throw Failure("it is a damaged MIDI file: a number in it has no end");
    }
    std::uint32_t dataByte() {
        const std::uint32_t byte = number(1);
        if (byte >= 0x80u) {
            throw Failure("it is a damaged MIDI file: an event in it is cut off");
        }
        return byte;
    }

private:
    std::string_view rest;
};

// Where bars begin. A time signature begins a new bar, and may stand in a later track than the notes.
class Bars {
public:
    void change(double atQuarter, std::uint32_t beats, std::uint32_t power) {
        if (beats > 0 && power <= longestBeat) {
            metres[atQuarter] = {static_cast<double>(beats), 4.0 / static_cast<double>(1u << power), 1.0};
        }
    }

    /// Numbers the bars, when all changes are known.
    void number() {
        metres.try_emplace(0.0);
        for (auto before = metres.begin(), next = std::next(before); next != metres.end(); before = next++) {
            const double bars = (next->first - before->first) / before->second.quarters();
            next->second.firstBar = before->second.firstBar + std::ceil(bars - nearly);
        }
    }

    std::string placeOf(double quarter) const {
        const auto& [from, metre] = *std::prev(metres.upper_bound(quarter));
        const double beats = (quarter - from) / metre.beatQuarters + nearly;
        const double bar = std::floor(beats / metre.beats);
        return "bar " + fixed(metre.firstBar + bar, 0) + ", beat " +
               fixed(1.0 + std::floor(beats - bar * metre.beats), 0);
    }

private:
    static constexpr double nearly = 0.05;

    struct Metre {
        double quarters() const { return beats * beatQuarters; }

        double beats = 4.0;
        double beatQuarters = 1.0;
        double firstBar = 1.0;
    };
    std::map<double, Metre> metres;  // by the quarter note from which they hold
};

// Blanks in place of line breaks and the like.
std::string oneLine(std::string_view text) {
    std::string line(text);
    std::replace_if(
        line.begin(), line.end(), [](char letter) { return static_cast<unsigned char>(letter) < 0x20; }, ' ');
    return cleanUtf8(line);
}

class MidiReader {
public:
    SheetMusic read(Bytes file);

private:
    struct Track {
        std::string name;
        std::map<int, std::vector<SheetNote>> byChannel;
        std::map<int, int> programs;  // the first of each channel
    };
    using Sounding = std::map<std::pair<int, int>, SheetNote>;  // by channel and pitch

    void readTrack(Bytes bytes);
    void readMeta(std::uint32_t type, std::string_view data);
    void readMessage(std::uint32_t status, Bytes& bytes);
    void begin(int channel, int pitch);
    void end(const Sounding::iterator& note);
    void readTempos(SheetMusic& sheet);
    void lose(std::size_t count, const std::string& what, SheetMusic& sheet) const {
        if (count > 0) {
            sheet.lost.push_back(counted(count, what));
        }
    }

    double ticksPerQuarter = 0.0;
    double now = 0.0;  // quarter notes
    std::vector<Track> tracks;
    Sounding sounding;
    Bars bars;
    std::map<double, std::uint32_t> tempos;  // microseconds to a quarter note
    std::size_t noteCount = 0;
    std::size_t drumBeats = 0;
    std::size_t bends = 0;
    std::size_t hanging = 0;
};

void MidiReader::begin(int channel, int pitch) {
    if (channel == percussionChannel) {
        ++drumBeats;
        return;
    }
    if (++noteCount > mostSheetNotes || now > mostQuarters) {
        throw tooLong();
    }
    sounding[{channel, pitch}] = {now, 0.0, pitch, ""};
}

void MidiReader::end(const Sounding::iterator& note) {
    if (note != sounding.end()) {
        note->second.length = now - note->second.start;
        tracks.back().byChannel[note->first.first].push_back(note->second);
        sounding.erase(note);
    }
}

void MidiReader::readMessage(std::uint32_t status, Bytes& bytes) {
    const std::uint32_t kind = status & 0xF0u;
    const int channel = 1 + static_cast<int>(status & 0x0Fu);
    const int first = static_cast<int>(bytes.dataByte());
    const bool hasSecond = kind != 0xC0u && kind != 0xD0u;
    const std::uint32_t second = hasSecond ? bytes.dataByte() : 0;
    if (kind == 0x80u || kind == 0x90u) {
        end(sounding.find({channel, first}));
        if (kind == 0x90u && second > 0) {
            begin(channel, first);
        }
    }
    if (kind == 0xC0u) {
        tracks.back().programs.try_emplace(channel, first);
    }
    bends += kind == 0xE0u ? 1 : 0;
}

void MidiReader::readMeta(std::uint32_t type, std::string_view data) {
    Bytes bytes(data);
    if (type == 0x03) {
        tracks.back().name = oneLine(data);
    } else if (type == 0x51 && data.size() >= 3) {
        tempos[now] = bytes.number(3);
    } else if (type == 0x58 && data.size() >= 2) {
        const std::uint32_t beats = bytes.number(1);
        bars.change(now, beats, bytes.number(1));
    }
}

void MidiReader::readTrack(Bytes bytes) {
    constexpr std::uint32_t endOfTrack = 0x2F;
    tracks.emplace_back();
    std::uint64_t ticks = 0;
    std::uint32_t running = 0;
    while (!bytes.empty()) {
        ticks += bytes.variable();
        now = static_cast<double>(ticks) / ticksPerQuarter;
        // An event without a status of its own has that of the one before.
        Bytes ahead = bytes;
        std::uint32_t status = ahead.number(1);
        if (status >= 0x80u) {
            bytes = ahead;
        } else {
            status = running;
        }
        if (status == 0xFFu) {
            const std::uint32_t type = bytes.number(1);
            readMeta(type, bytes.take(bytes.variable()));
            if (type == endOfTrack) {
                break;
            }
        } else if (status == 0xF0u || status == 0xF7u) {
            bytes.take(bytes.variable());
        } else if (status >= 0x80u && status < 0xF0u) {
            running = status;
            readMessage(status, bytes);
        } else {
            throw Failure("it is a damaged MIDI file: an event in it is of no kind");
        }
    }
    hanging += sounding.size();
    while (!sounding.empty()) {
        end(sounding.begin());
    }
}

void MidiReader::readTempos(SheetMusic& sheet) {
    std::uint32_t before = 0;
    std::size_t changes = 0;
    for (const auto& [at, microseconds] : tempos) {
        if (microseconds == 0 || microseconds == before) {
            continue;
        }
        if (before == 0) {
            sheet.quartersPerMinute = microsecondsPerMinute / microseconds;
        } else {
            ++changes;
        }
        before = microseconds;
    }
    lose(changes, "tempo change", sheet);
}

SheetMusic MidiReader::read(Bytes file) {
    if (file.take(4) != "MThd") {
        throw Failure("it is no MIDI file");
    }
    Bytes header(file.take(file.number(4)));
    const std::uint32_t format = header.number(2);
    const std::uint32_t trackCount = header.number(2);
    const std::uint32_t division = header.number(2);
    if (division >= filmFrames || division == 0) {
        throw Failure("it counts time in frames of a film and not in beats");
    }
    ticksPerQuarter = division;
    while (tracks.size() < trackCount) {
        const bool isTrack = file.take(4) == "MTrk";
        const Bytes chunk(file.take(file.number(4)));
        if (isTrack) {
            readTrack(chunk);
        }
    }
    bars.number();
    SheetMusic sheet;
    sheet.lengthsAreExact = false;
    for (Track& track : tracks) {
        for (auto& [channel, notes] : track.byChannel) {
            sortNotes(notes);
            for (SheetNote& note : notes) {
                note.place = bars.placeOf(note.start);
            }
            const std::string number = std::to_string(1 + &track - tracks.data());
            const std::string name = track.name.empty() ? "track " + number : track.name;
            const bool isAlone = track.byChannel.size() == 1;
            const auto program = track.programs.find(channel);
            sheet.voices.push_back({isAlone ? name : name + ", channel " + std::to_string(channel),
                                    std::move(notes),
                                    program == track.programs.end() ? "" : midiInstrument(program->second)});
        }
    }
    if (sheet.voices.empty() && drumBeats > 0) {
        throw Failure("there are only drums in it");
    }
    lose(drumBeats, "drum beat", sheet);
    lose(bends, "pitch bend", sheet);
    readTempos(sheet);
    lose(hanging, "end of a note, which its track ended", sheet);
    if (format == 2) {
        sheet.lost.emplace_back("the order of the tracks, which are pieces of their own (MIDI format 2)");
    }
    return sheet;
}

}  // namespace

SheetMusic readMidi(const std::string& contents) {
    return MidiReader().read(Bytes(contents));
}
