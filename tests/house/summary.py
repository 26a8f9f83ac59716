"""Prints the closing summary of ./check from the result files that CTest left in a folder.

Usage: summary.py FOLDER SECONDS. Reads FOLDER/*.xml (JUnit, one for each part) and FOLDER/failed (the names of parts
that failed, one on each line; missing when none did). Status 0 only when every part succeeded, no test failed or was
left out, and every part ran at least one.
"""

import collections
import pathlib
import sys
import xml.etree.ElementTree as ElementTree


def outcome_of(case):
    if case.find("failure") is not None or case.get("status") == "fail":
        return "failed"
    return "not run" if case.find("skipped") is not None or case.get("status") != "run" else "passed"


def main(folder, seconds):
    failed = folder / "failed"
    problems = [f"part failed: {name}" for name in failed.read_text().splitlines()] if failed.exists() else []
    total = collections.Counter()
    print()
    for path in sorted(folder.glob("*.xml"), key=lambda path: path.stat().st_mtime):
        cases = [(outcome_of(case), case.get("name")) for case in ElementTree.parse(path).iter("testcase")]
        counts = collections.Counter(outcome for outcome, _ in cases)
        total += counts
        problems += [f"{outcome} in {path.stem}: {name}" for outcome, name in cases if outcome != "passed"]
        if not cases:
            problems.append(f"no test ran in {path.stem}")
        print(f"{path.stem:12} {counts['passed']:5} passed {counts['failed']:4} failed {counts['not run']:4} not run")
    if not total["passed"]:
        problems.append("no test passed at all")
    print("\n".join(problems + [
        f"{total['passed']} tests passed, {total['failed']} failed, {total['not run']} not run, "
        f"in {seconds // 60} min {seconds % 60} s: {'FAILED' if problems else 'all is well'}"]))
    return 1 if problems else 0


if __name__ == "__main__":
    sys.exit(main(pathlib.Path(sys.argv[1]), int(sys.argv[2])) if len(sys.argv) == 3 else __doc__)
