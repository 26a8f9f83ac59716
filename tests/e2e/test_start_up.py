"""The game from its start to its first frame, and the ways in which it does not get there."""

import os
import subprocess

from conftest import BUILD, START_UP_LINES, close, own_lines


def test_start_up_lines_come_in_order_and_the_title_shows(play):
    player = play()
    player.wait_to_see("New Game")
    assert player.sees("Exit")
    assert own_lines(player.game) == START_UP_LINES
    assert player.game.output("err") == []
    assert player.view.size(player.window) == (640, 480)
    assert close(player) == 0


def test_no_display_is_reported_and_ends_with_1(launch, mic):
    game = launch(mic, extra={"DISPLAY": ""})
    assert game.wait() == 1
    assert own_lines(game) == START_UP_LINES[:3]
    assert any("failed to open display" in line for line in game.output("err"))


def test_started_outside_its_data_folder_it_runs_without_data(play, tmp_path):
    folder = tmp_path / "elsewhere"
    folder.mkdir()
    player = play(folder=folder)
    player.game.wait_for_line("Win::Win() initing wt")
    assert any("Fonts/Vera.ttf" in line for line in player.game.output("err"))
    assert close(player) == 0


def test_the_probe_tells_what_the_game_would_find(display, mic, no_microphone):
    def found(what, environment):
        return subprocess.run([BUILD / "tools" / "zanto-probe", what], env={**os.environ, **environment},
                              stderr=subprocess.DEVNULL, timeout=60, check=False).returncode
    assert found("display", display.environment) == 0
    assert found("display", {"DISPLAY": ":4999"}) == 1
    assert found("microphone", mic.environment) == 0
    assert found("microphone", no_microphone) == 1
    assert found("nothing", {}) == 2
