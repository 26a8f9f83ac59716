"""What the end-to-end tests share: the real program on a real display, with a real sound server."""

import os
import pathlib
import shutil
import subprocess

import pytest

from stage import microphone, processes
from stage.display import VirtualDisplay
from stage.game import Game
from stage.microphone import VirtualMicrophone
from stage.player import Player
from stage.screen import Screen

BUILD = pathlib.Path(os.environ["ZANTO_BUILD"])
DATA = pathlib.Path(__file__).resolve().parents[2] / "data"


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
def perform(tmp_path):
    """perform(song file, ...): the song as a sound file."""
    def render(song, *options):
        sound = tmp_path / "performance.wav"
        subprocess.run([BUILD / "tools" / "zanto-song", "render", song, "-o", sound, *options], check=True)
        return sound
    return render


def close(player):
    """Presses the window's close button; returns the game's exit status."""
    player.view.press_close_button(player.window)
    status = player.game.wait()
    if status != 0:
        print("\n".join(player.game.output("err")))  # a sanitizer's report, say
    return status
