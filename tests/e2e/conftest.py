"""What the end-to-end tests share: the real program on a real display, with a real sound server."""

import os
import pathlib
import shutil
import subprocess
import time
import wave
from array import array

import pytest

from stage import microphone, processes
from stage.display import VirtualDisplay
from stage.game import Game
from stage.microphone import VirtualMicrophone
from stage.player import Player
from stage.screen import Screen
from stage.songs import ScoreBook

BUILD = pathlib.Path(os.environ["ZANTO_BUILD"])
DATA = pathlib.Path(__file__).resolve().parents[2] / "data"
START_UP_LINES = ["main::Creating AudioInput", "main::start recording.", "main::creating window",
                  "Win::Win() initing wt"]
# Sure to be judged whatever the machine: notes of one and two slots, each followed by a rest.
SONG_TEXT = "120 4\nC\n\nE\n\nG2\n\n\nA\n\nD2\n\n\nB\n\nF\n\nC2\n\n\nE\n"


def preload(name):
    """What LD_PRELOAD takes to put one of this folder's libraries in front."""
    return str(BUILD / "tests" / "e2e" / f"lib{name}.so")


@pytest.fixture(scope="session", autouse=True)
def ended_whatever_happens():
    """A test that CTest ends by a signal ends its programs too."""
    processes.raise_on_termination()
    processes.prefer_this()


@pytest.fixture
def display():
    with VirtualDisplay(1024, 800) as virtual_display:
        yield virtual_display


@pytest.fixture
def view(display):
    with Screen(display.name) as screen:
        yield screen


@pytest.fixture
def mic():
    with VirtualMicrophone() as virtual_microphone:
        yield virtual_microphone


@pytest.fixture
def no_microphone(tmp_path):
    """The environment of a machine without any sound device."""
    folder = tmp_path / "no-sound"
    folder.mkdir()
    return microphone.environment_without_devices(folder)


@pytest.fixture
def data(tmp_path):
    """A copy of the game's data folder to spoil."""
    return pathlib.Path(shutil.copytree(DATA, tmp_path / "data"))


@pytest.fixture
def long_song(data):
    """That folder with a song that outlasts a test, long.txt, and only that in the list."""
    (data / "Songs" / "long.txt").write_text("1 1\n" + "C\nE\nG\n\n" * 100)
    (data / "Songs" / "listing.txt").write_text("Long long.txt\n")
    return data


@pytest.fixture
def launch(display):
    """launch(sound, *arguments, ...): the game as a process; `sound` is a microphone or an environment."""
    games = []

    def start(sound, *arguments, folder=DATA, extra=None, **options):
        environment = {**display.environment, **getattr(sound, "environment", sound), **(extra or {})}
        game = Game(options.pop("binary", BUILD / "app" / "zanto"), folder, environment, arguments, **options)
        games.append(game)
        return game

    yield start
    for game in games:
        game.stop()


@pytest.fixture
def play(launch, view, mic):
    """play(*arguments, ...): the game with a microphone, and somebody in front of it."""
    def start(*arguments, **options):
        return Player(launch(mic, *arguments, **options), view)
    return start


@pytest.fixture
def play_long(play, long_song):
    """play_long(...): the same with the long song, once its score can be read."""
    def start(**options):
        player = play("long.txt", folder=long_song, **options)
        player.wait_for_score()
        return player
    return start


@pytest.fixture
def perform(tmp_path):
    """perform(song file, ...): the song as a sound file."""
    def render(song, *options):
        sound = tmp_path / "performance.wav"
        subprocess.run([BUILD / "tools" / "zanto-song", "render", song, "-o", sound, "--force", *options], check=True)
        return sound
    return render


def resident(process_id, kind):
    """What is resident of one kind, in bytes. Pages of files are left out by all who ask: the kernel takes them away
    and brings them back as it likes, which would hide growth and feign it."""
    status = pathlib.Path(f"/proc/{process_id}/status").read_text()
    return 1024 * int(next(line.split()[1] for line in status.splitlines() if line.startswith(f"{kind}:")))


def open_files(process_id):
    return len(os.listdir(f"/proc/{process_id}/fd"))


def own_lines(game):
    """What the start-up itself says on standard output, among the lines of others."""
    return [line for line in game.output("out") if line in START_UP_LINES]


def write_sound(path, samples):
    """A sound file of one channel, of 16-bit samples."""
    with wave.open(str(path), "wb") as sound:
        sound.setnchannels(1)
        sound.setsampwidth(2)
        sound.setframerate(microphone.SAMPLE_RATE)
        sound.writeframes(array("h", samples).tobytes())
    return path


def moves(player, seconds=12):
    """Waits until the game has drawn a frame that differs from the last: the song's track moves."""
    first = player.picture().tobytes()
    return processes.wait_until(lambda: player.picture().tobytes() != first, seconds, "the picture to move")


def close(player):
    """Presses the window's close button; returns the game's exit status."""
    player.view.press_close_button(player.window)
    status = player.game.wait()
    if status != 0:
        print("\n".join(player.game.output("err")))  # a sanitizer's report, say
    return status


def play_one(player, mic, sound, seconds=0.05):
    """Presses "Play" with the sound and plays to the end; gives the book of all scores that stood on the screen."""
    player.hold("Play")
    performance = mic.play(sound)
    player.let_go_at(performance.begins_at)
    book = ScoreBook()
    while time.monotonic() < performance.ends_at - 1.5:
        book.saw(player.score())
        time.sleep(seconds)
    assert not player.sees("New Game"), "the title came back too early"
    book.saw(player.wait_for_score())
    player.wait_to_see("New Game")
    assert time.monotonic() - performance.ends_at > -1.0
    performance.stop()
    return book
