#include <initializer_list>
#include <iostream>
#include <string>

#include "tools/zanto-song/Command.h"

namespace {

struct Command {
    char const* name;
    int (*run)(CommandArguments const& arguments);
    char const* usage;
};

std::initializer_list<Command> const commands = {
    {"check", checkCommand, checkUsage},    {"render", renderCommand, renderUsage},
#ifdef ZANTO_SONG_MORE_COMMANDS
    {"import", importCommand, importUsage}, {"perform", performCommand, performUsage},
    {"show", showCommand, showUsage},
#endif
};

void printUsage() {
    std::cout << "zanto-song: what one can do with a song file.\n\n";
    for (Command const& command : commands) {
        std::cout << command.usage << '\n';
    }
    std::cout
        << "zanto-song COMMAND --help tells about one of them, zanto-song --version which program this is.\n"
           "Status 0 when all is well, 1 when there are problems, 2 for wrong arguments.\n";
}

bool asksForHelp(std::string const& argument) {
    return argument == "--help" || argument == "-h";
}

int wrongUse(std::string const& problem) {
    std::cerr << "zanto-song: " << problem << "; zanto-song --help lists them" << std::endl;
    return statusWrongUse;
}

}  // namespace

int main(int argc, char** argv) {
    CommandArguments const arguments(argv + 1, argv + argc);
    if (arguments.empty()) {
        return wrongUse("no command");
    }
    if (asksForHelp(arguments.front())) {
        printUsage();
        return statusDone;
    }
    if (arguments.front() == "--version") {
        std::cout << "zanto-song " << ZANTO_VERSION << '\n';
        return statusDone;
    }
    for (Command const& command : commands) {
        if (arguments.front() != command.name) {
            continue;
        }
        CommandArguments const own(arguments.begin() + 1, arguments.end());
        if (!own.empty() && asksForHelp(own.front())) {
            std::cout << command.usage;
            return statusDone;
        }
        return command.run(own);
    }
    return wrongUse("no such command: " + arguments.front());
}
