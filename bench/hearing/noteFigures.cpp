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

void writeNotes(const std::string& ear, const std::vector<Heard>& plain, Csv& csv) {
    const auto groups = grouped(plain, [](const Heard& heard) {
        return std::make_tuple(heard.place, octaveOfTake(heard), !isNatural(heard), heard.take.touch.velocity,
                               heard.take.touch.room);
    });
    for (const auto& [key, takes] : groups) {
        const auto& [place, octave, isSharp, velocity, room] = key;
        const Mean mean = meanOfAll(takes);
        csv.row(ear, orchestra()[place].name, partOf(place), octave, isSharp ? "sharp" : "natural", velocity,
                room ? "room" : "dry", mean.takes, mean.hearing.right, mean.hearing.wrong, mean.never,
                mean.hearing.latencySeconds.value_or(0.0) * msPerSecond,
                mean.hearing.tailSeconds * msPerSecond, mean.hearing.lateDb);
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
        case Trial::octaves:
            return {"octave_together", 1.0};
        case Trial::repeated:
            return {"repeated", 1.0};
        case Trial::legato:
            return {take.touch.room ? "legato_room" : "legato_dry", 1.0};
        case Trial::ringing:
            return {"ringing", 1.0};
        case Trial::vibrato:
            return {"vibrato_cents", take.touch.vibratoCents};
        case Trial::glide:
            return {"glide", 1.0};
        case Trial::plain:
            break;
    }
    return {"none", 0.0};
}

void writeConditions(const std::string& ear, const std::vector<Heard>& all, Csv& csv) {
    const auto groups = grouped(all, [](const Heard& heard) {
        return std::make_tuple(conditionOf(heard.take), std::string(partOf(heard.place)),
                               octaveOfTake(heard));
    });
    for (const auto& [key, takes] : groups) {
        const auto& [condition, half, octave] = key;
        const Mean mean = meanOfAll(takes);
        csv.row(ear, condition.first, condition.second, half, octave, mean.takes, mean.hearing.right,
                mean.hearing.wrong, mean.never, mean.hearing.latencySeconds.value_or(0.0) * msPerSecond,
                mean.hearing.tailSeconds * msPerSecond);
    }
}

void writeSilence(const std::string& ear, const std::vector<FalseNotes>& heard, Csv& csv) {
    const std::vector<Quiet> rooms = quiets();
    for (std::size_t i = 0; i < rooms.size(); ++i) {
        csv.row(ear, rooms[i].noise == Noise::white ? "white" : "hum", rooms[i].levelDb, rooms[i].minDecibel,
                heard[i].perMinute, heard[i].longOnesPerMinute);
    }
}

}  // namespace

void writeNoteFigures(const Archive& archive, const std::string& shippedTable, const std::string& folder) {
    Csv notes(folder + "/notes.csv",
              "ear,player,half,octave,kind,velocity,room,takes,right,wrong,never,latency_ms,tail_ms,late_db");
    Csv conditions(folder + "/conditions.csv",
                   "ear,condition,amount,half,octave,takes,right,wrong,never,latency_ms,tail_ms");
    Csv silence(folder + "/silence.csv",
                "ear,noise,level_db,threshold_db,notes_per_minute,long_notes_per_minute");
    for (Ear& ear : allEars(shippedTable)) {
        Listener& listener = ear.listener;
        std::vector<Heard> plain;
        std::vector<Heard> conditioned;
        for (const Heard& heard : archive.takes(listener, [](const Take&) { return true; })) {
            const bool isPlain = heard.take.trial == Trial::plain;
            if (isPlain) {
                plain.push_back(heard);
            }
            // A plain take counts here when it differs from the others in nothing but the condition.
            const bool isLikeOthers =
                !isPlain || (isDry(heard) && heard.take.touch.velocity == mediumVelocity && isNatural(heard));
            if (isLikeOthers) {
                conditioned.push_back(heard);
            }
        }
        writeNotes(ear.name, plain, notes);
        writeConditions(ear.name, conditioned, conditions);
        writeSilence(ear.name, archive.quietRooms(listener), silence);
    }
    notes.close();
    conditions.close();
    silence.close();
}
