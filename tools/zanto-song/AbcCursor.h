#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <utility>

/// A place in a line of ABC notation, and what is read there letter by letter.
class AbcCursor {
public:
    explicit AbcCursor(std::string line) : text(std::move(line)) {}

    bool isAtEnd() const { return at >= text.size(); }
    /// '\0' past the end.
    char peek(std::size_t ahead = 0) const { return at + ahead < text.size() ? text[at + ahead] : '\0'; }
    bool isAtDigit(std::size_t ahead = 0) const;
    void move(std::size_t letters = 1) { at += letters; }
    void moveToEnd() { at = text.size(); }

    std::size_t position() const { return at; }
    void moveTo(std::size_t position) { at = position; }
    /// The text from an earlier position to this one.
    std::string since(std::size_t position) const { return text.substr(position, at - position); }

    /// Whether the letter stood here; if so, it is passed.
    bool skip(char letter);
    /// The text up to `end`, which is skipped too; none, and nothing skipped, when there is no such letter.
    std::optional<std::string> upTo(char end);
    /// The number here, or `otherwise` where there is none.
    int number(int otherwise);
    /// "3/2", "/", "//" and the like, in units.
    double length();

private:
    std::string text;
    std::size_t at = 0;
};
