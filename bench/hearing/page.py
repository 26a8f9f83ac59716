"""Writes docs/hearing.md and its pictures from the figures in bench/results/hearing.

Usage: page.py PROJECT-FOLDER [--check]. With --check nothing is written: the status is 1 if a file differs.

The page is hearing.md.in with figures in place of {names}; a name that has no figure is an error.
"""

import csv
import pathlib
import sys

import charts

GAME_EARS = {"plain": "the game"}
EARS = [*GAME_EARS, "yinfft"]
OCTAVES = (3, 4, 5)


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
    return f"{100 * mean(rows, 'right'):.1f} / {100 * mean(rows, 'wrong'):.1f}"


def by_octave(rows):
    """right / wrong of all octaves and of each, for {name[all]} and {name[3]} to {name[5]}."""
    return {"all": right_wrong(rows), **{octave: right_wrong(pick(rows, octave=octave)) for octave in OCTAVES}}


def heard_for_first(rows, column):
    """A mean over those notes that were heard at all."""
    return mean([dict(row, heard=row["takes"] * (1 - row["never"])) for row in rows], column, "heard")


def note_figures(notes):
    naturals = [row for row in notes if row["kind"] == "natural" and row["half"] != "voice"]
    figures = {}
    for ear in EARS:
        mine = pick(naturals, ear=ear)
        figures[ear] = {"dry": by_octave(pick(mine, room="dry")), "room": by_octave(pick(mine, room="room"))}
    dry = pick(naturals, ear="plain", room="dry")
    for half in ("tuned", "other"):
        figures[half] = by_octave(pick(dry, half=half))
    sharps = [row for row in pick(notes, ear="plain", kind="sharp", room="dry") if row["half"] != "voice"]
    figures |= {
        "takes": f"{sum(row['takes'] for row in pick(notes, ear='plain')):,.0f}",
        "latency": f"{heard_for_first(dry, 'latency_ms'):.0f}", "tail": f"{mean(dry, 'tail_ms'):.0f}",
        "never": f"{100 * mean(dry, 'never'):.1f}", "sharps": f"{100 * mean(sharps, 'wrong'):.1f}",
    }
    return figures


def condition_figures(conditions):
    """{hard[detuned_cents][+40]} and so on; the peer's under {hard_yinfft...}."""
    figures = {"hard": {}, "hard_yinfft": {}}
    for row in conditions:
        same = pick(conditions, ear=row["ear"], condition=row["condition"], amount=row["amount"])
        group = figures["hard" if row["ear"] == "plain" else "hard_yinfft"]
        group.setdefault(row["condition"], {})[f"{row['amount']:+g}"] = right_wrong(same)
    return figures


def earned(rows):
    """awards / penalties for 39 changes of note / score, mean over performances."""
    count = len(rows)
    awards = sum(row["awards"] / row["notes"] for row in rows) / count
    penalties = sum(row["penalties"] * 39 / (row["notes"] - 1) for row in rows) / count
    score = sum(row["score"] / row["best_score"] for row in rows) / count
    return awards, penalties, score


def show_earned(awards, penalties, score):
    return f"{100 * awards:.1f} / {penalties:.1f} / {100 * score:.1f}"


def song_figures(songs, timing):
    instruments = [row for row in songs if row["half"] != "voice"]
    melodies = pick(instruments, melody=1)
    figures = {"performances": f"{len(songs) // 2}"}
    for name, ahead in (("ahead", 0.08), ("on_beat", 0.0)):
        figures[name] = {octave: show_earned(*earned(pick(melodies, octave=octave, ahead_s=ahead)))
                         for octave in OCTAVES}
    top = pick(melodies, octave=5, ahead_s=0.08)
    each = {song: earned(pick(top, song=song)) for song in {row["song"] for row in top}}
    fewest, most = min(each, key=lambda song: each[song][0]), max(each, key=lambda song: each[song][1])
    figures["fewest_awards"] = f"{100 * each[fewest][0]:.1f} % ({fewest})"
    figures["most_penalties"] = f"{each[most][1]:.1f} ({most})"
    figures["top"] = {player: show_earned(*earned(pick(top, player=player)))
                      for player in {row["player"] for row in top}}
    figures["timing"] = {
        f"{row['octave']:g}{'d' if row['detached'] else 'f'}{row['ahead_s']:g}":
        show_earned(row["awards"], row["penalties_per_39"], row["score"]) for row in timing}
    return figures


def table_figures(tables, best_maps, best_songs):
    figures = {"table": {}, "best": {}, "best_song": {}}
    for row in tables:
        figures["table"].setdefault(row["table"], {})[row["half"]] = {
            "all": f"{100 * row['right']:.1f} / {100 * row['wrong']:.1f}",
            "top": f"{100 * row['top_right']:.1f} / {100 * row['top_wrong']:.1f}",
            "sharps": f"{100 * row['sharps_wrong']:.1f}",
            "songs": show_earned(row["awards"], row["penalties_per_39"], row["score"])}
    for row in best_maps:
        figures["best"][f"{row['half']} {row['octave'] if row['octave'] == 'all' else 'top'} {row['wrong_weight']:g}"] = \
            f"{100 * row['right']:.1f} / {100 * row['wrong']:.1f}"
    for row in best_songs:
        weight = row["wrong_weight"]
        same = pick(best_songs, wrong_weight=weight, organ=row["organ"])
        name = f"{weight if weight == 'shipped' else format(weight, 'g')} {'all' if row['organ'] else 'no organ'}"
        figures["best_song"][name] = show_earned(*(
            sum(one[column] for one in same) / len(same) for column in ("awards", "penalties_per_39", "score")))
    return figures


def pictures(notes, timing):
    """(name, content) of each."""
    naturals = pick(notes, kind="natural")
    players = list(dict.fromkeys(row["player"] for row in naturals))
    panels = []
    for ear in GAME_EARS:
        values = {}
        for player in players:
            for octave in OCTAVES:
                rows = pick(naturals, ear=ear, player=player, octave=octave)
                if rows:
                    values[player, octave] = (100 * mean(rows, "right"), 100 * mean(rows, "wrong"))
        panels.append((GAME_EARS[ear], values))
    yield "hearing-heat-map.svg", charts.heat_map(
        "Right and wrong frames by player and octave",
        "Percent of frames with the right note and with a wrong one, for 28 instruments and ten voices in the octaves "
        "from C3, C4 and C5. Dark cells are bad. The game is nearly faultless from C5 up and worst below C4. "
        "The figures are in notes.csv.", panels, players)

    lines = [(f"C{octave} to B{octave}, {'let go early' if detached else 'full length'}", style, bool(detached),
              [(row["ahead_s"], 100 * row["score"])
               for row in sorted(pick(timing, ear="plain", octave=octave, detached=detached),
                                 key=lambda row: row["ahead_s"])])
             for octave, style in ((5, "a"), (4, "b"), (3, "c")) for detached in (1, 0)]
    yield "hearing-timing.svg", charts.line_chart(
        "Score by how far ahead of the beat one plays",
        "Percent of the best score against seconds ahead of the beat. Scores are highest 0.04 to 0.16 seconds ahead, fall "
        "on the beat for notes that are not let go early, and drop below half at a quarter of a second behind. "
        "The figures are in timing.csv.", lines,
        "seconds ahead of the beat", "score, % of the best", (0, 100), 0.0)

    instruments = [row for row in pick(naturals, ear="plain", room="dry") if row["half"] != "voice"]
    rows = []
    for player in dict.fromkeys(row["player"] for row in instruments):
        mine = pick(instruments, player=player)
        rows.append((player, (heard_for_first(mine, "latency_ms"), mean(mine, "tail_ms"))))
    yield "hearing-latency.svg", charts.dot_chart(
        "How late a note is heard, and how long after its end",
        "Milliseconds from the attack to the first frame with the right note, and from the end of the note to the last, "
        "for 28 instruments played dry. The figures are in notes.csv.",
        rows, ("first heard after the attack", "still heard after the end"), "milliseconds", 500)


def main(project, check):
    folder = project / "bench" / "results" / "hearing"
    tables = {path.stem: load(path) for path in folder.glob("*.csv")}
    quiet = pick(tables["silence"], ear="plain", noise="white", level_db=-40, threshold_db=-65)[0]
    figures = {"white_40": f"{quiet['notes_per_minute']:.0f}", **note_figures(tables["notes"]), **condition_figures(tables["conditions"]),
               **song_figures(tables["songs"], tables["timing"]),
               **table_figures(tables["tables"], tables["best-maps"], tables["best-maps-songs"])}
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
