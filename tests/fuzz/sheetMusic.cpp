// Any bytes as sheet music, for the reader of whose call CMake says ZANTO_READ. What it makes of them must be
// in order: voices with notes, by start, with times that are numbers, no more than the limits allow; and a
// song that is made of a voice must have no error.

#include <algorithm>
#include <cmath>

#include "tests/fuzz/Input.h"
#include "tools/zanto-song/Arrange.h"
#include "tools/zanto-song/Melody.h"
#include "tools/zanto-song/SheetMusic.h"
#include "tools/zanto-song/SongCheck.h"

namespace {

void tryVoice(const SheetVoice& voice, const SheetMusic& sheet) {
    require(!voice.notes.empty(), "a voice has notes");
    require(std::is_sorted(
                voice.notes.begin(), voice.notes.end(),
                [](const SheetNote& left, const SheetNote& right) { return left.start < right.start; }),
            "notes stand by their start");
    for (const SheetNote& note : voice.notes) {
        require(note.start >= 0.0 && note.start <= mostQuarters, "a note begins within the limits");
        require(std::isfinite(note.length) && note.length >= 0.0, "a note's length is a number");
        require(!note.place.empty(), "a note has a place");
    }
    const SheetVoice melody = melodyOf(voice);
    require(!melody.notes.empty() && melody.notes.size() <= voice.notes.size(),
            "a melody is a part of its voice");
    for (const bool mayRound : {false, true}) {
        try {
            const Arrangement song = arrange(melody, sheet, {std::nullopt, std::nullopt, mayRound});
            require(song.kept <= melody.notes.size(), "no note is made up");
            for (const Problem& problem : checkSong(songText(song.slots))) {
                require(problem.severity != Problem::Severity::error, "a song that was made can be played");
            }
        } catch (const Failure&) {
            // Not all music is a song.
        }
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string text(reinterpret_cast<const char*>(data), size);
    try {
        const SheetMusic sheet = ZANTO_READ;
        std::size_t count = 0;
        for (const SheetVoice& voice : sheet.voices) {
            count += voice.notes.size();
            tryVoice(voice, sheet);
        }
        require(count <= mostSheetNotes, "there are no more notes than the limit");
        require(sheet.quartersPerMinute > 0.0 && std::isfinite(sheet.quartersPerMinute),
                "the tempo is a number");
    } catch (const Failure&) {
        // Not all bytes are music.
    }
    return 0;
}
