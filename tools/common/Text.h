#pragma once

#include <cstddef>
#include <string>

/// `number` with so many decimals, with a point whatever the locale, and never as "-0.00".
std::string fixed(double number, int decimals);

/// `text` with every byte that is no part of well-formed UTF-8 replaced by U+FFFD.
std::string cleanUtf8(const std::string& text);

/// `text` for XML and HTML, between tags or quotes: what has a meaning there is escaped, control characters
/// become blanks, bytes that are no UTF-8 U+FFFD.
std::string escapedXml(const std::string& text);

/// How many characters `text` has: well-formed UTF-8 sequences, and bytes that belong to none.
std::size_t characterCount(const std::string& text);

/// `text` between double quotes, as one would show it in a message: control characters as `\t`, `\r` or
/// `\xNN`, and everything past 40 characters as "...".
std::string quoted(const std::string& text);

/// "1 note", "2 notes".
std::string counted(std::size_t count, const std::string& what);

/// `text` filled up with blanks to `width` characters, at its right or at its left.
std::string padRight(const std::string& text, std::size_t width);
std::string padLeft(const std::string& text, std::size_t width);
