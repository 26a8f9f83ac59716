"""The game on a Wayland desktop, through XWayland: weston, which needs no screen for that."""

import os
import pathlib
import re
import shutil
import subprocess
import tempfile

import pytest

from conftest import close, moves
from stage import processes
from stage.player import Player
from stage.screen import Screen


@pytest.fixture(params=[1, 2])
def desktop(request):
    """The name of the X display that weston offers, on screens of both scales."""
    folder = pathlib.Path(tempfile.mkdtemp(prefix="zanto-wayland-"))  # a socket's path has to be short
    log = folder / "log"
    with log.open("w") as output:
        weston = processes.start(
            ["weston", "--backend=headless-backend.so", "--xwayland", "--no-config", "--socket=stage", "--idle-time=0",
             "--width=1024", "--height=800", f"--scale={request.param}"],
            env={**os.environ, "XDG_RUNTIME_DIR": str(folder)}, stdin=subprocess.DEVNULL, stdout=output,
            stderr=subprocess.STDOUT)
    try:
        yield processes.wait_until(lambda: re.search(r"xserver listening on display (:\d+)", log.read_text()), 20,
                                   "weston")[1]
    finally:
        processes.stop(weston)
        shutil.rmtree(folder)


def test_under_wayland_the_game_starts_plays_and_closes(launch, mic, desktop, long_song):
    with Screen(desktop) as view:
        game = launch(mic, "long.txt", folder=long_song, extra={"DISPLAY": desktop})
        player = Player(game, view)
        assert player.wait_for_score() == 0
        assert moves(player)
        assert close(player) == 0
