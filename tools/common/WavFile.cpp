#include "tools/common/WavFile.h"

#include <sndfile.h>

#include <filesystem>
#include <utility>

#include "tools/common/Command.h"
#include "tools/common/Files.h"

namespace {

constexpr int sampleRate = 48000;

}  // namespace

struct WavFile::Library {
    ~Library() { sf_close(file); }

    SNDFILE* file = nullptr;
};

WavFile::WavFile(const NewFile& file, std::string path_)
    : path(std::move(path_)), library(std::make_unique<Library>()) {
    const std::string ending = std::filesystem::u8path(path).extension().string();
    if (!ending.empty() && ending != ".wav" && ending != ".WAV") {
        throw Failure(path + ": this writes WAV; choose a name that ends in .wav");
    }
    SF_INFO format{};
    format.samplerate = sampleRate;
    format.channels = 1;
    format.format = SF_FORMAT_WAV | SF_FORMAT_PCM_16;
    library->file = sf_open_fd(file.getDescriptor(), SFM_WRITE, &format, SF_FALSE);
    expect(library->file != nullptr);
    sf_command(library->file, SFC_SET_CLIPPING, nullptr, SF_TRUE);
}

WavFile::~WavFile() = default;

void WavFile::expect(bool done) const {
    if (!done) {
        throw Failure(path + ": " + sf_strerror(library->file));
    }
}

void WavFile::write(const std::vector<float>& samples, std::size_t count) {
    const auto frames = static_cast<sf_count_t>(count);
    expect(sf_write_float(library->file, samples.data(), frames) == frames);
}

void WavFile::close() {
    if (sf_close(std::exchange(library->file, nullptr)) != 0) {
        throw Failure(path + ": the file could not be closed");
    }
}
