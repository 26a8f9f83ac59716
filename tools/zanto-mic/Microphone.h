#pragma once

#include <boost/shared_ptr.hpp>
#include <string>
#include <vector>

class RingBuffer;

/// An input device as the audio back-end sees it.
struct InputDevice {
    int number;
    std::string name;
    std::string host;  ///< the sound system that offers it
    int channels;
    double usualRate;        ///< Hz
    std::string atGameRate;  ///< empty when it can record as the game does, else why not
    bool isDefault;          ///< the one that the game records from
};

/// The machine's microphones, and the game's own recording from the default one. A test puts another one in
/// its place.
class Microphone {
public:
    static constexpr int gameRate = 48000;  ///< Hz

    Microphone() = default;
    Microphone(Microphone const&) = delete;
    Microphone& operator=(Microphone const&) = delete;
    virtual ~Microphone() = default;

    virtual std::vector<InputDevice> devices() = 0;

    /// Starts recording as the game does. False, with what is wrong and what to do about it in `problem`.
    virtual bool start(std::string& problem) = 0;

    /// What was recorded; empty before the start.
    virtual boost::shared_ptr<RingBuffer const> samples() = 0;

    /// Lets time pass, in which recording goes on.
    virtual void wait(double seconds) = 0;
};
