"""Starting programs that are sure to end, and waiting for things to happen."""

import contextlib
import os
import shutil
import signal
import subprocess
import time

# Machines differ: every time-out is multiplied by this.
PATIENCE = float(os.environ.get("ZANTO_PATIENCE", "1"))

STOP_SECONDS = 5
PREFERENCE = -10  # a nice value


class TimedOut(Exception):
    """What was waited for did not happen."""


def wait_until(condition, seconds, what, interval=0.01):
    """Calls `condition` until it gives something true, and returns that; raises TimedOut naming `what`."""
    deadline = time.monotonic() + seconds * PATIENCE
    while True:
        result = condition()
        if result:
            return result
        if time.monotonic() > deadline:
            raise TimedOut(f"waited {seconds * PATIENCE:g} s for {what}")
        time.sleep(interval)


def start(command, **popen_arguments):
    """subprocess.Popen in a process group of its own, which the kernel kills if this process is killed."""
    keeper = shutil.which("setpriv")
    wrapped = [keeper, "--pdeathsig", "KILL", *command] if keeper else command
    process = subprocess.Popen(wrapped, start_new_session=True, **popen_arguments)
    _prefer(process.pid)
    return process


def _prefer(process_id):
    """Gives a process precedence over the machine's other work, where one may: sound has to be in time."""
    with contextlib.suppress(PermissionError, ProcessLookupError):
        os.setpriority(os.PRIO_PROCESS, process_id, PREFERENCE)


def prefer_this():
    """The same for this process."""
    _prefer(0)


def stop(process, first_signal=signal.SIGTERM):
    """Ends the process and its group: asks, then kills. Does nothing to one that is over."""
    if process.poll() is None:
        _signal_group(process, first_signal)
        with contextlib.suppress(subprocess.TimeoutExpired):
            process.wait(STOP_SECONDS * PATIENCE)
    # The process itself may be gone and have left children behind.
    _signal_group(process, signal.SIGKILL)
    process.wait()
    for stream in (process.stdin, process.stdout, process.stderr):
        if stream:
            stream.close()


def _signal_group(process, number):
    with contextlib.suppress(ProcessLookupError, PermissionError):
        os.killpg(process.pid, number)


def raise_on_termination():
    """Makes SIGTERM and SIGHUP unwind the stack as Ctrl-C does, so that everything is cleaned up."""
    def unwind(number, _frame):
        raise SystemExit(128 + number)
    for number in (signal.SIGTERM, signal.SIGHUP):
        signal.signal(number, unwind)
