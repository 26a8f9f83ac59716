#include <fcntl.h>
#include <sys/sendfile.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <cstdio>
#include <filesystem>
#include <utility>

#include "tools/common/Command.h"
#include "tools/common/Files.h"

namespace fs = std::filesystem;
using Status = struct stat;

namespace {

/// Holds signals back while it lives.
class BlockedSignals {
public:
    BlockedSignals() {
        sigset_t all;
        sigfillset(&all);
        pthread_sigmask(SIG_BLOCK, &all, &before);
    }
    ~BlockedSignals() { pthread_sigmask(SIG_SETMASK, &before, nullptr); }
    BlockedSignals(const BlockedSignals&) = delete;
    BlockedSignals& operator=(const BlockedSignals&) = delete;

private:
    sigset_t before{};
};

std::string folderOf(const std::string& path) {
    const fs::path parent = fs::path(path).parent_path();
    return parent.empty() ? "." : parent.string();
}

}  // namespace

NewFile::~NewFile() {
    if (descriptor != -1) {
        close(descriptor);
    }
}

void NewFile::openDevice() {
    descriptor = open(path.c_str(), O_WRONLY | O_CLOEXEC);
    if (descriptor == -1) {
        failWithErrno();
    }
}

void NewFile::openBeside() {
    // A file without a name goes away with the program. Where a file system has none, one that loses its
    // name.
    descriptor = open(folderOf(place).c_str(), O_TMPFILE | O_RDWR | O_CLOEXEC, 0666);
    canHaveName = descriptor != -1;
    if (!canHaveName) {
        const BlockedSignals undisturbed;
        std::string name = folderOf(place) + "/.zanto-XXXXXX";
        descriptor = mkostemp(name.data(), O_CLOEXEC);
        if (descriptor == -1) {
            failWithErrno();
        }
        unlink(name.c_str());
        const mode_t mask = umask(0);
        umask(mask);
        fchmod(descriptor, 0666u & ~mask);
    }
    Status replaced{};
    if (stat(place.c_str(), &replaced) == 0 && fchmod(descriptor, replaced.st_mode & 07777u) != 0) {
        failWithErrno();
    }
}

// Gives the contents a name beside their place.
void NewFile::nameBeside() {
    if (canHaveName) {
        temporaryName = place + ".new" + std::to_string(getpid());
        const std::string own = "/proc/self/fd/" + std::to_string(descriptor);
        if (linkat(AT_FDCWD, own.c_str(), AT_FDCWD, temporaryName.c_str(), AT_SYMLINK_FOLLOW) != 0) {
            temporaryName.clear();
            failWithErrno();
        }
        return;
    }
    std::string name = folderOf(place) + "/.zanto-XXXXXX";
    const int copy = mkostemp(name.data(), O_CLOEXEC);
    if (copy == -1) {
        failWithErrno();
    }
    const int source = std::exchange(descriptor, copy);
    temporaryName = name;
    Status status{};
    bool isWhole = fstat(source, &status) == 0 && fchmod(copy, status.st_mode & 07777u) == 0;
    off_t done = 0;
    while (isWhole && done < status.st_size) {
        isWhole = sendfile(copy, source, &done, static_cast<std::size_t>(status.st_size - done)) > 0;
    }
    isWhole = isWhole && fsync(copy) == 0;
    const int reason = errno;
    close(source);
    if (!isWhole) {
        errno = reason;
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
    // No signal ends the program while the file has its other name.
    const BlockedSignals undisturbed;
    try {
        nameBeside();
        const unsigned flags = mayReplace ? 0 : RENAME_NOREPLACE;
        int renamed = renameat2(AT_FDCWD, temporaryName.c_str(), AT_FDCWD, place.c_str(), flags);
        if (renamed != 0 && errno == EINVAL) {  // a file system that cannot tell whether it replaces
            renamed = rename(temporaryName.c_str(), place.c_str());
        }
        if (renamed != 0) {
            failWithErrno();
        }
    } catch (const Failure&) {
        unlink(temporaryName.c_str());
        temporaryName.clear();
        throw;
    }
    temporaryName.clear();
}
