#include "tools/common/Text.h"
#include "tools/zanto-song/Page.h"

namespace {

std::string number(double value) {
    std::string text = fixed(value, 3);
    text.erase(text.find_last_not_of('0') + 1);
    if (text.back() == '.') {
        text.pop_back();
    }
    return text;
}

std::string nameOf(const Page::Color& color) {
    return "rgb(" + number(100.0 * color.red) + "%," + number(100.0 * color.green) + "%," +
           number(100.0 * color.blue) + "%)";
}

const char* nameOf(Page::Anchor anchor) {
    switch (anchor) {
        case Page::Anchor::start:
            return "start";
        case Page::Anchor::middle:
            return "middle";
        case Page::Anchor::end:
            return "end";
    }
    return "";
}

}  // namespace

std::string toSvg(const Page& page) {
    const std::string size = number(page.width) + " " + number(page.height);
    std::string svg = "<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"" + number(page.width) +
                      "mm\" height=\"" + number(page.height) + "mm\" viewBox=\"0 0 " + size +
                      "\" role=\"img\">\n";
    svg +=
        "<title>" + escapedXml(page.title) + "</title>\n<desc>" + escapedXml(page.description) + "</desc>\n";
    svg += "<rect width=\"100%\" height=\"100%\" fill=\"" + nameOf(page.background) + "\"/>\n<g>\n";
    for (const Page::Line& line : page.lines) {
        svg += "<line x1=\"" + number(line.x1) + "\" y1=\"" + number(line.y1) + "\" x2=\"" + number(line.x2) +
               "\" y2=\"" + number(line.y2) + "\" stroke=\"" + nameOf(line.color) + "\" stroke-width=\"" +
               number(line.width) + "\"/>\n";
    }
    svg += "</g>\n<g font-family=\"'Bitstream Vera Sans', 'DejaVu Sans', Verdana, sans-serif\">\n";
    for (const Page::Text& text : page.texts) {
        svg += "<text x=\"" + number(text.x) + "\" y=\"" + number(text.baseline) + "\" font-size=\"" +
               number(text.size) + "\" text-anchor=\"" + nameOf(text.anchor) + "\" fill=\"" +
               nameOf(text.color) + "\">" + escapedXml(text.text) + "</text>\n";
    }
    return svg + "</g>\n</svg>\n";
}
