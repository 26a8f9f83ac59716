#pragma once

#include "tools/common/Command.h"

/// `zanto-notes`: writes the note table that its arguments ask for to standard output.
int notesCommand(const CommandArguments& arguments);
