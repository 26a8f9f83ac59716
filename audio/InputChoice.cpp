#include "audio/InputChoice.h"

#include <boost/algorithm/string/predicate.hpp>
#include <vector>

#include "platform/settings/Settings.h"

namespace {

/// The inputs whose names have `part` in them, in any case of letters. A name that is just `part` is alone.
std::vector<PaDeviceIndex> inputsCalled(const std::string& part) {
    std::vector<PaDeviceIndex> found;
    for (PaDeviceIndex device = 0; device < Pa_GetDeviceCount(); ++device) {
        const PaDeviceInfo* const info = Pa_GetDeviceInfo(device);
        if (info == nullptr || info->maxInputChannels < 1) {
            continue;
        }
        if (part == info->name) {
            return {device};
        }
        if (boost::algorithm::icontains(info->name, part)) {
            found.push_back(device);
        }
    }
    return found;
}

}  // namespace

InputChoice InputChoice::make() {
    const PaDeviceIndex usual = Pa_GetDefaultInputDevice();
    const std::string name = settings::text("ZANTO_INPUT");
    if (name.empty()) {
        return {usual, ""};
    }
    const std::vector<PaDeviceIndex> found = inputsCalled(name);
    if (found.size() == 1) {
        return {found.front(), ""};
    }
    std::string complaint = std::string("ZANTO_INPUT: ") +
                            (found.empty() ? "no input is called \"" : "several inputs are called \"") +
                            name + "\". The default input is used. Inputs:";
    for (const PaDeviceIndex device : found.empty() ? inputsCalled("") : found) {
        complaint += std::string(" \"") + Pa_GetDeviceInfo(device)->name + '"';
    }
    return {usual, complaint};
}
