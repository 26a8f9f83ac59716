#include "audio/QuietDescriptor.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <memory>
#include <string>

namespace {

/// A file that has no name.
struct File {
    const std::unique_ptr<std::FILE, int (*)(std::FILE*)> file{std::tmpfile(), std::fclose};
    const int descriptor = fileno(file.get());

    void write(const std::string& text) const {
        EXPECT_EQ(::write(descriptor, text.data(), text.size()), static_cast<ssize_t>(text.size()));
    }
    std::string contents() const {
        char text[100];
        return {text, static_cast<std::size_t>(pread(descriptor, text, sizeof text, 0))};
    }
};

/// The lowest number that no open file has.
int nextDescriptor() {
    const int descriptor = open("/dev/null", O_RDONLY | O_CLOEXEC);
    close(descriptor);
    return descriptor;
}

// Ends the process with status 0 if `holds`.
[[noreturn]] void leave(bool holds) {
    std::_Exit(holds ? 0 : 1);
}

}  // namespace

TEST(QuietDescriptor, DropsWhatIsWrittenAsLongAsItStandsAndKeepsNoFileOpen) {
    const File file;
    const int next = nextDescriptor();
    {
        const QuietDescriptor quiet(file.descriptor);
        file.write("dropped");
    }
    file.write("kept");
    EXPECT_EQ(file.contents(), "kept");
    EXPECT_EQ(nextDescriptor(), next);
}

TEST(QuietDescriptor, DropsNothingWhenNoFileCanBeOpened) {
    const File file;
    rlimit limit{};
    ASSERT_EQ(getrlimit(RLIMIT_NOFILE, &limit), 0);
    // Room for none, then for /dev/null but not for the copy of the original.
    for (const int room : {0, 1}) {
        const rlimit full{static_cast<rlim_t>(nextDescriptor() + room), limit.rlim_max};
        ASSERT_EQ(setrlimit(RLIMIT_NOFILE, &full), 0);
        {
            const QuietDescriptor quiet(file.descriptor);
            file.write("kept");
        }
        ASSERT_EQ(setrlimit(RLIMIT_NOFILE, &limit), 0);
        EXPECT_EQ(file.contents(), room == 0 ? "kept" : "keptkept");
    }
}

TEST(StandardDescriptorsDeathTest, AreFilledWhereTheyAreMissing) {
    for (const int missing : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
        EXPECT_EXIT(
            {
                close(missing);
                fillStandardDescriptors();
                leave(fcntl(missing, F_GETFD) == 0 && nextDescriptor() > STDERR_FILENO);
            },
            testing::ExitedWithCode(0), "")
            << missing;
    }
}

TEST(StandardDescriptorsDeathTest, AreLeftAloneWhereTheyAreThere) {
    EXPECT_EXIT(
        {
            const int next = nextDescriptor();
            fillStandardDescriptors();
            leave(nextDescriptor() == next);
        },
        testing::ExitedWithCode(0), "");
}
