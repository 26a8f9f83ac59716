#pragma once

#include <string>

#include "tools/zanto-mic/Listener.h"

/// A moment's levels and notes, with a bar from -100 to 0 dB and a mark in it at the least level.
std::string levelText(const Moment& moment, double minDecibel);

/// The same, filled up with blanks to the width of the longest one, to overwrite an earlier one in a
/// terminal.
std::string levelLine(const Moment& moment, double minDecibel);
