"""Writes docs/hearing.md and its pictures from the figures in bench/results/hearing.

Usage: page.py PROJECT-FOLDER [--check]. With --check nothing is written: the status is 1 if a file differs.

The page is hearing.md.in with figures in place of {names}; a name that has no figure is an error.
"""

import csv
import pathlib
import sys

import charts

EARS = {"fine": "fine", "plain": "plain", "yinfft": "`yinfft`"}
OCTAVES = (2, 3, 4, 5)
SOFT = 50  # heard latest


def load(path):
    """The rows of a table of figures; what looks like a number is one."""
    def number(cell):
        try:
            return float(cell)
        except ValueError:
            return cell
    with open(path, encoding="utf-8", newline="") as file:
        return [{name: number(cell) for name, cell in row.items()} for row in csv.DictReader(file)]


def pick(rows, **wanted):
    return [row for row in rows if all(row[name] == value for name, value in wanted.items())]


def mean(rows, column, weight="takes"):
    return sum(row[column] * row[weight] for row in rows) / sum(row[weight] for row in rows)


def right_wrong(rows):
    return f"{100 * mean(rows, 'right'):.1f}/{100 * mean(rows, 'wrong'):.1f}" if rows else "-"


def row(name, *cells):
    return f"|{name}|" + "|".join(cells) + "|"


def by_octave(name, rows):
    return row(name, *(right_wrong(pick(rows, octave=octave)) for octave in OCTAVES), right_wrong(rows))


def instruments(rows):
    return [row for row in rows if row["half"] in ("tuned", "other")]


def heard_for_first(rows, column):
    """A mean over those notes that were heard at all."""
    return mean([dict(row, heard=row["takes"] * (1 - row["never"])) for row in rows], column, "heard")


# The instruments that the fine ear finds hard, and why.
HARD = {
    "choir (aah)": "the singers are not of one pitch and begin slowly",
    "church organ": "mixture stops sound octaves and fifths above every note",
    "marimba": "overtones are no multiples of the fundamental, and high notes die away",
    "harp": "the same of the lowest and the highest strings, and all ring on",
    "steel guitar": "the low strings ring on"}


def without_hard(rows):
    return [row for row in rows if row["player"] not in HARD]


def hard_instruments(naturals):
    """Of each, how far its dry notes have faded when they are judged for the last time, for how long yinfft hears
    them after their end, and why it is hard."""
    lines = []
    for player, reason in HARD.items():
        mine = pick(naturals, ear="fine", player=player, room="dry")
        levels = "/".join(f"{min(one['late_db'] for one in pick(mine, octave=octave)):.0f}" for octave in OCTAVES
                          if pick(mine, octave=octave))
        ends = pick(naturals, ear="yinfft", player=player, room="dry")
        tails = "/".join(f"{mean(pick(ends, octave=octave), 'tail_ms'):.0f}" for octave in OCTAVES
                         if pick(ends, octave=octave))
        lines.append(f"- **{player}** ({levels} dB; {tails} ms): {reason}.")
    return "\n".join(lines)


def target_figures(naturals):
    """How many players hold the target in each octave, and which do not."""
    lines = []
    for octave in OCTAVES:
        cells = []
        for halves in (("tuned", "other"), ("second",)):
            mine = [one for one in pick(naturals, ear="fine", octave=octave) if one["half"] in halves]
            players = list(dict.fromkeys(one["player"] for one in mine))
            missed = [player for player in players if mean(pick(mine, player=player), "right") < 0.995
                      or mean(pick(mine, player=player), "wrong") > 0.003]
            names = ", ".join(f"{player.replace(' (TimGM6mb)', '')} {right_wrong(pick(mine, player=player))}"
                              for player in missed)
            cells.append(f"{len(players) - len(missed)}/{len(players)}" + (f"; {names}" if names else ""))
        lines.append(row(f"C{octave} to B{octave}", *cells))
    return "\n".join(lines)


def note_figures(notes):
    naturals = pick(notes, kind="natural")
    lines, sharps = [], []
    for ear, name in EARS.items():
        mine = pick(naturals, ear=ear)
        played = instruments(mine)
        dry = pick(played, room="dry")
        if ear == "yinfft":
            lines.append(by_octave(f"{name}: all, dry", dry))
        else:
            lines += [by_octave(f"{name}: tuned half, dry", pick(dry, half="tuned")),
                      by_octave("- other half, dry", pick(dry, half="other"))]
        if ear == "fine":
            lines.append(by_octave("- both without hard ones, dry", without_hard(dry)))
        lines += [by_octave("- all, with room", pick(played, room="room")),
                  by_octave("- synthetic voices", pick(mine, half="voice")),
                  by_octave("- sung vowels (festival)", pick(mine, half="sung")),
                  by_octave("- second soundfont", pick(mine, half="second"))]
        black = instruments(pick(notes, ear=ear, kind="sharp"))
        sharps.append(f"{name} {100 * mean(black, 'wrong'):.1f}")
    figures = {"naturals": "\n".join(lines), "sharps": ", ".join(sharps), "targets": target_figures(naturals),
               "hard": hard_instruments(naturals), "hard_count": len(HARD),
               "takes": f"{sum(row['takes'] for row in pick(notes, ear='plain')):,.0f}"}
    for ear in EARS:
        dry = instruments(pick(naturals, ear=ear, room="dry"))
        figures[f"first_{ear}"] = f"{heard_for_first(pick(dry, velocity=SOFT), 'latency_ms'):.0f}"
        for octave in OCTAVES:
            figures[f"natural_{ear}_{octave}"] = right_wrong(pick(dry, octave=octave))
    return figures


CONDITIONS = (
    ("nothing in the way", "none", 0), ("40 cents flat", "detuned_cents", -40), ("40 cents sharp", "detuned_cents", 40),
    ("20 dB less", "level_db", -20), ("40 dB less", "level_db", -40),
    ("40 dB less, `ZANTO_MIN_DECIBEL` -85", "level_db_sensitive", -40),
    ("white noise 10 dB below the note", "white_noise_db", 10), ("hum 10 dB below the note", "hum_db", 10),
    ("vibrato of a semitone", "vibrato_cents", 50), ("glide from a tone below, once there", "glide", 1),
    ("four times in a second", "repeated", 1), ("the note below ends as it begins", "legato_dry", 1),
    ("- with room", "legato_room", 1), ("the note a third below rings on", "ringing", 1),
    ("two notes at once", "chord_notes", 2), ("three notes", "chord_notes", 3), ("four notes", "chord_notes", 4),
    ("a note and its octave", "octave_together", 1))


def condition_figures(conditions):
    played = instruments(conditions)
    figures, lines = {}, []
    for name, condition, amount in CONDITIONS:
        same = pick(played, condition=condition, amount=amount)
        cells = {ear: right_wrong(pick(same, ear=ear)) for ear in EARS}
        lines.append(row(name, *cells.values()))
        figures |= {f"{condition}_{amount}_{ear}".replace("-", "minus"): cell for ear, cell in cells.items()}
    figures["conditions"] = "\n".join(lines)
    for ear in EARS:
        for kind in ("dry", "room"):
            figures[f"let_go_{kind}_{ear}"] = \
                f"{mean(pick(played, condition='legato_' + kind, ear=ear), 'tail_ms'):.0f}"
    return figures


def earned(rows):
    """awards / penalties for 39 changes of note / score, mean over performances."""
    return "/".join((f"{100 * mean(rows, 'awards', 'performances'):.1f}",
                       f"{mean(rows, 'penalties_per_39', 'performances'):.1f}",
                       f"{100 * mean(rows, 'score', 'performances'):.1f}"))


MANNERS = {"ahead": "ahead, detached", "beat": "on the beat, legato"}


def reaches(rows, manner):
    """Whether performances of a song earn what they should, in the mean."""
    if manner == "ahead":
        return mean(rows, "score", "performances") >= 0.975
    return mean(rows, "score", "performances") >= 0.95 and mean(rows, "penalties_per_39", "performances") <= 5


def songs_reached(rows, manner):
    """How many songs of these performances do, and the one that earns least."""
    by_song = {}
    for one in rows:
        by_song.setdefault(one["song"], []).append(one)
    lowest, score = min(((song, mean(played, "score", "performances")) for song, played in by_song.items()),
                        key=lambda one: one[1])
    reached = sum(reaches(played, manner) for played in by_song.values())
    return f"{reached}/{len(by_song)}; {lowest.replace('_', ' ')} {100 * score:.1f}"


def slow_to_end(played):
    """Instruments that cost more penalties than they should when they are played legato, but the hard ones."""
    legato = pick(without_hard(played), ear="fine", manner="beat")
    names = []
    for player in dict.fromkeys(one["player"] for one in legato):
        mine = pick(legato, player=player)
        cells = [f"C{octave} {mean(pick(mine, octave=octave), 'penalties_per_39', 'performances'):.1f}"
                 for octave in OCTAVES if pick(mine, octave=octave)
                 and mean(pick(mine, octave=octave), "penalties_per_39", "performances") > 5]
        if cells:
            names.append(f"{player} ({', '.join(cells)})")
    return "; ".join(names)


def song_figures(performances, timing):
    songs = [dict(row, performances=1) for row in performances]
    played = instruments(songs)
    lines, reached = [], []
    for ear, name in EARS.items():
        for manner, how in MANNERS.items():
            same = pick(played, ear=ear, manner=manner)
            lines.append(row(f"{name}: {how}", *(earned(pick(same, octave=octave)) for octave in OCTAVES)))
            if ear == "fine":
                for label, some in ((how, same), ("- without hard ones", without_hard(same))):
                    reached.append(row(label, *(songs_reached(pick(some, octave=octave), manner)
                                                for octave in OCTAVES)))
                lines.append(row("- without hard ones",
                                 *(earned(pick(without_hard(same), octave=octave)) for octave in OCTAVES)))
    figures = {"songs": "\n".join(lines), "reached": "\n".join(reached), "slow": slow_to_end(played),
               "performances": f"{len(pick(songs, ear='plain')):,}"}
    for ear in EARS:
        for octave in OCTAVES:
            for detached in (0, 1):
                for ahead in sorted({one["ahead_s"] for one in timing}):
                    figures[f"timing_{ear}_{octave}_{'d' if detached else 'f'}_{ahead:g}".replace("-", "minus")
                            .replace(".", "_")] = earned(pick(timing, ear=ear, octave=octave, detached=detached,
                                                               ahead_s=ahead))
    return figures


def table_figures(tables):
    figures = {}
    for one in tables:
        figures.setdefault(one["table"], {})[one["half"]] = {
            "all": right_wrong([dict(one, takes=1)]), "sharps": f"{100 * one['sharps_wrong']:.1f}",
            "songs": earned([dict(one, performances=1)])}
    return {"table": figures}


def pictures(notes, timing):
    """(name, content) of each."""
    naturals = pick(notes, kind="natural")
    players = list(dict.fromkeys(row["player"] for row in naturals if row["half"] != "second"))
    panels = []
    for ear in ("plain", "fine"):
        values = {}
        for player in players:
            for octave in OCTAVES:
                rows = pick(naturals, ear=ear, player=player, octave=octave)
                if rows:
                    values[player, octave] = (100 * mean(rows, "right"), 100 * mean(rows, "wrong"))
        panels.append((f"the {ear} ear", values))
    yield "hearing-heat-map.svg", charts.heat_map(
        "Right and wrong frames by player and octave, for both ears",
        "Percent of frames with the right note and with a wrong one, for every instrument and voice in the octaves from "
        "C2, C3, C4 and C5. Dark cells are bad. The plain ear is worst in the low octaves; the fine ear is nearly "
        "white everywhere. The figures are in notes.csv.", panels, players, OCTAVES)

    lines = []
    for style, ear in zip("abc", EARS):
        for detached in (1, 0):
            same = pick(timing, ear=ear, detached=detached)
            points = [(ahead, 100 * mean(pick(same, ahead_s=ahead), "score", "performances"))
                      for ahead in sorted({one["ahead_s"] for one in same})]
            lines.append((f"{EARS[ear].strip('`')}, {'detached' if detached else 'legato'}", style, bool(detached),
                          points))
    yield "hearing-timing.svg", charts.line_chart(
        "Score by how far ahead of the beat one plays",
        "Percent of the best score against seconds ahead of the beat, mean over four octaves, for the fine ear, the "
        "plain ear and yinfft, detached and legato. The figures are in timing.csv.", lines,
        "seconds ahead of the beat", "score, % of the best", (0, 100), 0.0)

    dry = instruments(pick(naturals, room="dry", velocity=SOFT))
    rows = [(player, tuple(heard_for_first(pick(dry, player=player, ear=ear), "latency_ms") for ear in EARS))
            for player in dict.fromkeys(row["player"] for row in dry)]
    yield "hearing-latency.svg", charts.dot_chart(
        "Time to the first right frame",
        "Milliseconds from the attack to the first frame with the right note, for the fine ear, the plain ear and "
        "yinfft, by instrument, played softly. The figures are in notes.csv.",
        rows, [name.strip("`") for name in EARS.values()], "milliseconds", 200)


def main(project, check):
    folder = project / "bench" / "results" / "hearing"
    tables = {path.stem: load(path) for path in folder.glob("*.csv")}
    figures = {**note_figures(tables["notes"]), **condition_figures(tables["conditions"]),
               **song_figures(tables["songs"], tables["timing"]),
               **table_figures(tables["tables"])}
    for ear in ("plain", "fine"):
        quiet = pick(tables["silence"], ear=ear, noise="white", level_db=-40, threshold_db=-65)[0]
        figures[f"white_40_{ear}"] = f"{quiet['notes_per_minute']:.0f}"
        figures[f"white_40_long_{ear}"] = f"{quiet['long_notes_per_minute']:.0f}"
    page = (project / "bench" / "hearing" / "hearing.md.in").read_text(encoding="utf-8").format(**figures)
    written = {project / "docs" / "hearing.md": page,
               **{project / "docs" / "images" / name: picture for name, picture in pictures(tables["notes"], tables["timing"])}}
    differ = [path for path, content in written.items()
              if not path.exists() or path.read_text(encoding="utf-8") != content]
    for path in differ:
        print(path, "is not what the figures make" if check else "is written")
        if not check:
            path.write_text(written[path], encoding="utf-8")
    return 1 if check and differ else 0


if __name__ == "__main__":
    if not 2 <= len(sys.argv) <= 3 or sys.argv[2:] not in ([], ["--check"]):
        sys.exit(__doc__)
    sys.exit(main(pathlib.Path(sys.argv[1]), sys.argv[2:] == ["--check"]))
