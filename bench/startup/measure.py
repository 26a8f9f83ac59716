"""Start-up and memory of the game beside a bare window. Usage: measure.py BUILD-FOLDER RUNS"""

import os
import pathlib
import select
import statistics
import subprocess
import sys
import time

from stage import processes
from stage.display import VirtualDisplay
from stage.game import Game
from stage.microphone import VirtualMicrophone
from stage.player import Player
from stage.screen import Screen
from stage.songs import Listing

SONG = "twinkle_twinkle.txt"
SECONDS_INTO_THE_SONG = 8
FIRST_FRAME_SECONDS = 30


class Program:
    def __init__(self, name, command, folder, preloaded, environment):
        self.name = name
        self.command = command
        self.folder = folder
        self.environment = {**os.environ, **environment, "LD_PRELOAD": str(preloaded)}

    def start(self):
        """(process, seconds to its first frame)"""
        reading, writing = os.pipe()
        begun = time.monotonic()
        process = processes.start(self.command, cwd=self.folder, pass_fds=[writing], stdin=subprocess.DEVNULL,
                                  stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL,
                                  env={**self.environment, "FIRST_FRAME_FD": str(writing)})
        os.close(writing)
        ready, _, _ = select.select([reading], [], [], FIRST_FRAME_SECONDS)
        seconds = time.monotonic() - begun
        shown = bool(ready) and os.read(reading, 1) == b"\n"
        os.close(reading)
        if not shown:
            processes.stop(process)
            sys.exit(f"{self.name} showed no frame")
        return process, seconds

    def seconds_to_first_frame(self):
        process, seconds = self.start()
        processes.stop(process)
        return seconds

    def resident_mib(self, seconds):
        process, _ = self.start()
        time.sleep(seconds)
        mib = resident_mib(process.pid)
        processes.stop(process)
        return mib


def resident_mib(process_id):
    status = pathlib.Path(f"/proc/{process_id}/status").read_text()
    kib = next(line.split()[1] for line in status.splitlines() if line.startswith("VmRSS:"))
    return int(kib) / 1024


def resident_mib_by_the_menus(program, folder, environment, display, seconds):
    """In a song that was chosen from the menus."""
    with Screen(display.name) as view, Game(program, folder, environment) as game:
        player = Player(game, view)
        player.open_chooser()
        player.choose(Listing(folder / "Songs" / "listing.txt").name_of(SONG))
        player.press("Play")
        time.sleep(seconds)
        return resident_mib(game.id)


def main(build, runs):
    data = pathlib.Path("data").resolve()
    preloaded = build / "bench" / "startup" / "libfirst_frame.so"
    with VirtualDisplay() as display, VirtualMicrophone() as microphone:
        environment = {**display.environment, **microphone.environment}
        game = Program("the game", [build / "app" / "zanto", SONG], data, preloaded, environment)
        bare = Program("the bare window", [build / "bench" / "startup" / "bare_window"], data, preloaded,
                       environment)
        drawing = Program("the bare window with a triangle", [*bare.command, "triangle"], data, preloaded,
                          environment)
        times = {game: [], bare: [], drawing: []}
        for run in range(runs + 1):
            for program, seconds in times.items():
                taken = program.seconds_to_first_frame()
                if run > 0:  # the first one warms the caches
                    seconds.append(taken)
        medians = {program: statistics.median(seconds) * 1000 for program, seconds in times.items()}
        memory = {program: program.resident_mib(SECONDS_INTO_THE_SONG) for program in times}
        by_menus = resident_mib_by_the_menus(game.command[0], data, environment, display, SECONDS_INTO_THE_SONG)
        for program in times:
            print(f"{program.name}: first frame after {medians[program]:.0f} ms (median of {runs}), "
                  f"{memory[program]:.1f} MiB resident")
        print(f"the game, with the song chosen from its menus: {by_menus:.1f} MiB resident, "
              f"{by_menus - memory[bare]:+.1f} MiB beside the bare window")
        for peer in (bare, drawing):
            print(f"the game beside {peer.name}: {medians[game] - medians[peer]:+.0f} ms, "
                  f"{memory[game] - memory[peer]:+.1f} MiB, {medians[game] / medians[peer]:.2f} times the time")


if __name__ == "__main__":
    if len(sys.argv) != 3:
        sys.exit(__doc__)
    main(pathlib.Path(sys.argv[1]).resolve(), int(sys.argv[2]))
