#include "tools/common/Text.h"

#include <array>
#include <charconv>
#include <cmath>
#include <cstdio>

#include "platform/ffont/Utf8.h"

namespace {

constexpr std::size_t longestQuote = 40;
constexpr const char* replacementText = "\xEF\xBF\xBD";

// The bytes of the character at `at`, 0 for a byte that belongs to none.
std::size_t sequenceAt(const std::string& text, std::size_t at) {
    const char* const begin = text.c_str() + at;
    const char* end = begin;
    const char32_t character = nextCharacter(end);
    const auto length = static_cast<std::size_t>(end - begin);
    if (character == replacementCharacter && length == 1) {
        return 0;
    }
    return character == 0 ? 1 : length;
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
    const double scale = std::pow(10.0, decimals);
    // Rounding to nothing must not leave a sign behind.
    const double shown = std::abs(number) * scale < 0.5 ? 0.0 : number;
    std::array<char, 400> digits{};
    const auto result = std::to_chars(digits.data(), digits.data() + digits.size(), shown,
                                      std::chars_format::fixed, decimals);
    return std::string(digits.data(), result.ptr);
}

std::string cleanUtf8(const std::string& text) {
    std::string clean;
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t length = sequenceAt(text, at);
        if (length == 0) {
            clean += replacementText;
            ++at;
        } else {
            clean.append(text, at, length);
            at += length;
        }
    }
    return clean;
}

std::size_t characterCount(const std::string& text) {
    std::size_t count = 0;
    for (std::size_t at = 0; at < text.size(); ++count) {
        const std::size_t length = sequenceAt(text, at);
        at += length == 0 ? 1 : length;
    }
    return count;
}

std::string quoted(const std::string& text) {
    std::string shown = "\"";
    std::size_t count = 0;
    for (std::size_t at = 0; at < text.size(); ++count) {
        if (count == longestQuote) {
            shown += "...";
            break;
        }
        const std::size_t length = sequenceAt(text, at);
        const auto byte = static_cast<unsigned char>(text[at]);
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

std::string counted(std::size_t count, const std::string& what) {
    return std::to_string(count) + " " + what + (count == 1 ? "" : "s");
}

std::string padRight(const std::string& text, std::size_t width) {
    const std::size_t count = characterCount(text);
    return count < width ? text + std::string(width - count, ' ') : text;
}

std::string padLeft(const std::string& text, std::size_t width) {
    const std::size_t count = characterCount(text);
    return count < width ? std::string(width - count, ' ') + text : text;
}

std::string escapedXml(const std::string& text) {
    std::string safe;
    for (const char letter : cleanUtf8(text)) {
        switch (letter) {
            case '&':
                safe += "&amp;";
                break;
            case '<':
                safe += "&lt;";
                break;
            case '"':
                safe += "&quot;";
                break;
            case '>':
                safe += "&gt;";
                break;
            default:
                // XML has no place for other control characters, not even escaped.
                safe += static_cast<unsigned char>(letter) < 0x20 ? ' ' : letter;
        }
    }
    return safe;
}
