#include <algorithm>
#include <iostream>

#include "tools/common/Arguments.h"
#include "tools/common/Text.h"
#include "tools/zanto-mic/Microphone.h"
#include "tools/zanto-mic/commands.h"

const char* const micListUsage =
    "zanto-mic list\n"
    "    The input devices. The game records from the one with the star: the one that ZANTO_INPUT names, or\n"
    "    else the one chosen in the system's sound settings.\n";

std::string monitorWords(Microphone& microphone) {
    return microphone.isMonitor()
               ? "The game records from a monitor: it hears what this computer plays, and not you. Plug in a "
                 "microphone and\n"
                 "choose it in the system's sound settings, or start the game with another input, by a part "
                 "of "
                 "its name:\n"
                 "    ./play --input NAME     where the game is installed: zanto --input NAME\n"
               : "";
}

int micListCommand(const CommandArguments& arguments, Microphone& microphone) {
    Arguments(arguments, {}, {}).expectNoFiles();
    const std::vector<InputDevice> devices = microphone.devices();
    if (devices.empty()) {
        std::cout << "There is no input device. Plug in a microphone, or turn it on in the system's sound "
                     "settings.\n";
        return statusFailed;
    }
    std::size_t nameWidth = 6;
    std::size_t hostWidth = 6;
    for (const InputDevice& device : devices) {
        nameWidth = std::max(nameWidth, characterCount(device.name));
        hostWidth = std::max(hostWidth, characterCount(device.host));
    }
    std::cout << "    #  " << padRight("device", nameWidth) << "  " << padRight("system", hostWidth)
              << "  channels  usual rate  " << Microphone::gameRate << " Hz\n";
    bool hasDefault = false;
    for (const InputDevice& device : devices) {
        hasDefault = hasDefault || device.isDefault;
        std::cout << (device.isDefault ? "* " : "  ") << padLeft(std::to_string(device.number), 3) << "  "
                  << padRight(cleanUtf8(device.name), nameWidth) << "  " << padRight(device.host, hostWidth)
                  << padLeft(std::to_string(device.channels), 10) << padLeft(fixed(device.usualRate, 0), 12)
                  << "  " << (device.atGameRate.empty() ? "yes" : device.atGameRate) << '\n';
    }
    if (!hasDefault) {
        std::cout << "None of them is the default input. Choose one in the system's sound settings.\n";
        return statusFailed;
    }
    std::cout << monitorWords(microphone);
    return statusDone;
}
