#pragma once

#include <boost/make_shared.hpp>
#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "audio/RingBuffer.h"
#include "tools/common/Command.h"
#include "tools/zanto-mic/Microphone.h"

/// A microphone that hears what a test says, in as little time as computing it takes.
///
///     ScriptedMicrophone microphone([](double t) { return t < 5.0 ? 0.0 : std::sin(2765.0 * t); });
class ScriptedMicrophone : public Microphone {
public:
    /// `sound` gives the sample at a time in seconds.
    explicit ScriptedMicrophone(std::function<double(double)> sound_) : sound(std::move(sound_)) {}

    std::vector<InputDevice> listed;  ///< what devices() gives
    bool monitor = false;             ///< what isMonitor() gives
    std::string refusal;              ///< when not empty, start() fails with it

    std::vector<InputDevice> devices() override { return listed; }
    bool isMonitor() override { return monitor; }
    void start() override {
        if (!refusal.empty()) {
            throw Failure(refusal);
        }
    }
    boost::shared_ptr<const RingBuffer> samples() override { return ring; }
    void wait(double seconds) override {
        now += seconds;
        constexpr int blockSize = 1024;
        while (static_cast<double>(written + blockSize) <= now * gameRate) {
            std::vector<float> block;
            for (int index = 0; index < blockSize; ++index) {
                block.push_back(static_cast<float>(sound(static_cast<double>(written + index) / gameRate)));
            }
            ring->append(block.data(), blockSize);
            written += blockSize;
        }
    }

private:
    std::function<double(double)> sound;
    boost::shared_ptr<RingBuffer> ring = boost::make_shared<RingBuffer>(20480u);
    double now = 0.0;
    long written = 0;
};
