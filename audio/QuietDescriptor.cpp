#include "audio/QuietDescriptor.h"

#include <fcntl.h>
#include <unistd.h>

#include <cstdio>
#include <iostream>

namespace {

void flushAll() {
    std::cout.flush();
    std::cerr.flush();
    std::fflush(nullptr);
}

}  // namespace

void fillStandardDescriptors() {
    for (const int descriptor : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
        if (fcntl(descriptor, F_GETFD) == -1) {
            open("/dev/null", O_RDWR);  // gets the lowest number that is free
        }
    }
}

QuietDescriptor::QuietDescriptor(int descriptor_) : descriptor(descriptor_) {
    flushAll();
    const int nowhere = open("/dev/null", O_WRONLY | O_CLOEXEC);
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
