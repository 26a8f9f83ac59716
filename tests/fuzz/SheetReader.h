#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>

#include "tools/zanto-song/SheetMusic.h"

/// Gives any bytes to a reader of sheet music. What it makes of them must be in order: voices with notes, by
/// start, with times that are numbers, no more than the limits allow; and a song that is made of a voice must
/// have no error.
void tryReader(const std::function<SheetMusic(const std::string&)>& read, const std::uint8_t* data,
               std::size_t size);
