#pragma once

#include <optional>
#include <string>
#include <vector>

/// A drawing of lines and texts, in millimetres from the upper left corner, y down.
struct Page {
    struct Color {
        double red;  ///< 0 to 1
        double green;
        double blue;
    };
    /// 0 black to 1 white.
    static constexpr Color grey(double level) { return {level, level, level}; }

    struct Line {
        double x1;
        double y1;
        double x2;
        double y2;
        double width;
        Color color;
    };
    enum class Anchor { start, middle, end };
    struct Text {
        double x;
        double baseline;
        double size;  ///< height of the em
        Anchor anchor;
        Color color;
        std::string text;
    };

    double width = 0.0;
    double height = 0.0;
    Color background = grey(1.0);
    std::string title;  ///< for those who cannot see the picture
    std::string description;
    std::vector<Line> lines;  ///< from back to front, all behind the texts
    std::vector<Text> texts;
};

/// The page as SVG, its texts as text in a typeface like the game's.
std::string toSvg(const Page& page);

/// The page as PNG, with so many pixels to a millimetre, its texts in the TrueType face at `facePath`. Throws
/// a Failure when that cannot be done.
std::string toPng(const Page& page, double pixelsPerMillimetre, const std::string& facePath);

/// Throws WrongUse unless a picture's name ends in .png or .svg; `option` is what the message begins with.
void expectPictureName(const std::string& option, const std::string& name);

/// The page as its name's ending asks, PNG with 200 pixels to the inch and the typeface of the game's data,
/// which may be `asked` for.
std::string toPicture(const Page& page, const std::string& name, const std::optional<std::string>& asked);
