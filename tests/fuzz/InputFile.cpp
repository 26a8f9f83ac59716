#include "tests/fuzz/InputFile.h"

#include <sys/mman.h>
#include <unistd.h>

#include "tests/fuzz/Input.h"

InputFile::InputFile()
    : descriptor(memfd_create("fuzz", 0)), name("/proc/self/fd/" + std::to_string(descriptor)) {
    require(descriptor >= 0, "there are files in memory");
}

InputFile::~InputFile() {
    close(descriptor);
}

void InputFile::write(const std::string& contents) const {
    const bool done = ftruncate(descriptor, 0) == 0 && pwrite(descriptor, contents.data(), contents.size(),
                                                              0) == static_cast<ssize_t>(contents.size());
    require(done, "a file in memory can be written");
}
