#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

#include "bench/hearing/Listener.h"
#include "bench/hearing/Orchestra.h"
#include "bench/hearing/Synth.h"
#include "game/Song.h"

/// A shipped song and what one can reach in it.
struct ShippedSong {
    std::string title;
    std::string path;
    std::shared_ptr<const Song> song;  ///< as it was loaded
    int notes = 0;                     ///< that can be awarded
    double bestScore = 0.0;            ///< 100 points for every slot of every note
};

/// The songs of the listing under `dataFolder`, in its order. Throws std::runtime_error for one that does not
/// load.
std::vector<ShippedSong> shippedSongs(const std::string& dataFolder);

/// One performance of a player.
struct Piece {
    std::size_t song;
    int octave;
    double gapSeconds;  ///< between the end of a note and the next beat
    Touch touch;
};

constexpr double detachedGapSeconds = 0.12;

/// All performances of a player, by its place in the orchestra, always in the same order: every fifth song
/// in every octave that it has whole, legato and detached. An instrument plays every second one with room,
/// and the others an octave higher. The next player takes the next songs. Of the voices only the two
/// synthetic ones that sing "ah" perform.
std::vector<Piece> piecesOf(std::size_t place, std::size_t songCount);

/// What a performance of a song earned.
struct Outcome {
    int awards = 0;
    int penalties = 0;
    double score = 0.0;
};

/// The song as a faithful player plays it: every note in `octave` from the moment at which its window opens,
/// the slot's beat, for its whole length less `gapSeconds`.
std::vector<NoteEvent> performance(const Song& song, int octave, double gapSeconds);

/// How long the sound of a performance is.
double performanceSeconds(const Song& song);

/// Scores a recorded performance as the game does, frame by frame, once for each of `aheadSeconds`, the time
/// by which the player is ahead of the beat.
std::vector<Outcome> outcomes(const ShippedSong& shipped, const Recording& recording, Listener& listener,
                              const std::vector<double>& aheadSeconds);
