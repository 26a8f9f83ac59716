"""Prints what part of each room's lines was executed. Usage: coverage_table.py SUMMARY.

SUMMARY is what gcovr --json-summary wrote.
"""

import collections
import json
import pathlib
import sys


def room_of(name):
    """The room that a source belongs to, "platform/wt" or "game"; None for what belongs to none."""
    parts = pathlib.PurePath(name).parts
    if len(parts) < 2:
        return None
    return "/".join(parts[:2]) if parts[0] in ("platform", "tools") else parts[0]


def table(summary):
    """Lines of text: a row for each room, and one for all."""
    rooms = collections.defaultdict(lambda: [0, 0])
    for source in summary["files"]:
        for key in (room_of(source["filename"]), "all"):
            if key:
                rooms[key][0] += source["line_covered"]
                rooms[key][1] += source["line_total"]
    order = sorted(rooms, key=lambda room: (room == "all", room))
    yield f"{'room':<20} {'lines':>6} {'executed':>9} {'percent':>8}"
    for room in order:
        covered, total = rooms[room]
        if total:
            yield f"{room:<20} {total:>6} {covered:>9} {100 * covered / total:>8.1f}"


if __name__ == "__main__":
    if len(sys.argv) != 2:
        sys.exit(__doc__)
    print("\n".join(table(json.loads(pathlib.Path(sys.argv[1]).read_text(encoding="utf-8")))))
