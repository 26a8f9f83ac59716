#pragma once

#include <boost/signals2/connection.hpp>
#include <boost/signals2/signal.hpp>
#include <memory>
#include <string>

#include "platform/wt/Fade.h"
#include "platform/wt/wtWidget.h"

namespace wt {

/// A push button. It looks pressed while the pointer that pressed it is over it, and fires when released
/// there.
///
///     auto* play = new wt::wtButton(window, "play", {0, 0}, {-1, -1}, "Play");
///     play->connectButtonPressed(boost::bind(&Game::play, &game));
class wtButton : public wtWidget {
public:
    using PressedSignal = boost::signals2::signal<void()>;

    /// Adds itself to `parent` unless that is null. A width or height of -1 is found from the text.
    wtButton(wtWidget* parent, const std::string& name, const tavi::Vec2<float>& pos,
             const tavi::Vec2<float>& size, const std::string& label);

    const std::string& getText() const { return label; }
    void setText(const std::string& text);

    /// Slots run in the order of connection, at the end of the event. A slot may hide or destroy the button's
    /// window, or end the process.
    boost::signals2::connection connectButtonPressed(const PressedSignal::slot_type& slot);

    /// Whether a release now would fire it.
    bool isArmed() const { return pressFade.isOn(); }
    bool isHovered() const { return hoverFade.isOn(); }

    void draw() override;
    void animate() override;
    void setShowing(int showing) override;
    SizeHint sizeHint() const override;
    bool press(const tavi::Vec2<float>& point) override;
    void drag(const tavi::Vec2<float>& point) override;
    void release(const tavi::Vec2<float>& point) override;
    void cancel() override;
    void hover(const tavi::Vec2<float>& point) override;
    void leave() override;

protected:
    /// On while the pointer is over it.
    Fade hoverFade;

private:
    void arm(bool on);

    std::string label;
    // Shared with the running callback, which may outlive the button.
    std::shared_ptr<PressedSignal> pressed;
    Fade pressFade;
};

}  // namespace wt
