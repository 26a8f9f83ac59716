#include <algorithm>
#include <cmath>
#include <cstdio>
#include <map>
#include <sstream>
#include <utility>

#include "tools/common/RunProgram.h"
#include "tools/common/Text.h"
#include "tools/zanto-song/SheetMusic.h"

namespace {

constexpr int percussionChannel = 10;
constexpr int filmFrames = 0x8000;  // a division from here on counts frames of a film

// Where bars begin: a new time signature begins a new bar.
class Bars {
public:
    void change(double atQuarter, int beats, int beatUnit) {
        if (beats <= 0 || beatUnit <= 0) {
            return;
        }
        double const barsBefore = std::round((atQuarter - from) / (beatQuarters * beatsPerBar));
        firstBar += static_cast<int>(barsBefore);
        from = atQuarter;
        beatsPerBar = beats;
        beatQuarters = 4.0 / beatUnit;
    }
    std::string placeOf(double quarter) const {
        constexpr double nearly = 0.05;
        double const beats = (quarter - from) / beatQuarters + nearly;
        double const bar = std::floor(beats / beatsPerBar);
        return "bar " + std::to_string(firstBar + static_cast<int>(bar)) + ", beat " +
               std::to_string(1 + static_cast<int>(beats - bar * beatsPerBar));
    }

private:
    double from = 0.0;
    int firstBar = 1;
    double beatsPerBar = 4.0;
    double beatQuarters = 1.0;
};

// Takes in what mftext prints, line by line.
class MidiListing {
public:
    bool read(std::string const& listing, std::string& problem);
    SheetMusic sheet() &&;

private:
    struct Track {
        std::string name;
        std::map<int, std::vector<SheetNote>> byChannel;
    };
    using Sounding = std::map<std::pair<int, int>, std::vector<SheetNote>>;  // by channel and pitch

    void readEvent(long ticks, std::string const& event, std::string const& text);
    void begin(int channel, int pitch, double at);
    void end(int channel, int pitch, double at);
    void endAll(double at);

    double ticksPerQuarter = 0.0;
    std::vector<Track> tracks;
    Sounding sounding;
    Bars bars;
    double quartersPerMinute = 0.0;
    std::size_t drumBeats = 0;
    std::size_t bends = 0;
    std::size_t tempoChanges = 0;
};

bool MidiListing::read(std::string const& listing, std::string& problem) {
    std::istringstream lines(listing);
    std::string line;
    std::string pendingText;
    long lastTicks = 0;
    while (std::getline(lines, line)) {
        int division = 0;
        long ticks = 0;
        int eventStart = 0;
        if (std::sscanf(line.c_str(), "Header format=%*d ntrks=%*d division=%d", &division) == 1) {
            ticksPerQuarter = division < filmFrames ? division : 0;
        } else if (line.rfind("Track start", 0) == 0) {
            tracks.emplace_back();
            lastTicks = 0;
        } else if (line.rfind("Track end", 0) == 0) {
            endAll(static_cast<double>(lastTicks) / ticksPerQuarter);
        } else if (std::sscanf(line.c_str(), "Time=%ld %n", &ticks, &eventStart) == 1 && !tracks.empty()) {
            if (ticksPerQuarter <= 0.0) {
                problem = "it counts time in frames of a film and not in beats";
                return false;
            }
            lastTicks = ticks;
            std::string const event = line.substr(static_cast<std::size_t>(eventStart));
            std::string text;
            if (event.rfind("Meta Text", 0) == 0 && std::getline(lines, text)) {
                text = text.substr(std::min(text.find('<') + 1, text.size()));
                text.resize(std::min(text.rfind('>'), text.size()));
            }
            readEvent(ticks, event, text);
        }
    }
    return true;
}

void MidiListing::readEvent(long ticks, std::string const& event, std::string const& text) {
    double const at = static_cast<double>(ticks) / ticksPerQuarter;
    int channel = 0;
    int pitch = 0;
    int strength = 0;
    int first = 0;
    int second = 0;
    constexpr char const* nameOfTrack = "Meta Text, type=0x03";
    if (std::sscanf(event.c_str(), "Note on, chan=%d pitch=%d vol=%d", &channel, &pitch, &strength) == 3) {
        if (channel == percussionChannel) {
            drumBeats += strength > 0 ? 1 : 0;
            return;
        }
        end(channel, pitch, at);
        if (strength > 0) {
            begin(channel, pitch, at);
        }
    } else if (std::sscanf(event.c_str(), "Note off, chan=%d pitch=%d", &channel, &pitch) == 2) {
        end(channel, pitch, at);
    } else if (std::sscanf(event.c_str(), "Tempo, microseconds-per-MIDI-quarter-note=%d", &first) == 1) {
        if (quartersPerMinute > 0.0) {
            ++tempoChanges;
        } else if (first > 0) {
            quartersPerMinute = 60e6 / first;
        }
    } else if (std::sscanf(event.c_str(), "Time signature=%d/%d", &first, &second) == 2) {
        bars.change(at, first, second);
    } else if (event.rfind("Pitchbend", 0) == 0) {
        ++bends;
    } else if (event.rfind(nameOfTrack, 0) == 0) {
        tracks.back().name = text;
    }
}

void MidiListing::begin(int channel, int pitch, double at) {
    sounding[{channel, pitch}].push_back({at, 0.0, pitch, bars.placeOf(at)});
}

void MidiListing::end(int channel, int pitch, double at) {
    std::vector<SheetNote>& notes = sounding[{channel, pitch}];
    for (SheetNote& note : notes) {
        note.length = at - note.start;
        tracks.back().byChannel[channel].push_back(std::move(note));
    }
    notes.clear();
}

void MidiListing::endAll(double at) {
    for (auto const& [key, notes] : sounding) {
        if (!notes.empty()) {
            end(key.first, key.second, at);
        }
    }
}

SheetMusic MidiListing::sheet() && {
    SheetMusic sheet;
    sheet.lengthsAreExact = false;
    if (quartersPerMinute > 0.0) {
        sheet.quartersPerMinute = quartersPerMinute;
    }
    for (Track& track : tracks) {
        for (auto& [channel, notes] : track.byChannel) {
            std::stable_sort(notes.begin(), notes.end(), [](SheetNote const& left, SheetNote const& right) {
                return std::make_pair(left.start, left.pitch) < std::make_pair(right.start, right.pitch);
            });
            std::string const number = std::to_string(1 + &track - tracks.data());
            std::string const name = track.name.empty() ? "track " + number : track.name;
            bool const isAlone = track.byChannel.size() == 1;
            sheet.voices.push_back(
                {isAlone ? name : name + ", channel " + std::to_string(channel), std::move(notes)});
        }
    }
    if (drumBeats > 0) {
        sheet.lost.push_back(counted(drumBeats, "drum beat"));
    }
    if (bends > 0) {
        sheet.lost.push_back(counted(bends, "pitch bend"));
    }
    if (tempoChanges > 0) {
        sheet.lost.push_back(counted(tempoChanges, "tempo change"));
    }
    return sheet;
}

}  // namespace

std::optional<SheetMusic> readMidi(std::string const& path, std::string& problem) {
    // A name that begins with a dash would be an option.
    std::optional<ProgramResult> const listed =
        runProgram({"mftext", path.front() == '-' ? "./" + path : path});
    if (!listed) {
        problem = "reading it takes the program mftext; install the package abcmidi";
        return std::nullopt;
    }
    std::size_t const complaint = listed->errors.find("Error");
    if (listed->status != 0 || complaint != std::string::npos || listed->out.rfind("Header", 0) != 0) {
        std::string const line = complaint == std::string::npos ? "" : listed->errors.substr(complaint);
        problem =
            "it is no sound MIDI file" + (line.empty() ? "" : " (" + line.substr(0, line.find('\n')) + ")");
        return std::nullopt;
    }
    MidiListing listing;
    if (!listing.read(listed->out, problem)) {
        return std::nullopt;
    }
    return std::move(listing).sheet();
}
