#include <csignal>

#include "tools/zanto-mic/GameMicrophone.h"
#include "tools/zanto-mic/commands.h"

namespace {

using MicCommand = int (*)(const CommandArguments& arguments, Microphone& microphone);

Command withMicrophone(const char* name, const char* usage, MicCommand command) {
    return {name, usage, [command](const CommandArguments& arguments) {
                // These end in order; the others are short and may be broken off.
                if (command == micLevelCommand || command == micRecordCommand) {
                    std::signal(SIGINT, [](int) { micInterrupted = true; });
                }
                GameMicrophone microphone;
                return command(arguments, microphone);
            }};
}

}  // namespace

int main(int argc, char** argv) {
    return runCompanion("zanto-mic", "what the game hears, and what keeps it from hearing; records it.",
                        {withMicrophone("list", micListUsage, micListCommand),
                         withMicrophone("level", micLevelUsage, micLevelCommand),
                         withMicrophone("check", micCheckUsage, micCheckCommand),
                         withMicrophone("record", micRecordUsage, micRecordCommand)},
                        {argv + 1, argv + argc});
}
