"""A running game: its process, and what it says."""

import os
import pathlib
import pty
import subprocess
import threading
import time
import tty

from stage import processes


class Game:
    """The program in its data folder (or another one), with what it prints. A context manager.

        with Game(binary, data, {**display.environment, **microphone.environment}, ["ode.txt"]) as game:
            game.wait_for_line("main::creating window")

    Standard output is a terminal of its own unless `stdout` says otherwise, so that lines arrive when they are
    printed; standard error is a pipe.
    """

    def __init__(self, binary, folder, environment, arguments=(), stdout=None, prefix=()):
        self.lines = []  # (time.monotonic(), "out" or "err", text)
        self._threads = []
        settings = {**os.environ, **environment}
        settings.setdefault("HOME", str(folder))
        terminal = None
        if stdout is None:
            self.terminal, terminal = pty.openpty()
            tty.setraw(terminal)  # a line's end stays what it is
        else:
            self.terminal = None
        try:
            self.process = processes.start(
                [*prefix, str(pathlib.Path(binary).resolve()), *arguments], cwd=folder, env=settings,
                stdin=subprocess.DEVNULL, stdout=terminal if stdout is None else stdout,
                stderr=subprocess.PIPE)
        finally:
            if terminal is not None:
                os.close(terminal)
        if self.terminal is not None:
            self._follow("out", self.terminal)
        self._follow("err", self.process.stderr.fileno())

    def __enter__(self):
        return self

    def __exit__(self, *_exception):
        self.stop()

    @property
    def id(self):
        return self.process.pid

    def _follow(self, name, descriptor):
        thread = threading.Thread(target=self._read, args=(name, descriptor), daemon=True)
        thread.start()
        self._threads.append(thread)

    def _read(self, name, descriptor):
        pending = b""
        while True:
            try:
                piece = os.read(descriptor, 4096)
            except OSError:  # a terminal whose other end was closed
                piece = b""
            pending += piece
            *whole, pending = pending.split(b"\n") if piece else [*filter(None, [pending]), b""]
            for line in whole:
                self.lines.append((time.monotonic(), name, line.decode(errors="replace")))
            if not piece:
                return

    def output(self, name):
        """The lines printed so far on "out" or "err"."""
        return [text for _, stream, text in self.lines if stream == name]

    def wait_for_line(self, text, seconds=60):
        """Waits until a line says just that, on either stream; returns the time at which it came."""
        def find():
            times = [when for when, _, line in list(self.lines) if line == text]
            if not times and not self.running():
                raise processes.TimedOut(f"the game ended with {self.status()} before it said {text!r}")
            return times
        return processes.wait_until(find, seconds, f"the line {text!r}")[0]

    def running(self):
        return self.process.poll() is None

    def status(self):
        """The exit status, None while it runs; the negative number of the signal that ended it."""
        return self.process.poll()

    def wait(self, seconds=60):
        """Waits for the end and for the last of the output; returns the exit status."""
        processes.wait_until(lambda: not self.running(), seconds, "the game's end", 0.02)
        for thread in self._threads:
            thread.join(10)
        return self.process.returncode

    def drop_terminal(self):
        """The terminal that standard output goes to disappears."""
        os.close(self.terminal)
        self.terminal = None

    def stop(self):
        processes.stop(self.process)
        for thread in self._threads:
            thread.join(10)
        if self.terminal is not None:
            os.close(self.terminal)
            self.terminal = None
