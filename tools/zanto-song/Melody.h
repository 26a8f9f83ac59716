#pragma once

#include "tools/zanto-song/SheetMusic.h"

/// The highest voice of music: the highest of the notes that begin together, without what begins below it
/// while it sounds. Each note ends where the next one begins. Where the voice rests, other notes fill the
/// gap.
SheetVoice melodyOf(const SheetVoice& voice);
