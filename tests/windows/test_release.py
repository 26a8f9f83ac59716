"""The Windows release in a fresh Windows: installed, played, and gone again without a trace."""

import os
import pathlib
import shutil
import subprocess
import time
import zipfile

import pytest
from Xlib import XK

from stage import microphone, processes
from stage.display import VirtualDisplay
from stage.game import Game
from stage.microphone import VirtualMicrophone
from stage.player import Player
from stage.screen import Screen

PROJECT = pathlib.Path(__file__).resolve().parents[2]
MADE = PROJECT / "build" / "windows"
# The song goes on for a minute after its last note, so that the game can be slow to start.
SONG = "120 4\nC\n\nE\n\nG2\n\n\nA\n\nD2\n\n\nB\n\nF\n\nC2\n\n\nE\n" + "\n" * 120
SONG_SECONDS = 12.0
PROGRAMS = "AppData/Local/Programs/Zanto"
MENU = "AppData/Roaming/Microsoft/Windows/Start Menu/Programs/Zanto"
SONGS = "AppData/Roaming/zanto/Songs"


class Windows:
    """A Windows to install into."""

    def __init__(self, folder):
        self.folder = folder
        # wine writes into a registry that has links, so it would change the template's.
        shutil.copytree(pathlib.Path(os.environ["ZANTO_WINE"]) / "template", folder, symlinks=True,
                        copy_function=lambda old, new: (shutil.copy if old.endswith(".reg") else os.link)(old, new))
        (self.home,) = (user for user in (folder / "drive_c/users").iterdir() if user.name != "Public")
        self.environment = {"WINEPREFIX": str(folder), "HOME": str(folder)}

    def start(self, program, *arguments, **environment):
        return subprocess.Popen([PROJECT / "tests/windows/under-wine", program, *arguments], text=True,
                                env={**os.environ, "DISPLAY": "", **self.environment, **environment},
                                stdin=subprocess.DEVNULL, stdout=subprocess.PIPE, stderr=subprocess.PIPE)

    def run(self, program, *arguments, **environment):
        """(status, standard output, standard error)"""
        process = self.start(program, *arguments, **environment)
        out, err = process.communicate(timeout=120 * processes.PATIENCE)
        return process.returncode, out, err

    def install(self, installer, *words):
        status = self.run(installer, "/S", *words)
        assert status[0] == 0, status

    def rest(self):
        """Waits until nothing runs any more."""
        subprocess.run(["wineserver", "--wait"], env={**os.environ, **self.environment}, check=True)

    def files(self):
        """What there is, without Windows' own temporary files."""
        return {path for path in (self.folder / "drive_c").rglob("*")
                if "Temp" not in path.parts and "temp" not in path.parts}

    def registry(self):
        """The lines of the registry that name the game."""
        return {line for path in self.folder.glob("*.reg") for line in path.read_text(errors="replace").splitlines()
                if "zanto" in line.lower()}

    def process_of(self, name):
        """The process that runs the program of that name here, or None."""
        for place in pathlib.Path("/proc").glob("[0-9]*"):
            try:
                command = (place / "cmdline").read_bytes().replace(b"\\", b"/").split(b"\0")[0]
                if command.endswith(name.encode()) and str(self.folder).encode() in (place / "environ").read_bytes():
                    return int(place.name)
            except OSError:
                continue
        return None


@pytest.fixture
def windows(tmp_path_factory):
    # Links are made to the template, so this is beside it.
    folder = pathlib.Path(os.environ["ZANTO_WINE"]) / f"release-{os.getpid()}"
    shutil.rmtree(folder, ignore_errors=True)
    made = Windows(folder)
    yield made
    subprocess.run(["wineserver", "--kill"], env={**os.environ, **made.environment}, check=False)
    made.rest()
    shutil.rmtree(folder, ignore_errors=True)


@pytest.fixture
def installer():
    (file,) = MADE.glob("zanto-*-setup.exe")
    return file


@pytest.fixture
def installed(windows, installer):
    """The folder that the release was installed to."""
    windows.run("wineboot")
    windows.rest()
    windows.before = windows.files(), windows.registry()
    windows.install(installer)
    return windows.home / PROGRAMS


def player_of(windows, view):
    game = processes.wait_until(lambda: windows.process_of("game/zanto.exe"), 60, "the game")
    player = Player.__new__(Player)
    player.game, player.view, player.window = None, view, view.find_window(game)
    return player


def test_installed_it_plays_a_song_of_the_players_own_and_goes_without_a_trace(windows, installed):
    assert sorted(path.stem for path in (windows.home / MENU).iterdir()) == [
        "Microphone check", "My songs", "Zanto", "Zanto with the fine ear"]
    (windows.home / SONGS / "Grüße.txt").write_text(SONG)
    (windows.home / SONGS / "Grüße.txt").chmod(0o444)
    sound = windows.folder / "song.wav"
    status = windows.run(installed / "zanto-song.exe", "render", windows.home / SONGS / "Grüße.txt", "-o", sound,
                         "--gap", "0.18")
    assert status[0] == 0, status
    with VirtualDisplay(1024, 800) as display, VirtualMicrophone() as mic, Screen(display.name) as view:
        launcher = windows.start(installed / "zanto.exe", "--ear", "fine", "Grüße.txt", **display.environment,
                                 **mic.environment)
        player = player_of(windows, view)
        player.wait_for_score()
        performance = mic.play(sound)
        player.type_at("r", performance.begins_at)
        processes.wait_until(lambda: (player.score() or 0) >= 800, SONG_SECONDS, "a score of 800")
        view.press_close_button(player.window)
        out, err = launcher.communicate(timeout=60)
        assert (launcher.returncode, err) == (0, "")
        assert "Win::Win() initing wt" in out.splitlines()
    assert not list((windows.home / "AppData/Local/Temp").glob("zanto-*"))

    (windows.home / SONGS / "Grüße.txt").unlink()
    windows.run(installed / "uninstall.exe", "/S")
    windows.rest()
    before, registry = windows.before
    assert windows.files() - before == set()
    assert windows.registry() - registry == set()


def test_songs_of_the_players_own_stay_when_the_game_goes(windows, installed):
    (windows.home / SONGS / "mine.txt").write_text(SONG)
    windows.run(installed / "uninstall.exe", "/S")
    windows.rest()
    assert not installed.exists()
    assert (windows.home / SONGS / "mine.txt").read_text() == SONG


def test_another_version_that_was_installed_before_goes(windows, installer, tmp_path):
    (tmp_path / "old").mkdir()
    (tmp_path / "old" / "old.txt").touch()
    (tmp_path / "files.nsh").write_text('Delete "$INSTDIR\\old.txt"\n')
    (icon,) = MADE.glob("zanto-*/game/zanto.ico")
    subprocess.run(["makensis", "-V2", "-NOCD", "-DVERSION=0.1.0", f"-DRELEASE={tmp_path}/old", f"-DICON={icon}",
                    f"-DFILES={tmp_path}/files.nsh", f"-DOUT={tmp_path}/old.exe",
                    PROJECT / "packaging/windows/installer.nsi"], check=True)
    windows.install(tmp_path / "old.exe")
    place = windows.home / PROGRAMS
    assert (place / "old.txt").exists()
    windows.install(installer)
    assert (place / "zanto.exe").exists() and not (place / "old.txt").exists()
    windows.install(installer, "/D=C:\\Elsewhere")
    assert (windows.folder / "drive_c/Elsewhere/zanto.exe").exists() and not place.exists()


def test_without_a_microphone_the_launcher_says_so_in_a_window(windows, installed, tmp_path):
    with VirtualDisplay(1024, 800) as display, Screen(display.name) as view:
        launcher = windows.start(installed / "zanto.exe", "--from-menu",
                                 **{**display.environment, **microphone.environment_without_devices(tmp_path)})
        window = processes.wait_until(lambda: view.window_of(windows.process_of("Zanto/zanto.exe") or launcher.pid), 60,
                                      "the message")
        time.sleep(2)
        view.key(window, "n")
        out, err = launcher.communicate(timeout=60)
    assert launcher.returncode == 254
    assert "Open stream failed:Invalid device" in err.splitlines(), (out, err)


@pytest.mark.parametrize("words, remark", [
    (["--ear", "golden"], "--ear takes plain or fine"), (["--input"], "--input takes the name of a microphone"),
    (["--loud"], "unknown option --loud"), (["one.txt", "--ear", "fine"], "--ear must come before the song")])
def test_the_launcher_refuses_what_is_no_option(windows, installed, words, remark):
    status, out, err = windows.run(installed / "zanto.exe", *words)
    assert (status, out, err.count("\n")) == (2, "", 1) and err.startswith(f"zanto: {remark}")


def test_the_archive_works_from_any_folder(windows):
    (archive,) = MADE.glob("zanto-*.zip")
    folder = windows.folder / "drive_c" / "Größe ♪ x"
    with zipfile.ZipFile(archive) as files:
        files.extractall(folder)
    (release,) = folder.iterdir()
    assert "--ear plain|fine" in windows.run(release / "zanto.exe", "--help")[1]
    assert windows.run(release / "zanto-song.exe", "check", release / "data/Songs/london_bridge.txt")[0] == 0
    (folder / "tune.abc").write_text("X:1\nT:Tune\nL:1/4\nM:4/4\nK:C\nCDEF|GABc|\n")
    status, _, err = windows.run(release / "zanto-song.exe", "import", folder / "tune.abc", "-o", folder / "Töne.txt")
    assert status == 0, err
    assert (folder / "Töne.txt").read_text().splitlines()[1] == "C"
    status, _, err = windows.run(release / "zanto-song.exe", "show", folder / "Töne.txt", "-o", folder / "Töne.png")
    assert (folder / "Töne.png").read_bytes().startswith(b"\x89PNG"), err
    licences = {path.name for path in (release / "licences").iterdir()}
    assert {"zanto.spdx", "freetype.txt", "libsndfile.txt", "zlib.txt", "zanto.txt"} <= licences
