#pragma once

#include <string>

#include "platform/wt/wtWidget.h"

namespace wt {

/// One line of UTF-8 text. A line that does not fit its rectangle ends in an ellipsis.
class wtStaticText : public wtWidget {
public:
    /// Adds itself to `parent` unless that is null. `alignment` takes the bits of wtAlign and places the line
    /// in the rectangle. In a layout a text whose width is -1 is as wide as its line; any other takes all the
    /// width that there is, so that it keeps its place when the line changes. Either has the height of the
    /// line.
    wtStaticText(wtWidget* parent, const std::string& name, const tavi::Vec2<float>& pos,
                 const tavi::Vec2<float>& size, const std::string& text, int alignment);

    const std::string& getText() const { return line; }
    void setText(const std::string& text);

    void draw() override;
    SizeHint sizeHint() const override;

private:
    std::string line;
    int alignment;
};

}  // namespace wt
