"""The game plays itself: `python3 -m stage.demo [SONG]`, started by ./play.

Somebody sits in front of the game, picks a song from its menus and plays it on a rendered instrument into a
microphone of the game's own, in real time, while pictures are taken and the score is watched.
"""

import argparse
import contextlib
import os
import pathlib
import subprocess
import sys
import time

from stage import processes
from stage.display import VirtualDisplay
from stage.game import Game
from stage.microphone import VirtualMicrophone
from stage.player import Player
from stage.screen import PoliteScreen, Screen
from stage.songs import Listing, ScoreBook, Song

PROJECT = pathlib.Path(__file__).resolve().parents[2]
DATA = PROJECT / "data"
INSTRUMENT = "flute"

STATUS_FAILED = 1
STATUS_WRONG_USE = 2
STATUS_INTERRUPTED = 130

# The song's last slot has closed a little before, and its last awards are still floating.
BEFORE_THE_TITLE_SECONDS = 2.1
WATCH_SECONDS = 0.08  # between two looks at the score


class Demo:
    def __init__(self, arguments):
        self.arguments = arguments
        self.build = pathlib.Path(arguments.build).resolve()
        self.pictures = PROJECT / "build" / "demo"
        self.taken = []
        self.song = Song.from_file(arguments.song, DATA / "Songs")
        self.row = Listing(DATA / "Songs" / "listing.txt").name_of(arguments.song)
        self.player = None
        self.book = ScoreBook()

    def run(self):
        self.pictures.mkdir(parents=True, exist_ok=True)
        for old in self.pictures.glob("*.png"):
            old.unlink()
        sound = self._render()
        with contextlib.ExitStack() as stack:
            environment, view = self._open_display(stack)
            say("Setting up a microphone of the game's own.")
            microphone = stack.enter_context(VirtualMicrophone())
            environment.update(microphone.environment)
            say(f"Playing {self.song.name}: about {self.song.seconds:.0f} seconds.")
            # A song that is in no list can only be named on the command line.
            named = [] if self.row else [self.song.name]
            game = stack.enter_context(Game(self.build / "app" / "zanto", DATA, environment, named))
            self.player = Player(game, view)
            performance = self._start_song(microphone, sound)
            stack.callback(performance.stop)
            self._watch(performance)
            self._picture("final-score")
            score = self.player.wait_for_score()
            self.book.saw(score)
            self.player.wait_to_see("New Game")
            view.press_close_button(self.player.window)
            status = game.wait()
        if status != 0:
            say("\n".join(game.output("err")[-20:]))
        self._report(score, status)
        return 0 if status == 0 else STATUS_FAILED

    def _render(self):
        sound = self.pictures / "performance.wav"
        say(f"Rendering {self.song.name} for a {INSTRUMENT}.")
        subprocess.run([self.build / "tools" / "zanto-song", "render", DATA / "Songs" / self.song.name,
                        "-o", sound, "--force", "--instrument", INSTRUMENT], check=True)
        return sound

    def _open_display(self, stack):
        if self.arguments.on_this_display:
            return {}, stack.enter_context(PoliteScreen(os.environ["DISPLAY"]))
        say("Setting up a display of the game's own.")
        display = stack.enter_context(VirtualDisplay())
        return dict(display.environment), stack.enter_context(Screen(display.name))

    def _start_song(self, microphone, sound):
        """Starts song and sound together; returns the performance."""
        if not self.row:
            self.player.wait_for_score()
            performance = microphone.play(sound)
            self.player.type_at("r", performance.begins_at)
            return performance
        self.player.wait_to_see("New Game")
        self._picture("title")
        self.player.open_chooser()
        self.player.choose(self.row)
        self.player.wait_to_see(self.song.name)
        self._picture("chooser")
        self.player.hold("Play")
        performance = microphone.play(sound)
        self.player.let_go_at(performance.begins_at)
        return performance

    def _watch(self, performance):
        """Follows the score and takes pictures on the way until the song's last note is judged."""
        end = performance.ends_at - BEFORE_THE_TITLE_SECONDS
        length = end - performance.begins_at
        moments = [(performance.begins_at + share * length, name)
                   for share, name in ((0.3, "playing"), (0.6, "playing-on"), (0.9, "near-the-end"))]
        while (now := time.monotonic()) < end:
            if moments and now >= moments[0][0]:
                self._picture(moments.pop(0)[1])
            self.book.saw(self.player.score())
            time.sleep(WATCH_SECONDS)

    def _picture(self, name):
        path = self.pictures / f"{len(self.taken) + 1}-{name}.png"
        self.player.picture().save(path)
        self.taken.append(path)

    def _report(self, score, status):
        worth = self.song.worth
        wrong = "no wrong note" if self.book.penalties == 0 else \
            f"{self.book.penalties} wrong notes at 20 points each"
        print()
        print("Zanto has played itself: it heard a song through its microphone and judged it.")
        print(f"  song         {self.row or self.song.name}, {self.song.notes} notes, performed on a rendered"
              f" {INSTRUMENT}")
        print(f"  final score  {score} of {worth} points, read off the screen")
        if self.song.is_melody:
            print(f"  notes hit    {self.book.awards} of {self.song.notes}, counted as the score rose")
        print(f"  earned       {self.book.earned} points; {wrong}")
        print(f"  ending       the title came back by itself; its window was closed, status {status}")
        print(f"  pictures     {self.pictures.relative_to(PROJECT)}/")
        for path in self.taken:
            print(f"                 {path.name}")
        print("To play yourself, start ./play where there is a display and a microphone.")


def say(text):
    print(text, flush=True)


def parse(words):
    parser = argparse.ArgumentParser(prog="stage.demo", description="Zanto plays itself.")
    parser.add_argument("--build", default="build/release", help="the build folder to take the game from")
    parser.add_argument("--on-this-display", action="store_true", help="show it on $DISPLAY")
    parser.add_argument("song", nargs="*", help="a file in data/Songs")
    arguments = parser.parse_args(words)
    # The game looks at its first argument only; so does this.
    arguments.song = arguments.song[0] if arguments.song else Listing(DATA / "Songs" / "listing.txt").first_file()
    return arguments


def main(words):
    processes.raise_on_termination()
    processes.prefer_this()
    arguments = parse(words)
    try:
        return Demo(arguments).run()
    except FileNotFoundError as missing:
        print(f"There is no {missing.filename}.", file=sys.stderr)
        return STATUS_WRONG_USE
    except subprocess.CalledProcessError:
        return STATUS_FAILED  # the renderer has said what is wrong with the song
    except processes.TimedOut as reason:
        print(f"The demo went wrong: {reason}.", file=sys.stderr)
        return STATUS_FAILED
    except KeyboardInterrupt:
        print("\nInterrupted. All that was started is ended.", file=sys.stderr)
        return STATUS_INTERRUPTED


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
