#include <fcntl.h>
#include <unistd.h>

#include <initializer_list>

#include "audio/QuietDescriptor.h"

void fillStandardDescriptors() {
    for (const int descriptor : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
        if (fcntl(descriptor, F_GETFD) == -1) {
            open("/dev/null", O_RDWR);  // gets the lowest number that is free
        }
    }
}

int QuietDescriptor::openNowhere() {
    return open("/dev/null", O_WRONLY | O_CLOEXEC);
}

int QuietDescriptor::copyOf(int descriptor) {
    return fcntl(descriptor, F_DUPFD_CLOEXEC, 0);
}
