#include "tests/fuzz/Input.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <iostream>
#include <limits>

double Input::number() {
    using limits = std::numeric_limits<double>;
    constexpr double famous[] = {0.0,
                                 -0.0,
                                 limits::infinity(),
                                 -limits::infinity(),
                                 limits::quiet_NaN(),
                                 limits::max(),
                                 limits::lowest(),
                                 limits::min(),
                                 limits::denorm_min(),
                                 limits::epsilon(),
                                 2147483647.0,
                                 -2147483648.0,
                                 4294967296.0,
                                 1e300,
                                 1e-300,
                                 -1e300};
    constexpr int lastFamous = sizeof famous / sizeof famous[0] - 1;
    switch (upTo(7)) {
        case 0:
            return raw<double>();
        case 1:
            return static_cast<double>(raw<float>());
        case 2:
            return famous[upTo(lastFamous)];
        case 3:
            return raw<std::int8_t>();
        default:
            return raw<std::int16_t>() / 16.0;
    }
}

std::string Input::text(std::size_t most) {
    const std::size_t taken = std::min(size, most);
    const std::string result(reinterpret_cast<const char*>(data), taken);
    data += taken;
    size -= taken;
    return result;
}

void require(bool kept, const char* promise) {
    if (!kept) {
        std::fprintf(stderr, "A promise is broken: %s\n", promise);
        std::abort();
    }
}

/// Called once by the fuzzer: what the game says would drown what the fuzzer says.
extern "C" int LLVMFuzzerInitialize(int* /*argumentCount*/, char*** /*arguments*/) {
    std::cerr.rdbuf(nullptr);
    return std::freopen("/dev/null", "w", stdout) == nullptr ? 1 : 0;
}

/// Short stacks and a small quarantine: most of the time would go into them.
extern "C" const char* __asan_default_options() {
    return "malloc_context_size=6:quarantine_size_mb=16";
}
