#pragma once

#include <atomic>
#include <string>

#include "tools/common/Command.h"

class Microphone;

/// What to tell somebody whose game records from a monitor; empty for all others.
std::string monitorWords(Microphone& microphone);

/// The commands of zanto-mic. The usage of each says what it does.

int micListCommand(const CommandArguments& arguments, Microphone& microphone);
const extern char* const micListUsage;

/// Ends early when `micInterrupted` is set.
int micLevelCommand(const CommandArguments& arguments, Microphone& microphone);
const extern char* const micLevelUsage;

int micCheckCommand(const CommandArguments& arguments, Microphone& microphone);
const extern char* const micCheckUsage;

/// Ends early when `micInterrupted` is set, and keeps what was recorded.
int micRecordCommand(const CommandArguments& arguments, Microphone& microphone);
extern const char* const micRecordUsage;

/// Set by the signal that ends the meter or the recording.
extern std::atomic<bool> micInterrupted;
