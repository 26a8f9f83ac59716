#include "tools/common/Text.h"

#include <array>
#include <charconv>
#include <cmath>
#include <cstdio>

namespace {

constexpr std::size_t longestQuote = 40;
constexpr char const* replacementCharacter = "\xEF\xBF\xBD";

// The bytes of the well-formed sequence at `at`, 0 when there is none. Table 3-7 of the Unicode Standard.
std::size_t sequenceAt(std::string const& text, std::size_t at) {
    auto const byte = [&](std::size_t offset) {
        return at + offset < text.size() ? static_cast<unsigned char>(text[at + offset]) : 0u;
    };
    auto const follows = [&](std::size_t offset, unsigned least, unsigned most) {
        return byte(offset) >= least && byte(offset) <= most;
    };
    unsigned const lead = byte(0);
    if (lead < 0x80) {
        return 1;
    }
    if (lead >= 0xC2 && lead <= 0xDF) {
        return follows(1, 0x80, 0xBF) ? 2 : 0;
    }
    if (lead >= 0xE0 && lead <= 0xEF) {
        unsigned const least = lead == 0xE0 ? 0xA0 : 0x80;
        unsigned const most = lead == 0xED ? 0x9F : 0xBF;
        return follows(1, least, most) && follows(2, 0x80, 0xBF) ? 3 : 0;
    }
    if (lead >= 0xF0 && lead <= 0xF4) {
        unsigned const least = lead == 0xF0 ? 0x90 : 0x80;
        unsigned const most = lead == 0xF4 ? 0x8F : 0xBF;
        return follows(1, least, most) && follows(2, 0x80, 0xBF) && follows(3, 0x80, 0xBF) ? 4 : 0;
    }
    return 0;
}

std::string escaped(char letter) {
    switch (letter) {
        case '\t':
            return "\\t";
        case '\r':
            return "\\r";
        case '\n':
            return "\\n";
        default: {
            char text[8];
            std::snprintf(text, sizeof text, "\\x%02X",
                          static_cast<unsigned>(static_cast<unsigned char>(letter)));
            return text;
        }
    }
}

}  // namespace

std::string fixed(double number, int decimals) {
    double const scale = std::pow(10.0, decimals);
    // Rounding to nothing must not leave a sign behind.
    double const shown = std::abs(number) * scale < 0.5 ? 0.0 : number;
    std::array<char, 400> digits{};
    auto const result = std::to_chars(digits.data(), digits.data() + digits.size(), shown,
                                      std::chars_format::fixed, decimals);
    return std::string(digits.data(), result.ptr);
}

std::string cleanUtf8(std::string const& text) {
    std::string clean;
    for (std::size_t at = 0; at < text.size();) {
        std::size_t const length = sequenceAt(text, at);
        if (length == 0) {
            clean += replacementCharacter;
            ++at;
        } else {
            clean.append(text, at, length);
            at += length;
        }
    }
    return clean;
}

std::size_t characterCount(std::string const& text) {
    std::size_t count = 0;
    for (std::size_t at = 0; at < text.size(); ++count) {
        std::size_t const length = sequenceAt(text, at);
        at += length == 0 ? 1 : length;
    }
    return count;
}

std::string quoted(std::string const& text) {
    std::string shown = "\"";
    std::size_t count = 0;
    for (std::size_t at = 0; at < text.size(); ++count) {
        if (count == longestQuote) {
            shown += "...";
            break;
        }
        std::size_t const length = sequenceAt(text, at);
        auto const byte = static_cast<unsigned char>(text[at]);
        if (length == 0 || byte < 0x20 || byte == 0x7F) {
            shown += escaped(text[at]);
            ++at;
        } else {
            shown.append(text, at, length);
            at += length;
        }
    }
    return shown + "\"";
}

std::string counted(std::size_t count, std::string const& what) {
    return std::to_string(count) + " " + what + (count == 1 ? "" : "s");
}

std::string padRight(std::string const& text, std::size_t width) {
    std::size_t const count = characterCount(text);
    return count < width ? text + std::string(width - count, ' ') : text;
}

std::string padLeft(std::string const& text, std::size_t width) {
    std::size_t const count = characterCount(text);
    return count < width ? std::string(width - count, ' ') + text : text;
}
