#pragma once

#include <functional>
#include <stdexcept>
#include <string>
#include <vector>

using CommandArguments = std::vector<std::string>;

/// What a companion ends with.
constexpr int statusDone = 0;
constexpr int statusFailed =
    1;  ///< a file that cannot be read, written or kept whole, or faults that were found
constexpr int statusWrongUse = 2;  ///< arguments that make no sense

/// Thrown to end a command. The message becomes one line on standard error.
class Failure : public std::runtime_error {
public:
    explicit Failure(const std::string& message, int status_ = statusFailed)
        : std::runtime_error(message), status(status_) {}

    const int status;
};

/// The arguments make no sense.
class WrongUse : public Failure {
public:
    explicit WrongUse(const std::string& message) : Failure(message, statusWrongUse) {}
};

/// One command of a companion. `run` gives the status, or throws a Failure.
struct Command {
    const char* name;
    const char* usage;
    std::function<int(const CommandArguments&)> run;
};

/// Calls `run` and gives its status. A Failure becomes a line "NAME: MESSAGE" on standard error; output that
/// cannot be written is a failure too.
int runCommand(const std::string& name, const std::function<int()>& run);

/// The `main` of a companion with commands: finds the command that is asked for and runs it, or tells about
/// the program with --help and --version.
int runCompanion(const std::string& program, const std::string& summary, const std::vector<Command>& commands,
                 const CommandArguments& arguments);
