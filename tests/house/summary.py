"""Prints the closing summary of ./check from the result files that CTest left in a folder.

Usage: summary.py FOLDER SECONDS. Reads FOLDER/*.xml (JUnit, one per part) and FOLDER/failed (names of parts
that did not succeed, one per line, missing when there are none). Status 0 only when every part succeeded,
no test failed or was left out, and every part ran at least one.
"""

import pathlib
import sys
import xml.etree.ElementTree as ElementTree


def read_part(path):
    """The names of a part's tests by outcome: {"passed": [...], "failed": [...], "skipped": [...]}."""
    outcomes = {"passed": [], "failed": [], "skipped": []}
    for case in ElementTree.parse(path).getroot().iter("testcase"):
        status = case.get("status")
        if case.find("failure") is not None or status == "fail":
            outcome = "failed"
        elif case.find("skipped") is not None or status != "run":
            outcome = "skipped"
        else:
            outcome = "passed"
        outcomes[outcome].append(case.get("name"))
    return outcomes


def main(folder, seconds):
    folder = pathlib.Path(folder)
    failed_list = folder / "failed"
    failed_parts = failed_list.read_text().splitlines() if failed_list.exists() else []
    problems = [f"part failed: {name}" for name in failed_parts]
    total = {"passed": 0, "failed": 0, "skipped": 0}

    print()
    for path in sorted(folder.glob("*.xml"), key=lambda path: path.stat().st_mtime):
        outcomes = read_part(path)
        for outcome, names in outcomes.items():
            total[outcome] += len(names)
        problems += [f"failed in {path.stem}: {name}" for name in outcomes["failed"]]
        problems += [f"not run in {path.stem}: {name}" for name in outcomes["skipped"]]
        if not any(outcomes.values()):
            problems.append(f"no test ran in {path.stem}")
        print(f"{path.stem:12} {len(outcomes['passed']):5} passed {len(outcomes['failed']):4} failed "
              f"{len(outcomes['skipped']):4} not run")
    if total["passed"] == 0:
        problems.append("no test passed at all")
    for problem in problems:
        print(problem)
    print(f"{total['passed']} tests passed, {total['failed']} failed, {total['skipped']} not run, "
          f"in {seconds // 60} min {seconds % 60} s: {'FAILED' if problems else 'all is well'}")
    return 1 if problems else 0


if __name__ == "__main__":
    if len(sys.argv) != 3:
        sys.exit(__doc__)
    sys.exit(main(sys.argv[1], int(sys.argv[2])))
