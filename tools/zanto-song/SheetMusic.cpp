#include "tools/zanto-song/SheetMusic.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <map>
#include <utility>

#include "tools/common/Text.h"

Failure tooLong() {
    return Failure("it is longer than " + fixed(mostQuarters, 0) + " quarter notes or " +
                   std::to_string(mostSheetNotes) + " notes");
}

void sortNotes(std::vector<SheetNote>& notes) {
    std::stable_sort(notes.begin(), notes.end(), [](const SheetNote& left, const SheetNote& right) {
        return std::make_pair(left.start, left.pitch) < std::make_pair(right.start, right.pitch);
    });
}

std::string pitchName(int pitch) {
    constexpr std::array<const char*, 12> names = {"C",  "C#", "D",  "D#", "E",  "F",
                                                   "F#", "G",  "G#", "A",  "A#", "B"};
    const int index = ((pitch % 12) + 12) % 12;
    return names.at(static_cast<std::size_t>(index)) + std::to_string((pitch - index) / 12 - 1);
}

std::string midiInstrument(int program) {
    // By the first program of each name: of the standard's families of eight where players know the family.
    static const std::map<int, const char*> names = {{0, "piano"},
                                                     {2, "electric piano"},
                                                     {3, "honky-tonk piano"},
                                                     {4, "electric piano"},
                                                     {6, "harpsichord"},
                                                     {7, "clavinet"},
                                                     {8, "celesta"},
                                                     {9, "glockenspiel"},
                                                     {10, "music box"},
                                                     {11, "vibraphone"},
                                                     {12, "marimba"},
                                                     {13, "xylophone"},
                                                     {14, "tubular bells"},
                                                     {15, "dulcimer"},
                                                     {16, "organ"},
                                                     {19, "church organ"},
                                                     {20, "reed organ"},
                                                     {21, "accordion"},
                                                     {22, "harmonica"},
                                                     {23, "bandoneon"},
                                                     {24, "guitar"},
                                                     {26, "electric guitar"},
                                                     {32, "double bass"},
                                                     {33, "bass guitar"},
                                                     {38, "synthesizer bass"},
                                                     {40, "violin"},
                                                     {41, "viola"},
                                                     {42, "cello"},
                                                     {43, "double bass"},
                                                     {44, "strings"},
                                                     {45, "plucked strings"},
                                                     {46, "harp"},
                                                     {47, "timpani"},
                                                     {48, "strings"},
                                                     {52, "choir"},
                                                     {53, "voice"},
                                                     {54, "synthesizer voice"},
                                                     {55, "orchestra hit"},
                                                     {56, "trumpet"},
                                                     {57, "trombone"},
                                                     {58, "tuba"},
                                                     {59, "trumpet"},
                                                     {60, "horn"},
                                                     {61, "brass"},
                                                     {64, "soprano saxophone"},
                                                     {65, "alto saxophone"},
                                                     {66, "tenor saxophone"},
                                                     {67, "baritone saxophone"},
                                                     {68, "oboe"},
                                                     {69, "cor anglais"},
                                                     {70, "bassoon"},
                                                     {71, "clarinet"},
                                                     {72, "piccolo"},
                                                     {73, "flute"},
                                                     {74, "recorder"},
                                                     {75, "pan flute"},
                                                     {76, "bottle"},
                                                     {77, "shakuhachi"},
                                                     {78, "whistle"},
                                                     {79, "ocarina"},
                                                     {80, "synthesizer"},
                                                     {96, "effect"},
                                                     {104, "sitar"},
                                                     {105, "banjo"},
                                                     {106, "shamisen"},
                                                     {107, "koto"},
                                                     {108, "kalimba"},
                                                     {109, "bagpipe"},
                                                     {110, "fiddle"},
                                                     {111, "shawm"},
                                                     {112, "bell"},
                                                     {113, "agogo"},
                                                     {114, "steel drums"},
                                                     {115, "wood block"},
                                                     {116, "taiko"},
                                                     {117, "tom"},
                                                     {118, "synthesizer drum"},
                                                     {119, "cymbal"},
                                                     {120, "effect"}};
    return program >= 0 && program < 128 ? std::prev(names.upper_bound(program))->second : "";
}
