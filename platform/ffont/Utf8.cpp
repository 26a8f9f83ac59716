#include "platform/ffont/Utf8.h"

namespace {

struct Sequence {
    int continuationBytes;
    char32_t leadBits;
    char32_t smallest;  // anything below has a shorter form
};

Sequence sequenceOf(unsigned char lead) {
    if (lead < 0x80) {
        return {0, lead, 0};
    }
    if (lead >= 0xC2 && lead < 0xE0) {
        return {1, lead & 0x1Fu, 0x80};
    }
    if (lead >= 0xE0 && lead < 0xF0) {
        return {2, lead & 0x0Fu, 0x800};
    }
    if (lead >= 0xF0 && lead < 0xF5) {
        return {3, lead & 0x07u, 0x10000};
    }
    return {-1, 0, 0};
}

bool isCharacter(char32_t value) {
    return value <= 0x10FFFF && (value < 0xD800 || value > 0xDFFF);
}

}  // namespace

char32_t nextCharacter(const char*& text) {
    const auto lead = static_cast<unsigned char>(*text);
    if (lead == 0) {
        return 0;
    }
    const char* next = ++text;
    const Sequence sequence = sequenceOf(lead);
    char32_t value = sequence.leadBits;
    for (int i = 0; i < sequence.continuationBytes; ++i, ++next) {
        const auto byte = static_cast<unsigned char>(*next);
        if ((byte & 0xC0u) != 0x80u) {
            return replacementCharacter;
        }
        value = value << 6 | (byte & 0x3Fu);
    }
    if (sequence.continuationBytes < 0 || value < sequence.smallest || !isCharacter(value)) {
        return replacementCharacter;
    }
    text = next;
    return value;
}
