#pragma once

#include "tools/common/Command.h"

/// The commands of zanto-song. The usage of each says what it does.
extern const Command checkCommand;
extern const Command importCommand;
extern const Command listenCommand;
extern const Command performCommand;
extern const Command practiseCommand;
extern const Command renderCommand;
extern const Command showCommand;
