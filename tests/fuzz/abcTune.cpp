// Any bytes as ABC notation.

#include "tests/fuzz/SheetReader.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    tryReader([](const std::string& text) { return readAbc(text, ""); }, data, size);
    return 0;
}
