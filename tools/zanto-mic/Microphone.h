#pragma once

#include <boost/shared_ptr.hpp>
#include <string>
#include <vector>

#include "analysis/SpectrumRules.h"

class RingBuffer;

/// An input device as the audio back-end sees it.
struct InputDevice {
    int number = 0;
    std::string name;
    std::string host;  ///< the sound system that offers it
    int channels = 0;
    double usualRate = 0.0;  ///< Hz
    std::string atGameRate;  ///< empty when it can record as the game does, else why not
    bool isDefault = false;  ///< the one that the game records from
};

/// The machine's microphones, and the game's own recording from the default one. A test puts another one in
/// its place.
class Microphone {
public:
    static constexpr int gameRate = rules::sampleRateHz;  ///< Hz

    Microphone() = default;
    Microphone(const Microphone&) = delete;
    Microphone& operator=(const Microphone&) = delete;
    virtual ~Microphone() = default;

    virtual std::vector<InputDevice> devices() = 0;

    /// Whether the game records from a monitor, which brings what the speakers play.
    virtual bool isMonitor() = 0;

    /// Starts recording as the game does. Throws a Failure that says what is wrong and what to do about it.
    virtual void start() = 0;

    /// What was recorded; empty before the start.
    virtual boost::shared_ptr<const RingBuffer> samples() = 0;

    /// Lets time pass, in which recording goes on.
    virtual void wait(double seconds) = 0;
};
