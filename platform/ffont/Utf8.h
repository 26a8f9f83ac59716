#pragma once

/// What stands for a byte that belongs to no character.
const char32_t replacementCharacter = 0xFFFD;

/// The character at `text` of a zero-terminated UTF-8 string, moving `text` behind it; 0, without moving, at
/// the end. A byte that starts no well-formed sequence gives `replacementCharacter` and is passed alone:
/// stray and missing continuation bytes, overlong forms, surrogates and anything above U+10FFFF. (RFC 3629,
/// section 4)
char32_t nextCharacter(const char*& text);
