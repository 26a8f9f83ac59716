"""What the stage has to know about songs to tell how well one was played."""

import pathlib
import re

RULES = (pathlib.Path(__file__).parents[2] / "game" / "Rules.h").read_text(encoding="utf-8")


def rule(name):
    """A number of the game's rules, from its own header."""
    return float(re.search(rf"\b{name} = (-?[0-9.]+)", RULES)[1])


SECONDS_PER_SLOT = 1.0 / rule("slotsPerSecond")
LEAD_IN_SECONDS = rule("leadInSeconds")
SLOTS_AFTER_THE_END = int(rule("slotsAfterTheEnd"))
AWARD = int(rule("awardPoints"))
PENALTY = int(-rule("penaltyPoints"))


class Listing:
    """The song list: pairs of a shown name and a file name, in words."""

    def __init__(self, path):
        words = pathlib.Path(path).read_text(encoding="utf-8", errors="replace").split()
        self.entries = list(zip(words[::2], words[1::2]))

    def name_of(self, file_name):
        """The name that the chooser shows for the file; None when it does not list it."""
        return next((name for name, file in self.entries if file == file_name), None)

    def first_file(self):
        return self.entries[0][1]


class Song:
    """The notes of a song file, for counting."""

    def __init__(self, name, text):
        self.name = name
        header, *lines = text.split("\n")
        if not re.match(r"\s*-?\d+\s+-?\d+\s*$", header):
            raise ValueError(f"{name} has no header line")
        self.slots = [[int(token[1:] or 1) for token in line.split()] for line in lines]

    @classmethod
    def from_file(cls, name, folder):
        return cls(name, (pathlib.Path(folder) / name).read_text())

    @property
    def seconds(self):
        """From the start of the song's clock to its end, when the title comes back."""
        return LEAD_IN_SECONDS + (len(self.slots) + SLOTS_AFTER_THE_END) * SECONDS_PER_SLOT

    @property
    def notes(self):
        return sum(len(slot) for slot in self.slots)

    @property
    def worth(self):
        """The points of one who holds every note as long as it is written."""
        return AWARD * sum(length for slot in self.slots for length in slot)

    @property
    def is_melody(self):
        """Whether no two notes sound together."""
        free = 0
        for slot, lengths in enumerate(self.slots):
            if lengths and (len(lengths) > 1 or slot < free):
                return False
            if lengths:
                free = slot + lengths[0]
        return True


class ScoreBook:
    """Follows a score as it is read off the screen, and tells awards from penalties.

    Awards are multiples of 100 and penalties 20 each, so up to four penalties between two looks are told apart
    from the awards that came with them.
    """

    def __init__(self):
        self.score = 0
        self.earned = 0
        self.penalties = 0
        self.awards = 0  # times that the score rose; for a melody, the notes hit

    def saw(self, score):
        """Takes the next reading; None, when none could be read, is passed over."""
        if score is None or score == self.score:
            return
        change = score - self.score
        lost = (-change // PENALTY) % (AWARD // PENALTY)
        gained = change + lost * PENALTY
        self.penalties += lost
        self.earned += gained
        self.awards += gained > 0
        self.score = score
