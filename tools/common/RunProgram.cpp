#include "tools/common/RunProgram.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/mman.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <system_error>

#include "tools/common/Command.h"

MemoryFile::MemoryFile()
    : descriptor(memfd_create("zanto", 0)), name("/proc/self/fd/" + std::to_string(descriptor)) {
    if (descriptor == -1) {
        throw Failure("there is no memory for a file");
    }
}

MemoryFile::~MemoryFile() {
    close(descriptor);
}

std::string MemoryFile::contents() const {
    std::string text;
    std::array<char, 65536> block{};
    ssize_t count = 0;
    while ((count = pread(descriptor, block.data(), block.size(), static_cast<off_t>(text.size()))) > 0) {
        text.append(block.data(), static_cast<std::size_t>(count));
    }
    return text;
}

namespace {

int waitFor(pid_t process) {
    int state = 0;
    while (waitpid(process, &state, 0) == -1 && errno == EINTR) {
    }
    return WIFEXITED(state) ? WEXITSTATUS(state) : 128 + WTERMSIG(state);
}

}  // namespace

std::filesystem::path thisProgram() {
    std::error_code ignored;
    return std::filesystem::read_symlink("/proc/self/exe", ignored);
}

std::optional<ProgramResult> runProgram(const std::vector<std::string>& command) {
    std::vector<std::string> words = command;
    std::vector<char*> arguments;
    arguments.reserve(words.size() + 1);
    for (std::string& word : words) {
        arguments.push_back(word.data());
    }
    arguments.push_back(nullptr);

    // Files, because pipes would have to be read while the program runs.
    const MemoryFile out;
    const MemoryFile errors;
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
    posix_spawn_file_actions_adddup2(&actions, out.getDescriptor(), STDOUT_FILENO);
    posix_spawn_file_actions_adddup2(&actions, errors.getDescriptor(), STDERR_FILENO);
    pid_t process = 0;
    const int failure =
        posix_spawnp(&process, arguments.front(), &actions, nullptr, arguments.data(), environ);
    posix_spawn_file_actions_destroy(&actions);
    if (failure != 0) {
        return std::nullopt;
    }
    const int status = waitFor(process);
    return ProgramResult{status, out.contents(), errors.contents()};
}
