#include "bench/hearing/Orchestra.h"

#include <algorithm>

namespace {

constexpr int pitchesPerOctave = 12;

}  // namespace

bool Player::playsOctave(int octave) const {
    const int highestNatural = pitchOfC(octave) + pitchesPerOctave - 1;
    return lowestPitch <= pitchOfC(octave) && highestPitch >= highestNatural;
}

const std::vector<Player>& orchestra() {
    static const std::vector<Player> players = {
        {"grand piano", 0, 0, 36, 83},
        {"electric piano", 4, 0, 36, 83},
        {"harpsichord", 6, 0, 36, 83},
        {"vibraphone", 11, 0, 53, 83},
        {"marimba", 12, 0, 36, 83},
        {"church organ", 19, 0, 36, 83},
        {"accordion", 21, 0, 53, 83},
        {"harmonica", 22, 0, 60, 83},
        {"nylon guitar", 24, 0, 40, 83},
        {"steel guitar", 25, 0, 40, 83},
        {"violin", 40, 0, 55, 83},
        {"viola", 41, 0, 48, 83},
        {"cello", 42, 0, 36, 81},
        {"harp", 46, 0, 36, 83},
        {"choir (aah)", 52, 0, 40, 79},
        {"voice (ooh)", 53, 0, 48, 81},
        {"trumpet", 56, 0, 52, 83},
        {"trombone", 57, 0, 40, 77},
        {"horn", 60, 0, 41, 77},
        {"soprano saxophone", 64, 0, 56, 83},
        {"alto saxophone", 65, 0, 49, 80},
        {"tenor saxophone", 66, 0, 44, 76},
        {"oboe", 68, 0, 58, 83},
        {"bassoon", 70, 0, 36, 75},
        {"clarinet", 71, 0, 50, 83},
        {"flute", 73, 0, 60, 83},
        {"recorder", 74, 0, 60, 83},
        {"pan flute", 75, 0, 60, 83},
        {"low voice, ah", -1, 'a', 36, 67},
        {"low voice, eh", -1, 'e', 36, 67},
        {"low voice, ee", -1, 'i', 36, 67},
        {"low voice, oh", -1, 'o', 36, 67},
        {"low voice, oo", -1, 'u', 36, 67},
        {"high voice, ah", -1, 'a', 60, 83},
        {"high voice, eh", -1, 'e', 60, 83},
        {"high voice, ee", -1, 'i', 60, 83},
        {"high voice, oh", -1, 'o', 60, 83},
        {"high voice, oo", -1, 'u', 60, 83},
    };
    return players;
}

std::size_t instrumentCount() {
    static const auto firstVoice = std::find_if(orchestra().begin(), orchestra().end(),
                                                [](const Player& player) { return player.isVoice(); });
    return static_cast<std::size_t>(firstVoice - orchestra().begin());
}

bool isTunedOn(std::size_t place) {
    return place < instrumentCount() && place % 2 == 0;
}
