"""The game from its start to its first frame, and the ways in which it does not get there."""

import os
import subprocess

from conftest import BUILD, DATA, close

START_UP_LINES = ["main::Creating AudioInput", "main::start recording.", "main::creating window",
                  "Win::Win() initing wt"]


def own_lines(game):
    """What the start-up itself says on standard output, among the lines of others."""
    return [line for line in game.output("out") if line in START_UP_LINES]


def own_errors(game):
    """Lines on standard error that start as ours do; the sound libraries have a lot to say there."""
    ours = ("Cannot", "Open stream failed", "Start stream failed", "Stop stream failed", "Song:", "Error loading")
    return [line for line in game.output("err")
            if line.startswith(ours) and not line.startswith("Cannot connect to server")]


def test_start_up_lines_come_in_order_and_the_title_shows(play):
    player = play()
    player.wait_to_see("New Game")
    assert player.sees("Exit")
    assert own_lines(player.game) == START_UP_LINES
    assert own_errors(player.game) == []
    assert player.view.size(player.window) == (640, 480)
    assert close(player) == 0


def test_no_input_device_ends_with_254_and_no_window(launch, view, no_microphone):
    game = launch(no_microphone)
    assert game.wait() == 254
    assert own_lines(game) == START_UP_LINES[:2]
    assert own_errors(game) == ["Open stream failed:Invalid device", "Cannot start recording."]


def test_refused_start_of_recording_ends_with_254(launch, mic):
    game = launch(mic, extra={"LD_PRELOAD": str(BUILD / "tests/e2e/librefuse_start.so")})
    assert game.wait() == 254
    assert own_lines(game) == START_UP_LINES[:2]
    assert own_errors(game) == ["Start stream failed:Device unavailable", "Cannot start recording.",
                                # The opened stream was kept, and is stopped when the input is released.
                                "Stop stream failed:Stream is stopped"]


def test_no_audio_input_ends_with_255(launch, no_microphone):
    game = launch(no_microphone, binary=BUILD / "tests/e2e/zanto_without_input", extra={"WITHOUT": "input"})
    assert game.wait() == 255
    assert own_lines(game) == START_UP_LINES[:1]
    assert game.output("err") == ["Cannot create audioInput."]


def test_no_ring_buffer_ends_with_254(launch, mic):
    game = launch(mic, binary=BUILD / "tests/e2e/zanto_without_input", extra={"WITHOUT": "buffer"})
    assert game.wait() == 254
    assert own_lines(game) == START_UP_LINES[:2]
    assert own_errors(game) == ["Cannot get pointer to audio buffer."]


def test_no_display_is_reported_and_ends_with_1(launch, mic):
    game = launch(mic, extra={"DISPLAY": ""})
    assert game.wait() == 1
    assert own_lines(game) == START_UP_LINES[:3]
    assert any("failed to open display" in line for line in game.output("err"))


def test_missing_song_on_the_command_line_is_named_and_the_game_runs_on(play):
    player = play("nowhere.txt")
    player.game.wait_for_line("Cannot load song:Songs/nowhere.txt")
    assert own_errors(player.game) == ["Song: input is not good.", "Cannot load song:Songs/nowhere.txt"]
    assert player.wait_for_score() == 0
    assert close(player) == 0


def test_only_the_first_argument_is_used(play):
    player = play("nowhere.txt", "nobody.txt", "--help")
    player.game.wait_for_line("Cannot load song:Songs/nowhere.txt")
    assert close(player) == 0
    assert not any("nobody" in line or "--help" in line for _, _, line in player.game.lines)


def test_started_outside_its_data_folder_it_runs_without_data(play, tmp_path):
    folder = tmp_path / "elsewhere"
    folder.mkdir()
    player = play(folder=folder)
    player.game.wait_for_line("Win::Win() initing wt")
    assert any("Fonts/Vera.ttf" in line for line in player.game.output("err"))
    assert close(player) == 0


def test_the_song_named_on_the_command_line_starts_at_once(play):
    song = sorted(DATA.glob("Songs/[a-k]*.txt"))[0].name
    player = play(song)
    assert player.wait_for_score() == 0
    assert not player.sees("New Game")
    assert own_errors(player.game) == []
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
