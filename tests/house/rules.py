"""House rules that one can count. Usage: rules.py PROJECT-FOLDER.

Looks at every file that git tracks (or would track): source files keep to 400 lines unless they are listed
here with the reason, every header says #pragma once, lines end in a bare line feed and without blanks, and
every file ends with a line break.
"""

import pathlib
import shutil
import subprocess
import sys

MOST_LINES = 400
LONGER_FOR_A_REASON = {}

SOURCES = {".cpp", ".h", ".py", ".sh"}
TEXTS = SOURCES | {".cmake", ".json"}


def project_files(project):
    if shutil.which("git"):
        listing = subprocess.run(["git", "-C", str(project), "ls-files", "-z", "--cached", "--others",
                                  "--exclude-standard"], capture_output=True, check=False)
        if listing.returncode == 0:
            return [project / name for name in listing.stdout.decode().split("\0") if name]
    # An unpacked archive has no history to ask, and not every machine has git.
    return [path for path in project.rglob("*") if path.is_file()
            and not {"build", ".git", "__pycache__"} & set(path.relative_to(project).parts)]


def complaints_about(path, name):
    content = path.read_bytes()
    text = content.decode("utf-8", errors="replace")
    lines = text.split("\n")
    if path.suffix in SOURCES and len(lines) - 1 > MOST_LINES and name not in LONGER_FOR_A_REASON:
        yield f"{name}: {len(lines) - 1} lines are more than {MOST_LINES}"
    if path.suffix == ".h" and "#pragma once" not in lines:
        yield f"{name}: no #pragma once"
    if "\r" in text:
        yield f"{name}: carriage returns"
    if any(line != line.rstrip() for line in lines):
        yield f"{name}: blanks at the end of a line"
    if content and not content.endswith(b"\n"):
        yield f"{name}: no line break at the end"


def main(project):
    files = [path for path in project_files(project)
             if path.is_file() and (path.suffix in TEXTS or path.name == "CMakeLists.txt")]
    if not files:
        return "no file was found: is this the project's folder?"
    complaints = [complaint for path in sorted(files)
                  for complaint in complaints_about(path, str(path.relative_to(project)))]
    print("\n".join(complaints))
    print(f"{len(files)} files looked at, {len(complaints)} complaints")
    return 1 if complaints else 0


if __name__ == "__main__":
    if len(sys.argv) != 2:
        sys.exit(__doc__)
    sys.exit(main(pathlib.Path(sys.argv[1])))
