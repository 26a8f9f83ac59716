"""The installed launcher: where the game runs, what it sees there, and that nothing stays behind."""

import os
import pathlib
import shutil
import signal
import subprocess
import time

import pytest

from conftest import BUILD

GAME = """\
#!/bin/sh
# Stands in for the game: says where it is and what it was told, then waits or ends as it is asked to.
pwd
for word in "$@"; do echo "[$word]"; done
if [ -n "${WAIT:-}" ]; then exec sleep 60; fi
exit "${STATUS:-0}"
"""


class Installation:
    """A launcher, a game that stands in for the real one, and two songs; and a player's home."""

    def __init__(self, folder):
        self.launcher = folder / "usr/games/zanto"
        self.data = folder / "usr/share/games/zanto"
        self.home = folder / "home of a player"
        self.own = self.home / ".local/share/zanto"
        self.temporary = folder / "tmp"
        self.elsewhere = folder / "elsewhere"
        game = folder / "usr/libexec/zanto/zanto"
        for place in (self.launcher.parent, self.data / "Songs", self.data / "Fonts", game.parent, self.home,
                      self.temporary, self.elsewhere):
            place.mkdir(parents=True)
        shutil.copy(BUILD / "packaging/zanto", self.launcher)
        game.write_text(GAME)
        game.chmod(0o755)
        (self.data / "notes.txt").write_text("the game's table\n")
        (self.data / "Songs/one.txt").write_text("the game's one\n")
        (self.data / "Songs/two.txt").write_text("the game's two\n")
        (self.data / "Songs/listing.txt").write_text("One one.txt\nTwo two.txt")
        self.environment = {"PATH": os.environ["PATH"], "HOME": str(self.home), "TMPDIR": str(self.temporary)}

    def own_song(self, name, text="the player's\n"):
        (self.own / "Songs").mkdir(parents=True, exist_ok=True)
        (self.own / "Songs" / name).write_text(text)

    def start(self, *arguments, launcher=None, **settings):
        return subprocess.Popen([launcher or self.launcher, *arguments], cwd=self.elsewhere, text=True,
                                env={**self.environment, **settings}, stdout=subprocess.PIPE,
                                stderr=subprocess.PIPE, start_new_session=True)

    def play(self, *arguments, **options):
        """(status, folder that the game ran in, what it was told, standard error)."""
        process = self.start(*arguments, **options)
        out, err = process.communicate(timeout=20)
        folder, *told = out.splitlines()
        return process.returncode, pathlib.Path(folder), told, err

    def running(self, **settings):
        """A game that waits, and the folder it runs in."""
        process = self.start(WAIT="yes", **settings)
        return process, pathlib.Path(process.stdout.readline().rstrip("\n"))

    def left(self):
        return list(self.temporary.iterdir())

    def cleaned_up(self):
        deadline = time.monotonic() + 20
        while self.left() and time.monotonic() < deadline:
            time.sleep(0.01)
        return not self.left()


@pytest.fixture
def zanto(tmp_path):
    return Installation(tmp_path)


@pytest.fixture
def running(zanto):
    """running(): a game that waits in a folder of links, and that folder; ended with the test."""
    processes = []

    def start(**settings):
        zanto.own_song("mine.txt")
        process, folder = zanto.running(**settings)
        processes.append(process)
        return process, folder

    yield start
    for process in processes:
        if process.poll() is None:
            os.killpg(process.pid, signal.SIGKILL)
        process.communicate()


def words_of(listing):
    return listing.read_text().split()


def test_without_own_songs_the_game_runs_in_the_installed_folder(zanto):
    status, folder, told, err = zanto.play()
    assert (status, folder, told, err) == (0, zanto.data, [], "")
    assert zanto.left() == []


def test_an_empty_folder_of_own_songs_is_like_none(zanto):
    (zanto.own / "Songs").mkdir(parents=True)
    assert zanto.play()[1] == zanto.data


def test_without_a_home_the_game_runs_in_the_installed_folder(zanto):
    del zanto.environment["HOME"]
    assert zanto.play()[:2] == (0, zanto.data)


def test_the_launcher_may_be_started_through_a_link(zanto):
    link = zanto.elsewhere / "game"
    link.symlink_to(zanto.launcher)
    assert zanto.play(launcher=link)[1] == zanto.data


@pytest.mark.parametrize("own", [False, True])
def test_arguments_and_status_pass_through(zanto, own):
    if own:
        zanto.own_song("mine.txt")
    status, _, told, err = zanto.play("two words.txt", "", "-x", "*", STATUS="254")
    assert (status, told, err) == (254, ["[two words.txt]", "[]", "[-x]", "[*]"], "")
    assert zanto.cleaned_up()


def test_own_songs_are_seen_beside_those_of_the_game(zanto, running):
    zanto.own_song("Grüße, #1.txt")
    zanto.own_song("listing.txt", "Mine mine.txt\n")
    _, folder = running()
    assert folder != zanto.data
    assert sorted(path.name for path in folder.iterdir()) == ["Fonts", "Songs", "notes.txt"]
    assert (folder / "notes.txt").read_text() == "the game's table\n"
    songs = {path.name: path.read_text() for path in (folder / "Songs").iterdir() if path.name != "listing.txt"}
    assert songs == {"one.txt": "the game's one\n", "two.txt": "the game's two\n", "mine.txt": "the player's\n",
                     "Grüße, #1.txt": "the player's\n"}
    assert words_of(folder / "Songs/listing.txt") == ["One", "one.txt", "Two", "two.txt", "Mine", "mine.txt"]


def test_neither_the_game_s_files_nor_the_player_s_are_changed(zanto):
    zanto.own_song("one.txt")
    zanto.own_song("listing.txt", "Mine one.txt\n")
    before = {path: path.read_bytes() for path in zanto.home.parent.rglob("*") if path.is_file()}
    zanto.play()
    assert zanto.cleaned_up()
    assert {path: path.read_bytes() for path in zanto.home.parent.rglob("*") if path.is_file()} == before


def test_an_own_song_takes_the_place_of_one_of_the_same_name(zanto, running):
    zanto.own_song("one.txt")
    _, folder = running()
    assert (folder / "Songs/one.txt").read_text() == "the player's\n"
    assert (folder / "Songs/two.txt").read_text() == "the game's two\n"


def test_own_songs_without_a_listing_leave_the_game_s(zanto, running):
    _, folder = running()
    assert words_of(folder / "Songs/listing.txt") == ["One", "one.txt", "Two", "two.txt"]
    assert (folder / "Songs/mine.txt").exists()


def test_an_own_note_table_is_used_without_own_songs(zanto):
    zanto.own.mkdir(parents=True)
    (zanto.own / "notes.txt").write_text("the player's table\n")
    process, folder = zanto.running()
    assert (folder / "notes.txt").read_text() == "the player's table\n"
    assert sorted(path.name for path in (folder / "Songs").iterdir()) == ["listing.txt", "one.txt", "two.txt"]
    process.terminate()
    process.communicate()
    assert zanto.cleaned_up()


def test_xdg_data_home_is_honoured(zanto, running):
    moved = zanto.home / "moved"
    (moved / "zanto/Songs").mkdir(parents=True)
    (moved / "zanto/Songs/moved.txt").write_text("moved\n")
    _, folder = running(XDG_DATA_HOME=str(moved))
    assert (folder / "Songs/moved.txt").exists() and not (folder / "Songs/mine.txt").exists()


def test_a_relative_xdg_data_home_counts_for_nothing(zanto, running):
    (zanto.elsewhere / "data/zanto/Songs").mkdir(parents=True)
    (zanto.elsewhere / "data/zanto/Songs/wrong.txt").write_text("wrong\n")
    _, folder = running(XDG_DATA_HOME="data")
    assert (folder / "Songs/mine.txt").exists() and not (folder / "Songs/wrong.txt").exists()


@pytest.mark.parametrize("number", [signal.SIGTERM, signal.SIGINT, signal.SIGHUP, signal.SIGKILL])
def test_a_signal_ends_the_game_and_the_folder_goes(zanto, running, number):
    process, _ = running()
    assert len(zanto.left()) == 1
    process.send_signal(number)
    assert process.wait(20) == -number
    assert zanto.cleaned_up()


@pytest.mark.parametrize("number", [signal.SIGINT, signal.SIGTERM, signal.SIGHUP])
def test_a_signal_to_all_of_a_terminal_leaves_nothing_either(zanto, running, number):
    process, _ = running()
    os.killpg(process.pid, number)
    assert process.wait(20) == -number
    assert zanto.cleaned_up()


def test_an_interruption_at_any_time_of_the_start_leaves_nothing(zanto):
    for name in range(20):
        zanto.own_song(f"{name}.txt")
    for delay_ms in range(0, 30, 2):
        process = zanto.start(WAIT="yes")
        time.sleep(delay_ms / 1000)
        while process.poll() is None:  # one that comes while the folder is being made is ignored
            os.killpg(process.pid, signal.SIGINT)
            time.sleep(0.02)
        process.communicate()
        assert zanto.cleaned_up(), f"interrupted after {delay_ms} ms"


def test_two_games_at_once_have_a_folder_each(zanto, running):
    first, one = running()
    _, other = running()
    assert one != other
    first.terminate()
    first.wait(20)
    assert (other / "Songs/mine.txt").exists()


def test_where_no_folder_can_be_made_the_game_plays_without_own_songs(zanto):
    zanto.own_song("mine.txt")
    status, folder, _, err = zanto.play(TMPDIR="/nowhere/at/all")
    assert (status, folder) == (0, zanto.data)
    assert "playing without them" in err
