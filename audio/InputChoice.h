#pragma once

#include <portaudio.h>

#include <string>

/// Which input the game records from.
struct InputChoice {
    /// The input that the environment variable ZANTO_INPUT names, by its name or a part of it; the default
    /// one when it names none, or not just one. Needs an open PortAudio session.
    static InputChoice make();

    PaDeviceIndex device;   ///< paNoDevice where there is none
    std::string complaint;  ///< the line that says what is wrong with the name; empty for nothing
};
