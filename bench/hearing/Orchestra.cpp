#include "bench/hearing/Orchestra.h"

#include <algorithm>

namespace {

constexpr int pitchesPerOctave = 12;

std::vector<Player> everybody() {
    std::vector<Player> players = {
        {"grand piano", Source::fluidR3, 0, 0, 36, 83},
        {"electric piano", Source::fluidR3, 4, 0, 36, 83},
        {"harpsichord", Source::fluidR3, 6, 0, 36, 83},
        {"vibraphone", Source::fluidR3, 11, 0, 53, 83},
        {"marimba", Source::fluidR3, 12, 0, 36, 83},
        {"church organ", Source::fluidR3, 19, 0, 36, 83},
        {"accordion", Source::fluidR3, 21, 0, 53, 83},
        {"harmonica", Source::fluidR3, 22, 0, 60, 83},
        {"nylon guitar", Source::fluidR3, 24, 0, 40, 83},
        {"steel guitar", Source::fluidR3, 25, 0, 40, 83},
        {"violin", Source::fluidR3, 40, 0, 55, 83},
        {"viola", Source::fluidR3, 41, 0, 48, 83},
        {"cello", Source::fluidR3, 42, 0, 36, 81},
        {"harp", Source::fluidR3, 46, 0, 36, 83},
        {"choir (aah)", Source::fluidR3, 52, 0, 40, 79},
        {"voice (ooh)", Source::fluidR3, 53, 0, 48, 81},
        {"trumpet", Source::fluidR3, 56, 0, 52, 83},
        {"trombone", Source::fluidR3, 57, 0, 40, 77},
        {"horn", Source::fluidR3, 60, 0, 41, 77},
        {"soprano saxophone", Source::fluidR3, 64, 0, 56, 83},
        {"alto saxophone", Source::fluidR3, 65, 0, 49, 80},
        {"tenor saxophone", Source::fluidR3, 66, 0, 44, 76},
        {"oboe", Source::fluidR3, 68, 0, 58, 83},
        {"bassoon", Source::fluidR3, 70, 0, 36, 75},
        {"clarinet", Source::fluidR3, 71, 0, 50, 83},
        {"flute", Source::fluidR3, 73, 0, 60, 83},
        {"recorder", Source::fluidR3, 74, 0, 60, 83},
        {"pan flute", Source::fluidR3, 75, 0, 60, 83},
        {"low voice, ah", Source::synthetic, 0, 'a', 36, 67},
        {"low voice, eh", Source::synthetic, 0, 'e', 36, 67},
        {"low voice, ee", Source::synthetic, 0, 'i', 36, 67},
        {"low voice, oh", Source::synthetic, 0, 'o', 36, 67},
        {"low voice, oo", Source::synthetic, 0, 'u', 36, 67},
        {"high voice, ah", Source::synthetic, 0, 'a', 60, 83},
        {"high voice, eh", Source::synthetic, 0, 'e', 60, 83},
        {"high voice, ee", Source::synthetic, 0, 'i', 60, 83},
        {"high voice, oh", Source::synthetic, 0, 'o', 60, 83},
        {"high voice, oo", Source::synthetic, 0, 'u', 60, 83},
        {"sung la", Source::festival, 0, 'a', 36, 71},
        {"sung leh", Source::festival, 0, 'e', 36, 71},
        {"sung lee", Source::festival, 0, 'i', 36, 71},
        {"sung law", Source::festival, 0, 'o', 36, 71},
        {"sung loo", Source::festival, 0, 'u', 36, 71},
    };
    const std::vector<Player> firstOnes = players;
    for (Player player : firstOnes) {
        if (player.source == Source::fluidR3) {
            player.name += " (TimGM6mb)";
            player.source = Source::timGM6mb;
            players.push_back(player);
        }
    }
    return players;
}

}  // namespace

bool Player::playsOctave(int octave) const {
    const int highestNatural = pitchOfC(octave) + pitchesPerOctave - 1;
    return lowestPitch <= pitchOfC(octave) && highestPitch >= highestNatural;
}

const std::vector<Player>& orchestra() {
    static const std::vector<Player> players = everybody();
    return players;
}

std::size_t instrumentCount() {
    static const auto firstOther =
        std::find_if(orchestra().begin(), orchestra().end(),
                     [](const Player& player) { return player.source != Source::fluidR3; });
    return static_cast<std::size_t>(firstOther - orchestra().begin());
}

bool isTunedOn(std::size_t place) {
    return place < instrumentCount() && place % 2 == 0;
}
