"""A private X display."""

import os
import select
import subprocess
import time

from stage import processes

START_SECONDS = 30


class VirtualDisplay:
    """An Xvfb of its own, on the first free display number. A context manager.

        with VirtualDisplay(1280, 1024) as display:
            subprocess.run(["xeyes"], env={**os.environ, **display.environment})
    """

    def __init__(self, width=1280, height=1024):
        self.width = width
        self.height = height
        self.process = None
        self.name = None

    @property
    def environment(self):
        """What a program needs in its environment to appear here, drawn in software."""
        return {"DISPLAY": self.name, "WAYLAND_DISPLAY": "", "LIBGL_ALWAYS_SOFTWARE": "1"}

    def __enter__(self):
        self.start()
        return self

    def __exit__(self, *_exception):
        self.stop()

    def start(self):
        reading, writing = os.pipe()
        try:
            # -noreset: the server lives on when its last client goes.
            self.process = processes.start(
                ["Xvfb", "-displayfd", str(writing), "-screen", "0", f"{self.width}x{self.height}x24",
                 "-nolisten", "tcp", "-noreset"],
                pass_fds=[writing], stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL,
                stderr=subprocess.DEVNULL)
        finally:
            os.close(writing)
        try:
            self.name = f":{self._read_number(reading)}"
        except BaseException:
            self.stop()
            raise
        finally:
            os.close(reading)

    def _read_number(self, reading):
        deadline = time.monotonic() + START_SECONDS * processes.PATIENCE
        text = b""
        while not text.endswith(b"\n"):
            ready, _, _ = select.select([reading], [], [], max(0, deadline - time.monotonic()))
            piece = os.read(reading, 16) if ready else b""
            if not piece:
                raise processes.TimedOut("the virtual display did not start")
            text += piece
        return int(text)

    def stop(self):
        if self.process:
            processes.stop(self.process)
            self.process = None
