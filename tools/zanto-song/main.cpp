#include <array>
#include <iostream>
#include <string>

#include "tools/zanto-song/Command.h"

namespace {

struct Command {
    char const* name;
    int (*run)(CommandArguments const& arguments);
    char const* usage;
};

std::array<Command, 1> const commands = {{
    {"render", renderCommand, renderUsage},
}};

void printUsage(std::ostream& out) {
    out << "zanto-song: what one can do with a song file.\n\n";
    for (Command const& command : commands) {
        out << command.usage << '\n';
    }
    out << "Status 0 when it is done, 1 for a file that cannot be read or written, 2 for wrong arguments.\n";
}

}  // namespace

int main(int argc, char** argv) {
    CommandArguments const arguments(argv + 1, argv + argc);
    std::string const name = arguments.empty() ? "" : arguments.front();
    if (name == "--help" || name == "-h") {
        printUsage(std::cout);
        return statusDone;
    }
    for (Command const& command : commands) {
        if (name == command.name) {
            return command.run(CommandArguments(arguments.begin() + 1, arguments.end()));
        }
    }
    std::cerr << "zanto-song: " << (name.empty() ? "no command" : "no such command: " + name)
              << "; zanto-song --help lists them" << std::endl;
    return statusWrongUse;
}
