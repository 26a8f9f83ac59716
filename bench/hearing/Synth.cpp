#include "bench/hearing/Synth.h"

#include <fluidsynth.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <stdexcept>

namespace {

constexpr int channel = 0;
/// FluidSynth acts on events at the edges of blocks of this many samples.
constexpr std::size_t blockSamples = 64;
/// A sound begins after a quarter of a second without a sample as loud as this, a tenth of what 16 bits can
/// tell.
constexpr float silentSample = 3e-6f;
constexpr int quietBlocksBefore = soundRateHz / 4 / static_cast<int>(blockSamples);
constexpr double masterGain = 0.5;
constexpr double bendRangeCents = 200.0;
constexpr double glideCents = 200.0;
constexpr double vibratoHz = 5.5;
constexpr double vibratoOnsetSeconds = 0.25;
constexpr double pi = 3.14159265358979323846;
constexpr int bendCentre = 8192;

// A living room.
constexpr double roomSize = 0.6;
constexpr double roomDamping = 0.3;
constexpr double roomLevel = 0.5;
constexpr int reverbController = 91;
constexpr int reverbSend = 110;

struct Event {
    std::size_t sample;
    bool on;
    int pitch;
};

std::size_t sampleAt(double seconds) {
    return static_cast<std::size_t>(std::lround(seconds * soundRateHz));
}

std::vector<Event> eventsInOrder(const std::vector<NoteEvent>& notes) {
    std::vector<Event> events;
    for (const NoteEvent& note : notes) {
        events.push_back({sampleAt(note.startSeconds), true, note.pitch});
        events.push_back({sampleAt(note.endSeconds), false, note.pitch});
    }
    // A note that ends where the same one begins again ends first.
    std::stable_sort(events.begin(), events.end(), [](const Event& a, const Event& b) {
        return a.sample != b.sample ? a.sample < b.sample : a.on < b.on;
    });
    return events;
}

}  // namespace

double bendCents(const Touch& touch, double seconds) {
    const double t = std::max(0.0, seconds);
    const double depth = touch.vibratoCents * std::min(1.0, t / vibratoOnsetSeconds);
    const double missing = touch.glides ? std::max(0.0, 1.0 - t / glideSeconds) : 0.0;
    return touch.detuneCents + depth * std::sin(2.0 * pi * vibratoHz * t) - glideCents * missing;
}

struct Synth::Engine {
    fluid_settings_t* settings = new_fluid_settings();
    fluid_synth_t* synth = nullptr;

    /// Renders and forgets what still rings of the sound before.
    void fallSilent() const {
        fluid_synth_all_sounds_off(synth, -1);
        int quietBlocks = 0;
        while (quietBlocks < quietBlocksBefore) {
            const std::array<float, blockSamples> forgotten = next();
            const bool isQuiet = std::all_of(forgotten.begin(), forgotten.end(),
                                             [](float sample) { return std::abs(sample) < silentSample; });
            quietBlocks = isQuiet ? quietBlocks + 1 : 0;
        }
        fluid_synth_system_reset(synth);
    }

    /// The next block, mono.
    std::array<float, blockSamples> next() const {
        float left[blockSamples];
        float right[blockSamples];
        fluid_synth_write_float(synth, static_cast<int>(blockSamples), left, 0, 1, right, 0, 1);
        std::array<float, blockSamples> both;
        for (std::size_t i = 0; i < blockSamples; ++i) {
            both[i] = 0.5f * (left[i] + right[i]);
        }
        return both;
    }

    Engine() = default;
    Engine(const Engine&) = delete;
    Engine& operator=(const Engine&) = delete;
    ~Engine() {
        delete_fluid_synth(synth);
        delete_fluid_settings(settings);
    }
};

Synth::Synth(const std::string& soundfontPath) : engine(std::make_unique<Engine>()) {
    fluid_settings_t* const settings = engine->settings;
    fluid_settings_setnum(settings, "synth.sample-rate", soundRateHz);
    fluid_settings_setnum(settings, "synth.gain", masterGain);
    fluid_settings_setint(settings, "synth.chorus.active", 0);
    fluid_settings_setint(settings, "synth.dynamic-sample-loading", 1);
    fluid_settings_setnum(settings, "synth.reverb.room-size", roomSize);
    fluid_settings_setnum(settings, "synth.reverb.damp", roomDamping);
    fluid_settings_setnum(settings, "synth.reverb.level", roomLevel);
    engine->synth = new_fluid_synth(settings);
    if (engine->synth == nullptr || fluid_synth_sfload(engine->synth, soundfontPath.c_str(), 1) < 0) {
        throw std::runtime_error("cannot read the soundfont " + soundfontPath);
    }
}

Synth::~Synth() = default;

std::vector<float> Synth::render(int program, const std::vector<NoteEvent>& notes, const Touch& touch,
                                 double seconds) {
    fluid_synth_t* const synth = engine->synth;
    engine->fallSilent();
    fluid_synth_program_change(synth, channel, program);
    fluid_synth_reverb_on(synth, -1, touch.room ? 1 : 0);
    fluid_synth_cc(synth, channel, reverbController, touch.room ? reverbSend : 0);

    const std::vector<Event> events = eventsInOrder(notes);
    const double startSeconds = notes.empty() ? 0.0 : notes.front().startSeconds;
    std::vector<float> sound(sampleAt(seconds));
    int lastBend = bendCentre;
    auto next = events.begin();
    for (std::size_t done = 0; done < sound.size(); done += blockSamples) {
        for (; next != events.end() && next->sample < done + blockSamples; ++next) {
            if (next->on) {
                fluid_synth_noteon(synth, channel, next->pitch, touch.velocity);
            } else {
                fluid_synth_noteoff(synth, channel, next->pitch);
            }
        }
        const double cents = bendCents(touch, static_cast<double>(done) / soundRateHz - startSeconds);
        const int bend = bendCentre + static_cast<int>(std::lround(cents / bendRangeCents * bendCentre));
        if (bend != lastBend) {
            fluid_synth_pitch_bend(synth, channel, std::clamp(bend, 0, 2 * bendCentre - 1));
            lastBend = bend;
        }
        const std::array<float, blockSamples> block = engine->next();
        const std::size_t count = std::min(blockSamples, sound.size() - done);
        std::copy_n(block.begin(), count, sound.begin() + static_cast<std::ptrdiff_t>(done));
    }
    return sound;
}
