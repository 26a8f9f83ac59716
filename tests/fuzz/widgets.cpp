// Any events of a pointer on a screen of any size: windows stay on it, what is drawn makes no OpenGL error,
// and nobody keeps a pointer to what is gone.

#include <GL/gl.h>

#include <cmath>
#include <list>
#include <string>
#include <utility>
#include <vector>

#include "platform/wt/wt.h"
#include "tests/fuzz/Input.h"
#include "tests/support/RecordingGL.h"
#include "ui/FrequencyWindow.h"

namespace {

wt::wtWindow* makeWindow(int flags) {
    auto* made = new wt::wtWindow("w" + std::to_string(flags), {-0.5f, -0.5f}, {1.0f, 0.9f}, flags);
    wt::wtWindowManager::appendWidget(made);
    auto* layout = new wt::LinearLayout(flags == 1 ? wt::leftToRight : wt::bottomToTop);
    auto* list = new wt::wtListBox(made, "list", {0, 0}, {0.5f, 0.5f});
    auto* button = new wt::wtButton(made, "button", {0, 0}, {-1, -1}, "Button");
    auto* text = new wt::wtStaticText(made, "text", {0, 0}, {0.6f, 0.1f}, "text", 0x24);
    for (wt::wtWidget* widget : std::initializer_list<wt::wtWidget*>{button, text, list}) {
        layout->add(widget, {0.01f, 0.01f, 0.01f, 0.01f, 1, 0, wt::wtAlign(0x24), 0});
    }
    made->setLayoutManager(layout);
    button->connectButtonPressed([made, list, text, presses = 0]() mutable {
        ++presses;
        std::list<std::string> more(static_cast<std::size_t>(presses % 5), "Row " + std::to_string(presses));
        list->append(more);
        text->setText("pressed " + std::to_string(presses));
        made->setShowing(presses % 7 != 0 ? 1 : 0);
    });
    list->connectItemSelected([text](wt::wtListBox* sender, int row) {
        require(row >= 0 && row < sender->rowCount(), "a row that is selected is there");
        text->setText(sender->row(row));
    });
    return made;
}

/// Somewhere on the screen, mostly; any pixel at all now and then.
std::pair<int, int> somewhere(Input& input) {
    if (input.upTo(31) == 0) {
        const int x = input.raw<std::int32_t>();
        return {x, input.raw<std::int32_t>()};
    }
    const int x = input.byte() * wt::screen().width / 255;
    return {x, input.byte() * wt::screen().height / 255};
}

void pointer(Input& input) {
    const auto [x, y] = somewhere(input);
    const int kind = input.upTo(7);
    if (kind < 3) {
        wt::wtWindowManager::motionCallback(x, y);
    } else {
        const int button = kind == 7 ? input.raw<std::int8_t>() : (kind - 3) / 2 * 3 + input.upTo(1);
        wt::wtWindowManager::mouseCallback(kind < 5 ? 0 : button, kind % 2, x, y);
    }
}

void resizeScreen(Input& input) {
    const int largest = 1 << input.upTo(14);
    const int width = input.raw<std::uint16_t>() % largest;
    const int height = input.raw<std::uint16_t>() % largest;
    glViewport(input.raw<std::int8_t>(), input.raw<std::int8_t>(), width, height);
    if (input.flag()) {
        wt::wtWindowManager::setViewport(width, height);
    }
}

void changeWindow(Input& input, FrequencyWindow& panel) {
    const auto windows = wt::wtWindowManager::windows();
    wt::wtWidget* const window = windows[static_cast<std::size_t>(input.byte()) % windows.size()];
    switch (input.upTo(5)) {
        case 0:
            window->setShowing(input.upTo(1));
            return;
        case 1:
            wt::wtWindowManager::raiseWidget(window, input.raw<std::int8_t>());
            return;
        case 2: {
            const auto width = static_cast<float>(input.byte()) / 64.0f;
            window->resize(width, static_cast<float>(input.byte()) / 64.0f);
            return;
        }
        case 3:
            window->children().back()->setEnabled(input.upTo(1));
            return;
        case 4:
            window->setAlpha(static_cast<float>(input.byte()) / 255.0f);
            return;
        default: {
            // What an estimation can hand over: any level that a float holds, peaks where there are bins.
            std::vector<double> frequencies;
            std::vector<double> levels;
            for (int i = input.upTo(9); i > 0; --i) {
                frequencies.push_back(input.raw<std::uint16_t>());
                levels.push_back(static_cast<double>(input.raw<float>()));
            }
            const auto peakLevel = input.raw<float>();
            const std::vector<std::pair<float, float>> peaks(
                1, {peakLevel, static_cast<float>(input.raw<std::uint16_t>())});
            panel.setSignal(frequencies, levels, peaks, static_cast<double>(input.raw<float>()));
            panel.show();
        }
    }
}

void checkWindows() {
    constexpr float slack = 1e-4F;
    for (const wt::wtWidget* window : wt::wtWindowManager::windows()) {
        const wt::Rect rect = window->rect();
        if (window->isShowing() != 0) {
            require(rect.w >= 0 && rect.h >= 0, "a window has a size");
            require(rect.x >= -1 - slack && rect.y >= -1 - slack && rect.right() <= 1 + slack &&
                        rect.top() <= 1 + slack,
                    "a window is on the screen");
        }
    }
}

void draw(RecordingGL& gl) {
    wt::wtWindowManager::displayWidgets();
    require(gl.errors().empty(), "widgets make no OpenGL error");
    require(gl.pushed() == 0, "widgets leave nothing pushed");
    gl.forget();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const bool loaded = (wt::loadDefaults(640, 480), true);
    Input input(data, size);
    RecordingGL gl;
    wt::wtWindowManager::init(640, 480, false);
    for (const int flags : {0, 0x001, 0x101}) {
        makeWindow(flags);
    }
    FrequencyWindow panel;
    while (loaded && !input.empty()) {
        switch (const int kind = input.byte(); kind % 8) {
            case 0:
                resizeScreen(input);
                break;
            case 1:
                changeWindow(input, panel);
                break;
            case 2:
                wt::wtWindowManager::animate();
                break;
            case 3:
                draw(gl);
                break;
            default:
                pointer(input);
        }
        checkWindows();
    }
    draw(gl);
    wt::wtWindowManager::clear();
    return 0;
}
