"""Five minutes after the sound server died for good, of each kind that is installed, both at the same time."""

import contextlib
import os
import time

from conftest import close, open_files, resident
from stage import sound_server
from stage.microphone import VirtualMicrophone
from stage.player import Player

SECONDS = 300
SETTLING_SECONDS = 60
MOST_GROWTH = 1 << 20  # bytes
# So that the heap gives back at once what the renderer has freed; else up to 5 MiB come and go.
STEADY_HEAP = {"MALLOC_MMAP_THRESHOLD_": str(128 << 10), "MALLOC_TRIM_THRESHOLD_": str(128 << 10)}
LOST = "No sound arrives from the microphone. The game tries to open it anew."


def threads(process_id):
    return len(os.listdir(f"/proc/{process_id}/task"))


def test_five_minutes_without_a_sound_server_leave_memory_and_output_as_they_were(launch, view, monkeypatch):
    with contextlib.ExitStack() as stack:
        players = []
        for kind in sound_server.all_installed():
            monkeypatch.setenv(sound_server.CHOICE_VARIABLE, kind.program)
            mic = stack.enter_context(VirtualMicrophone())
            players.append(Player(launch(mic, extra=STEADY_HEAP), view))
            players[-1].wait_to_see("New Game")
            mic.kill_server()
        assert players
        for player in players:
            player.game.wait_for_line(LOST)
        time.sleep(SETTLING_SECONDS)
        measures = (lambda game: resident(game.id, "RssAnon"), lambda game: resident(game.id, "RssShmem"),
                    lambda game: open_files(game.id), lambda game: threads(game.id),
                    lambda game: len(game.output("err")))
        before = [[measure(player.game) for measure in measures] for player in players]
        time.sleep(SECONDS - SETTLING_SECONDS)
        after = [[measure(player.game) for measure in measures] for player in players]
        print("memory of its own, shared memory, files, threads and lines written:", before, after)
        for was, is_now in zip(before, after):
            assert is_now[0] - was[0] < MOST_GROWTH and is_now[1] - was[1] < MOST_GROWTH
            assert is_now[2:] == was[2:]
        for player in reversed(players):  # the last one lies over the others
            player.wait_to_see("New Game")
            assert player.game.output("err").count(LOST) == 1
            begun = time.monotonic()
            assert close(player) == 0
            assert time.monotonic() - begun < 1.0
