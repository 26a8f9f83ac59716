#include <dlfcn.h>
#include <fcntl.h>
#include <sys/time.h>
#include <unistd.h>

#include <cstdlib>

// Preloaded in front of the C library: the wall clock is off by as many seconds as the file named by the
// environment variable CLOCK_STEP says at the moment.

namespace {

long secondsOff() {
    char const* const path = std::getenv("CLOCK_STEP");
    int const file = path != nullptr ? open(path, O_RDONLY | O_CLOEXEC) : -1;
    if (file < 0) {
        return 0;
    }
    char text[32] = {};
    bool const done = read(file, text, sizeof text - 1) > 0;
    close(file);
    return done ? std::strtol(text, nullptr, 10) : 0;
}

}  // namespace

extern "C" int gettimeofday(timeval* reading, void* zone) noexcept {
    using Function = int (*)(timeval*, void*);
    static auto const real = reinterpret_cast<Function>(dlsym(RTLD_NEXT, "gettimeofday"));
    int const status = real(reading, zone);
    reading->tv_sec += secondsOff();
    return status;
}
