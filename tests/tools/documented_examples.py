"""Runs the examples of a documentation page and compares what they print. Usage: documented_examples.py PAGE TOOLS.

In an empty folder, from the top of the page: a block "```text NAME" is written to a file of that name; in a block
"```console" every line "$ COMMAND" is run by bash with the folder TOOLS first on its path, and must print, on both
of its outputs, just the lines that follow it, and "$ echo $?" tells the status of the command before. A link to a
picture of the same name as a file in the folder must show a picture equal to that file.
"""

import pathlib
import re
import subprocess
import sys
import tempfile
import os


def commands(content):
    """(command, lines it is said to print) of each command of a console block."""
    for example in "\n".join(["", *content]).split("\n$ ")[1:]:
        command, *expected = example.split("\n")
        yield command, expected


def run_page(page, tools, folder):
    """(number of commands compared, list of complaints)."""
    environment = {"PATH": f"{tools}:{os.environ['PATH']}", "HOME": folder, "LC_ALL": "C.UTF-8"}
    compared, complaints, status = 0, [], 0
    text = page.read_text(encoding="utf-8")
    for opening, block in re.findall(r"^```(\w+.*)\n((?:.*\n)*?)```$", text, re.MULTILINE):
        content = block.splitlines()
        if opening.startswith("text "):
            target = pathlib.Path(folder, opening.split()[1])
            # \r shows a carriage return and a dot a blank at a line's end, where neither could be seen.
            written = "".join(line.replace("\\r", "\r").replace("\u00b7", " ") + "\n" for line in content)
            target.write_bytes(written.encode("utf-8"))
        if opening != "console":
            continue
        for command, expected in commands(content):
            if command == "echo $?":
                printed = [str(status)]
            else:
                result = subprocess.run(["bash", "-c", command], cwd=folder, env=environment, text=True,
                                        stdout=subprocess.PIPE, stderr=subprocess.STDOUT, check=False, timeout=100)
                status, printed = result.returncode, result.stdout.splitlines()
            compared += 1
            if printed != expected:
                complaints.append("\n".join([f"$ {command}", "prints", *printed, "and not", *expected, ""]))
    for link in re.findall(r"!\[[^]]*\]\(([^)]+)\)", text):
        made = pathlib.Path(folder, pathlib.Path(link).name)
        if made.exists() and made.read_bytes() != (page.parent / link).read_bytes():
            complaints.append(f"{link} is not what the page's commands draw")
    return compared, complaints


def main(page, tools):
    with tempfile.TemporaryDirectory() as folder:
        compared, complaints = run_page(pathlib.Path(page), tools, folder)
    print("\n".join(complaints))
    print(f"{compared} commands compared, {len(complaints)} complaints")
    return 1 if complaints or compared == 0 else 0


if __name__ == "__main__":
    if len(sys.argv) != 3:
        sys.exit(__doc__)
    sys.exit(main(sys.argv[1], sys.argv[2]))
