#include <boost/shared_ptr.hpp>
#include <cstdlib>
#include <string>

#include "audio/AudioInput.h"
#include "audio/RingBuffer.h"

// The game with two failures that no real machine brings about, picked by the environment variable WITHOUT.
// The linker leads calls of the two operations here; __real_ is where they would have gone.

namespace {

bool without(char const* what) {
    char const* const chosen = std::getenv("WITHOUT");
    return chosen && std::string(chosen) == what;
}

}  // namespace

boost::shared_ptr<AudioInput> realNew() asm("__real__ZN10AudioInput3NewEv");
boost::shared_ptr<AudioInput> wrappedNew() asm("__wrap__ZN10AudioInput3NewEv");
boost::shared_ptr<AudioInput> wrappedNew() {
    return without("input") ? boost::shared_ptr<AudioInput>() : realNew();
}

boost::shared_ptr<RingBuffer> realGetRingBuffer(AudioInput* input) asm(
    "__real__ZN10AudioInput13getRingBufferEv");
boost::shared_ptr<RingBuffer> wrappedGetRingBuffer(AudioInput* input) asm(
    "__wrap__ZN10AudioInput13getRingBufferEv");
boost::shared_ptr<RingBuffer> wrappedGetRingBuffer(AudioInput* input) {
    return without("buffer") ? boost::shared_ptr<RingBuffer>() : realGetRingBuffer(input);
}
