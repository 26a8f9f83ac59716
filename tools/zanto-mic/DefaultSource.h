#pragma once

/// Whether the sound server's default source is a monitor: it brings what the speakers play. Asks
/// PulseAudio's or PipeWire's own program, pactl or wpctl; false where neither is here, or no server answers.
bool isDefaultSourceAMonitor();
