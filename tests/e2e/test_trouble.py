"""Things that go wrong around the game: it goes on, and ends as it should."""

import time

import pytest

from conftest import close, moves
from stage.processes import TimedOut


@pytest.mark.parametrize("redirection", [">&-", ">&- 2>&-", ">/dev/full 2>/dev/full", "> >(:)"])
def test_standard_output_and_error_closed_full_or_without_a_reader_the_game_goes_on(play_long, redirection):
    player = play_long(prefix=["bash", "-c", f'exec "$@" {redirection}', "bash"])
    time.sleep(3)  # long enough for a buffer full of diagnostics
    assert moves(player)
    assert close(player) == 0


def test_a_terminal_that_goes_away_does_not_end_the_game(play_long):
    player = play_long()
    player.game.drop_terminal()
    time.sleep(2)
    assert moves(player)
    assert close(player) == 0


@pytest.mark.parametrize("content", [None, b"this is no font" * 100])
def test_without_its_font_the_game_says_so_once_and_runs(play, long_song, content):
    face = long_song / "Fonts" / "Vera.ttf"
    face.unlink()
    if content:
        face.write_bytes(content)
    player = play("long.txt", folder=long_song)
    assert moves(player)
    with pytest.raises(TimedOut):
        player.wait_for_score(1)
    assert close(player) == 0
    assert len([line for line in player.game.output("err") if "Fonts/Vera.ttf" in line]) == 1


@pytest.mark.parametrize("spoil", ["missing", "truncated", "empty"])
def test_without_picture_and_listing_the_title_shows_its_buttons_and_play_does_nothing(play, data, spoil):
    picture = (data / "Images/title.png").read_bytes()
    listing = (data / "Songs/listing.txt").read_bytes()
    # Of the listing, a word without a partner is left.
    for path, beginning in (("Images/title.png", picture[:len(picture) // 100]),
                            ("Songs/listing.txt", listing.split()[0])):
        (data / path).unlink()
        if spoil != "missing":
            (data / path).write_bytes(beginning if spoil == "truncated" else b"")
    player = play(folder=data)
    player.wait_to_see("New Game")
    assert player.sees("Exit")
    player.open_chooser()
    player.press("Play")
    time.sleep(1)
    assert player.sees("Choose your song")
    assert player.game.output("err") == []
    assert close(player) == 0


def test_without_a_note_table_nothing_is_heard_and_nothing_scored(play, mic, long_song, perform):
    (long_song / "notes.txt").unlink()
    player = play("long.txt", folder=long_song)
    performance = mic.play(perform(long_song / "Songs" / "long.txt"))
    player.type_at("r", performance.begins_at)
    time.sleep(max(0, performance.begins_at + 6 - time.monotonic()))
    assert player.wait_for_score() == 0
    assert close(player) == 0


@pytest.mark.parametrize("text", ["1 1\r\nC\r\nE\r\n", "", "x", "1 1\nC \nE\n", "1 1\n" + "C" * 100000 + "\nE\n",
                                  "1 1\nG2147483648 C-5 E99999999999999999999\nC\n", "1 1\nC\0E\nE\n"])
def test_a_song_that_is_broken_can_be_played_and_ends(play, data, text):
    (data / "Songs" / "broken.txt").write_bytes(text.encode())
    player = play("broken.txt", folder=data)
    player.wait_to_see("New Game")  # it is over, having few slots or none
    assert close(player) == 0
