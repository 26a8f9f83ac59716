#include "bench/hearing/Take.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

#include "analysis/Notes.h"
#include "bench/hearing/Singer.h"
#include "bench/hearing/Voice.h"

namespace {

constexpr const char* fluidR3Path = "/usr/share/sounds/sf2/FluidR3_GM.sf2";
constexpr const char* timGM6mbPath = "/usr/share/sounds/sf2/TimGM6mb.sf2";

constexpr double softestShare = 1e-5;
constexpr double loudestPeakDb = -3.0;
constexpr int levelTestStep = 3;  // semitones
constexpr int repetitions = 4;
constexpr double wideVibratoCents = 50.0;

/// Thirds, fifths, triads and sevenths on the naturals of octave 4, in semitones above C4.
constexpr int chordBasePitch = 60;

double amplitudeOf(double levelDb) {
    return std::pow(10.0, levelDb / 20.0);
}

void addChords(const Player& player, std::vector<Take>& takes) {
    static const std::vector<std::vector<int>> chords = {
        {0, 4},        {2, 5},         {4, 7},          {5, 9},       {7, 11},   {0, 7},
        {2, 9},        {4, 11},        {0, 5},          {2, 7},       {4, 9},    {0, 4, 7},
        {2, 5, 9},     {4, 7, 11},     {0, 5, 9},       {2, 7, 11},   {0, 4, 9}, {0, 4, 7, 11},
        {2, 5, 9, 12}, {5, 9, 12, 16}, {7, 11, 14, 17}, {0, 4, 7, 9},
    };
    for (const std::vector<int>& chord : chords) {
        Take take{Trial::chord, {}, Touch()};
        bool playable = true;
        for (const int semitones : chord) {
            const int pitch = chordBasePitch + semitones;
            playable = playable && pitch >= player.lowestPitch && pitch <= player.highestPitch;
            take.pitches.push_back(pitch);
        }
        if (playable) {
            takes.push_back(take);
        }
    }
}

/// C, E and A: a low, a middle and a high one, whose overtones fall on different notes.
bool isTried(int pitch) {
    return pitch % 12 == 0 || pitch % 12 == 4 || pitch % 12 == 9;
}

/// The natural `steps` below a natural.
int naturalBelow(int pitch, int steps) {
    for (; steps > 0; --steps) {
        do {
            --pitch;
        } while (Notes::ofSemitone(pitch) == -1);
    }
    return pitch;
}

void addPhrases(const Player& player, int pitch, std::vector<Take>& takes) {
    const auto add = [&](Trial trial, const std::vector<int>& pitches, int before = 0) -> Take& {
        takes.push_back({trial, pitches, Touch()});
        takes.back().before = before;
        return takes.back();
    };
    if (pitch + 12 <= player.highestPitch) {
        add(Trial::octaves, {pitch, pitch + 12});
    }
    add(Trial::repeated, {pitch});
    if (naturalBelow(pitch, 1) >= player.lowestPitch) {
        add(Trial::legato, {pitch}, naturalBelow(pitch, 1));
        if (player.source == Source::fluidR3) {
            add(Trial::legato, {pitch}, naturalBelow(pitch, 1)).touch.room = true;
        }
    }
    if (naturalBelow(pitch, 2) >= player.lowestPitch) {
        add(Trial::ringing, {pitch}, naturalBelow(pitch, 2));
    }
    add(Trial::vibrato, {pitch}).touch.vibratoCents = wideVibratoCents;
    add(Trial::glide, {pitch}).touch.glides = true;
}

/// Of those who play nothing else: each semitone of a singer, who has one loudness, and each natural of an
/// instrument at three.
void addPlainNotes(const Player& player, std::vector<Take>& takes) {
    for (int pitch = player.lowestPitch; pitch <= player.highestPitch; ++pitch) {
        if (player.source == Source::festival) {
            takes.push_back({Trial::plain, {pitch}, Touch()});
        } else if (Notes::ofSemitone(pitch) != -1) {
            for (const int velocity : {softVelocity, mediumVelocity, loudVelocity}) {
                takes.push_back({Trial::plain, {pitch}, {velocity, 0.0, false}});
            }
        }
    }
}

}  // namespace

double Take::attack() const {
    return attackSeconds + (before != 0 ? beforeSeconds : 0.0) + (touch.glides ? glideSeconds : 0.0);
}

std::vector<NoteEvent> Take::notes() const {
    const double end = attack() + holdSeconds;
    if (trial == Trial::repeated) {
        std::vector<NoteEvent> notes;
        for (int i = 0; i < repetitions; ++i) {
            const double length = holdSeconds / repetitions;
            notes.push_back({pitches.front(), attackSeconds + i * length, attackSeconds + (i + 1) * length});
        }
        return notes;
    }
    std::vector<NoteEvent> notes;
    if (before != 0) {
        notes.push_back({before, attackSeconds, trial == Trial::ringing ? end : attack()});
    }
    for (const int pitch : pitches) {
        notes.push_back({pitch, touch.glides ? attackSeconds : attack(), end});
    }
    return notes;
}

std::vector<Take> takesOf(const Player& player) {
    std::vector<Take> takes;
    if (player.source == Source::festival || player.source == Source::timGM6mb) {
        addPlainNotes(player, takes);
        return takes;
    }
    for (int pitch = player.lowestPitch; pitch <= player.highestPitch; ++pitch) {
        for (const bool room : {false, true}) {
            for (const int velocity : {softVelocity, mediumVelocity, loudVelocity}) {
                // The voices have no room of their own.
                if (!room || (velocity == mediumVelocity && player.source == Source::fluidR3)) {
                    takes.push_back({Trial::plain, {pitch}, {velocity, 0.0, room}});
                }
            }
        }
        if (!isTried(pitch)) {
            continue;
        }
        for (const double cents : {-40.0, 40.0}) {
            takes.push_back({Trial::detuned, {pitch}, {mediumVelocity, cents, false}});
        }
        for (const double levelDb : {-20.0, -40.0}) {
            takes.push_back({Trial::quiet, {pitch}, Touch(), levelDb});
            takes.push_back(
                {Trial::sensitive, {pitch}, Touch(), levelDb, Noise::none, 0.0, sensitiveMinDecibel});
        }
        for (const Noise noise : {Noise::white, Noise::hum}) {
            takes.push_back({Trial::noisy, {pitch}, Touch(), 0.0, noise, 10.0});
        }
        addPhrases(player, pitch, takes);
    }
    addChords(player, takes);
    return takes;
}

std::vector<Quiet> quiets() {
    std::vector<Quiet> all;
    for (const Noise noise : {Noise::white, Noise::hum}) {
        for (const double levelDb : {-50.0, -40.0, -30.0}) {
            for (const double minDecibel : {sensitiveMinDecibel, usualMinDecibel, -55.0}) {
                all.push_back({noise, levelDb, minDecibel});
            }
        }
    }
    return all;
}

double lateLevelDb(const std::vector<float>& sound, double attack) {
    constexpr std::size_t span = soundRateHz / 20;
    const auto levelOf = [&sound](std::size_t first) {
        const auto from = sound.begin() + static_cast<std::ptrdiff_t>(first);
        return rootMeanSquare(std::vector<float>(from, from + span));
    };
    double loudest = 0.0;
    for (std::size_t first = 0; first + span <= sound.size(); first += span) {
        loudest = std::max(loudest, levelOf(first));
    }
    const auto judgedTo = static_cast<std::size_t>(std::lround((attack + judgedToSeconds) * soundRateHz));
    return 20.0 * std::log10(std::max(softestShare, levelOf(judgedTo - span) / loudest));
}

std::vector<float> Studio::sound(const Player& player, const Take& take) {
    std::vector<float> sound = raw(player, take.notes(), take.touch, take.seconds());
    const double gain = inputGain(player) * amplitudeOf(take.levelDb);
    for (float& sample : sound) {
        sample = static_cast<float>(gain * sample);
    }
    if (take.noise != Noise::none) {
        const std::vector<float> noise =
            take.noise == Noise::white ? whiteNoise(take.seconds()) : mainsHum(take.seconds());
        mix(sound, noise, rootMeanSquare(sound) * amplitudeOf(-take.noiseBelowDb));
    }
    return sound;
}

std::vector<float> Studio::sound(const Player& player, const std::vector<NoteEvent>& notes, double seconds,
                                 const Touch& touch) {
    std::vector<float> sound = raw(player, notes, touch, seconds);
    const double gain = inputGain(player);
    for (float& sample : sound) {
        sample = static_cast<float>(gain * sample);
    }
    return sound;
}

std::vector<float> Studio::sound(const Quiet& quiet) {
    std::vector<float> sound(static_cast<std::size_t>(quietSeconds * soundRateHz), 0.0f);
    mix(sound, quiet.noise == Noise::white ? whiteNoise(quietSeconds) : mainsHum(quietSeconds),
        amplitudeOf(quiet.levelDb));
    return sound;
}

std::vector<float> Studio::raw(const Player& player, const std::vector<NoteEvent>& notes, const Touch& touch,
                               double seconds) {
    switch (player.source) {
        case Source::synthetic:
            return sing(player.vowel, notes, touch, seconds);
        case Source::festival:
            return singWords(player.vowel, notes, touch, seconds);
        case Source::fluidR3:
        case Source::timGM6mb:
            break;
    }
    std::unique_ptr<Synth>& synth = synths[player.source];
    if (!synth) {
        synth = std::make_unique<Synth>(player.source == Source::fluidR3 ? fluidR3Path : timGM6mbPath);
    }
    return synth->render(player.program, notes, touch, seconds);
}

double Studio::inputGain(const Player& player) {
    if (levelledPlayer != player.name) {
        float peak = 0.0f;
        for (int pitch = player.lowestPitch; pitch <= player.highestPitch; pitch += levelTestStep) {
            for (const float sample : raw(player, {{pitch, 0.1, 0.6}}, {loudVelocity, 0.0, false}, 0.7)) {
                peak = std::max(peak, std::abs(sample));
            }
        }
        levelledPlayer = player.name;
        levelledGain = amplitudeOf(loudestPeakDb) / peak;
    }
    return levelledGain;
}
