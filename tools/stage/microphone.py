"""A private microphone that one can play sound files into.

It is the default source of a private sound server: the monitor of a sink that leads nowhere. A private ALSA
configuration makes it the default device.
"""

import os
import pathlib
import shutil
import subprocess
import tempfile
import threading
import time
import wave

from stage import processes, sound_server

SAMPLE_RATE = 48000
SAMPLE_BYTES = 4  # 32-bit float, one channel

# How far ahead of the sound a player may be. When it is kept waiting for longer, the sound has a gap, and what
# comes after that is late; more does no harm, as the marker tells when the sound begins.
PLAYBACK_LATENCY_MS = 10000
RECORDING_LATENCY_MS = "20"  # of a program that records
LATENCY_VARIABLE = "PULSE_LATENCY_MSEC"
# Starting a player and filling its buffer takes less than this, so the sound is still to come afterwards.
LEAD_SECONDS = 2.0
# The beginning of a new stream can get lost, more of it on a busy machine.
MARKER_SECONDS = 0.5

SOURCE = "mic"
SINK_ARGUMENTS = ["format=float32le", "rate=48000", "channels=1", "channel_map=mono",
                  "sink_properties='monitor.passthrough=true session.suspend-timeout-seconds=0'"]

ALSA_CONFIGURATION = """\
pcm.!default {{ type {kind} hint {{ show on description "The stage's microphone" }} }}
ctl.!default {{ type {kind} }}
"""


class Performance:
    """A sound file on its way into the microphone."""

    def __init__(self, process, begins_at, seconds):
        self.process = process
        self.begins_at = begins_at  # time.monotonic() when the file's first sample sounds
        self.ends_at = begins_at + seconds

    def wait(self):
        """Until all of it has sounded."""
        self.process.wait(max(0.0, self.ends_at - time.monotonic()) + 30 * processes.PATIENCE)

    def stop(self):
        processes.stop(self.process)


class VirtualMicrophone:
    """A context manager.

        with VirtualMicrophone() as microphone:
            game = subprocess.Popen(["zanto"], env={**os.environ, **microphone.environment})
            microphone.play("song.wav").wait()
    """

    def __init__(self):
        self.folder = None
        self._server = None
        self._server_processes = []
        self.source = SOURCE
        self._modules = {}  # the server's numbers for them, by the source's name
        self.listener = None
        self._hearing = None  # the thread that reads from the listener
        self._performances = []
        self._marker = None  # set to the time at which silence was first broken, None while waited for
        self._heard_anything = threading.Event()
        self._delivers = threading.Event()

    @property
    def environment(self):
        """What a program needs in its environment to record from here."""
        folder = self.folder
        return {
            "PULSE_SERVER": f"unix:{folder}/run/native",
            "PULSE_COOKIE": f"{folder}/cookie",
            "PULSE_RUNTIME_PATH": f"{folder}/run",
            "PULSE_STATE_PATH": f"{folder}/state",
            "PULSE_CONFIG_PATH": f"{folder}/state",
            "PULSE_CLIENTCONFIG": f"{folder}/client.conf",
            "XDG_RUNTIME_DIR": f"{folder}/run",
            "PIPEWIRE_RUNTIME_DIR": f"{folder}/run",
            "ALSA_CONFIG_PATH": f"{folder}/asound.conf",
            LATENCY_VARIABLE: RECORDING_LATENCY_MS,
            "JACK_NO_START_SERVER": "1",
        }

    def __enter__(self):
        try:
            self.start()
        except BaseException:
            self.stop()
            raise
        return self

    def __exit__(self, *_exception):
        self.stop()

    def start(self):
        # Its own folder below the system's temporary one: a socket's path has to be short.
        self.folder = pathlib.Path(tempfile.mkdtemp(prefix="zanto-microphone-"))
        for name in ("run", "state"):
            (self.folder / name).mkdir(mode=0o700)
        self._server = sound_server.installed()(self.folder)
        (self.folder / "asound.conf").write_text(ALSA_CONFIGURATION.format(kind=self._server.alsa_plugin()))
        (self.folder / "client.conf").write_text("autospawn = no\n")
        self.restart_server()

    def restart_server(self):
        """Starts the sound server, the first time or after `kill_server`."""
        settings = self._settings()
        del settings["PULSE_SERVER"]  # it would take itself for a client
        self._server_processes = self._server.start(settings)
        processes.wait_until(lambda: self._control("info"), 30, "the private sound server", 0.05)
        self.add_source(self.source)

    def add_source(self, name=SOURCE):
        """Plugs in a source, beside those that there are, and makes it the default one, which is played into."""
        loaded = self._control("load-module", "module-null-sink", f"sink_name={name}", *SINK_ARGUMENTS)
        if not loaded:
            raise RuntimeError(f"the private sound server makes no source \"{name}\"")
        self.source = name
        self._modules[name] = loaded.strip()
        self._listen()  # first, as the sink delivers nothing for its first two seconds
        # PipeWire has a default only when its session manager is there.
        processes.wait_until(lambda: self._control("set-default-source", f"{name}.monitor"), 30, "a default source", 0.05)

    def remove_source(self):
        """Unplugs the source that `add_source` made last."""
        self._control("unload-module", self._modules.pop(self.source))
        processes.stop(self.listener)

    def _settings(self):
        settings = {**os.environ, "HOME": str(self.folder), "XDG_CONFIG_HOME": f"{self.folder}/state",
                    "XDG_STATE_HOME": f"{self.folder}/state", **self.environment}
        # Programs of the sound server would take it for more than the latency that they are told.
        settings.pop(LATENCY_VARIABLE)
        return settings

    def _control(self, *words):
        """What pactl prints, a line at least, when the server does as it is told; else an empty text."""
        done = subprocess.run(["pactl", *words], env=self._settings(), stdout=subprocess.PIPE, stderr=subprocess.DEVNULL,
                              text=True, timeout=20 * processes.PATIENCE, check=False)
        return done.stdout + "\n" if done.returncode == 0 else ""

    def _listen(self):
        """Keeps a reader on the monitor: a sink without one sleeps, and wakes too late for a new recorder."""
        if self.listener:
            processes.stop(self.listener)
            self._hearing.join()  # the last that the old one delivered is not the new one's first
        self._delivers.clear()
        self.listener = processes.start(
            ["parec", "--latency-msec=10", "--raw", "-d", f"{self.source}.monitor", "--format=float32le",
             f"--rate={SAMPLE_RATE}", "--channels=1"],
            env=self._settings(), stdin=subprocess.DEVNULL, stdout=subprocess.PIPE, stderr=subprocess.DEVNULL)
        self._hearing = threading.Thread(target=self._hear, args=(self.listener.stdout,), daemon=True)
        self._hearing.start()
        if not self._delivers.wait(30 * processes.PATIENCE):
            raise processes.TimedOut("the private microphone delivers no sound")

    def _hear(self, stream):
        try:
            while True:
                block = stream.read1(65536)
                if not block:
                    return
                now = time.monotonic()
                self._delivers.set()
                sound = block.lstrip(b"\0")
                if sound:
                    if self._marker is None:
                        self._marker = now - len(sound) / (SAMPLE_BYTES * SAMPLE_RATE)
                    self._heard_anything.set()
        except (OSError, ValueError):
            return  # the listener was stopped

    def play(self, path):
        """Plays a sound file (48000 Hz, one channel, 16 bit) into the microphone and returns at once, with
        the exact time at which it will begin to sound, one and a half seconds from now.

        The sink is silent to the last bit while nothing plays. One sample of the smallest value, far below
        anything the game could hear, goes ahead of the file: when that arrives, the rest is known.
        """
        with wave.open(str(path)) as source:
            if (source.getframerate(), source.getnchannels(), source.getsampwidth()) != (SAMPLE_RATE, 1, 2):
                raise ValueError(f"{path} is not 48000 Hz, one channel, 16 bit")
            samples = source.readframes(source.getnframes())
            seconds = source.getnframes() / SAMPLE_RATE
        lead = bytearray(2 * round(LEAD_SECONDS * SAMPLE_RATE))
        lead[2 * round(MARKER_SECONDS * SAMPLE_RATE)] = 1
        prepared = self.folder / f"performance-{len(self._performances)}.wav"
        with wave.open(str(prepared), "wb") as target:
            target.setframerate(SAMPLE_RATE)
            target.setnchannels(1)
            target.setsampwidth(2)
            target.writeframes(bytes(lead) + samples)
        self._marker = None
        self._heard_anything.clear()
        player = processes.start(
            ["pacat", "--playback", f"--latency-msec={PLAYBACK_LATENCY_MS}", "-d", self.source,
             "--file-format=wav", str(prepared)],
            env=self._settings(), stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL,
            stderr=subprocess.DEVNULL)
        self._performances.append(player)
        if not self._heard_anything.wait(30 * processes.PATIENCE):
            raise processes.TimedOut("the sound that is played does not arrive at the microphone")
        return Performance(player, self._marker + LEAD_SECONDS - MARKER_SECONDS, seconds)

    def kill_server(self):
        """The sound server dies, without a word to anybody."""
        for process in self._server_processes:
            process.kill()
            process.wait()
        processes.stop(self.listener)

    def stop(self):
        for process in [*self._performances, self.listener, *reversed(self._server_processes)]:
            if process:
                processes.stop(process)
        self._performances = []
        self._server_processes = []
        self.listener = None
        if self.folder:
            shutil.rmtree(self.folder, ignore_errors=True)
            self.folder = None


def environment_without_devices(folder):
    """The environment of a machine that has no sound device at all; `folder` is an empty one to use."""
    folder = pathlib.Path(folder)
    # A configuration that names no device at all trips an assertion in PortAudio; this one names one that is
    # not there.
    (folder / "asound.conf").write_text("pcm.!default { type hw card 77 }\nctl.!default { type hw card 77 }\n")
    return {"PULSE_SERVER": f"unix:{folder}/nobody", "PULSE_RUNTIME_PATH": str(folder),
            "XDG_RUNTIME_DIR": str(folder), "ALSA_CONFIG_PATH": f"{folder}/asound.conf",
            "JACK_NO_START_SERVER": "1"}
