#include "tools/zanto-song/MeasureOrder.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <functional>
#include <map>
#include <utility>

#include "tools/common/Command.h"

namespace {

constexpr std::size_t mostMeasures = 100000;

// Which measures belong to which rounds of a repeat.
class Endings {
public:
    explicit Endings(const std::vector<MeasureSigns>& measures) {
        std::set<int> open;
        for (std::size_t at = 0; at < measures.size(); ++at) {
            if (measures[at].repeatBegins) {
                open.clear();
            }
            if (!measures[at].endingBegins.empty()) {
                open = measures[at].endingBegins;
            }
            roundsOf.push_back(open);
            const bool goesOn = !open.empty() && at > 0 && !roundsOf[at - 1].empty();
            groups.push_back(goesOn && !measures[at].repeatBegins ? groups.back() : at);
            if (!open.empty()) {
                roundsOfGroup[groups.back()].insert(open.begin(), open.end());
            }
            if (measures[at].endingEnds) {
                open.clear();
            }
        }
    }

    bool isEnding(std::size_t at) const { return !roundsOf[at].empty(); }
    bool isFor(int round, std::size_t at) const { return roundsOf[at].count(round) != 0; }
    bool isLast(std::size_t at) const { return isFor(*roundsBeside(at).rbegin(), at); }
    /// Whether one of the endings that stand side by side with this one is for that round.
    bool hasOneFor(int round, std::size_t at) const { return roundsBeside(at).count(round) != 0; }

private:
    const std::set<int>& roundsBeside(std::size_t at) const { return roundsOfGroup.at(groups[at]); }

    std::vector<std::set<int>> roundsOf;  // by measure; empty where it is in all rounds
    std::vector<std::size_t> groups;      // by measure: where the endings side by side begin
    std::map<std::size_t, std::set<int>> roundsOfGroup;
};

void tellToCodaFromCoda(std::vector<MeasureSigns>& measures) {
    if (std::any_of(measures.begin(), measures.end(), std::mem_fn(&MeasureSigns::toCoda))) {
        return;
    }
    bool isLast = true;
    for (std::size_t at = measures.size(); at-- > 0;) {
        if (measures[at].coda && !isLast && at > 0) {
            measures[at].coda = false;
            measures[at - 1].toCoda = true;
        }
        isLast = isLast && !measures[at].coda;
    }
}

// The place of a sign, looked for forwards or backwards from a measure.
std::size_t signAfter(const std::vector<MeasureSigns>& measures, std::size_t at) {
    while (++at < measures.size()) {
        if (measures[at].coda) {
            return at;
        }
    }
    throw Failure("it says \"to coda\", and there is no coda behind it");
}

std::size_t segnoBefore(const std::vector<MeasureSigns>& measures, std::size_t at) {
    for (++at; at-- > 0;) {
        if (measures[at].segno) {
            return at;
        }
    }
    throw Failure("it says \"dal segno\", and there is no segno before it");
}

}  // namespace

std::vector<std::size_t> playingOrder(std::vector<MeasureSigns> measures) {
    tellToCodaFromCoda(measures);
    const Endings endings(measures);
    std::vector<std::size_t> order;
    std::set<std::size_t> jumps;  // those that were made
    bool withRepeats = true;
    std::size_t repeatStart = 0;
    int round = 1;
    const auto goTo = [&](std::size_t target) {
        repeatStart = target;
        round = 1;
        return target;
    };
    for (std::size_t at = 0; at < measures.size();) {
        const MeasureSigns& signs = measures[at];
        if (signs.repeatBegins && at != repeatStart) {
            goTo(at);
        }
        const bool isEnding = endings.isEnding(at);
        if (isEnding && !(withRepeats ? endings.isFor(round, at) : endings.isLast(at))) {
            ++at;
            continue;
        }
        order.push_back(at);
        if (order.size() > mostMeasures) {
            throw Failure("its repeats never come to an end");
        }
        const bool goesOn = isEnding ? endings.hasOneFor(round + 1, at) : round < signs.timesPlayed;
        if (withRepeats && signs.timesPlayed > 0 && goesOn) {
            ++round;
            at = repeatStart;
            continue;
        }
        if (!jumps.empty() && signs.fine) {
            break;
        }
        if (!withRepeats && signs.toCoda) {
            withRepeats = true;
            at = goTo(signAfter(measures, at));
            continue;
        }
        if (signs.jump != MeasureSigns::Jump::None && jumps.insert(at).second) {
            withRepeats = false;
            at = goTo(signs.jump == MeasureSigns::Jump::DaCapo ? 0 : segnoBefore(measures, at));
            continue;
        }
        ++at;
        if (signs.timesPlayed > 0 || signs.endingEnds) {
            goTo(at);
        }
    }
    return order;
}

bool addSign(const std::string& text, MeasureSigns& signs) {
    std::string letters;
    for (const char letter : text) {
        if (std::isalpha(static_cast<unsigned char>(letter)) != 0) {
            letters += static_cast<char>(std::tolower(static_cast<unsigned char>(letter)));
        }
    }
    const auto isOneOf = [&](const auto& words) {
        return std::find(words.begin(), words.end(), letters) != words.end();
    };
    using Jump = MeasureSigns::Jump;
    using Beginning = std::pair<std::string, Jump>;
    for (const auto& [beginning, jump] :
         {Beginning("dacapo", Jump::DaCapo), Beginning("dc", Jump::DaCapo),
          Beginning("dalsegno", Jump::DalSegno), Beginning("ds", Jump::DalSegno)}) {
        if (letters.rfind(beginning, 0) == 0) {
            letters.erase(0, beginning.size());
            const bool isJump =
                isOneOf(std::array<const char*, 8>{"", "alfine", "alcoda", "alsegno", "alsegnoecoda",
                                                   "epoilacoda", "senzarep", "senzarepetizione"});
            signs.jump = isJump ? jump : signs.jump;
            return isJump;
        }
    }
    if (isOneOf(std::array<const char*, 3>{"tocoda", "alcoda", "dacoda"})) {
        return signs.toCoda = true;
    }
    if (letters == "fine") {
        return signs.fine = true;
    }
    if (letters == "segno") {
        return signs.segno = true;
    }
    return letters == "coda" && (signs.coda = true);
}
