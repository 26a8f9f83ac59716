#pragma once

#include "tools/zanto-song/SheetMusic.h"

/// The highest voice of music: of notes that begin together the highest, without what sets in below it while
/// it sounds. A note of it ends where the next one begins. Where it rests, what else sounds is taken for it.
SheetVoice melodyOf(const SheetVoice& voice);
