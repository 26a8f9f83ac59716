#include "tools/zanto-song/AbcVoice.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <utility>

namespace {

constexpr double nearly = 1e-6;
constexpr std::array<int, 7> semitonesOfStep = {0, 2, 4, 5, 7, 9, 11};

}  // namespace

// What becomes of the length of the next note or rest.
double AbcVoice::stretch() {
    const double broken = std::exchange(nextFactor, 1.0);
    if (tupletLeft == 0) {
        return broken;
    }
    --tupletLeft;
    return broken * tupletFactor;
}

void AbcVoice::advance(double quarters) {
    position += quarters;
    if (position > mostQuarters) {
        throw tooLong();
    }
    here().length = std::max(here().length, position);
    latestLength = quarters;
    latestMeasure = measures.size();
}

int AbcVoice::pitchOf(const AbcNote& note, const std::vector<Tie>& before, bool& continues) {
    const int octave = note.octave + octaves;
    const int key = reach == Reach::Octave ? note.step + 7 * note.octave : note.step;
    const auto step = static_cast<std::size_t>(note.step);
    const auto tied = std::find_if(before.begin(), before.end(), [&](const Tie& tie) {
        return tie.step == note.step && tie.octave == note.octave;
    });
    const auto inBar = accidentals.find(key);
    int semitones = inBar == accidentals.end() ? signature.at(step) : inBar->second;
    if (note.hasAccidental) {
        semitones = note.semitones;
        if (reach != Reach::Note) {
            accidentals[key] = semitones;
        }
    }
    int pitch = 12 * (octave + 1) + semitonesOfStep.at(step) + semitones + transpose;
    continues = tied != before.end() && (!note.hasAccidental || tied->pitch == pitch);
    return continues ? tied->pitch : pitch;
}

void AbcVoice::chord(const std::vector<AbcNote>& notes, double factor) {
    const std::vector<Tie> before = std::exchange(ties, {});
    const double quarters = unitQuarters * factor * stretch();
    latest.clear();
    latestIndex = here().notes.size();
    for (const AbcNote& note : notes) {
        bool continues = false;
        const int pitch = pitchOf(note, before, continues);
        latest.push_back({note.step, note.octave, pitch});
        here().notes.push_back(
            {std::to_string(layer), position, quarters * note.units, pitch, "", continues});
        ++noteCount;
    }
    advance(quarters * notes.front().units);
}

void AbcVoice::rest(double units) {
    ties.clear();
    latest.clear();
    latestIndex = here().notes.size();
    advance(unitQuarters * units * stretch());
}

void AbcVoice::restBars(int bars) {
    rest(bars * (metre.quarters > 0.0 ? metre.quarters : 4.0) / unitQuarters);
    latestMeasure = 0;
    barNumber += bars - 1;
}

void AbcVoice::tieAll() {
    ties = latest;
}

void AbcVoice::tie(std::size_t index) {
    ties.push_back(latest.at(index));
}

void AbcVoice::breakRhythm(int strength) {
    const double shorter = std::pow(0.5, std::abs(strength));
    const double factor = strength > 0 ? 2.0 - shorter : shorter;
    nextFactor = 2.0 - factor;
    if (latestMeasure != measures.size()) {
        return;  // there is no note before
    }
    std::vector<ScoreNote>& notes = here().notes;
    for (std::size_t index = latestIndex; index < notes.size(); ++index) {
        notes[index].length *= factor;
    }
    const bool wasLongest = position >= here().length;
    const double change = latestLength * (factor - 1.0);
    position += change;
    here().length = wasLongest ? position : std::max(here().length, position);
}

void AbcVoice::tuplet(int p, int q, int count) {
    constexpr std::array<int, 10> usual = {0, 0, 3, 2, 3, 0, 2, 0, 3, 0};
    const int given = q > 0 ? q : p < 10 ? usual.at(static_cast<std::size_t>(p)) : 0;
    const int time = given > 0 ? given : metre.isCompound ? 3 : 2;
    tupletFactor = static_cast<double>(time) / p;
    tupletLeft = count > 0 ? count : p;
}

void AbcVoice::overlay() {
    ++layer;
    position = 0.0;
    latestMeasure = 0;
}

// Writes down where the notes of a measure stand, now that it is known whether its bar is an upbeat.
void AbcVoice::nameNotes(bool barIsOver) {
    const double filled = barFilled + here().length;
    const bool isUpbeat = measures.size() == 1 && barIsOver && filled < metre.quarters - nearly;
    if (isUpbeat) {
        barNumber = 0;
    }
    here().number = std::to_string(barNumber);
    for (ScoreNote& note : here().notes) {
        const double beat = std::floor((barFilled + note.start) / metre.beatQuarters + nearly);
        note.place =
            isUpbeat ? "upbeat" : "bar " + here().number + ", beat " + std::to_string(1 + std::lround(beat));
    }
    barFilled = barIsOver ? 0.0 : filled;
    barNumber += barIsOver ? 1 : 0;
}

void AbcVoice::beginMeasure() {
    here().section = section;
    measures.emplace_back();
    position = 0.0;
    layer = 1;
}

// What was written behind a bar line, with no note in its measure, is meant for the measure before.
void AbcVoice::moveSignsBack() {
    if (measures.size() > 1) {
        MeasureSigns& signs = here().signs;
        MeasureSigns& before = measures[measures.size() - 2].signs;
        before.jump = signs.jump != MeasureSigns::Jump::None ? signs.jump : before.jump;
        before.fine = before.fine || signs.fine;
        before.toCoda = before.toCoda || signs.toCoda;
        signs.jump = MeasureSigns::Jump::None;
        signs.fine = false;
        signs.toCoda = false;
    }
}

void AbcVoice::barLine(const AbcBar& bar) {
    const bool isPlain = bar.timesPlayed == 0 && !bar.repeatBegins && !bar.isDouble;
    const bool ends = !isPlain;
    const bool isEmpty = isEmptyHere();
    if (!isEmpty) {
        // A repeat may begin or end in the middle of a bar.
        const bool barIsOver =
            isPlain || measures.size() == 1 || barFilled + here().length >= metre.quarters - nearly;
        nameNotes(barIsOver);
    }
    if (!isEmpty || measures.size() > 1) {
        MeasureSigns& signs = isEmpty ? measures[measures.size() - 2].signs : here().signs;
        signs.timesPlayed = std::max(signs.timesPlayed, bar.timesPlayed);
        signs.endingEnds = signs.endingEnds || ends;
    }
    if (isEmpty) {
        moveSignsBack();
    } else {
        beginMeasure();
    }
    accidentals.clear();
    endingIsOpen = endingIsOpen && bar.timesPlayed == 0 && !bar.repeatBegins;
    repeatIsOpen = bar.repeatBegins || (repeatIsOpen && bar.timesPlayed == 0);
    here().signs.repeatBegins = here().signs.repeatBegins || bar.repeatBegins;
}

void AbcVoice::ending(const std::set<int>& rounds) {
    if (!isEmptyHere()) {
        nameNotes(false);
        beginMeasure();
    }
    here().signs.endingBegins = rounds;
    if (endingIsOpen && measures.size() > 1) {
        measures[measures.size() - 2].signs.timesPlayed = 2;
        repeatIsMissing = true;
    }
    endingIsOpen = true;
}

void AbcVoice::beginSection(char letter) {
    if (!isEmptyHere()) {
        nameNotes(false);
        beginMeasure();
    }
    section = letter;
}

bool AbcVoice::sign(const std::string& text) {
    MeasureSigns found;
    if (!addSign(text, found)) {
        return false;
    }
    if ((found.segno || found.coda) && !isEmptyHere()) {
        nameNotes(false);
        beginMeasure();
    }
    addSign(text, here().signs);
    return true;
}

ScorePart AbcVoice::finish() {
    if (!isEmptyHere()) {
        nameNotes(false);
        beginMeasure();
    }
    moveSignsBack();
    measures.pop_back();
    return {name, instrument, measures};
}
