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

}  // namespace

std::string embeddedSound(const std::string& path) {
    SoundRecording recording(path);
    const MemoryFile memory;
    SF_INFO format{};
    format.samplerate = SampleSource::sampleRate;
    format.channels = 1;
    format.format = SF_FORMAT_MPEG | SF_FORMAT_MPEG_LAYER_III;
    std::unique_ptr<SNDFILE, int (*)(SNDFILE*)> file(
        sf_open_fd(memory.getDescriptor(), SFM_WRITE, &format, SF_FALSE), sf_close);
    if (file == nullptr) {
        throw Failure(std::string("it cannot be written as MP3: ") + sf_strerror(nullptr));
    }
    std::vector<float> block(blockSamples);
    while (const std::size_t count = recording.read(block.data(), block.size())) {
        const auto frames = static_cast<sf_count_t>(count);
        if (sf_write_float(file.get(), block.data(), frames) != frames) {
            throw Failure(std::string("it cannot be written as MP3: ") + sf_strerror(file.get()));
        }
    }
    file.reset();
    return "data:audio/mpeg;base64," + base64(memory.contents());
}
