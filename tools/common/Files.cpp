#include "tools/common/Files.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <system_error>
#include <utility>

#include "tools/common/Command.h"

namespace fs = std::filesystem;
using Status = struct stat;

std::string whyUnreadable(const std::string& path, std::uintmax_t mostBytes) {
    std::error_code error;
    const fs::file_status status = fs::status(path, error);
    if (!fs::exists(status)) {
        return "there is no such file";
    }
    if (fs::is_directory(status)) {
        return "this is a folder";
    }
    if (!fs::is_regular_file(status)) {
        return "this is a device or a pipe, not a file";
    }
    if (access(path.c_str(), R_OK) != 0) {
        return "the file cannot be read";
    }
    if (fs::file_size(path, error) > mostBytes) {
        return "the file is larger than " + std::to_string(mostBytes >> 20) + " MiB";
    }
    return "";
}

std::string readFile(const std::string& path, std::uintmax_t mostBytes) {
    // Before it is opened: opening a pipe waits for a writer.
    if (const std::string reason = whyUnreadable(path, mostBytes); !reason.empty()) {
        throw Failure(reason);
    }
    std::ifstream in(path, std::ios::binary);
    if (!in) {
        throw Failure("the file cannot be read");
    }
    return std::string(std::istreambuf_iterator<char>(in), {});
}

NewFile::NewFile(std::string path_, bool mayReplace_, const std::vector<std::string>& sources)
    : path(std::move(path_)), place(path), mayReplace(mayReplace_) {
    Status present{};
    if (stat(path.c_str(), &present) != 0) {
        openBeside();
        return;
    }
    if (S_ISDIR(present.st_mode)) {
        fail("this is a folder");
    }
    isDevice = !S_ISREG(present.st_mode);
    if (isDevice) {
        descriptor = open(path.c_str(), O_WRONLY | O_CLOEXEC);
        if (descriptor == -1) {
            failWithErrno();
        }
        return;
    }
    for (const std::string& source : sources) {
        std::error_code error;
        if (fs::equivalent(source, path, error)) {
            fail("this is the file that is read; choose another name");
        }
    }
    if (!mayReplace) {
        fail("there is such a file; --force replaces it");
    }
    if (access(path.c_str(), W_OK) != 0) {
        failWithErrno();
    }
    place = fs::canonical(path).string();
    openBeside();
    if (fchmod(descriptor, present.st_mode & 07777u) != 0) {
        failWithErrno();
    }
}

NewFile::~NewFile() {
    if (descriptor != -1) {
        close(descriptor);
    }
    if (!temporaryName.empty()) {
        unlink(temporaryName.c_str());
    }
}

void NewFile::fail(const std::string& reason) const {
    throw Failure(path + ": " + reason);
}

void NewFile::failWithErrno() const {
    fail(std::generic_category().message(errno));
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
}

void NewFile::write(const std::string& text) {
    for (std::size_t written = 0; written < text.size();) {
        const ssize_t count = ::write(descriptor, text.data() + written, text.size() - written);
        if (count == -1 && errno != EINTR) {
            failWithErrno();
        }
        written += static_cast<std::size_t>(std::max<ssize_t>(count, 0));
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
