#include "tools/zanto-mic/DefaultSource.h"

#include <boost/algorithm/string/predicate.hpp>
#include <boost/algorithm/string/trim.hpp>

#include "tools/common/RunProgram.h"

bool isDefaultSourceAMonitor() {
    const auto source = runProgram({"pactl", "get-default-source"});
    if (source && source->status == 0) {
        return boost::ends_with(boost::trim_copy(source->out), ".monitor");
    }
    // Where there is no source, PipeWire takes a sink for one.
    const auto node = runProgram({"wpctl", "inspect", "@DEFAULT_AUDIO_SOURCE@"});
    return node && node->status == 0 && boost::contains(node->out, "media.class = \"Audio/Sink\"");
}
