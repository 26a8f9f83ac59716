#include "tools/common/RunProgram.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/mman.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>

namespace {

// A file in memory that takes what a program writes; a pipe would have to be read while the program runs.
class Catcher {
public:
    Catcher() : descriptor(memfd_create("output", MFD_CLOEXEC)) {}
    ~Catcher() {
        if (descriptor != -1) {
            close(descriptor);
        }
    }
    Catcher(Catcher const&) = delete;
    Catcher& operator=(Catcher const&) = delete;

    int get() const { return descriptor; }

    std::string text() const {
        std::string text;
        std::array<char, 65536> block{};
        ssize_t count = 0;
        while ((count = pread(descriptor, block.data(), block.size(), static_cast<off_t>(text.size()))) > 0) {
            text.append(block.data(), static_cast<std::size_t>(count));
        }
        return text;
    }

private:
    int descriptor;
};

int waitFor(pid_t process) {
    int state = 0;
    while (waitpid(process, &state, 0) == -1 && errno == EINTR) {
    }
    return WIFEXITED(state) ? WEXITSTATUS(state) : 128 + WTERMSIG(state);
}

}  // namespace

std::optional<ProgramResult> runProgram(std::vector<std::string> const& command) {
    std::vector<std::string> words = command;
    std::vector<char*> arguments;
    arguments.reserve(words.size() + 1);
    for (std::string& word : words) {
        arguments.push_back(word.data());
    }
    arguments.push_back(nullptr);

    Catcher const out;
    Catcher const errors;
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
    posix_spawn_file_actions_adddup2(&actions, out.get(), STDOUT_FILENO);
    posix_spawn_file_actions_adddup2(&actions, errors.get(), STDERR_FILENO);
    pid_t process = 0;
    int const failure =
        posix_spawnp(&process, arguments.front(), &actions, nullptr, arguments.data(), environ);
    posix_spawn_file_actions_destroy(&actions);
    if (failure != 0) {
        return std::nullopt;
    }
    int const status = waitFor(process);
    return ProgramResult{status, out.text(), errors.text()};
}
