#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <filesystem>

#include "tools/common/Files.h"

namespace fs = std::filesystem;
using Status = struct stat;

NewFile::~NewFile() {
    if (descriptor != -1) {
        close(descriptor);
    }
    if (!temporaryName.empty()) {
        unlink(temporaryName.c_str());
    }
}

void NewFile::openDevice() {
    descriptor = open(path.c_str(), O_WRONLY | O_CLOEXEC);
    if (descriptor == -1) {
        failWithErrno();
    }
}

void NewFile::openBeside() {
    const fs::path folder = fs::path(place).has_parent_path() ? fs::path(place).parent_path() : ".";
    // A file without a name goes away with the program. Not every file system has them.
    descriptor = open(folder.c_str(), O_TMPFILE | O_RDWR | O_CLOEXEC, 0666);
    if (descriptor == -1) {
        std::string name = (folder / ".zanto-XXXXXX").string();
        descriptor = mkostemp(name.data(), O_CLOEXEC);
        if (descriptor == -1) {
            failWithErrno();
        }
        temporaryName = name;
        const mode_t mask = umask(0);
        umask(mask);
        fchmod(descriptor, 0666u & ~mask);
    }
    Status replaced{};
    if (stat(place.c_str(), &replaced) == 0 && fchmod(descriptor, replaced.st_mode & 07777u) != 0) {
        failWithErrno();
    }
}

void NewFile::keep() {
    if (isDevice) {
        return;
    }
    if (fsync(descriptor) != 0) {
        failWithErrno();
    }
    if (temporaryName.empty()) {
        const std::string name = place + ".new" + std::to_string(getpid());
        const std::string own = "/proc/self/fd/" + std::to_string(descriptor);
        if (linkat(AT_FDCWD, own.c_str(), AT_FDCWD, name.c_str(), AT_SYMLINK_FOLLOW) != 0) {
            failWithErrno();
        }
        temporaryName = name;
    }
    const unsigned flags = mayReplace ? 0 : RENAME_NOREPLACE;
    int renamed = renameat2(AT_FDCWD, temporaryName.c_str(), AT_FDCWD, place.c_str(), flags);
    if (renamed != 0 && errno == EINVAL) {  // a file system that cannot tell whether it replaces
        renamed = rename(temporaryName.c_str(), place.c_str());
    }
    if (renamed != 0) {
        failWithErrno();
    }
    temporaryName.clear();
}
