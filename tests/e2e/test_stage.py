"""What the end-to-end tests rely on themselves."""

import os
import signal
import subprocess
import time
from array import array

from conftest import write_sound
from stage import microphone, processes

CLICKS = 6
CLICK_SAMPLES = 400
CLICK_LEVEL = 20000  # of 32767
HELD_UP_SECONDS = 1.5


def click_starts(samples):
    """The indices at which a click begins."""
    loud = [index for index, sample in enumerate(samples) if sample > CLICK_LEVEL // 2]
    return [index for before, index in zip([None, *loud], loud) if before is None or index > before + 1]


def test_what_sounds_after_its_player_was_held_up_is_not_late(mic, tmp_path):
    recorded = tmp_path / "recorded.raw"
    recorder = processes.start(["parec", "--raw", "-d", "mic.monitor", "--format=s16le", "--channels=1",
                                f"--rate={microphone.SAMPLE_RATE}", str(recorded)],
                               env={**os.environ, **mic.environment}, stdin=subprocess.DEVNULL)
    processes.wait_until(lambda: recorded.exists() and recorded.stat().st_size > 0, 30, "a recording")
    # A click at the beginning of each second.
    second = [CLICK_LEVEL] * CLICK_SAMPLES + [0] * (microphone.SAMPLE_RATE - CLICK_SAMPLES)
    performance = mic.play(write_sound(tmp_path / "clicks.wav", second * CLICKS))
    time.sleep(max(0.0, performance.begins_at + 1.5 - time.monotonic()))
    performance.process.send_signal(signal.SIGSTOP)
    time.sleep(HELD_UP_SECONDS)
    performance.process.send_signal(signal.SIGCONT)
    performance.wait()
    time.sleep(1)
    processes.stop(recorder)

    starts = click_starts(array("h", recorded.read_bytes()[:recorded.stat().st_size // 2 * 2]))
    assert len(starts) == CLICKS
    assert [start - starts[0] for start in starts] == [second * microphone.SAMPLE_RATE for second in range(CLICKS)]
