"""Checks which room includes which, against the table below. Usage: rooms.py PROJECT-FOLDER.

Every quoted include in a room names the room it comes from, and only rooms of the table may be named.
"""

import pathlib
import re
import sys

ROOMS = ["platform/tmath", "platform/timage", "platform/ffont", "platform/wt", "audio", "analysis", "scene",
         "game", "ui", "app", "tools"]

# Room -> what it may include of ours: a whole room, or single files of one.
MAY_INCLUDE = {
    "platform/tmath": [],
    "platform/timage": [],
    "platform/ffont": [],
    "platform/wt": ["platform/tmath", "platform/timage", "platform/ffont"],
    "audio": [],
    "analysis": ["audio/RingBuffer.h"],
    "scene": ["platform/tmath", "platform/ffont"],
    "game": ["analysis/Notes.h", "analysis/NoteState.h", "scene"],
    "ui": ["platform/wt", "platform/tmath", "platform/timage"],
    "app": ["platform/tmath", "platform/timage", "platform/ffont", "platform/wt", "audio", "analysis",
            "scene", "game", "ui"],
    "tools": ["audio", "analysis", "game"],
}

INCLUDE = re.compile(r'^\s*#\s*include\s*"([^"]+)"')


def room_of(include):
    """The room that an include names, None for no room."""
    return next((room for room in ROOMS if include.startswith(room + "/")), None)


def allowed(room, include):
    return room_of(include) == room or any(
        include == entry or include.startswith(entry + "/") for entry in MAY_INCLUDE[room])


def check(project):
    """(number of includes looked at, list of complaints)."""
    looked_at = 0
    complaints = []
    for room in ROOMS:
        for source in sorted(path for ending in ("*.h", "*.cpp") for path in (project / room).rglob(ending)):
            for number, line in enumerate(source.read_text(encoding="utf-8").splitlines(), start=1):
                match = INCLUDE.match(line)
                if not match:
                    continue
                looked_at += 1
                include = match.group(1)
                where = f"{source.relative_to(project)}:{number}"
                if room_of(include) is None:
                    complaints.append(f'{where}: "{include}" names no room')
                elif not allowed(room, include):
                    complaints.append(f'{where}: {room} may not include "{include}"')
                elif not (project / include).is_file():
                    complaints.append(f'{where}: there is no "{include}"')
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
