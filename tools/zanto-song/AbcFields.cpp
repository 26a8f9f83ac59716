#include "tools/zanto-song/AbcFields.h"

#include <algorithm>
#include <cctype>
#include <map>
#include <sstream>
#include <utility>
#include <vector>

#include "tools/common/Arguments.h"

namespace {

constexpr std::size_t mostParts = 10000;
constexpr std::size_t deepestParts = 10;

char lower(char letter) {
    return static_cast<char>(std::tolower(static_cast<unsigned char>(letter)));
}

std::vector<std::string> wordsOf(const std::string& text) {
    std::istringstream in(text);
    std::vector<std::string> words;
    for (std::string word; in >> word;) {
        words.push_back(word);
    }
    return words;
}

std::string withoutBlanks(std::string text) {
    text.erase(
        std::remove_if(text.begin(), text.end(), [](char letter) { return letter == ' ' || letter == '\t'; }),
        text.end());
    return text;
}

// The place of a key in the circle of fifths, C major being 0.
int fifthsOfTonic(char letter) {
    constexpr const char* circle = "FCGDAEB";
    return static_cast<int>(std::string(circle).find(letter)) - 1;
}

std::optional<int> fifthsOfMode(const std::string& mode) {
    static const std::map<std::string, int> modes = {{"", 0},     {"maj", 0},  {"ion", 0},  {"m", -3},
                                                     {"min", -3}, {"aeo", -3}, {"mix", -1}, {"dor", -2},
                                                     {"phr", -4}, {"lyd", 1},  {"loc", -5}};
    const auto found = modes.find(mode.substr(0, 3));
    return found == modes.end() ? std::nullopt : std::optional<int>(found->second);
}

AbcSignature signatureOf(int fifths) {
    constexpr const char* sharps = "FCGDAEB";
    AbcSignature signature{};
    for (int count = 0; count < std::abs(fifths); ++count) {
        const int index = fifths > 0 ? count % 7 : 6 - count % 7;
        signature.at(static_cast<std::size_t>(abcStep(sharps[index]))) += fifths > 0 ? 1 : -1;
    }
    return signature;
}

// "^f", "_b", "=c": an accidental for one note of the signature.
bool addAccidental(const std::string& word, AbcSignature& signature) {
    std::size_t at = 0;
    int semitones = 0;
    while (at < word.size() && (word[at] == '^' || word[at] == '_' || word[at] == '=')) {
        semitones += word[at] == '^' ? 1 : word[at] == '_' ? -1 : 0;
        ++at;
    }
    if (at == 0 || at > 2 || at + 1 != word.size() || abcStep(word[at]) == -1) {
        return false;
    }
    signature.at(static_cast<std::size_t>(abcStep(word[at]))) = semitones;
    return true;
}

}  // namespace

int abcStep(char letter) {
    const std::size_t step = std::string("cdefgab").find(lower(letter));
    return letter == '\0' || step == std::string::npos ? -1 : static_cast<int>(step);
}

std::optional<AbcSignature> abcSignature(const std::string& text) {
    // Accidentals may follow without a blank: "D^c_b".
    std::string apart;
    for (std::size_t at = 0; at < text.size(); ++at) {
        const bool isSign = text[at] == '^' || text[at] == '_';
        apart += isSign && at > 0 && text[at - 1] != text[at] ? " " : "";
        apart += text[at];
    }
    std::vector<std::string> words = wordsOf(apart);
    if (words.empty()) {
        return std::nullopt;
    }
    if (words[0] == "none") {
        return AbcSignature{};
    }
    if (words[0] == "HP" || words[0] == "Hp") {
        return signatureOf(2);
    }
    AbcSignature signature{};
    std::size_t next = 0;
    const std::string& tonic = words[0];
    if (abcStep(tonic[0]) != -1 && std::isupper(static_cast<unsigned char>(tonic[0])) != 0) {
        const bool isSharp = tonic.size() > 1 && tonic[1] == '#';
        const bool isFlat = tonic.size() > 1 && tonic[1] == 'b';
        std::string mode = tonic.substr(isSharp || isFlat ? 2 : 1);
        next = 1;
        std::string second = words.size() > 1 ? words[1] : "";
        std::transform(mode.begin(), mode.end(), mode.begin(), lower);
        std::transform(second.begin(), second.end(), second.begin(), lower);
        if (mode.empty() && !second.empty() && (second == "exp" || fifthsOfMode(second))) {
            mode = second;
            next = 2;
        }
        if (mode != "exp") {
            const std::optional<int> fifths = fifthsOfMode(mode);
            if (!fifths) {
                return std::nullopt;
            }
            signature = signatureOf(fifthsOfTonic(tonic[0]) + *fifths + (isSharp ? 7 : 0) - (isFlat ? 7 : 0));
        }
    } else if (tonic != "exp" && !addAccidental(tonic, signature)) {
        return std::nullopt;
    }
    for (; next < words.size(); ++next) {
        addAccidental(words[next], signature);
    }
    return signature;
}

std::optional<double> abcFraction(const std::string& text) {
    const std::string fraction = withoutBlanks(text);
    const std::size_t slash = fraction.find('/');
    const std::optional<int> over = parseWhole(fraction.substr(0, slash), 1, 1024);
    const std::optional<int> under =
        slash == std::string::npos ? std::optional<int>(1) : parseWhole(fraction.substr(slash + 1), 1, 1024);
    return over && under ? std::optional<double>(4.0 * *over / *under) : std::nullopt;
}

std::optional<AbcMetre> abcMetre(const std::string& text) {
    std::string metre = withoutBlanks(text);
    if (metre.empty() || metre == "none") {
        return AbcMetre{};
    }
    if (metre == "C" || metre == "C|") {
        return AbcMetre{4.0, metre == "C" ? 1.0 : 2.0, false};
    }
    const std::size_t slash = metre.find('/');
    if (slash == std::string::npos) {
        return std::nullopt;
    }
    const std::optional<int> under = parseWhole(metre.substr(slash + 1), 1, 128);
    int over = 0;
    metre.resize(slash);
    std::replace_if(
        metre.begin(), metre.end(),
        [](char letter) { return letter == '(' || letter == ')' || letter == '+'; }, ' ');
    for (const std::string& word : wordsOf(metre)) {
        const std::optional<int> beats = parseWhole(word, 1, 128);
        if (!beats) {
            return std::nullopt;
        }
        over += *beats;
    }
    if (!under || over == 0) {
        return std::nullopt;
    }
    return AbcMetre{4.0 * over / *under, 4.0 / *under, *under == 8 && over % 3 == 0};
}

std::optional<double> abcTempo(const std::string& text, double unitQuarters) {
    std::string tempo;
    bool isQuoted = false;
    for (const char letter : text) {
        isQuoted = isQuoted != (letter == '"');
        tempo += isQuoted || letter == '"' ? ' ' : letter;
    }
    const std::size_t equals = tempo.find('=');
    const std::vector<std::string> before = wordsOf(tempo.substr(0, equals));
    const std::vector<std::string> after =
        equals == std::string::npos ? before : wordsOf(tempo.substr(equals + 1));
    const std::optional<double> count =
        after.size() == 1 ? parseNumber(after[0], 1.0, 10000.0) : std::nullopt;
    if (!count) {
        return std::nullopt;
    }
    double beat = 0.0;
    if (equals == std::string::npos) {
        beat = unitQuarters;
    } else if (before.size() == 1 && before[0][0] == 'C') {
        beat = unitQuarters * parseWhole(before[0].substr(1), 1, 64).value_or(1);
    } else {
        for (const std::string& word : before) {
            const std::optional<double> part = abcFraction(word);
            if (!part) {
                return std::nullopt;
            }
            beat += *part;
        }
    }
    return beat > 0.0 ? std::optional<double>(beat * *count) : std::nullopt;
}

std::string abcValue(const std::string& text, const std::string& name) {
    const std::string wanted = " " + name + "=";
    const std::size_t found = (" " + text).find(wanted);
    if (found == std::string::npos) {
        return "";
    }
    const std::string rest = text.substr(found + wanted.size() - 1);
    return rest.rfind('"', 0) == 0 ? rest.substr(1, rest.find('"', 1) - 1)
                                   : rest.substr(0, rest.find_first_of(" \t"));
}

bool abcIsClef(const std::string& word) {
    for (const char* const clef : {"treble", "bass", "alto", "tenor", "perc"}) {
        if (word.rfind(clef, 0) == 0) {
            return true;
        }
    }
    return word.find('=') != std::string::npos;
}

int abcOctaves(const std::string& text) {
    std::string shift = abcValue(text, "octave");
    if (shift.rfind('+', 0) == 0) {
        shift.erase(0, 1);
    }
    int octaves = parseWhole(shift, -4, 4).value_or(0);
    for (const std::string& word : wordsOf(text)) {
        const std::string clef = word.rfind("clef=", 0) == 0 ? word.substr(5) : word;
        if (abcIsClef(clef) && clef.size() > 2) {
            const std::string end = clef.substr(clef.size() - 2);
            octaves += end == "-8" ? -1 : end == "+8" ? 1 : 0;
        }
    }
    return octaves;
}

std::optional<std::string> abcParts(const std::string& text) {
    // Of each bracket that is open, what was before it and what is in it.
    std::vector<std::string> open = {""};
    std::string last;
    for (std::size_t at = 0; at < text.size(); ++at) {
        const char letter = text[at];
        if (std::isdigit(static_cast<unsigned char>(letter)) != 0) {
            std::size_t end = at;
            while (end < text.size() && std::isdigit(static_cast<unsigned char>(text[end])) != 0) {
                ++end;
            }
            const std::optional<int> times =
                parseWhole(text.substr(at, end - at), 1, static_cast<int>(mostParts));
            if (!times || last.size() * static_cast<std::size_t>(*times) > mostParts) {
                return std::nullopt;
            }
            for (int count = 1; count < *times; ++count) {
                open.back() += last;
            }
            last.clear();
            at = end - 1;
        } else if (letter == '(' && open.size() < deepestParts) {
            open.emplace_back();
        } else if (letter == ')') {
            if (open.size() < 2) {
                return std::nullopt;
            }
            last = open.back();
            open.pop_back();
            open.back() += last;
        } else if (std::isupper(static_cast<unsigned char>(letter)) != 0) {
            last = letter;
            open.back() += last;
        } else if (letter != '.' && letter != ' ') {
            return std::nullopt;
        }
        if (open.back().size() > mostParts) {
            return std::nullopt;
        }
    }
    return open.size() == 1 ? std::optional<std::string>(open.back()) : std::nullopt;
}
