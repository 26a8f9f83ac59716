#pragma once

#include <cstdint>
#include <string>
#include <vector>

/// PNG files made chunk by chunk, so that tests can have every kind of them, sound or not, from another hand
/// than the library that reads them. (Portable Network Graphics, second edition, W3C 2003)
struct PngHeader {
    std::uint32_t width = 0;
    std::uint32_t height = 0;
    std::uint8_t bitDepth = 8;
    std::uint8_t colourType = 0;
    std::uint8_t interlaced = 0;
};

const std::uint8_t pngGrey = 0;
const std::uint8_t pngColour = 2;
const std::uint8_t pngPalette = 3;
const std::uint8_t pngGreyAlpha = 4;
const std::uint8_t pngColourAlpha = 6;

/// Signature and header chunk, the start of every file.
std::string pngStart(const PngHeader& header);
/// One chunk with its length and check sum; `type` has four letters.
std::string pngChunk(const std::string& type, const std::string& data);
/// The image data chunk of unfiltered rows, each of whole bytes as the file stores them.
std::string pngRows(const std::vector<std::string>& rows);
/// The closing chunk.
std::string pngEnd();
