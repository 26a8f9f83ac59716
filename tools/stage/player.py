"""Somebody who sits in front of the game: reads the screen, presses buttons, picks songs."""

import time

from stage import processes, reader, screen

# The part of the window in which the score stands, in shares of its size. To its right the sound's wave begins.
SCORE_REGION = (0.0, 0.9, 0.3, 1.0)  # wide enough for five digits

LIST_HEADING = "Choose your song"

# Between two looks at what should stand still. A window that was made larger shows its old picture for some frames.
STILL_SECONDS = 0.2

CLICK_SECONDS = 0.02  # from the release of a button to the game's answer: one frame


class Player:
    def __init__(self, game, view):
        self.game = game
        self.view = view
        self.window = view.find_window(game.id)

    def picture(self):
        return self.view.picture(self.window)

    def score(self):
        """The score on the screen, None when none can be read."""
        picture = self.picture()
        return reader.read_number_after(picture, "Score:", _region(picture, SCORE_REGION))

    def wait_for_score(self, seconds=20):
        """The first score that can be read, and that reads the same twice."""
        def same_twice():
            first = self.score()
            return (first,) if first is not None and first == self.score() else None
        return processes.wait_until(same_twice, seconds, "a score on the screen")[0]

    def sees(self, text):
        """The line on the screen that reads like that, or None."""
        return reader.find_text(self.picture(), text)

    def wait_to_see(self, text, seconds=30):
        """Waits until the text is on the screen and stands still; returns its line."""
        last = []

        def still():
            line = self.sees(text)
            last.append(line and line.box)
            return line if line and last[-1] == (last[-2] if len(last) > 1 else None) else None
        return processes.wait_until(still, seconds, f"{text!r} on the screen", STILL_SECONDS)

    def wait_until_gone(self, text, seconds=30):
        processes.wait_until(lambda: not self.sees(text), seconds, f"{text!r} to go from the screen")

    def press(self, label):
        """Clicks on a button, once it is there."""
        self.view.click(self.window, *self.wait_to_see(label).box.centre)

    def hold(self, label):
        """Puts the pointer on a button and presses it without letting go."""
        self.view.move(self.window, *self.wait_to_see(label).box.centre)
        self.view.button(True)

    def let_go_at(self, moment):
        """Lets go of a held button so that the game answers at that moment of time.monotonic()."""
        _sleep_until(moment - CLICK_SECONDS)
        self.view.button(False)

    def type_at(self, key, moment):
        """Types a key so that the game answers at that moment of time.monotonic()."""
        self.view.focus(self.window)
        _sleep_until(moment - CLICK_SECONDS)
        self.view.key(self.window, key)

    def open_chooser(self):
        self.press("New Game")
        self.wait_to_see(LIST_HEADING)

    def choose(self, name):
        """Selects the row of that name in the song chooser, scrolling down to it if need be."""
        heading = self.wait_to_see(LIST_HEADING).box
        play = self.wait_to_see("Play").box
        rows = (play.centre[0], (heading.bottom + play.top) / 2)
        last = None
        while True:
            picture = self.picture()
            row = self._row(picture, name, heading, play)
            if row:
                self.view.click(self.window, *row.box.centre)
                return
            if last is not None and picture.tobytes() == last:
                raise processes.TimedOut(f"the list ends without {name!r}")
            last = picture.tobytes()
            self.view.click(self.window, *rows, number=screen.WHEEL_DOWN)
            time.sleep(0.3)

    def _row(self, picture, name, heading, play):
        region = (0, heading.bottom + 2, picture.width, play.top)
        return reader.find_text(picture, name, region)


def _region(picture, shares):
    left, top, right, bottom = shares
    return (round(left * picture.width), round(top * picture.height), round(right * picture.width),
            round(bottom * picture.height))


def _sleep_until(moment):
    time.sleep(max(0.0, moment - time.monotonic()))
