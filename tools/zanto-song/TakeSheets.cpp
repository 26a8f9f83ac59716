#include "tools/zanto-song/Staff.h"
#include "tools/zanto-song/TakePicture.h"

using namespace staff;

Page onSheets(const std::vector<Page>& strips) {
    constexpr double usable = pageHeight - 2.0 * margin;
    Page sheets;
    sheets.width = pageWidth;
    sheets.height = pageHeight;
    double top = margin;
    for (const Page& strip : strips) {
        const double sheetEnd = sheets.height - margin;
        if (top + strip.height > sheetEnd && strip.height <= usable) {
            sheets.height += pageHeight;
            top = sheetEnd + 2.0 * margin;
        }
        for (Page::Line line : strip.lines) {
            line.y1 += top;
            line.y2 += top;
            sheets.lines.push_back(line);
        }
        for (Page::Text text : strip.texts) {
            text.baseline += top;
            sheets.texts.push_back(text);
        }
        top += strip.height;
        while (top > sheets.height - margin) {
            sheets.height += pageHeight;
        }
        if (sheets.title.empty()) {
            sheets.title = strip.title;
            sheets.description = strip.description;
        }
    }
    return sheets;
}
