#include "tools/zanto-song/AbcBook.h"

#include <algorithm>
#include <cstdint>
#include <map>
#include <string_view>
#include <utility>

#include "tools/common/Arguments.h"
#include "tools/common/Command.h"
#include "tools/common/Text.h"

namespace {

constexpr int highestNumber = 99999999;
constexpr const char* blanks = " \t\r";

void appendUtf8(std::string& text, std::uint32_t code) {
    const auto byte = [&text](std::uint32_t value) { text += static_cast<char>(value); };
    if (code < 0x80u) {
        byte(code);
    } else if (code < 0x800u) {
        byte(0xC0u | code >> 6);
        byte(0x80u | (code & 0x3Fu));
    } else if (code < 0x10000u) {
        byte(0xE0u | code >> 12);
        byte(0x80u | (code >> 6 & 0x3Fu));
        byte(0x80u | (code & 0x3Fu));
    } else {
        byte(0xF0u | code >> 18);
        byte(0x80u | (code >> 12 & 0x3Fu));
        byte(0x80u | (code >> 6 & 0x3Fu));
        byte(0x80u | (code & 0x3Fu));
    }
}

std::string fromUtf16(std::string_view bytes, bool bigEndian) {
    const auto unit = [&](std::size_t at) {
        const auto first = static_cast<unsigned char>(bytes[at]);
        const auto second = static_cast<unsigned char>(bytes[at + 1]);
        return static_cast<std::uint32_t>(bigEndian ? first << 8 | second : second << 8 | first);
    };
    std::string text;
    for (std::size_t at = 0; at + 1 < bytes.size(); at += 2) {
        std::uint32_t code = unit(at);
        const bool isHigh = code >= 0xD800u && code < 0xDC00u;
        if (isHigh && at + 3 < bytes.size() && unit(at + 2) >= 0xDC00u && unit(at + 2) < 0xE000u) {
            at += 2;
            code = 0x10000u + ((code - 0xD800u) << 10) + (unit(at) - 0xDC00u);
        }
        appendUtf8(text, code >= 0xD800u && code < 0xE000u ? 0xFFFDu : code);
    }
    return text;
}

std::string toUtf8(const std::string& contents) {
    const auto beginsWith = [&](std::string_view mark) {
        return contents.compare(0, mark.size(), mark) == 0;
    };
    if (beginsWith("\xFE\xFF") || beginsWith("\xFF\xFE")) {
        return fromUtf16(std::string_view(contents).substr(2), beginsWith("\xFE"));
    }
    if (beginsWith("\xEF\xBB\xBF")) {
        return cleanUtf8(contents.substr(3));
    }
    std::string text = cleanUtf8(contents);
    if (text != contents) {
        text.clear();
        for (const char byte : contents) {
            appendUtf8(text, static_cast<unsigned char>(byte));
        }
    }
    return text;
}

std::string trimmed(const std::string& text) {
    const std::size_t first = text.find_first_not_of(blanks);
    return first == std::string::npos ? "" : text.substr(first, text.find_last_not_of(blanks) + 1 - first);
}

// Without blanks and a comment at its end.
std::string withoutComment(const std::string& line) {
    std::size_t end = line.size();
    if (line.rfind("%%", 0) != 0) {
        for (std::size_t at = 0; (at = line.find('%', at)) != std::string::npos; ++at) {
            if (at == 0 || line[at - 1] != '\\') {
                end = at;
                break;
            }
        }
    }
    return line.substr(0, end).erase(line.substr(0, end).find_last_not_of(blanks) + 1);
}

class Book {
public:
    explicit Book(const std::string& text) {
        std::size_t number = 0;
        for (std::size_t at = 0; at < text.size();) {
            const std::size_t end = std::min(text.find_first_of("\r\n", at), text.size());
            read({++number, text.substr(at, end - at)});
            at = end + (text.compare(end, 2, "\r\n") == 0 ? 2 : 1);
        }
        tellApart();
    }

    std::vector<AbcTune> tunes;

private:
    void read(const AbcLine& line);
    void tellApart();

    std::vector<AbcLine> header;
    bool isInside = false;       // the header or a tune
    bool isBehind = false;       // between tunes, where music was told of
    std::string skippedUntil{};  // the end of a block of text
};

void Book::read(const AbcLine& line) {
    const std::string& text = line.text;
    if (!skippedUntil.empty()) {
        skippedUntil = text.rfind(skippedUntil, 0) == 0 ? "" : skippedUntil;
    } else if (text.rfind("%%begin", 0) == 0) {
        skippedUntil = "%%end" + text.substr(7, text.find_first_of(blanks, 7) - 7);
    } else if (text.rfind("X:", 0) == 0) {
        const std::optional<int> number =
            parseWhole(trimmed(withoutComment(text.substr(2))), 0, highestNumber);
        // A tune without a number is known by its place.
        tunes.push_back(
            {std::to_string(number.value_or(static_cast<int>(tunes.size() + 1))), "", header, {}});
        isInside = true;
        isBehind = false;
    } else if (trimmed(text).empty()) {
        isInside = false;
    } else if (tunes.empty()) {
        const bool isField = text.size() > 1 && text[1] == ':';
        if (isField || text.rfind("%%", 0) == 0) {
            header.push_back({line.number, withoutComment(text)});
        }
    } else if (isInside) {
        AbcTune& tune = tunes.back();
        const std::string content = withoutComment(text);
        if (content.rfind("T:", 0) == 0 && tune.title.empty()) {
            tune.title = trimmed(content.substr(2));
        }
        if (!content.empty()) {
            tune.lines.push_back({line.number, content});
        }
    } else if (!isBehind && text[0] != '%' && text.find('|') != std::string::npos) {
        isBehind = true;
        tunes.back().remarks.push_back("line " + std::to_string(line.number) +
                                       ": this is behind the empty line that ends the tune");
    }
}

void Book::tellApart() {
    std::map<std::string, std::size_t> total;
    std::map<std::string, std::size_t> met;
    for (const AbcTune& tune : tunes) {
        ++total[tune.number];
    }
    for (AbcTune& tune : tunes) {
        const std::string number = tune.number;
        if (total[number] > 1) {
            tune.number += "." + std::to_string(++met[number]);
        }
    }
}

}  // namespace

AbcTune chooseTune(const std::string& contents, const std::string& number) {
    const std::vector<AbcTune> tunes = Book(toUtf8(contents)).tunes;
    if (tunes.empty()) {
        throw Failure("there is no tune in it: each begins with a line X: and its number");
    }
    if (tunes.size() == 1 && number.empty()) {
        return tunes.front();
    }
    const auto wanted =
        std::find_if(tunes.begin(), tunes.end(), [&](const AbcTune& tune) { return tune.number == number; });
    if (wanted != tunes.end()) {
        return *wanted;
    }
    std::string list = number.empty()
                           ? "there are several tunes in it; choose one with --tune and its number:"
                           : "there is no tune " + number + " in it; choose one of";
    for (const AbcTune& tune : tunes) {
        list += "\n    " + tune.number + (tune.title.empty() ? "" : " (" + tune.title + ")");
    }
    throw Failure(list);
}
