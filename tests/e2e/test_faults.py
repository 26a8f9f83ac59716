"""Faults of sound, screen, clock and files, one by one: each with the outcome that docs/reliability.md states."""

import os
import re
import shutil
import signal
import time

import pytest

from conftest import BUILD, START_UP_LINES, close, moves, own_lines, preload
from stage import processes
from stage.display import VirtualDisplay
from stage.player import Player
from stage.screen import Screen


@pytest.mark.parametrize("fault, reason", [
    # Without a back-end the library knows no texts for devices either.
    ("no back-end", "Open stream failed:.*"), ("rate refused", "Open stream failed:Invalid sample rate"),
    ("mono refused", "Open stream failed:Invalid number of channels"),
    ("no device", "Open stream failed:Invalid device"), ("start refused", "Start stream failed:Device unavailable")])
def test_sound_that_cannot_be_opened_ends_with_254_and_the_reason(launch, view, mic, no_microphone, fault, reason):
    game = launch(no_microphone if fault == "no device" else mic,
                  extra={"LD_PRELOAD": preload("sound_faults"), "SOUND_FAULT": fault})
    assert game.wait() == 254
    assert own_lines(game) == START_UP_LINES[:2]
    told = [line for line in game.output("err") if "stream failed:" in line or line.startswith("Cannot")]
    assert re.fullmatch(reason, told[0]), told
    assert told[1] == "Cannot start recording."
    # A stream that was opened and not started is kept, and is stopped when the input is released.
    assert told[2:] == (["Stop stream failed:Stream is stopped"] if fault == "start refused" else [])


def test_a_display_that_dies_during_a_song_ends_the_game_with_1_at_once(launch, mic, long_song):
    with VirtualDisplay(1024, 800) as doomed:
        player = Player(launch(mic, "long.txt", folder=long_song, extra=doomed.environment), Screen(doomed.name))
        player.wait_for_score()
        processes.stop(doomed.process, signal.SIGKILL)
        assert player.game.wait(20) == 1


def test_without_fragment_programs_menus_and_song_are_there(play, long_song):
    player = play(folder=long_song, extra={"MESA_GL_VERSION_OVERRIDE": "1.4"})
    player.open_chooser()
    player.press("Play")
    assert player.wait_for_score() == 0
    player.view.key(player.window, "f")
    player.wait_to_see("Frequency")
    assert close(player) == 0


def test_windows_of_1_by_1_to_8192_by_4320_resized_all_the_time_go_on_with_their_song(play_long):
    player = play_long()
    for width, height in ((1, 1), (2000, 1), (1, 2000), (3, 7), (8192, 4320), (640, 480)):
        player.view.resize(player.window, width, height)
        time.sleep(0.3)
        assert player.game.running()
    player.wait_for_score(60)
    deadline = time.monotonic() + 3
    sizes = 0
    while time.monotonic() < deadline:
        player.view.resize(player.window, 300 + sizes * 37 % 500, 200 + sizes * 53 % 400)
        sizes += 1
    assert sizes > 30
    player.view.resize(player.window, 640, 480)
    assert player.wait_for_score() == 0
    assert close(player) == 0


def test_signals_end_the_game_at_once_at_24_moments_of_the_start_and_in_a_song(launch, mic, play_long):
    numbers = (signal.SIGINT, signal.SIGTERM, signal.SIGHUP)
    for step in range(24):
        game = launch(mic)
        time.sleep(step * 0.04)
        number = numbers[step % 3]
        game.process.send_signal(number)
        # Before the game itself runs, the starter that wraps it may be what ends.
        assert game.wait(10) == -number, f"{number} after {step * 0.04:g} s"
    player = play_long()
    player.game.process.send_signal(signal.SIGTERM)
    assert player.game.wait(10) == -signal.SIGTERM


def test_two_games_at_once_do_not_disturb_each_other(launch, mic, view, long_song):
    first = Player(launch(mic, "long.txt", folder=long_song), view)
    first.wait_for_score()
    second = Player(launch(mic, "long.txt", folder=long_song), view)
    second.wait_for_score()
    assert close(second) == 0
    assert moves(first)
    assert close(first) == 0


@pytest.mark.skipif(os.getuid() != 0, reason="only root can become another user")
def test_an_ordinary_user_plays_with_a_data_folder_that_may_only_be_read(launch, view, mic, long_song, tmp_path):
    # Out of the build folder, which may lie where nobody else may look.
    binary = shutil.copy(BUILD / "app" / "zanto", tmp_path)
    before = {path: path.stat().st_mtime_ns for path in long_song.rglob("*")}
    for folder in [long_song, *long_song.parents][:4]:
        folder.chmod(0o755)
    for path in [long_song, *long_song.rglob("*")]:
        path.chmod(0o555 if path.is_dir() else 0o444)
    for folder in (mic.folder, mic.folder / "run", mic.folder / "run" / "native"):
        folder.chmod(0o777)
    become = ["setpriv", "--reuid=65534", "--regid=65534", "--clear-groups"]
    game = launch(mic, "long.txt", binary=binary, folder=long_song, prefix=become, extra={"HOME": "/nonexistent"})
    player = Player(game, view)
    assert player.wait_for_score() == 0
    assert os.stat(f"/proc/{game.id}").st_uid == 65534
    assert close(player) == 0
    assert {path: path.stat().st_mtime_ns for path in long_song.rglob("*")} == before
