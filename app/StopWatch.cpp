#include "app/StopWatch.h"

namespace tavi {

StopWatch::StopWatch(bool startNow) {
    if (startNow) {
        start();
    }
}

void StopWatch::start() {
    if (running) {
        return;
    }
    startTime.update();
    running = true;
}

void StopWatch::reset() {
    accumulated = 0.0;
    startTime.update();
}

StopWatch::operator double() const {
    return running ? accumulated + (Watch() - startTime).asDouble() : accumulated;
}

}  // namespace tavi
