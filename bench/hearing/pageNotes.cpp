// What the page says about single notes, chords and rooms where nobody plays.

#include <cmath>
#include <cstddef>

#include "bench/hearing/Page.h"

namespace {

using Rows = std::vector<std::vector<std::string>>;

Which both(Which const& first, Which const& second) {
    return [=](Heard const& heard) { return first(heard) && second(heard); };
}

bool isInstrument(Heard const& heard) {
    return heard.place < instrumentCount();
}

bool isPlain(Heard const& heard) {
    return heard.take.trial == Trial::plain;
}

/// Dry naturals of the sampled instruments at all three loudnesses.
bool isReference(Heard const& heard) {
    return isInstrument(heard) && isPlain(heard) && isDry(heard) && isNatural(heard);
}

Which inOctave(int octave) {
    return [octave](Heard const& heard) { return octaveOf(heard.take.pitches.front()) == octave; };
}

Which withVelocity(int velocity) {
    return [velocity](Heard const& heard) { return heard.take.touch.velocity == velocity; };
}

std::vector<std::string> byOctave(std::string const& name, std::vector<Heard> const& all, Which const& which,
                                  std::string (*show)(Mean const&) = rightWrong) {
    std::vector<std::string> row = {name, show(meanOf(all, which))};
    for (int const octave : {3, 4, 5}) {
        row.push_back(show(meanOf(all, both(which, inOctave(octave)))));
    }
    return row;
}

std::string singleNotes(std::vector<Heard> const& all) {
    auto const ofHalf = [](bool tunedOn) {
        return
            [tunedOn](Heard const& heard) { return isReference(heard) && isTunedOn(heard.place) == tunedOn; };
    };
    auto const room = [](Heard const& heard) {
        return isInstrument(heard) && isPlain(heard) && !isDry(heard) && isNatural(heard);
    };
    Rows rows;
    rows.push_back(byOctave("**all instruments, dry**", all, isReference));
    rows.push_back(byOctave("the half the table was tuned on", all, ofHalf(true)));
    rows.push_back(byOctave("the other half", all, ofHalf(false)));
    rows.push_back(byOctave("all, with room", all, room));
    rows.push_back(byOctave("all, dry, soft", all, both(isReference, withVelocity(softVelocity))));
    rows.push_back(byOctave("all, dry, medium", all, both(isReference, withVelocity(mediumVelocity))));
    rows.push_back(byOctave("all, dry, loud", all, both(isReference, withVelocity(loudVelocity))));
    rows.push_back(byOctave("yinfft, all, dry", all, isReference, peerRightWrong));
    rows.push_back(byOctave("yinfft, all, with room", all, room, peerRightWrong));
    return markdownTable({"", "C3 to B5", "C3 to B3", "C4 to B4", "C5 to B5"}, rows);
}

std::string players(std::vector<Heard> const& all, bool voices) {
    Rows rows;
    for (std::size_t place = 0; place < orchestra().size(); ++place) {
        if ((place >= instrumentCount()) != voices) {
            continue;
        }
        Which const natural = [place](Heard const& heard) {
            return heard.place == place && isPlain(heard) && isNatural(heard);
        };
        std::string const name = orchestra()[place].name + (isTunedOn(place) ? " *" : "");
        std::vector<std::string> row = byOctave(name, all, natural);
        Mean const mean = meanOf(all, natural);
        row.push_back(mean.hearing.latencySeconds ? milliseconds(*mean.hearing.latencySeconds) : "-");
        row.push_back(milliseconds(mean.hearing.tailSeconds));
        row.push_back(peerRightWrong(mean));
        rows.push_back(row);
    }
    return markdownTable({voices ? "voice" : "instrument", "C3 to B5", "C3 to B3", "C4 to B4", "C5 to B5",
                          "first heard after, ms", "heard on after the end, ms", "yinfft"},
                         rows);
}

std::string chords(std::vector<Heard> const& all) {
    Rows rows;
    for (std::size_t const size : {2u, 3u}) {
        Mean const mean = meanOf(all, [size](Heard const& heard) {
            return isInstrument(heard) && heard.take.trial == Trial::chord &&
                   heard.take.pitches.size() == size;
        });
        rows.push_back({size == 2 ? "two notes" : "three notes", rightWrong(mean), peerRightWrong(mean)});
    }
    return markdownTable({"chord in C4 to B4", "the game", "yinfft"}, rows);
}

std::string detuned(std::vector<Heard> const& all) {
    Rows rows;
    for (double const cents : {-40.0, -30.0, -20.0, -10.0, 0.0, 10.0, 20.0, 30.0, 40.0}) {
        rows.push_back(byOctave((cents > 0.0 ? "+" : "") + std::to_string(std::lround(cents)) + " cents", all,
                                [cents](Heard const& heard) {
                                    bool const inTune =
                                        isPlain(heard) && isDry(heard) && withVelocity(mediumVelocity)(heard);
                                    bool const asked = heard.take.trial == Trial::detuned || inTune;
                                    return isInstrument(heard) && asked && isNatural(heard) &&
                                           std::abs(heard.take.touch.detuneCents - cents) < 0.5;
                                }));
    }
    return markdownTable({"out of tune by", "C3 to B5", "C3 to B3", "C4 to B4", "C5 to B5"}, rows);
}

std::string levels(std::vector<Heard> const& all) {
    Rows rows;
    for (double const levelDb : {-10.0, -20.0, -30.0, -40.0}) {
        std::vector<std::string> row = {std::to_string(std::lround(levelDb)) + " dB"};
        for (Trial const trial : {Trial::quiet, Trial::sensitive}) {
            row.push_back(rightWrong(meanOf(all, [=](Heard const& heard) {
                return isInstrument(heard) && heard.take.trial == trial &&
                       std::abs(heard.take.levelDb - levelDb) < 0.5;
            })));
        }
        rows.push_back(row);
    }
    return markdownTable({"below a well-set input", "threshold -65 dB", "threshold -85 dB"}, rows);
}

std::string noises(std::vector<Heard> const& all) {
    Rows rows;
    for (Noise const noise : {Noise::white, Noise::hum}) {
        for (double const belowDb : {20.0, 10.0}) {
            Mean const mean = meanOf(all, [=](Heard const& heard) {
                return isInstrument(heard) && heard.take.noise == noise &&
                       std::abs(heard.take.noiseBelowDb - belowDb) < 0.5;
            });
            rows.push_back({(noise == Noise::white ? "white noise, " : "hum, ") +
                                std::to_string(std::lround(belowDb)) + " dB below the note",
                            rightWrong(mean), peerRightWrong(mean)});
        }
    }
    return markdownTable({"", "the game", "yinfft"}, rows);
}

std::string quietRooms(Archive const& archive, Listener& listener) {
    std::vector<FalseNotes> const heard = archive.quietRooms(listener);
    std::vector<Quiet> const all = quiets();
    Rows rows;
    std::vector<std::string> heads = {"root mean square"};
    for (std::size_t i = 0; i < all.size(); ++i) {
        if (i == 0 || all[i].levelDb != all[i - 1].levelDb || all[i].noise != all[i - 1].noise) {
            rows.push_back({(all[i].noise == Noise::white ? "white noise, " : "hum, ") +
                            std::to_string(std::lround(all[i].levelDb)) + " dB"});
        }
        if (rows.size() == 1) {
            heads.push_back("threshold " + std::to_string(std::lround(all[i].minDecibel)) + " dB");
        }
        rows.back().push_back(std::to_string(std::lround(heard[i].perMinute)) + " / " +
                              std::to_string(std::lround(heard[i].longOnesPerMinute)));
    }
    return markdownTable(heads, rows);
}

}  // namespace

void addNoteFigures(Archive const& archive, std::string const& shippedTable, Figures& figures) {
    Listener listener(shippedTable);
    std::vector<Heard> const all = archive.takes(listener, [](Take const&) { return true; });
    figures["notes single"] = singleNotes(all);
    figures["notes instruments"] = players(all, false);
    figures["notes voices"] = players(all, true);
    figures["notes chords"] = chords(all);
    figures["notes detuned"] = detuned(all);
    figures["notes levels"] = levels(all);
    figures["notes noise"] = noises(all);
    figures["notes nobody"] = quietRooms(archive, listener);
    figures["notes takes"] = std::to_string(all.size());
    for (int const octave : {0, 5}) {
        Which const asked = octave == 0 ? Which(isReference) : both(isReference, inOctave(octave));
        std::string const suffix = octave == 0 ? "" : " top";
        figures["notes all" + suffix] = rightWrong(meanOf(all, asked));
        figures["notes other half" + suffix] =
            rightWrong(meanOf(all, both(asked, [](Heard const& heard) { return !isTunedOn(heard.place); })));
    }
    Mean const reference = meanOf(all, isReference);
    figures["notes latency"] = milliseconds(reference.hearing.latencySeconds.value_or(0.0));
    figures["notes never"] = percent(reference.never);
    figures["notes tail"] = milliseconds(reference.hearing.tailSeconds);
    figures["notes sharps"] =
        percent(meanOf(all, [](Heard const& heard) {
                    return isInstrument(heard) && isPlain(heard) && isDry(heard) && !isNatural(heard);
                }).hearing.wrong);
}
