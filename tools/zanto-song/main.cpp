#include "tools/zanto-song/commands.h"

int main(int argc, char** argv) {
    const std::vector<Command> commands = {
        checkCommand,  renderCommand,
#ifdef ZANTO_SONG_MORE_COMMANDS
        importCommand, performCommand, practiseCommand, showCommand,
#endif
    };
    return runCompanion("zanto-song",
                        "checks, plays, grades, imports and draws song files, and makes practice songs.",
                        commands, {argv + 1, argv + argc});
}
