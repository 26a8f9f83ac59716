#include "tools/common/Files.h"

#include <fcntl.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <cstdarg>
#include <filesystem>
#include <string>

#include "tests/support/TemporaryFolder.h"
#include "tests/tools/Outcome.h"

namespace fs = std::filesystem;

namespace {

bool filesNeedNames = false;  // as if the file system had no files without one

}  // namespace

// In place of the C library's for this program: the kernel's, or the answer of such a file system.
extern "C" int open(const char* path, int flags, ...) {
    if (filesNeedNames && (flags & O_TMPFILE) == O_TMPFILE) {
        errno = EOPNOTSUPP;
        return -1;
    }
    va_list more;
    va_start(more, flags);
    const mode_t mode = (flags & O_CREAT) != 0 || (flags & O_TMPFILE) == O_TMPFILE ? va_arg(more, mode_t) : 0;
    va_end(more);
    return static_cast<int>(syscall(SYS_openat, AT_FDCWD, path, flags, mode));
}

namespace {

using Status = struct stat;

class FilesTest : public testing::Test {
protected:
    static void write(const std::string& path, const std::string& text, bool mayReplace = false) {
        NewFile file(path, mayReplace, {"source.txt"});
        file.write(text);
        file.keep();
    }
    static std::string namesHere() {
        std::string names;
        for (const auto& entry : fs::directory_iterator(".")) {
            names += entry.path().filename().string() + " ";
        }
        return names;
    }

    TemporaryFolder folder;
};

/// On file systems that have files without names, and on others.
class NewFilesTest : public FilesTest, public testing::WithParamInterface<bool> {
protected:
    NewFilesTest() { filesNeedNames = GetParam(); }
    ~NewFilesTest() override { filesNeedNames = false; }
};

INSTANTIATE_TEST_SUITE_P(, NewFilesTest, testing::Bool());

}  // namespace

TEST_F(FilesTest, WhatIsNoPlainFileIsNamedAsWhatItIs) {
    fs::create_directory("folder");
    ASSERT_EQ(mkfifo("pipe", 0600), 0);
    folder.write("small.txt", "1234");
    EXPECT_EQ(whyUnreadable("none", anySize), "there is no such file");
    EXPECT_EQ(whyUnreadable("folder", anySize), "this is a folder");
    EXPECT_EQ(whyUnreadable("pipe", anySize), "this is a device or a pipe, not a file");
    EXPECT_EQ(whyUnreadable("/dev/zero", anySize), "this is a device or a pipe, not a file");
    EXPECT_EQ(whyUnreadable("small.txt", anySize), "");
    EXPECT_EQ(readFile("small.txt", mostSongBytes), "1234");
    EXPECT_EQ(failureOf([] { readFile("pipe", mostSongBytes); }), whyUnreadable("pipe", anySize));
    fs::resize_file("small.txt", mostSongBytes + 1);
    EXPECT_EQ(failureOf([] { readFile("small.txt", mostSongBytes); }), "the file is larger than 1 MiB");
}

TEST_P(NewFilesTest, AFileAppearsWholeOrNotAtAllAndReplacesAnotherOnlyWhenAskedFor) {
    const std::string whole(100000, 'x');
    {
        NewFile file("new.txt", false);
        file.write("half");
        EXPECT_EQ(namesHere(), "");
    }
    EXPECT_EQ(namesHere(), "");
    {
        NewFile late("new.txt", false);
        write("new.txt", whole);
        EXPECT_EQ(failureOf([&] { late.keep(); }), "new.txt: File exists");
    }
    EXPECT_EQ(readFile("new.txt", mostSongBytes), whole);
    EXPECT_EQ(namesHere(), "new.txt ");
    folder.write("old.txt", "old");
    ASSERT_EQ(chmod("old.txt", 0640), 0);
    EXPECT_EQ(failureOf([] { write("old.txt", "new"); }),
              "old.txt: there is such a file; --force replaces it");
    EXPECT_EQ(readFile("old.txt", mostSongBytes), "old");
    fs::create_symlink("old.txt", "link.txt");
    write("link.txt", "new", true);
    EXPECT_EQ(readFile("old.txt", mostSongBytes), "new");
    EXPECT_TRUE(fs::is_symlink("link.txt"));
    Status status{};
    ASSERT_EQ(stat("old.txt", &status), 0);
    EXPECT_EQ(status.st_mode & 0777u, 0640u);
}

TEST_F(FilesTest, WhatIsReadIsNeverWrittenOverAndPlacesThatCannotBeWrittenAreNamed) {
    folder.write("source.txt", "source");
    fs::create_hard_link("source.txt", "twin.txt");
    for (const char* const path : {"source.txt", "./source.txt", "twin.txt"}) {
        EXPECT_EQ(failureOf([&] { write(path, "new", true); }),
                  std::string(path) + ": this is the file that is read; choose another name");
    }
    EXPECT_EQ(readFile("source.txt", mostSongBytes), "source");
    EXPECT_EQ(failureOf([&] { write(folder.path(), ""); }), folder.path().string() + ": this is a folder");
    EXPECT_EQ(failureOf([] { write("none/new.txt", ""); }), "none/new.txt: No such file or directory");
    EXPECT_EQ(failureOf([] { write("/dev/full", "text"); }), "/dev/full: No space left on device");
    EXPECT_TRUE(fs::is_character_file("/dev/full"));
}

TEST_F(FilesTest, AFullDiskAndASignalLeaveTheOldFileAndNothingElse) {
    folder.write("old.txt", "old");
    for (const bool isKilled : {false, true}) {
        const pid_t child = fork();
        if (child == 0) {
            const rlimit limit{1000, 1000};
            setrlimit(RLIMIT_FSIZE, &limit);
            std::signal(SIGXFSZ, isKilled ? SIG_DFL : SIG_IGN);
            const std::string problem = failureOf([] { write("old.txt", std::string(5000, 'x'), true); });
            _exit(problem == "old.txt: File too large" ? 0 : 1);
        }
        int status = 0;
        ASSERT_EQ(waitpid(child, &status, 0), child);
        EXPECT_EQ(isKilled, WIFSIGNALED(status));
        EXPECT_TRUE(isKilled || WEXITSTATUS(status) == 0);
        EXPECT_EQ(readFile("old.txt", mostSongBytes), "old");
        EXPECT_EQ(namesHere(), "old.txt ");
    }
}
