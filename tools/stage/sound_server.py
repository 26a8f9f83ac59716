"""Private sound servers: PulseAudio or PipeWire, whichever is installed.

Each has one sink, "mic", that leads nowhere. The sink's monitor is the only source, and so the default one. Nothing
of the user's own sound set-up is read, spoken to or changed.
"""

import os
import pathlib
import shutil
import subprocess

from stage import processes

CHOICE_VARIABLE = "ZANTO_STAGE_SOUND"

PULSEAUDIO_SCRIPT = """\
load-module module-native-protocol-unix socket={folder}/run/native auth-anonymous=1
load-module module-null-sink sink_name=mic format=float32le rate=48000 channels=1 channel_map=mono
set-default-sink mic
set-default-source mic.monitor
"""

PIPEWIRE_SINK = """\
context.objects = [
    { factory = adapter
      args = { factory.name = support.null-audio-sink, node.name = mic, node.description = "The stage's microphone"
               media.class = Audio/Sink, audio.rate = 48000, audio.position = [ MONO ], monitor.passthrough = true
               session.suspend-timeout-seconds = 0 } }
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
        for name, text in {"pipewire/pipewire.conf.d/stage.conf": PIPEWIRE_SINK, **files}.items():
            path = configuration / name
            path.parent.mkdir(parents=True, exist_ok=True)
            path.write_text(text)

    def start(self, settings):
        """The same: the server, what connects its streams, and what lets PulseAudio's clients in."""
        socket = pathlib.Path(settings["XDG_RUNTIME_DIR"]) / "pipewire-0"
        socket.unlink(missing_ok=True)
        started = [_start(["pipewire"], settings)]
        processes.wait_until(socket.exists, 30, "PipeWire's socket")
        return [*started, _start(["wireplumber"], settings), _start(["pipewire-pulse"], settings)]


def _start(command, settings):
    return processes.start(command, env=settings, stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL,
                           stderr=subprocess.DEVNULL)


def installed():
    """The kind of server to use: the one that the environment asks for, else the first one that is installed."""
    kinds = {kind.program: kind for kind in (PulseAudio, PipeWire)}
    asked = os.environ.get(CHOICE_VARIABLE)
    if asked:
        return kinds[asked]
    return next((kind for name, kind in kinds.items() if shutil.which(name)), PulseAudio)
