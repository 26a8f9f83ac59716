#include "app/DesktopHints.h"

#ifdef ZANTO_X11
#include <GL/glx.h>
#include <X11/Xatom.h>
#include <X11/Xutil.h>
#include <unistd.h>

#include <boost/shared_ptr.hpp>
#include <string>
#include <vector>

#include "platform/timage/Image.h"

namespace {

constexpr int leastWidth = 320;   // pixels
constexpr int leastHeight = 240;  // pixels
constexpr int leastAspectX = 4;
constexpr int leastAspectY = 3;
constexpr int mostAspectX = 1000;           // no limit in practice
constexpr int iconSizes[] = {16, 48, 128};  // pixels
constexpr int rgba = 4;                     // channels

Atom named(Display* display, const char* name) {
    return XInternAtom(display, name, False);
}

// X11 passes 32-bit values as longs, also where a long has 64 bits.
void setNumbers(Display* display, Window window, const char* name, Atom type,
                const std::vector<long>& numbers) {
    XChangeProperty(display, window, named(display, name), type, 32, PropModeReplace,
                    reinterpret_cast<const unsigned char*>(numbers.data()), static_cast<int>(numbers.size()));
}

void setClass(Display* display, Window window) {
    char name[] = "zanto";
    XClassHint hint{name, name};
    XSetClassHint(display, window, &hint);
}

void setProcess(Display* display, Window window) {
    char host[256] = "";
    gethostname(host, sizeof host - 1);
    char* lines[] = {host};
    XTextProperty machine;
    // A process number means nothing without the machine's name.
    if (XStringListToTextProperty(lines, 1, &machine) != 0) {
        XSetWMClientMachine(display, window, &machine);
        XFree(machine.value);
    }
    setNumbers(display, window, "_NET_WM_PID", XA_CARDINAL, {getpid()});
}

void setIcon(Display* display, Window window) {
    std::vector<long> numbers;  // for each size its width, its height, and pixels as 0xAARRGGBB
    for (const int size : iconSizes) {
        tavi::Image<unsigned char> icon(0, 0, 0);
        if (!icon.read(("Images/icon-" + std::to_string(size) + ".png").c_str()) || icon.channels() != rgba) {
            continue;
        }
        numbers.insert(numbers.end(), {icon.width(), icon.height()});
        for (int y = 0; y < icon.height(); ++y) {
            for (int x = 0; x < icon.width(); ++x) {
                numbers.push_back(long{icon.at(x, y, 3)} << 24 | long{icon.at(x, y, 0)} << 16 |
                                  long{icon.at(x, y, 1)} << 8 | long{icon.at(x, y, 2)});
            }
        }
    }
    if (!numbers.empty()) {
        setNumbers(display, window, "_NET_WM_ICON", XA_CARDINAL, numbers);
    }
}

void setLeastSize(Display* display, Window window) {
    const boost::shared_ptr<XSizeHints> hints(XAllocSizeHints(), XFree);
    long known = 0;
    XGetWMNormalHints(display, window, hints.get(), &known);
    hints->flags |= PMinSize | PAspect;
    hints->min_width = leastWidth;
    hints->min_height = leastHeight;
    hints->min_aspect.x = leastAspectX;
    hints->min_aspect.y = leastAspectY;
    hints->max_aspect.x = mostAspectX;
    hints->max_aspect.y = 1;
    XSetWMNormalHints(display, window, hints.get());
}

}  // namespace

void giveDesktopHints() {
    Display* const display = glXGetCurrentDisplay();
    const Window window = glXGetCurrentDrawable();
    if (display == nullptr || window == None) {
        return;
    }
    setClass(display, window);
    setProcess(display, window);
    setIcon(display, window);
    setLeastSize(display, window);
}

#else

void giveDesktopHints() {
}

#endif
