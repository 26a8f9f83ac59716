"""Faults of sound, screen, clock and files, one by one: each with the outcome that docs/reliability.md states."""

import os
import shutil
import signal
import time

import pytest

from conftest import BUILD, close, preload
from stage import processes
from stage.display import VirtualDisplay
from stage.player import Player
from stage.screen import Screen

SONG = "1 1\n" + "C\nE\nG\n\n" * 100
HOUR = 3600


@pytest.fixture
def long_song(data):
    (data / "Songs" / "long.txt").write_text(SONG)
    (data / "Songs" / "listing.txt").write_text("Long long.txt\n")
    return data


def moves(player, seconds=10):
    """Waits until the game has drawn a frame that differs from the last."""
    first = player.picture().tobytes()
    processes.wait_until(lambda: player.picture().tobytes() != first, seconds, "the picture to move")
    return True


@pytest.mark.parametrize("fault, text", [("no back-end", "Invalid device"), ("rate refused", "Invalid sample rate"),
                                         ("mono refused", "Invalid number of channels")])
def test_sound_that_cannot_be_opened_ends_with_254_and_the_reason(launch, mic, fault, text):
    game = launch(mic, extra={"LD_PRELOAD": preload("sound_faults"), "SOUND_FAULT": fault})
    assert game.wait() == 254
    errors = game.output("err")
    assert "Cannot start recording." in errors
    reasons = [line for line in errors if line.startswith("Open stream failed:")]
    # Without a back-end the library knows no texts for devices either.
    assert len(reasons) == 1 and (fault == "no back-end" or reasons[0].endswith(text))
    assert "main::creating window" not in game.output("out")


def test_a_sound_server_that_comes_back_finds_a_game_that_can_be_started_again(play, mic, long_song):
    player = play("long.txt", folder=long_song)
    player.wait_for_score()
    mic.kill_server()
    time.sleep(0.5)
    mic.restart_server()
    # The stream died with its server and stays silent; the game goes on and ends in order.
    assert moves(player)
    assert close(player) == 0
    again = play("long.txt", folder=long_song)
    assert again.wait_for_score() == 0
    assert close(again) == 0


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


def test_windows_of_one_pixel_and_of_8192_by_4320_are_drawn_and_come_back(play, long_song):
    player = play("long.txt", folder=long_song)
    player.wait_for_score()
    for width, height in ((1, 1), (2000, 1), (1, 2000), (3, 7), (8192, 4320), (640, 480)):
        player.view.resize(player.window, width, height)
        time.sleep(0.3)
        assert player.game.running()
    player.wait_for_score(60)
    assert close(player) == 0


def test_a_window_that_is_resized_all_the_time_goes_on_with_its_song(play, long_song):
    player = play("long.txt", folder=long_song)
    player.wait_for_score()
    deadline = time.monotonic() + 3
    sizes = 0
    while time.monotonic() < deadline:
        player.view.resize(player.window, 300 + sizes * 37 % 500, 200 + sizes * 53 % 400)
        sizes += 1
    assert sizes > 30
    player.view.resize(player.window, 640, 480)
    assert player.wait_for_score() == 0
    assert close(player) == 0


def test_a_window_that_is_minimised_comes_back_with_its_song(play, long_song):
    player = play("long.txt", folder=long_song)
    player.wait_for_score()
    player.window.unmap()
    player.view.display.sync()
    time.sleep(1.5)
    assert player.game.running()
    player.window.map()
    player.view.display.sync()
    processes.wait_until(lambda: player.view.exists(player.window), 20, "the window to come back")
    assert player.wait_for_score() == 0
    assert moves(player)
    assert close(player) == 0


def with_clock(play, folder, step):
    step.write_text("0")
    return play("long.txt", folder=folder, extra={"LD_PRELOAD": preload("step_clock"), "CLOCK_STEP": str(step)})


def test_a_clock_set_forward_by_an_hour_ends_the_song_and_the_next_one_is_whole(play, long_song, tmp_path):
    step = tmp_path / "step"
    player = with_clock(play, long_song, step)
    player.wait_for_score()
    step.write_text(str(HOUR))
    player.open_chooser()
    player.choose("Long")
    player.press("Play")
    player.wait_for_score()
    time.sleep(1)
    # It has not ended again.
    assert player.wait_for_score() == 0
    assert moves(player)
    assert close(player) == 0


def test_a_clock_set_back_by_an_hour_makes_the_song_wait_until_it_is_started_again(play, long_song, tmp_path):
    step = tmp_path / "step"
    player = with_clock(play, long_song, step)
    player.wait_for_score()
    step.write_text(str(-HOUR))
    time.sleep(1)
    assert player.wait_for_score() == 0
    player.view.key(player.window, "r")
    assert moves(player)
    assert not player.sees("New Game")
    assert close(player) == 0


def test_a_song_that_is_gone_when_it_is_started_again_is_reported(play, long_song):
    player = play("long.txt", folder=long_song)
    player.wait_for_score()
    shutil.rmtree(long_song)
    player.view.key(player.window, "r")
    player.game.wait_for_line("Song: input is not good.")
    # An empty song: it is over in a moment.
    player.wait_to_see("New Game")
    assert close(player) == 0


def test_a_song_that_is_replaced_is_the_new_one_when_it_is_started_again(play, long_song):
    player = play("long.txt", folder=long_song)
    player.wait_for_score()
    (long_song / "Songs" / "long.txt").write_text("1 1\nC")
    player.view.key(player.window, "r")
    player.wait_to_see("New Game", 15)  # it has one slot
    assert close(player) == 0


def test_signals_end_the_game_at_once_at_any_moment(play, launch, mic):
    def ends(game, number):
        game.process.send_signal(number)
        assert game.wait(10) == -number
    for number in (signal.SIGINT, signal.SIGTERM, signal.SIGHUP):
        starting = launch(mic)
        starting.wait_for_line("main::start recording.")
        ends(starting, number)
    player = play("first_notes.txt")
    player.wait_for_score()
    ends(player.game, signal.SIGTERM)


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
