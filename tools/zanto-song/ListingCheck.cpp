#include "tools/zanto-song/ListingCheck.h"

#include <algorithm>
#include <map>
#include <tuple>
#include <utility>

#include "tools/common/Text.h"

namespace {

constexpr const char* blanks = " \t\n\v\f\r";

struct Word {
    std::size_t line;
    std::size_t column;
    std::string text;
};

// The words of one line.
std::vector<Word> wordsOf(const std::string& text, std::size_t line) {
    std::vector<Word> words;
    std::size_t at = text.find_first_not_of(blanks);
    while (at != std::string::npos) {
        const std::size_t end = text.find_first_of(blanks, at);
        words.push_back({line, characterCount(text.substr(0, at)) + 1, text.substr(at, end - at)});
        at = text.find_first_not_of(blanks, end);
    }
    return words;
}

class ListingChecker {
public:
    explicit ListingChecker(const std::function<SongState(const std::string&)>& songState_)
        : songState(songState_) {}

    std::vector<Problem> check(const std::string& contents) {
        std::vector<Word> words;
        std::size_t lineNumber = 1;
        for (std::size_t start = 0; start < contents.size(); ++lineNumber) {
            const std::size_t end = contents.find('\n', start);
            const std::vector<Word> onLine = wordsOf(contents.substr(start, end - start), lineNumber);
            checkCount(onLine);
            words.insert(words.end(), onLine.begin(), onLine.end());
            start = end == std::string::npos ? contents.size() : end + 1;
        }
        for (std::size_t i = 0; i + 1 < words.size(); i += 2) {
            checkPair(words[i], words[i + 1]);
        }
        if (words.size() % 2 != 0) {
            warn(words.back(), "listing-single",
                 quoted(words.back().text) + " has no song file behind it and is left out",
                 "write the file's name behind it");
        }
        if (words.empty()) {
            warn({1, 1, ""}, "listing-empty", "the listing names no song",
                 "write a name and a song file on each line");
        }
        std::stable_sort(problems.begin(), problems.end(), [](const Problem& left, const Problem& right) {
            return std::tie(left.line, left.column) < std::tie(right.line, right.column);
        });
        return std::move(problems);
    }

private:
    void warn(const Word& place, std::string code, std::string text, std::string hint) {
        problems.push_back({place.line, place.column, Problem::Severity::warning, std::move(code),
                            std::move(text), std::move(hint)});
    }

    void checkCount(const std::vector<Word>& onLine) {
        if (onLine.size() > 2) {
            std::string joined = onLine.front().text;
            for (std::size_t i = 1; i + 1 < onLine.size(); ++i) {
                joined += "_" + onLine[i].text;
            }
            warn(onLine[1], "listing-blank",
                 counted(onLine.size(), "word") +
                     " in a line: the game takes words in pairs, wherever lines end",
                 "join the words of a name, as in " + quoted(joined + " " + onLine.back().text));
        }
    }

    void checkPair(const Word& name, const Word& file) {
        if (const auto [known, isNew] = names.emplace(name.text, name.line); !isNew) {
            warn(name, "listing-doubled",
                 quoted(name.text) + " is also the name in line " + std::to_string(known->second),
                 "give each song a name of its own");
        }
        switch (songState(file.text)) {
            case SongState::missing:
                warn(file, "listing-missing", "there is no song file " + quoted(file.text),
                     "song files stand in the same folder as the listing");
                break;
            case SongState::faulty:
                warn(file, "listing-faulty", "the game does not load " + quoted(file.text),
                     "run zanto-song check on that file");
                break;
            case SongState::fine:
                break;
        }
    }

    const std::function<SongState(const std::string&)>& songState;
    std::map<std::string, std::size_t> names;  // with their lines
    std::vector<Problem> problems;
};

}  // namespace

std::vector<Problem> checkListing(const std::string& contents,
                                  const std::function<SongState(const std::string& fileName)>& songState) {
    return ListingChecker(songState).check(contents);
}
