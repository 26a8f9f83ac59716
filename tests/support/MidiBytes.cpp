#include "tests/support/MidiBytes.h"

namespace {

std::string bigEndian(std::size_t number, int bytes) {
    std::string text;
    for (int shift = 8 * (bytes - 1); shift >= 0; shift -= 8) {
        text += static_cast<char>((number >> shift) & 0xFF);
    }
    return text;
}

std::string variableLength(unsigned number) {
    std::string text(1, static_cast<char>(number & 0x7F));
    while (number >>= 7) {
        text.insert(text.begin(), static_cast<char>((number & 0x7F) | 0x80));
    }
    return text;
}

}  // namespace

MidiBytes& MidiBytes::track() {
    tracks.emplace_back();
    return *this;
}

MidiBytes& MidiBytes::event(unsigned ticks, const std::vector<unsigned>& bytes) {
    tracks.back() += variableLength(ticks);
    for (const unsigned byte : bytes) {
        tracks.back() += static_cast<char>(byte);
    }
    return *this;
}

MidiBytes& MidiBytes::name(const std::string& text) {
    event(0, {0xFF, 0x03, static_cast<unsigned>(text.size())});
    tracks.back() += text;
    return *this;
}

std::string MidiBytes::file() const {
    std::string bytes =
        "MThd" + bigEndian(6, 4) + bigEndian(1, 2) + bigEndian(tracks.size(), 2) + bigEndian(division, 2);
    for (const std::string& events : tracks) {
        const std::string end("\x00\xFF\x2F\x00", 4);
        bytes += "MTrk" + bigEndian(events.size() + end.size(), 4) + events + end;
    }
    return bytes;
}
