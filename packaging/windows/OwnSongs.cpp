#include "packaging/windows/OwnSongs.h"

#include <windows.h>

#include <fstream>
#include <string>
#include <system_error>

namespace fs = std::filesystem;

namespace {

const std::wstring prefix = L"zanto-view-";
const std::wstring markSuffix = L".open";

fs::path markOf(const fs::path& view) {
    return fs::path(view).concat(markSuffix);
}

void removeForgotten(const fs::path& folder) {
    std::error_code ignored;
    for (const fs::directory_entry& entry : fs::directory_iterator(folder, ignored)) {
        const bool isView = entry.path().filename().wstring().rfind(prefix, 0) == 0;
        if (isView && entry.is_directory(ignored) && !fs::exists(markOf(entry.path()), ignored)) {
            fs::remove_all(entry.path(), ignored);
        }
    }
}

// The language's own fs::copy takes any two files here for the same one, and refuses. A copy can be written
// over and removed, even where the file may only be read.
void copyFile(const fs::path& from, const fs::path& to) {
    if (CopyFileW(from.c_str(), to.c_str(), FALSE) == 0 ||
        SetFileAttributesW(to.c_str(), FILE_ATTRIBUTE_NORMAL) == 0) {
        throw fs::filesystem_error("cannot copy", from, to,
                                   {static_cast<int>(GetLastError()), std::system_category()});
    }
}

/// Copies all that is in a folder; what `to` has of the same names goes.
void copyFolder(const fs::path& from, const fs::path& to) {
    fs::create_directories(to);
    for (const fs::directory_entry& entry : fs::directory_iterator(from)) {
        const auto copy = entry.is_directory() ? copyFolder : copyFile;
        copy(entry.path(), to / entry.path().filename());
    }
}

/// Both listings in one. Listings are words in pairs; the empty line keeps the last word of one from the
/// first of the other.
void joinListings(const fs::path& first, const fs::path& second, const fs::path& joined) {
    std::ofstream out(joined, std::ios::binary);
    if (std::ifstream in{first, std::ios::binary}; in.peek() != std::ifstream::traits_type::eof()) {
        out << in.rdbuf();
    }
    out << '\n';
    if (std::ifstream in{second, std::ios::binary}; in.peek() != std::ifstream::traits_type::eof()) {
        out << in.rdbuf();
    }
}

}  // namespace

bool OwnSongs::areIn(const fs::path& own) {
    std::error_code ignored;
    return fs::is_regular_file(own / "notes.txt", ignored) ||
           fs::directory_iterator(own / "Songs", ignored) != fs::directory_iterator();
}

OwnSongs::OwnSongs(const fs::path& data, const fs::path& own)
    : view(fs::temp_directory_path() / (prefix + std::to_wstring(GetCurrentProcessId()))),
      inUse(CreateFileW(markOf(view).c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS,
                        FILE_ATTRIBUTE_TEMPORARY | FILE_FLAG_DELETE_ON_CLOSE, nullptr)) {
    try {
        removeForgotten(view.parent_path());
        fs::remove_all(view);
        copyFolder(data, view);
        if (fs::is_directory(own / "Songs")) {
            copyFolder(own / "Songs", view / "Songs");
        }
        if (fs::is_regular_file(own / "notes.txt")) {
            copyFile(own / "notes.txt", view / "notes.txt");
        }
        if (fs::is_regular_file(own / "Songs" / "listing.txt")) {
            joinListings(data / "Songs" / "listing.txt", own / "Songs" / "listing.txt",
                         view / "Songs" / "listing.txt");
        }
    } catch (...) {
        CloseHandle(inUse);
        throw;
    }
}

OwnSongs::~OwnSongs() {
    std::error_code ignored;
    fs::remove_all(view, ignored);
    CloseHandle(inUse);
}
