"""The table of executed lines: sums by room."""

import json
import sys

from conftest import PROJECT, run

SUMMARY = {"files": [
    {"filename": "game/Song.cpp", "line_covered": 30, "line_total": 40},
    {"filename": "game/Score.cpp", "line_covered": 10, "line_total": 10},
    {"filename": "platform/wt/Fade.h", "line_covered": 1, "line_total": 3},
    {"filename": "platform/tmath/Vec2.h", "line_covered": 0, "line_total": 0},
]}


def test_lines_are_summed_up_by_room_and_altogether(tmp_path):
    (tmp_path / "summary.json").write_text(json.dumps(SUMMARY))
    shown = run(sys.executable, PROJECT / "tests/coverage_table.py", tmp_path / "summary.json")
    rows = [line.split() for line in shown.stdout.splitlines()]
    assert rows == [["room", "lines", "executed", "percent"], ["game", "50", "40", "80.0"],
                    ["platform/wt", "3", "1", "33.3"], ["all", "53", "41", "77.4"]]
