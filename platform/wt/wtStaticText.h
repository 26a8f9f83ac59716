#pragma once

#include <string>

#include "platform/wt/wtWidget.h"

namespace wt {

/// One line of text, UTF-8. It stays inside its rectangle: what does not fit is cut with an ellipsis.
class wtStaticText : public wtWidget {
public:
    /// Adds itself to `parent` unless that is null. `alignment` takes the bits of wtAlign. A width or height
    /// of -1 is found from the text; any other stays, so that a text that changes stays in its place.
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
