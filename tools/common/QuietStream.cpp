#include "tools/common/QuietStream.h"

#include <fcntl.h>
#include <unistd.h>

#include <cstdio>
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

namespace {

void flushAll() {
    std::cout.flush();
    std::cerr.flush();
    std::fflush(nullptr);
}

}  // namespace

QuietDescriptor::QuietDescriptor(int descriptor_) : descriptor(descriptor_), kept(-1) {
    flushAll();
    int const nowhere = open("/dev/null", O_WRONLY | O_CLOEXEC);
    if (nowhere == -1) {
        return;
    }
    kept = fcntl(descriptor, F_DUPFD_CLOEXEC, 0);
    if (kept != -1) {
        dup2(nowhere, descriptor);
    }
    close(nowhere);
}

QuietDescriptor::~QuietDescriptor() {
    flushAll();
    if (kept != -1) {
        dup2(kept, descriptor);
        close(kept);
    }
}
