"""Checks which room includes which, against the table below. Usage: rooms.py PROJECT-FOLDER.

Every quoted include in a room names the room it comes from, and only rooms of the table may be named.
"""

import pathlib
import re
import sys

# Room -> what it may include of ours: a whole room, or single files of one.
MAY_INCLUDE = {
    "platform/settings": [],
    "platform/tmath": [],
    "platform/timage": [],
    "platform/ffont": [],
    "platform/wt": ["platform/tmath", "platform/timage", "platform/ffont"],
    "audio": ["platform/settings"],
    "analysis": ["platform/settings", "audio/RingBuffer.h"],
    "scene": ["platform/tmath", "platform/ffont"],
    "game": ["analysis/Notes.h", "analysis/NoteState.h", "scene"],
    "ui": ["platform/wt", "platform/tmath", "platform/timage"],
    "app": ["platform/settings", "platform/tmath", "platform/timage", "platform/ffont", "platform/wt", "audio", "analysis",
            "scene", "game", "ui"],
    # The companions cut texts into the same characters as the game's typeface.
    "tools": ["platform/settings", "audio", "analysis", "game", "platform/ffont/Utf8.h"],
}

INCLUDE = re.compile(r'^\s*#\s*include\s*"([^"]+)"')


def complaint(project, room, include):
    """What is wrong with an include, None for nothing."""
    if not any(include.startswith(other + "/") for other in MAY_INCLUDE):
        return f'"{include}" names no room'
    if not any(include == entry or include.startswith(entry + "/") for entry in (room, *MAY_INCLUDE[room])):
        return f'{room} may not include "{include}"'
    return None if (project / include).is_file() else f'there is no "{include}"'


def check(project):
    """(number of includes looked at, list of complaints)."""
    looked_at = 0
    complaints = []
    for room in MAY_INCLUDE:
        for source in sorted(path for ending in ("*.h", "*.cpp") for path in (project / room).rglob(ending)):
            for number, line in enumerate(source.read_text(encoding="utf-8").splitlines(), start=1):
                if match := INCLUDE.match(line):
                    looked_at += 1
                    found = complaint(project, room, match.group(1))
                    complaints += [f"{source.relative_to(project)}:{number}: {found}"] if found else []
    return looked_at, complaints


if __name__ == "__main__":
    if len(sys.argv) != 2:
        sys.exit(__doc__)
    count, found = check(pathlib.Path(sys.argv[1]))
    print("\n".join(found))
    if count == 0:
        sys.exit("no include was found: is this the project's folder?")
    print(f"{count} includes looked at, {len(found)} against the table")
    sys.exit(1 if found else 0)
