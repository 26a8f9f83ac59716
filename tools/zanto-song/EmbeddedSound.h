#pragma once

#include <string>

/// The recording at `path` as a data URL for a page: MP3, one channel. Throws a Failure with the reason,
/// without the file's name.
std::string embeddedSound(const std::string& path);
