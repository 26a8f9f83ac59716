#include "tools/zanto-song/EmbeddedSound.h"

#include <sndfile.h>

#include <cstdint>
#include <memory>
#include <vector>

#include "tools/common/Command.h"
#include "tools/common/RunProgram.h"
#include "tools/zanto-song/SoundRecording.h"

namespace {

constexpr std::size_t blockSamples = 4096;

std::string base64(const std::string& bytes) {
    constexpr const char* digits = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    std::string text;
    for (std::size_t at = 0; at < bytes.size(); at += 3) {
        std::uint32_t group = 0;
        for (std::size_t byte = at; byte < at + 3; ++byte) {
            group = group << 8u | (byte < bytes.size() ? static_cast<unsigned char>(bytes[byte]) : 0u);
        }
        for (std::size_t digit = 0; digit < 4; ++digit) {
            text += at + digit <= bytes.size() ? digits[group >> (18u - 6u * digit) & 63u] : '=';
        }
    }
    return text;
}

// Throws a Failure when the recording cannot be read, and gives the reason when the kind cannot be written.
std::string reasonAgainst(const SoundKind& kind, const std::string& path, const MemoryFile& memory) {
    SoundRecording recording(path);
    SF_INFO format{};
    format.samplerate = SampleSource::sampleRate;
    format.channels = 1;
    format.format = kind.format;
    std::unique_ptr<SNDFILE, int (*)(SNDFILE*)> file(
        sf_open_fd(memory.getDescriptor(), SFM_WRITE, &format, SF_FALSE), sf_close);
    if (file == nullptr) {
        return sf_strerror(nullptr);
    }
    std::vector<float> block(blockSamples);
    while (const std::size_t count = recording.read(block.data(), block.size())) {
        const auto frames = static_cast<sf_count_t>(count);
        if (sf_write_float(file.get(), block.data(), frames) != frames) {
            return sf_strerror(file.get());
        }
    }
    return "";
}

}  // namespace

const std::vector<SoundKind>& soundKinds() {
    static const std::vector<SoundKind> kinds = {
        {"MP3", SF_FORMAT_MPEG | SF_FORMAT_MPEG_LAYER_III, "audio/mpeg"},
        {"FLAC", SF_FORMAT_FLAC | SF_FORMAT_PCM_16, "audio/flac"},
        {"WAV", SF_FORMAT_WAV | SF_FORMAT_PCM_16, "audio/wav"}};
    return kinds;
}

std::string embeddedSound(const std::string& path, const std::vector<SoundKind>& kinds) {
    std::string reason;
    for (const SoundKind& kind : kinds) {
        const MemoryFile memory;
        const std::string against = reasonAgainst(kind, path, memory);
        if (against.empty()) {
            return "data:" + kind.mediaType + ";base64," + base64(memory.contents());
        }
        reason += "; " + kind.name + ": " + against;
    }
    throw Failure("it cannot be written" + reason);
}
