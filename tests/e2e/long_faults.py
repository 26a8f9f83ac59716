"""Faults that take their time: a minute of resizing, and signals at every moment of the start."""

import signal
import time

from conftest import close

RESIZING_SECONDS = 60
START_UP_STEPS = 24
STEP_SECONDS = 0.04


def test_a_minute_of_resizing_leaves_a_song_that_can_be_read(play, data):
    (data / "Songs" / "long.txt").write_text("1 1\n" + "C\nE\nG\n\n" * 100)
    player = play("long.txt", folder=data)
    player.wait_for_score()
    deadline = time.monotonic() + RESIZING_SECONDS
    sizes = 0
    while time.monotonic() < deadline:
        player.view.resize(player.window, 1 + sizes * 37 % 1400, 1 + sizes * 53 % 1100)
        sizes += 1
    assert sizes > 600
    player.view.resize(player.window, 640, 480)
    assert player.wait_for_score() == 0
    assert close(player) == 0


def test_signals_at_every_moment_of_the_start_end_the_game_at_once(launch, mic):
    for step in range(START_UP_STEPS):
        for number in (signal.SIGINT, signal.SIGTERM, signal.SIGHUP):
            game = launch(mic)
            time.sleep(step * STEP_SECONDS)
            game.process.send_signal(number)
            # Before the game itself runs, the starter that wraps it may be what ends.
            assert game.wait(10) == -number, f"{number} after {step * STEP_SECONDS:g} s"
