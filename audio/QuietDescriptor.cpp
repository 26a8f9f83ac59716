#include "audio/QuietDescriptor.h"

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

QuietDescriptor::QuietDescriptor(int descriptor_) : descriptor(descriptor_) {
    if (descriptor == -1) {
        return;
    }
    flushAll();
    const int nowhere = openNowhere();
    if (nowhere == -1) {
        return;
    }
    kept = copyOf(descriptor);
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
