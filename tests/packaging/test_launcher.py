"""The installed launcher: where the game runs, what it sees there, and that nothing stays behind."""

import os
import pathlib
import shutil
import signal
import subprocess
import time

import pytest

from conftest import BUILD, PROJECT

GAME = """\
#!/bin/sh
# Stands in for the game: says where it is and what it was told, then waits or ends as it is asked to.
pwd
for word in "$@"; do echo "[$word]"; done
[ -z "${SHOW:-}" ] || echo "ear ${ZANTO_EAR-none}, input ${ZANTO_INPUT-none}, spectrum ${ZANTO_SPECTRUM-none}"
if [ -n "${WAIT:-}" ]; then exec sleep 60; fi
exit "${STATUS:-0}"
"""


class Installation:
    """A launcher, a stand-in for the game, two songs, and a player's home."""

    def __init__(self, folder):
        self.launcher = folder / "usr/bin/zanto"
        self.data = folder / "usr/share/zanto"
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
        for name, text in {"notes.txt": "the game's table\n", "Songs/one.txt": "the game's one\n",
                           "Songs/two.txt": "the game's two\n", "Songs/listing.txt": "One one.txt\nTwo two.txt"}.items():
            (self.data / name).write_text(text)
        self.environment = {"PATH": os.environ["PATH"], "HOME": str(self.home), "TMPDIR": str(self.temporary)}
        self.started = []

    def own_song(self, name, text="the player's\n"):
        (self.own / "Songs").mkdir(parents=True, exist_ok=True)
        (self.own / "Songs" / name).write_text(text)

    def start(self, *arguments, launcher=None, **settings):
        process = subprocess.Popen([launcher or self.launcher, *arguments], cwd=self.elsewhere, text=True,
                                   env={**self.environment, **settings}, stdout=subprocess.PIPE,
                                   stderr=subprocess.PIPE, start_new_session=True)
        self.started.append(process)
        return process

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

    def cleaned_up(self):
        deadline = time.monotonic() + 20
        while list(self.temporary.iterdir()) and time.monotonic() < deadline:
            time.sleep(0.01)
        return not list(self.temporary.iterdir())


@pytest.fixture
def zanto(tmp_path):
    installation = Installation(tmp_path)
    yield installation
    for process in installation.started:
        if process.poll() is None:
            os.killpg(process.pid, signal.SIGKILL)
        process.communicate()


def songs_in(folder):
    return {path.name: path.read_text() for path in (folder / "Songs").iterdir() if path.name != "listing.txt"}


def listing_in(folder):
    return (folder / "Songs/listing.txt").read_text().split()


def test_without_own_songs_the_game_runs_in_the_installed_folder(zanto):
    assert zanto.play() == (0, zanto.data, [], "")
    (zanto.elsewhere / "game").symlink_to(zanto.launcher)
    assert zanto.play(launcher=zanto.elsewhere / "game")[1] == zanto.data
    (zanto.own / "Songs").mkdir(parents=True)
    assert zanto.play()[1] == zanto.data
    del zanto.environment["HOME"]
    assert zanto.play()[:2] == (0, zanto.data)
    assert list(zanto.temporary.iterdir()) == []


@pytest.mark.parametrize("own", [False, True])
@pytest.mark.parametrize("words, told, seen", [
    ([], [], "ear none, input none, spectrum none"),
    (["two words.txt", "", "-x", "*"], ["[two words.txt]", "[]", "[-x]", "[*]"], "ear none, input none, spectrum none"),
    (["--ear", "fine", "one.txt"], ["[one.txt]"], "ear fine, input none, spectrum none"),
    (["--spectrum", "--input", "USB mic: (hw:1,0)", "one.txt"], ["[one.txt]"],
     "ear none, input USB mic: (hw:1,0), spectrum 1"),
    (["--ear", "plain", "--", "--spectrum"], ["[--spectrum]"], "ear plain, input none, spectrum none")])
def test_arguments_and_status_pass_through_and_options_become_variables(zanto, own, words, told, seen):
    if own:
        zanto.own_song("mine.txt")
    outcome = zanto.play(*words, SHOW="yes", STATUS="254")
    assert (outcome[0], *outcome[2:]) == (254, [*told, seen], "")
    assert zanto.cleaned_up()


@pytest.mark.parametrize("words, remark", [
    (["--ear", "golden"], "--ear takes plain or fine"), (["--ear"], "--ear takes plain or fine"),
    (["--input"], "--input takes the name of a microphone"), (["--input", ""], "--input takes the name"),
    (["--loud"], "unknown option --loud"), (["one.txt", "--ear", "fine"], "--ear must come before the song")])
def test_what_is_no_option_is_refused(zanto, words, remark):
    process = zanto.start(*words)
    out, err = process.communicate(timeout=20)
    assert (process.returncode, out, err.count("\n")) == (2, "", 1) and err.startswith(f"zanto: {remark}")


def test_help_names_the_options_and_the_keys(zanto):
    text, err = zanto.start("--help").communicate(timeout=20)
    assert err == "" and all(word in text for word in ("--ear plain|fine", "--input NAME", "--spectrum", "Caps Lock"))


DIALOGS = {"zenity": "--question", "kdialog": "--yesno", "xmessage": "-default", "notify-send": None}


@pytest.mark.parametrize("dialog", DIALOGS)
@pytest.mark.parametrize("status, told", [("254", True), ("255", True), ("1", False), ("0", False)])
def test_who_starts_it_from_a_menu_is_told_in_a_window_why_there_is_no_game(zanto, dialog, status, told):
    said = zanto.elsewhere / "said"
    programs = zanto.elsewhere / "programs"
    programs.mkdir()
    for name in ("sh", "cat", "cut", "readlink", "dirname", "mktemp", "echo"):
        (programs / name).symlink_to(shutil.which(name))
    for program, text in ((programs / dialog, f'#!/bin/sh\necho "$@" >>"{said}"\n'),
                          (zanto.launcher.parent / "zanto-mic", '#!/bin/sh\necho "the cause ($1)"\n')):
        program.write_text(text)
        program.chmod(0o755)
    shutil.copy(PROJECT / "packaging/no-microphone", zanto.launcher.parents[1] / "libexec/zanto/zanto-no-microphone")
    outcome = zanto.play("--from-menu", STATUS=status, PATH=str(programs))
    assert (outcome[0], outcome[3]) == (int(status), "")
    text = said.read_text() if said.exists() else ""
    assert ("Zanto cannot record" in text) == told
    assert ("the cause (check)" in text) == (told and DIALOGS[dialog] is not None)
    assert not told or DIALOGS[dialog] is None or DIALOGS[dialog] in text


def test_own_songs_are_seen_beside_those_of_the_game_and_before_them(zanto):
    zanto.own_song("Grüße, #1.txt")
    zanto.own_song("one.txt")
    _, folder = zanto.running()
    assert folder != zanto.data
    assert sorted(path.name for path in folder.iterdir()) == ["Fonts", "Songs", "notes.txt"]
    assert (folder / "notes.txt").read_text() == "the game's table\n"
    assert songs_in(folder) == {"one.txt": "the player's\n", "two.txt": "the game's two\n",
                                "Grüße, #1.txt": "the player's\n"}
    assert listing_in(folder) == ["One", "one.txt", "Two", "two.txt"]
    zanto.own_song("listing.txt", "Mine mine.txt\n")
    before = {path: path.read_bytes() for path in zanto.home.parent.rglob("*.txt") if path.is_file()}
    first, other = zanto.running()
    assert other != folder
    assert listing_in(other) == ["One", "one.txt", "Two", "two.txt", "Mine", "mine.txt"]
    first.terminate()
    first.wait(20)
    assert before == {path: path.read_bytes() for path in before}
    assert (folder / "Songs/one.txt").exists(), "a game that ends leaves the folder of another alone"


def test_an_own_note_table_is_used_without_own_songs(zanto):
    zanto.own.mkdir(parents=True)
    (zanto.own / "notes.txt").write_text("the player's table\n")
    _, folder = zanto.running()
    assert (folder / "notes.txt").read_text() == "the player's table\n"
    assert sorted(songs_in(folder)) == ["one.txt", "two.txt"]


def test_xdg_data_home_is_honoured_unless_it_is_relative(zanto):
    zanto.own_song("mine.txt")
    for place in (zanto.home / "moved", zanto.elsewhere / "moved"):
        (place / "zanto/Songs").mkdir(parents=True)
        (place / "zanto/Songs/moved.txt").write_text("moved\n")
    assert sorted(songs_in(zanto.running(XDG_DATA_HOME=str(zanto.home / "moved"))[1])) == [
        "moved.txt", "one.txt", "two.txt"]
    assert sorted(songs_in(zanto.running(XDG_DATA_HOME="moved")[1])) == ["mine.txt", "one.txt", "two.txt"]


@pytest.mark.parametrize("number, whole_terminal", [
    (signal.SIGTERM, False), (signal.SIGINT, False), (signal.SIGHUP, False), (signal.SIGKILL, False),
    (signal.SIGTERM, True), (signal.SIGINT, True), (signal.SIGHUP, True)])
def test_a_signal_ends_the_game_and_the_folder_goes(zanto, number, whole_terminal):
    zanto.own_song("mine.txt")
    process, _ = zanto.running()
    assert len(list(zanto.temporary.iterdir())) == 1
    (os.killpg if whole_terminal else os.kill)(process.pid, number)
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


def test_where_no_folder_can_be_made_the_game_plays_without_own_songs(zanto):
    zanto.own_song("mine.txt")
    status, folder, _, err = zanto.play(TMPDIR="/nowhere/at/all")
    assert (status, folder) == (0, zanto.data)
    assert "playing without them" in err
