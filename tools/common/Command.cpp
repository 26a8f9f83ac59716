#include "tools/common/Command.h"

#include <algorithm>
#include <iostream>
#include <new>

namespace {

bool asksForHelp(const CommandArguments& arguments) {
    return !arguments.empty() && (arguments.front() == "--help" || arguments.front() == "-h");
}

void printUsage(const std::string& program, const std::string& summary,
                const std::vector<Command>& commands) {
    std::cout << program << ": " << summary << "\n\n";
    for (const Command& command : commands) {
        std::cout << command.usage << '\n';
    }
    std::cout << program << " COMMAND --help prints the options of one command, " << program
              << " --version the version.\n"
                 "Status 0 when all is well, 1 when there are problems, 2 for wrong arguments.\n";
}

}  // namespace

int runCommand(const std::string& name, const std::function<int()>& run) {
    const auto fail = [&](const std::string& message, int status) {
        std::cerr << name << ": " << message << std::endl;
        return status;
    };
    try {
        const int status = run();
        return std::cout.flush() ? status : fail("the output cannot be written", statusFailed);
    } catch (const Failure& failure) {
        return fail(failure.what(), failure.status);
    } catch (const std::bad_alloc&) {
        return fail("there is not enough memory", statusFailed);
    } catch (const std::exception& unexpected) {
        return fail(unexpected.what(), statusFailed);
    }
}

int runCompanion(const std::string& program, const std::string& summary, const std::vector<Command>& commands,
                 const CommandArguments& arguments) {
    std::string name = program;  // of who speaks
    return runCommand(name, [&] {
        if (asksForHelp(arguments)) {
            printUsage(program, summary, commands);
            return statusDone;
        }
        if (!arguments.empty() && arguments.front() == "--version") {
            std::cout << program << ' ' << ZANTO_VERSION << '\n';
            return statusDone;
        }
        const auto command = std::find_if(commands.begin(), commands.end(), [&](const Command& candidate) {
            return !arguments.empty() && candidate.name == arguments.front();
        });
        if (command == commands.end()) {
            const std::string problem =
                arguments.empty() ? "no command" : "no such command: " + arguments.front();
            throw WrongUse(problem + "; " + program + " --help lists them");
        }
        const CommandArguments own(arguments.begin() + 1, arguments.end());
        if (asksForHelp(own)) {
            std::cout << command->usage;
            return statusDone;
        }
        name += std::string(" ") + command->name;
        return command->run(own);
    });
}
