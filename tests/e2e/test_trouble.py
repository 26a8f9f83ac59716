"""Things that go wrong around the game: it goes on, and ends as it should."""

import os
import time

import pytest

from conftest import close
from stage import processes
from stage.processes import TimedOut


def runs_on(player, seconds=2):
    """Whether the game still draws new frames: the song's track moves under its fixed lines."""
    first = player.picture().tobytes()
    processes.wait_until(lambda: player.picture().tobytes() != first, seconds + 10, "the picture to move")
    return player.game.running()


@pytest.fixture
def long_song(data):
    (data / "Songs" / "long.txt").write_text("1 1\n" + "C\nE\nG\n\n" * 100)
    return data


def test_a_sound_server_that_dies_during_a_song_leaves_a_game_that_can_be_played_and_closed(play, mic, long_song):
    player = play("long.txt", folder=long_song)
    player.wait_for_score()
    mic.kill_server()
    time.sleep(2)
    assert runs_on(player)
    player.view.key(player.window, "f")
    player.wait_to_see("Frequency")
    assert close(player) == 0


def with_shell(redirection):
    """A prefix that starts the game with a redirected standard output."""
    return ["sh", "-c", f'exec "$@" {redirection}', "sh"]


def test_standard_output_closed_the_game_goes_on(play, long_song):
    player = play("long.txt", folder=long_song, prefix=with_shell(">&-"))
    player.wait_for_score()
    time.sleep(3)  # long enough for a buffer full of diagnostics
    assert runs_on(player)
    assert close(player) == 0


def test_standard_output_and_error_closed_the_game_goes_on(play, long_song):
    player = play("long.txt", folder=long_song, prefix=with_shell(">&- 2>&-"))
    player.wait_for_score()
    time.sleep(3)
    assert runs_on(player)
    assert close(player) == 0


def test_standard_output_full_the_game_goes_on(play, long_song):
    player = play("long.txt", folder=long_song, prefix=with_shell(">/dev/full 2>/dev/full"))
    player.wait_for_score()
    time.sleep(3)
    assert runs_on(player)
    assert close(player) == 0


def test_a_reader_of_its_output_that_leaves_does_not_end_the_game(play, long_song):
    reading, writing = os.pipe()
    player = play("long.txt", folder=long_song, stdout=writing)
    os.close(writing)
    player.wait_for_score()
    os.close(reading)
    time.sleep(3)
    assert runs_on(player)
    assert close(player) == 0


def test_a_terminal_that_goes_away_does_not_end_the_game(play, long_song):
    player = play("long.txt", folder=long_song)
    player.wait_for_score()
    player.game.drop_terminal()
    time.sleep(2)
    assert runs_on(player)
    assert close(player) == 0


def test_without_its_font_the_game_says_so_once_and_runs(play, long_song):
    (long_song / "Fonts" / "Vera.ttf").unlink()
    player = play("long.txt", folder=long_song)
    assert runs_on(player)
    with pytest.raises(TimedOut):
        player.wait_for_score(1)
    assert close(player) == 0
    assert len([line for line in player.game.output("err") if "Fonts/Vera.ttf" in line]) == 1


def test_a_font_that_is_none_is_reported_and_the_game_runs(play, long_song):
    (long_song / "Fonts" / "Vera.ttf").write_bytes(b"this is no font" * 100)
    player = play("long.txt", folder=long_song)
    assert runs_on(player)
    assert close(player) == 0
    assert len([line for line in player.game.output("err") if "Fonts/Vera.ttf" in line]) == 1


@pytest.mark.parametrize("spoil", ["missing", "truncated", "empty"])
def test_without_its_picture_the_title_shows_its_buttons(play, data, spoil):
    picture = data / "Images" / "title.png"
    content = picture.read_bytes()
    picture.unlink()
    if spoil != "missing":
        picture.write_bytes(content[:len(content) // 2] if spoil == "truncated" else b"")
    player = play(folder=data)
    player.wait_to_see("New Game")
    assert player.sees("Exit")
    assert close(player) == 0


@pytest.mark.parametrize("spoil", ["missing", "empty"])
def test_without_a_listing_the_list_is_empty_and_play_does_nothing(play, data, spoil):
    listing = data / "Songs" / "listing.txt"
    listing.unlink()
    if spoil == "empty":
        listing.write_text("")
    player = play(folder=data)
    player.open_chooser()
    player.press("Play")
    time.sleep(1)
    assert player.sees("Choose your song")
    assert player.game.output("err").count("Song: input is not good.") == 0
    assert close(player) == 0


def test_without_a_note_table_nothing_is_heard_and_nothing_scored(play, mic, long_song, perform):
    (long_song / "notes.txt").unlink()
    player = play("long.txt", folder=long_song)
    performance = mic.play(perform(long_song / "Songs" / "long.txt"))
    player.type_at("r", performance.begins_at)
    time.sleep(max(0, performance.begins_at + 6 - time.monotonic()))
    assert player.wait_for_score() == 0
    assert close(player) == 0


@pytest.mark.parametrize("value, level", [("", "0.000000"), ("loud", "0.000000"), ("-40", "-40.000000"),
                                          (None, "-65.000000")])
def test_the_least_level_comes_from_the_environment(play, value, level):
    player = play(extra={} if value is None else {"ZANTO_MIN_DECIBEL": value})
    player.game.wait_for_line(f"NoteEstimation minDecibel is {level}")
    assert close(player) == 0


@pytest.mark.parametrize("text", ["1 1\r\nC\r\nE\r\n", "", "x", "1 1\nC \nE\n", "1 1\n" + "C" * 100000 + "\nE\n",
                                  "1 1\nG2147483648 C-5 E99999999999999999999\nC\n", "1 1\nC\0E\nE\n"])
def test_a_song_that_is_broken_can_be_played_and_ends(play, data, text):
    (data / "Songs" / "broken.txt").write_bytes(text.encode())
    player = play("broken.txt", folder=data)
    player.wait_to_see("New Game")  # it is over, having few slots or none
    assert close(player) == 0


def test_a_folder_in_place_of_a_song_is_reported(play, data):
    (data / "Songs" / "folder.txt").mkdir()
    player = play("folder.txt", folder=data)
    player.game.wait_for_line("Cannot load song:Songs/folder.txt")
    assert close(player) == 0
