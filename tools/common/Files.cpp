#include "tools/common/Files.h"

#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <system_error>
#include <utility>

#include "tools/common/Command.h"

namespace fs = std::filesystem;

std::string whyUnreadable(const std::string& path, std::uintmax_t mostBytes) {
    std::error_code error;
    const fs::path file = fs::u8path(path);
    const fs::file_status status = fs::status(file, error);
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
    if (fs::file_size(file, error) > mostBytes) {
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
    std::error_code error;
    const fs::path file = fs::u8path(path);
    const fs::file_status present = fs::status(file, error);
    if (!fs::exists(present)) {
        openBeside();
        return;
    }
    if (fs::is_directory(present)) {
        fail("this is a folder");
    }
    isDevice = !fs::is_regular_file(present);
    if (isDevice) {
        openDevice();
        return;
    }
    for (const std::string& source : sources) {
        if (fs::equivalent(fs::u8path(source), file, error)) {
            fail("this is the file that is read; choose another name");
        }
    }
    if (!mayReplace) {
        fail("there is such a file; --force replaces it");
    }
    if (access(path.c_str(), W_OK) != 0) {
        failWithErrno();
    }
    place = fs::canonical(file).string();
    openBeside();
}

void NewFile::fail(const std::string& reason) const {
    throw Failure(path + ": " + reason);
}

void NewFile::failWithErrno() const {
    fail(std::generic_category().message(errno));
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
