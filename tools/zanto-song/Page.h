#pragma once

#include <string>
#include <vector>

/// A drawing of lines and texts, in millimetres from the upper left corner, y down.
struct Page {
    struct Line {
        double x1;
        double y1;
        double x2;
        double y2;
        double width;
        double grey;  ///< 0 black to 1 white
    };
    enum class Anchor { start, middle, end };
    struct Text {
        double x;
        double baseline;
        double size;  ///< height of the em
        Anchor anchor;
        double grey;
        std::string text;
    };

    double width = 0.0;
    double height = 0.0;
    double background = 1.0;  ///< grey
    std::string title;        ///< for those who cannot see the picture
    std::string description;
    std::vector<Line> lines;  ///< from back to front, all behind the texts
    std::vector<Text> texts;
};

/// The page as SVG, its texts as text in a typeface like the game's.
std::string toSvg(const Page& page);

/// The page as PNG, with so many pixels to a millimetre, its texts in the TrueType face at `facePath`. Throws
/// a Failure when that cannot be done.
std::string toPng(const Page& page, double pixelsPerMillimetre, const std::string& facePath);
