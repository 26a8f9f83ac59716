#include "tools/common/JsonWriter.h"

#include <cmath>
#include <cstdio>

#include "tools/common/Text.h"

JsonWriter& JsonWriter::key(const std::string& name) {
    beginItem();
    quote(name);
    out += ": ";
    afterKey = true;
    return *this;
}

JsonWriter& JsonWriter::openObject() {
    return open('{', '}');
}

JsonWriter& JsonWriter::openArray() {
    return open('[', ']');
}

JsonWriter& JsonWriter::open(char opening, char closing) {
    beginItem();
    out += opening;
    levels.push_back({closing, true});
    return *this;
}

JsonWriter& JsonWriter::close() {
    const Level level = levels.back();
    levels.pop_back();
    if (!level.empty) {
        breakLine();
    }
    out += level.closing;
    return *this;
}

JsonWriter& JsonWriter::value(const std::string& text) {
    beginItem();
    quote(text);
    return *this;
}

JsonWriter& JsonWriter::value(long long number) {
    return raw(std::to_string(number));
}

JsonWriter& JsonWriter::value(double number, int decimals) {
    return std::isfinite(number) ? raw(fixed(number, decimals)) : null();
}

JsonWriter& JsonWriter::value(bool truth) {
    return raw(truth ? "true" : "false");
}

JsonWriter& JsonWriter::null() {
    return raw("null");
}

JsonWriter& JsonWriter::raw(const std::string& token) {
    beginItem();
    out += token;
    return *this;
}

void JsonWriter::beginItem() {
    if (afterKey) {
        afterKey = false;
        return;
    }
    if (levels.empty()) {
        return;
    }
    if (!levels.back().empty) {
        out += ',';
    }
    levels.back().empty = false;
    breakLine();
}

void JsonWriter::breakLine() {
    out += '\n';
    out.append(2 * levels.size(), ' ');
}

void JsonWriter::quote(const std::string& text) {
    out += '"';
    for (const char letter : cleanUtf8(text)) {
        const auto byte = static_cast<unsigned char>(letter);
        if (letter == '"' || letter == '\\') {
            out += '\\';
            out += letter;
        } else if (byte < 0x20) {
            char escape[8];
            std::snprintf(escape, sizeof escape, "\\u%04x", static_cast<unsigned>(byte));
            out += escape;
        } else {
            out += letter;
        }
    }
    out += '"';
}
