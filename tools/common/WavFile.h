#pragma once

#include <memory>
#include <string>
#include <vector>

class NewFile;

/// Writes sound into a new file: 48000 Hz, one channel, 16 bit. Everything that fails throws a Failure that
/// names the file.
///
///     WavFile wav(file, path);
///     wav.write(block, count);
///     wav.close();   // before file.keep()
class WavFile {
public:
    /// `file` must outlive this; `path` is for messages, and may not end like another kind of sound.
    WavFile(const NewFile& file, std::string path);
    ~WavFile();

    /// The first `count` samples, -1 to 1; what lies outside is cut off.
    void write(const std::vector<float>& samples, std::size_t count);
    void close();

private:
    struct Library;

    void expect(bool done) const;

    std::string path;
    std::unique_ptr<Library> library;
};
