#include "tools/common/QuietStream.h"

#include <iostream>

QuietErrors::QuietErrors() : before(std::cerr.rdbuf(written.rdbuf())) {
}

QuietErrors::~QuietErrors() {
    std::cerr.rdbuf(before);
}

std::string QuietErrors::text() const {
    std::string text = written.str();
    if (!text.empty() && text.back() == '\n') {
        text.pop_back();
    }
    return text;
}
