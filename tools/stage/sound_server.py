"""Private sound servers: PulseAudio or PipeWire, whichever is installed.

They have neither sinks nor sources of their own. Nothing of the user's own sound set-up is read, spoken to or
changed.
"""

import glob
import os
import pathlib
import shutil
import subprocess

from stage import processes

CHOICE_VARIABLE = "ZANTO_STAGE_SOUND"

PULSEAUDIO_SCRIPT = "load-module module-native-protocol-unix socket={folder}/run/native auth-anonymous=1\n"

# What the program pipewire-pulse is: Debian has it in a package that would take the place of the user's PulseAudio.
PIPEWIRE_PULSE = """\
context.spa-libs = { audio.convert.* = audioconvert/libspa-audioconvert, support.* = support/libspa-support }
context.modules = [
    { name = libpipewire-module-rt, args = { nice.level = -11 }, flags = [ ifexists nofail ] }
    { name = libpipewire-module-protocol-native }
    { name = libpipewire-module-client-node }
    { name = libpipewire-module-adapter }
    { name = libpipewire-module-metadata }
    { name = libpipewire-module-protocol-pulse, args = { server.address = [ "unix:native" ] } }
]
"""

# Sound cards, cameras and Bluetooth belong to the user's own server, and there may be no D-Bus. WirePlumber 0.5 reads
# the first of these files, 0.4 the others, before its own 90-enable-all.lua.
WIREPLUMBER_ALONE = {
    "wireplumber.conf.d/stage.conf":
        "wireplumber.profiles = { main = { hardware.audio = disabled, hardware.bluetooth = disabled,\n"
        "    hardware.video-capture = disabled, support.reserve-device = disabled,\n"
        "    support.portal-permissionstore = disabled } }\n",
    "main.lua.d/60-stage.lua":
        "alsa_monitor.enabled = false\nv4l2_monitor.enabled = false\nlibcamera_monitor.enabled = false\n"
        "default_access.properties[\"enable-flatpak-portal\"] = false\n",
    "bluetooth.lua.d/60-stage.lua": "bluez_monitor.enabled = false\n",
}


class PulseAudio:
    program = "pulseaudio"

    def __init__(self, folder):
        self.folder = folder
        (folder / "server.pa").write_text(PULSEAUDIO_SCRIPT.format(folder=folder))

    @staticmethod
    def alsa_plugin():
        """The type of an ALSA device that leads to this server."""
        return "pulse"

    def start(self, settings):
        """Starts the server with these environment variables; returns its processes."""
        return [_start(["pulseaudio", "-n", "-F", str(self.folder / "server.pa"), "--daemonize=no",
                        "--exit-idle-time=-1", "--use-pid-file=no", "--disable-shm=yes", "--realtime=no",
                        "--high-priority=no", f"--log-target=newfile:{self.folder}/server.log"], settings)]


class PipeWire:
    program = "pipewire"

    def __init__(self, folder):
        configuration = folder / "state"
        files = {f"wireplumber/{name}": text for name, text in WIREPLUMBER_ALONE.items()}
        for name, text in {"pipewire/stage-pulse.conf": PIPEWIRE_PULSE, **files}.items():
            path = configuration / name
            path.parent.mkdir(parents=True, exist_ok=True)
            path.write_text(text)

    @staticmethod
    def alsa_plugin():
        """The same: PipeWire's own, as its users have it, where that is installed."""
        return "pipewire" if glob.glob("/usr/lib/*/alsa-lib/libasound_module_pcm_pipewire.so") else "pulse"

    def start(self, settings):
        """The same: the server, what connects its streams, and what lets PulseAudio's clients in."""
        socket = pathlib.Path(settings["XDG_RUNTIME_DIR"]) / "pipewire-0"
        socket.unlink(missing_ok=True)
        started = [_start(["pipewire"], settings)]
        processes.wait_until(socket.exists, 30, "PipeWire's socket")
        return [*started, _start(["wireplumber"], settings), _start(["pipewire", "-c", "stage-pulse.conf"], settings)]


def _start(command, settings):
    return processes.start(command, env=settings, stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL,
                           stderr=subprocess.DEVNULL)


def all_installed():
    """The kinds of server that there are, the preferred one first."""
    return [kind for kind in (PulseAudio, PipeWire) if shutil.which(kind.program)]


def installed():
    """The kind of server to use: the one that the environment asks for, else the first one that is installed."""
    asked = os.environ.get(CHOICE_VARIABLE)
    if asked:
        return {kind.program: kind for kind in (PulseAudio, PipeWire)}[asked]
    return (all_installed() or [PulseAudio])[0]
