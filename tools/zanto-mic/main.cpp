#include <csignal>
#include <initializer_list>
#include <iostream>
#include <string>

#include "tools/zanto-mic/Command.h"
#include "tools/zanto-mic/GameMicrophone.h"

namespace {

struct Command {
    char const* name;
    int (*run)(MicArguments const& arguments, Microphone& microphone);
    char const* usage;
};

std::initializer_list<Command> const commands = {
    {"list", micListCommand, micListUsage},
    {"level", micLevelCommand, micLevelUsage},
    {"check", micCheckCommand, micCheckUsage},
};

void printUsage() {
    std::cout << "zanto-mic: what the game hears, and why it may not.\n\n";
    for (Command const& command : commands) {
        std::cout << command.usage << '\n';
    }
    std::cout
        << "zanto-mic COMMAND --help tells about one of them, zanto-mic --version which program this is.\n"
           "Status 0 when all is well, 1 when there are problems, 2 for wrong arguments.\n";
}

bool asksForHelp(std::string const& argument) {
    return argument == "--help" || argument == "-h";
}

int wrongUse(std::string const& problem) {
    std::cerr << "zanto-mic: " << problem << "; zanto-mic --help lists them" << std::endl;
    return micWrongUse;
}

}  // namespace

int main(int argc, char** argv) {
    MicArguments const arguments(argv + 1, argv + argc);
    if (arguments.empty()) {
        return wrongUse("no command");
    }
    if (asksForHelp(arguments.front())) {
        printUsage();
        return micFine;
    }
    if (arguments.front() == "--version") {
        std::cout << "zanto-mic " << ZANTO_VERSION << '\n';
        return micFine;
    }
    for (Command const& command : commands) {
        if (arguments.front() != command.name) {
            continue;
        }
        MicArguments const own(arguments.begin() + 1, arguments.end());
        if (!own.empty() && asksForHelp(own.front())) {
            std::cout << command.usage;
            return micFine;
        }
        // The meter ends in order; the others are short and may be broken off.
        if (command.run == micLevelCommand) {
            std::signal(SIGINT, [](int) { micInterrupted = true; });
        }
        GameMicrophone microphone;
        return command.run(own, microphone);
    }
    return wrongUse("no such command: " + arguments.front());
}
