#include "tests/support/PngBytes.h"

#include <stdexcept>

#include <zlib.h>

namespace {

std::string bigEndian(std::uint32_t value) {
    std::string bytes;
    for (int shift = 24; shift >= 0; shift -= 8) {
        bytes += static_cast<char>(value >> shift & 0xFFu);
    }
    return bytes;
}

const Bytef* asBytes(const std::string& text) {
    return reinterpret_cast<const Bytef*>(text.data());
}

}  // namespace

std::string pngStart(const PngHeader& header) {
    const char compressionAndFilter[] = {0, 0};
    std::string data = bigEndian(header.width) + bigEndian(header.height);
    data += static_cast<char>(header.bitDepth);
    data += static_cast<char>(header.colourType);
    data.append(compressionAndFilter, sizeof compressionAndFilter);
    data += static_cast<char>(header.interlaced);
    return "\x89PNG\r\n\x1a\n" + pngChunk("IHDR", data);
}

std::string pngChunk(const std::string& type, const std::string& data) {
    const std::string checked = type + data;
    const uLong sum = crc32(crc32(0, nullptr, 0), asBytes(checked), static_cast<uInt>(checked.size()));
    return bigEndian(static_cast<std::uint32_t>(data.size())) + checked +
           bigEndian(static_cast<std::uint32_t>(sum));
}

std::string pngRows(const std::vector<std::string>& rows) {
    std::string raw;
    for (const std::string& row : rows) {
        raw += '\0';  // no filter
        raw += row;
    }
    uLongf size = compressBound(static_cast<uLong>(raw.size()));
    std::string packed(size, '\0');
    if (compress(reinterpret_cast<Bytef*>(&packed[0]), &size, asBytes(raw), static_cast<uLong>(raw.size())) !=
        Z_OK) {
        throw std::runtime_error("cannot compress image data");
    }
    packed.resize(size);
    return pngChunk("IDAT", packed);
}

std::string pngEnd() {
    return pngChunk("IEND", "");
}
