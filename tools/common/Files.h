#pragma once

#include <cstdint>
#include <string>
#include <vector>

/// The largest files that the companions read, so that a damaged one does not take all memory.
constexpr std::uintmax_t mostSongBytes = 1u << 20;
constexpr std::uintmax_t mostSheetBytes = 8u << 20;
constexpr std::uintmax_t anySize = UINTMAX_MAX;

/// Why the file at `path` is not read: there is none, it is a folder, a device or a pipe, it is too large, or
/// it may not be read. Empty when none of these is so.
std::string whyUnreadable(const std::string& path, std::uintmax_t mostBytes);

/// The contents of a file, or a Failure with the reason, without the file's name.
std::string readFile(const std::string& path, std::uintmax_t mostBytes);

/// A file that is written beside its place and then appears there whole. Before `keep`, nothing is seen of
/// it; whatever ends the program leaves no part of it behind. Everything that fails throws a Failure that
/// names the file.
///
///     NewFile file(path, given.has("--force"), {songPath});
///     file.write(text);
///     file.keep();
///
/// A device or a pipe at `path` is written to as it is.
class NewFile {
public:
    /// `mayReplace`: whether a file at `path` may go. One of the `sources` may not in any case.
    NewFile(std::string path, bool mayReplace, const std::vector<std::string>& sources = {});
    ~NewFile();
    NewFile(const NewFile&) = delete;
    NewFile& operator=(const NewFile&) = delete;

    /// To write to with a library; open for reading and writing.
    int getDescriptor() const { return descriptor; }

    void write(const std::string& text);

    /// Puts the file in its place. To be called last.
    void keep();

private:
    [[noreturn]] void fail(const std::string& reason) const;
    [[noreturn]] void failWithErrno() const;
    void openDevice();
    void openBeside();
    void nameBeside();

    std::string path;           ///< as given, for messages
    std::string place;          ///< the same with links resolved
    std::string temporaryName;  ///< while `keep` puts the file in its place
    bool canHaveName = true;    ///< by a link; else its contents are copied
    bool mayReplace;
    bool isDevice = false;
    int descriptor = -1;
};
