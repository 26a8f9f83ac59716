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
    auto* made = new wt::wtWindow("w" + std::to_string(flags), {-0.5F, -0.5F}, {1.0F, 0.9F}, flags);
    wt::wtWindowManager::appendWidget(made);
    auto* layout = new wt::LinearLayout(flags == 1 ? wt::leftToRight : wt::bottomToTop);
    auto* list = new wt::wtListBox(made, "list", {0, 0}, {0.5F, 0.5F});
    auto* button = new wt::wtButton(made, "button", {0, 0}, {-1, -1}, "Button");
    auto* text = new wt::wtStaticText(made, "text", {0, 0}, {0.6F, 0.1F}, "text", 0x24);
    for (wt::wtWidget* widget : std::initializer_list<wt::wtWidget*>{button, text, list}) {
        layout->add(widget, {0.01F, 0.01F, 0.01F, 0.01F, 1, 0, wt::wtAlign(0x24), 0});
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
        int const x = input.raw<std::int32_t>();
        return {x, input.raw<std::int32_t>()};
    }
    int const x = input.byte() * wt::screen().width / 255;
    return {x, input.byte() * wt::screen().height / 255};
}

void pointer(Input& input) {
    auto const [x, y] = somewhere(input);
    int const kind = input.upTo(7);
    if (kind < 3) {
        wt::wtWindowManager::motionCallback(x, y);
    } else {
        int const button = kind == 7 ? input.raw<std::int8_t>() : (kind - 3) / 2 * 3 + input.upTo(1);
        wt::wtWindowManager::mouseCallback(kind < 5 ? 0 : button, kind % 2, x, y);
    }
}

void resizeScreen(Input& input) {
    int const largest = 1 << input.upTo(14);
    int const width = input.raw<std::uint16_t>() % largest;
    int const height = input.raw<std::uint16_t>() % largest;
    glViewport(input.raw<std::int8_t>(), input.raw<std::int8_t>(), width, height);
    if (input.flag()) {
        wt::wtWindowManager::setViewport(width, height);
    }
}

void changeWindow(Input& input, FrequencyWindow& panel) {
    auto const windows = wt::wtWindowManager::windows();
    wt::wtWidget* const window = windows[static_cast<std::size_t>(input.byte()) % windows.size()];
    switch (input.upTo(5)) {
        case 0:
            window->setShowing(input.upTo(1));
            return;
        case 1:
            wt::wtWindowManager::raiseWidget(window, input.raw<std::int8_t>());
            return;
        case 2: {
            auto const width = static_cast<float>(input.byte()) / 64.0f;
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
            auto const peakLevel = input.raw<float>();
            std::vector<std::pair<float, float>> const peaks(
                1, {peakLevel, static_cast<float>(input.raw<std::uint16_t>())});
            panel.setSignal(frequencies, levels, peaks, static_cast<double>(input.raw<float>()));
            panel.show();
        }
    }
}

void checkWindows() {
    constexpr float slack = 1e-4F;
    for (wt::wtWidget const* window : wt::wtWindowManager::windows()) {
        wt::Rect const rect = window->rect();
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

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
    static bool const loaded = (wt::loadDefaults(640, 480), true);
    Input input(data, size);
    RecordingGL gl;
    wt::wtWindowManager::init(640, 480, false);
    for (int const flags : {0, 0x001, 0x101}) {
        makeWindow(flags);
    }
    FrequencyWindow panel;
    while (loaded && !input.empty()) {
        switch (int const kind = input.byte(); kind % 8) {
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
