#include "tools/zanto-song/songText.h"

#include <algorithm>
#include <cstdint>

#include "game/Song.h"

std::size_t slotsWithNotes(const Song& song) {
    const std::vector<std::vector<Song::NoteMark>>& slots = song.getSlots();
    std::int64_t end = 0;
    for (std::size_t slot = 0; slot < slots.size(); ++slot) {
        for (const Song::NoteMark& mark : slots[slot]) {
            end = std::max(end, static_cast<std::int64_t>(slot) + std::max(mark.length, 1));
        }
    }
    return std::min(static_cast<std::size_t>(end), slots.size());
}

void endWithLastNote(WrittenSlots& slots) {
    std::size_t end = 0;
    for (std::size_t slot = 0; slot < slots.size(); ++slot) {
        for (const WrittenNote& note : slots[slot]) {
            end = std::max(end, slot + static_cast<std::size_t>(note.length));
        }
    }
    slots.resize(end);
}

std::string songText(const WrittenSlots& slots) {
    std::string text = "120 4\n";
    for (const std::vector<WrittenNote>& slot : slots) {
        std::string line;
        for (const WrittenNote& note : slot) {
            line += (line.empty() ? "" : " ") + Notes::idToName(note.note) +
                    (note.length == 1 ? "" : std::to_string(note.length));
        }
        text += line + "\n";
    }
    if (!slots.empty() && slots.back().empty()) {
        text.pop_back();  // the line feed before it makes this slot already
    }
    return text;
}
