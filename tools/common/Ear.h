#pragma once

#include "tools/common/Arguments.h"

/// Lets the game's classes listen with the ear that the option --ear names, "plain" or "fine", by setting
/// ZANTO_EAR for this process; without the option the environment decides. Throws WrongUse for another name.
void chooseEar(const Arguments& given);
