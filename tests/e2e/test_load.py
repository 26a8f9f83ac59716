"""The game on a machine that has other things to do."""

import contextlib
import math
import os
import statistics
import subprocess
import sys
import time

import pytest
from conftest import DATA, close, write_sound
from stage import microphone

TONES_HZ = (516, 879)  # middles of bins, so that the loudest peak is theirs
TONE_SECONDS = 1.0
TONES = 12
NEAR_HZ = 6
# Sound gets to the game in blocks, and the game looks at what is a tenth of a second old; the rest is waiting for
# a processor.
LATEST_SECONDS = 1.0
GROWTH_SECONDS = 0.25


@pytest.fixture
def busy():
    """All processors have something else to do."""
    with contextlib.ExitStack() as stack:
        for _ in range(os.cpu_count()):
            worker = stack.enter_context(subprocess.Popen([sys.executable, "-c", "while True: pass"]))
            stack.callback(worker.kill)
        yield


def tones():
    """C and A in turn, each a second long."""
    return (round(6000 * math.sin(2 * math.pi * TONES_HZ[int(i / microphone.SAMPLE_RATE / TONE_SECONDS) % 2] * i
                                  / microphone.SAMPLE_RATE))
            for i in range(round(TONES * TONE_SECONDS * microphone.SAMPLE_RATE)))


def loudest(line):
    """The frequency of the loudest peak in a line of the analysis, None in other lines."""
    try:
        return float(line.split()[-1])
    except (IndexError, ValueError):
        return None


def test_on_a_busy_machine_it_still_hears_the_newest_sound(play, mic, tmp_path, busy):
    player = play(folder=DATA)
    player.wait_to_see("New Game")
    player.view.key(player.window, "f")
    player.wait_to_see("Frequency")
    # Like any program: the stage prefers what it starts.
    os.setpriority(os.PRIO_PROCESS, player.game.id, 0)
    performance = mic.play(write_sound(tmp_path / "tones.wav", tones()))
    time.sleep(max(0.0, performance.ends_at - time.monotonic()) + LATEST_SECONDS)

    heard = [(when, loudest(line)) for when, name, line in list(player.game.lines) if name == "out"]
    delays = []
    for tone in range(TONES):
        begins = performance.begins_at + tone * TONE_SECONDS
        delays.append(next(when - begins for when, hz in heard
                           if when >= begins and hz is not None and abs(hz - TONES_HZ[tone % 2]) < NEAR_HZ))
    assert max(delays) < LATEST_SECONDS, delays
    third = TONES // 3
    assert statistics.median(delays[-third:]) - statistics.median(delays[:third]) < GROWTH_SECONDS, delays
    assert close(player) == 0
