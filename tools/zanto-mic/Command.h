#pragma once

#include <atomic>
#include <string>
#include <vector>

class Microphone;

/// What a subcommand of zanto-mic gives its arguments to, and what main gives the process as its status.
using MicArguments = std::vector<std::string>;

constexpr int micFine = 0;
constexpr int micProblem = 1;   ///< no microphone, or one that does not serve
constexpr int micWrongUse = 2;  ///< arguments that make no sense, one line on standard error

/// `zanto-mic list`: the input devices.
int micListCommand(MicArguments const& arguments, Microphone& microphone);
extern char const* const micListUsage;

/// `zanto-mic level`: a live meter, until `micInterrupted` or as long as it was asked to.
int micLevelCommand(MicArguments const& arguments, Microphone& microphone);
extern char const* const micLevelUsage;

/// `zanto-mic check`: quiet, then a note, then what is to be done.
int micCheckCommand(MicArguments const& arguments, Microphone& microphone);
extern char const* const micCheckUsage;

/// Set by the signal that ends the meter.
extern std::atomic<bool> micInterrupted;
