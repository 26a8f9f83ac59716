#pragma once

#include <string>
#include <vector>

/// A kind of sound file that browsers play.
struct SoundKind {
    std::string name;
    int format;  ///< libsndfile's number
    std::string mediaType;
};

/// The smallest first. Not every libsndfile writes MP3 and FLAC; each writes WAV.
const std::vector<SoundKind>& soundKinds();

/// The recording at `path` as a data URL for a page, one channel, of the first kind that can be written.
/// Throws a Failure with the reason, without the file's name.
std::string embeddedSound(const std::string& path, const std::vector<SoundKind>& kinds = soundKinds());
