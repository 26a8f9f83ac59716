#include <X11/Xlib.h>

#include <boost/shared_ptr.hpp>
#include <iostream>
#include <string>

#include "audio/AudioInput.h"

// What the game would find on this machine. Status 0 when it is there, 1 when it is not, 2 for wrong use.
// The sound libraries say a lot on standard error.

namespace {

bool displayOpens() {
    Display* const display = XOpenDisplay(nullptr);
    if (display) {
        XCloseDisplay(display);
    }
    return display != nullptr;
}

bool microphoneRecords() {
    const boost::shared_ptr<AudioInput> input = AudioInput::New();
    return input && input->startRecording();
}

}  // namespace

int main(int argc, char** argv) {
    const std::string what = argc == 2 ? argv[1] : "";
    if (what == "display") {
        return displayOpens() ? 0 : 1;
    }
    if (what == "microphone") {
        return microphoneRecords() ? 0 : 1;
    }
    std::cerr << "usage: zanto-probe display|microphone" << std::endl;
    return 2;
}
