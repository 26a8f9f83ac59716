#pragma once

#include <cstddef>
#include <string>

/// A word of a command line, as programs for Windows take it apart.
inline std::wstring quotedWord(const std::wstring& word) {
    std::wstring text = L"\"";
    std::size_t backslashes = 0;
    for (const wchar_t character : word) {
        if (character == L'"') {
            text.append(backslashes + 1, L'\\');  // those before a quotation mark count twice
        }
        backslashes = character == L'\\' ? backslashes + 1 : 0;
        text += character;
    }
    return text.append(backslashes, L'\\') + L"\"";
}
