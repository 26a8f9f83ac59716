#include "audio/QuietDescriptor.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <unistd.h>

#include <cstdlib>
#include <string>

namespace {

/// A pipe that keeps what is written into it.
class Pipe {
public:
    Pipe() { EXPECT_EQ(pipe2(ends, O_NONBLOCK | O_CLOEXEC), 0); }
    ~Pipe() {
        close(ends[0]);
        close(ends[1]);
    }
    Pipe(const Pipe&) = delete;
    Pipe& operator=(const Pipe&) = delete;

    int inlet() const { return ends[1]; }

    void write(const std::string& text) const {
        EXPECT_EQ(::write(ends[1], text.data(), text.size()), static_cast<ssize_t>(text.size()));
    }

    std::string read() const {
        char text[100];
        const ssize_t length = ::read(ends[0], text, sizeof text);
        return length > 0 ? std::string(text, static_cast<std::size_t>(length)) : "";
    }

private:
    int ends[2] = {-1, -1};
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
    const Pipe pipe;
    const int next = nextDescriptor();
    {
        const QuietDescriptor quiet(pipe.inlet());
        pipe.write("dropped");
    }
    pipe.write("kept");
    EXPECT_EQ(pipe.read(), "kept");
    EXPECT_EQ(nextDescriptor(), next);
}

TEST(QuietDescriptor, DropsNothingWhenNoFileCanBeOpened) {
    const Pipe pipe;
    rlimit limit{};
    ASSERT_EQ(getrlimit(RLIMIT_NOFILE, &limit), 0);
    // Room for none, then for /dev/null but not for the copy of the original.
    for (const int room : {0, 1}) {
        const rlimit full{static_cast<rlim_t>(nextDescriptor() + room), limit.rlim_max};
        ASSERT_EQ(setrlimit(RLIMIT_NOFILE, &full), 0);
        {
            const QuietDescriptor quiet(pipe.inlet());
            pipe.write("kept");
        }
        ASSERT_EQ(setrlimit(RLIMIT_NOFILE, &limit), 0);
        EXPECT_EQ(pipe.read(), "kept") << room;
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
