"""The shell completes names, options and values of all programs."""

import os
import re
import shlex
import subprocess

import pytest

from conftest import BUILD, TOOLS, run

OPTION = re.compile(r"(?<![\w-])(--[a-z][a-z0-9-]+|-o)\b")
COMMANDS = [("zanto-song", "check"), ("zanto-song", "render"), ("zanto-song", "perform"), ("zanto-song", "listen"),
            ("zanto-song", "import"), ("zanto-song", "practise"), ("zanto-song", "show"), ("zanto-mic", "list"),
            ("zanto-mic", "level"), ("zanto-mic", "check"), ("zanto-mic", "record"), ("zanto-notes",)]

# What bash does when the key is pressed at the end of a line.
PRESS = """
source /usr/share/bash-completion/bash_completion
source "$1"; shift
COMP_WORDS=("$@") COMP_CWORD=$(($# - 1)) COMP_LINE="$*" COMP_POINT=${#COMP_LINE} COMP_TYPE=9 COMP_KEY=9
function=$(complete -p "$1" | sed 's/.*-F \\([^ ]*\\) .*/\\1/')
"$function" "$1" "${COMP_WORDS[COMP_CWORD]}" "${COMP_WORDS[COMP_CWORD - 1]}"
printf '%s\\n' "${COMPREPLY[@]}"
"""


@pytest.fixture
def complete(root, tmp_path):
    """complete(WORD...): what is offered for the last word; `folder` is where, and whose home, it is asked."""
    script = root / "usr/share/bash-completion/completions/zanto"
    moved = tmp_path / "completion"
    # The script asks for songs where it was configured to be installed.
    moved.write_text(re.sub(r'"/\S+/share/zanto"', shlex.quote(f"{root}/usr/share/zanto"),
                            script.read_text()))

    def offered(*words):
        outcome = subprocess.run(
            ["bash", "-c", PRESS, "bash", moved, *words], capture_output=True, text=True, check=False, cwd=tmp_path,
            env={"PATH": f"{root}/usr/bin:{os.environ['PATH']}", "HOME": str(tmp_path), "LC_ALL": "C.UTF-8"})
        assert (outcome.returncode, outcome.stderr) == (0, "")
        return set(outcome.stdout.split("\n")) - {""}

    return offered


def test_every_program_has_its_completion_under_its_own_name(root):
    folder = root / "usr/share/bash-completion/completions"
    for name in ("zanto", *TOOLS):
        shown = run("bash", "-c", f"source {shlex.quote(str(folder / name))} && complete -p {name}")
        assert shown.returncode == 0, shown.stdout


def test_songs_of_the_game_and_of_the_player_are_offered_and_the_listing_is_not(complete, tmp_path):
    own = tmp_path / ".local/share/zanto/Songs"
    own.mkdir(parents=True)
    for name in ("twist of mine.txt", "tw$(touch expanded).txt"):
        (own / name).touch()
    assert complete("zanto", "tw") == {"twist of mine.txt", "tw$(touch expanded).txt", "twinkle_twinkle.txt"}
    assert not (tmp_path / "expanded").exists()
    assert "listing.txt" not in complete("zanto", "")


@pytest.mark.parametrize("words", COMMANDS, ids=" ".join)
def test_every_option_of_every_command_is_offered(complete, words):
    tool, *command = words
    assert not command or command[0] in complete(tool, "")
    told = run(BUILD / "tools" / tool, *command, "--help").stdout.split("Try it:")[0]  # which may show others
    assert complete(*words, "-") == set(OPTION.findall(told)) | {"--help"}


def test_instruments_are_offered(complete):
    assert "b-flat-clarinet" in complete("zanto-notes", "--instrument", "b")
    for name in complete("zanto-song", "render", "song.txt", "--instrument", ""):
        refused = run(BUILD / "tools/zanto-song", "render", "none.txt", "-o", "none.wav", "--instrument", name)
        assert "--instrument" not in refused.stdout


@pytest.mark.parametrize("line, offered", [
    ("zanto-mic check --ear ", {"plain", "fine"}), ("zanto-song perform --ear ", {"plain", "fine"}),
    ("zanto-song render song.txt --instrument f", {"flute"}), ("zanto-song check so", {"song.txt", "songs"}),
    ("zanto-mic check --data so", {"songs"}), ("zanto-song render song.txt --gap ", set()),
    ("zanto twinkle_twinkle.txt ", set()), ("zanto --ear fine --spectrum tw", {"twinkle_twinkle.txt"}),
    ("zanto --ear ", {"plain", "fine"}), ("zanto -", {"--ear", "--input", "--spectrum", "--help"})])
def test_values_are_offered_where_they_belong(complete, tmp_path, line, offered):
    (tmp_path / "song.txt").touch()
    (tmp_path / "songs").mkdir()
    assert complete(*line.split(" ")) == offered
