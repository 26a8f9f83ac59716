#include "tools/zanto-song/commands.h"

int main(int argc, char** argv) {
    const std::vector<Command> commands = {
        checkCommand,  renderCommand,
#ifdef ZANTO_SONG_MORE_COMMANDS
        importCommand, listenCommand, performCommand, practiseCommand, showCommand,
#endif
    };
    return runCompanion("zanto-song",
                        "checks, plays, grades, writes down, imports, practises and draws songs.", commands,
                        {argv + 1, argv + argc});
}
