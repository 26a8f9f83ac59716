#include "tools/zanto-song/AbcCursor.h"

#include <algorithm>
#include <cctype>

namespace {

constexpr int largestNumber = 99999999;  // too long for any note

}  // namespace

bool AbcCursor::isAtDigit(std::size_t ahead) const {
    return std::isdigit(static_cast<unsigned char>(peek(ahead))) != 0;
}

bool AbcCursor::skip(char letter) {
    const bool isThere = peek() == letter && letter != '\0';
    at += isThere ? 1 : 0;
    return isThere;
}

std::optional<std::string> AbcCursor::upTo(char end) {
    const std::size_t found = text.find(end, at);
    if (found == std::string::npos) {
        return std::nullopt;
    }
    const std::string taken = text.substr(at, found - at);
    at = found + 1;
    return taken;
}

int AbcCursor::number(int otherwise) {
    if (!isAtDigit()) {
        return otherwise;
    }
    int value = 0;
    for (; isAtDigit(); ++at) {
        value = std::min(10 * value + (peek() - '0'), largestNumber);
    }
    return value;
}

double AbcCursor::length() {
    double units = number(1);
    while (skip('/')) {
        units /= std::max(number(2), 1);
    }
    return units;
}
