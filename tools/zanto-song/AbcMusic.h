#pragma once

#include <array>
#include <functional>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "tools/zanto-song/AbcCursor.h"
#include "tools/zanto-song/AbcVoice.h"

/// Reads lines of notes in ABC notation. The notes are taken as they are written: what tells a player how to
/// play them, or what to play besides, is counted and left out.
class AbcMusic {
public:
    struct Calls {
        std::function<AbcVoice&()> voice;                                ///< the one that is being written
        std::function<void(char field, const std::string& text)> field;  ///< a field between the notes: [K:D]
        std::function<void(const std::string& text)> remark;
    };

    explicit AbcMusic(Calls calls_) : calls(std::move(calls_)) {}

    void readLine(const std::string& line);

    /// U: a letter that stands for a sign: "T = !trill!".
    void define(const std::string& text);

    /// What was left out, one line each.
    std::vector<std::string> lost() const;

private:
    enum Kind { Ornaments, Staccato, Graces, ChordSymbols, OtherSigns, QuarterTones, Unpitched, kindCount };

    char peek(std::size_t ahead = 0) const { return cursor.peek(ahead); }
    std::optional<AbcNote> note();
    void readOne();
    void readBar();
    void readEnding();
    void readBracket();
    void readChord(char end);
    void readTuplet();
    void readQuoted();
    void readRest(char letter);
    void readNote();
    void add(const std::vector<AbcNote>& notes, double factor);
    void readDecoration(const std::string& name);
    void unknown(char letter);

    Calls calls;
    AbcCursor cursor{""};
    bool lineIsLatest = false;  // a bar line
    std::map<char, std::string> signs = {
        {'.', "staccato"}, {'~', "roll"},         {'H', "fermata"}, {'L', "accent"}, {'M', "lowermordent"},
        {'O', "coda"},     {'P', "uppermordent"}, {'S', "segno"},   {'T', "trill"},  {'u', "upbow"},
        {'v', "downbow"},  {'J', "slide"},        {'R', "roll"}};
    std::array<std::size_t, kindCount> counts{};
};
