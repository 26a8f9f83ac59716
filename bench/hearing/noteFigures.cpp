// Figures of single notes, chords and rooms in which nobody plays.

#include <cstddef>
#include <map>
#include <tuple>
#include <utility>

#include "bench/hearing/Csv.h"
#include "bench/hearing/figures.h"

namespace {

constexpr double msPerSecond = 1000.0;

/// Takes grouped by `key`, which gives a tuple.
template <typename Key>
auto grouped(const std::vector<Heard>& all, const Key& key) {
    std::map<decltype(key(all.front())), std::vector<Heard>> groups;
    for (const Heard& heard : all) {
        groups[key(heard)].push_back(heard);
    }
    return groups;
}

Mean meanOfAll(const std::vector<Heard>& all) {
    return meanOf(all, [](const Heard&) { return true; });
}

int octaveOfTake(const Heard& heard) {
    return octaveOf(heard.take.pitches.front());
}

void writeNotes(const std::string& gameEar, const std::vector<Heard>& plain, Csv& csv) {
    const auto groups = grouped(plain, [](const Heard& heard) {
        return std::make_tuple(heard.place, octaveOfTake(heard), !isNatural(heard), heard.take.touch.velocity,
                               heard.take.touch.room);
    });
    for (const auto& [key, takes] : groups) {
        const auto& [place, octave, isSharp, velocity, room] = key;
        const Mean mean = meanOfAll(takes);
        const char* half = place >= instrumentCount() ? "voice" : isTunedOn(place) ? "tuned" : "other";
        const auto row = [&](const std::string& ear, double right, double wrong, const auto&... times) {
            csv.row(ear, orchestra()[place].name, half, octave, isSharp ? "sharp" : "natural", velocity,
                    room ? "room" : "dry", mean.takes, right, wrong, times...);
        };
        const Hearing& hearing = mean.hearing;
        row(gameEar, hearing.right, hearing.wrong, mean.never,
            hearing.latencySeconds.value_or(0.0) * msPerSecond, hearing.tailSeconds * msPerSecond);
        if (gameEar == "plain") {
            row("yinfft", hearing.peerRight, hearing.peerWrong, "", "", "");
        }
    }
}

/// What is different about a take, and by how much.
std::pair<std::string, double> conditionOf(const Take& take) {
    switch (take.trial) {
        case Trial::detuned:
            return {"detuned_cents", take.touch.detuneCents};
        case Trial::quiet:
            return {"level_db", take.levelDb};
        case Trial::sensitive:
            return {"level_db_sensitive", take.levelDb};
        case Trial::noisy:
            return {take.noise == Noise::white ? "white_noise_db" : "hum_db", take.noiseBelowDb};
        case Trial::chord:
            return {"chord_notes", static_cast<double>(take.pitches.size())};
        case Trial::plain:
            break;
    }
    return {"none", 0.0};
}

void writeConditions(const std::string& gameEar, const std::vector<Heard>& all, Csv& csv) {
    const auto groups = grouped(all, [](const Heard& heard) {
        return std::make_tuple(conditionOf(heard.take), octaveOfTake(heard));
    });
    for (const auto& [key, takes] : groups) {
        const auto& [condition, octave] = key;
        const Mean mean = meanOfAll(takes);
        const auto row = [&](const std::string& ear, double right, double wrong) {
            csv.row(ear, condition.first, condition.second, octave, mean.takes, right, wrong);
        };
        row(gameEar, mean.hearing.right, mean.hearing.wrong);
        const Trial trial = takes.front().take.trial;
        const bool peerListens = trial == Trial::plain || trial == Trial::noisy || trial == Trial::chord;
        if (gameEar == "plain" && peerListens) {
            row("yinfft", mean.hearing.peerRight, mean.hearing.peerWrong);
        }
    }
}

void writeSilence(const std::string& gameEar, const std::vector<FalseNotes>& heard, Csv& csv) {
    const std::vector<Quiet> rooms = quiets();
    for (std::size_t i = 0; i < rooms.size(); ++i) {
        csv.row(gameEar, rooms[i].noise == Noise::white ? "white" : "hum", rooms[i].levelDb,
                rooms[i].minDecibel, heard[i].perMinute, heard[i].longOnesPerMinute);
    }
}

}  // namespace

void writeNoteFigures(const Archive& archive, const std::string& shippedTable, const std::string& folder) {
    Csv notes(folder + "/notes.csv",
              "ear,player,half,octave,kind,velocity,room,takes,right,wrong,never,latency_ms,tail_ms");
    Csv conditions(folder + "/conditions.csv", "ear,condition,amount,octave,takes,right,wrong");
    Csv silence(folder + "/silence.csv",
                "ear,noise,level_db,threshold_db,notes_per_minute,long_notes_per_minute");
    for (GameEar& ear : gameEars(shippedTable)) {
        Listener& listener = ear.listener;
        std::vector<Heard> plain;
        std::vector<Heard> instruments;
        for (const Heard& heard : archive.takes(listener, [](const Take&) { return true; })) {
            const bool isPlain = heard.take.trial == Trial::plain;
            if (isPlain) {
                plain.push_back(heard);
            }
            // A plain take counts here when it differs from the others in nothing but the condition.
            const bool isLikeOthers =
                !isPlain || (isDry(heard) && heard.take.touch.velocity == mediumVelocity && isNatural(heard));
            if (heard.place < instrumentCount() && isLikeOthers) {
                instruments.push_back(heard);
            }
        }
        writeNotes(ear.name, plain, notes);
        writeConditions(ear.name, instruments, conditions);
        writeSilence(ear.name, archive.quietRooms(listener), silence);
    }
    notes.close();
    conditions.close();
    silence.close();
}
