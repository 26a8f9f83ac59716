"""Every test that docs/reliability.md names exists. Usage: reliability.py PROJECT-FOLDER."""

import pathlib
import re
import sys


def existing_tests(project):
    for path in (project / "tests").rglob("*.cpp"):
        for suite, name in re.findall(r"^TEST(?:_F|_P)?\((\w+), (\w+)\)", path.read_text(), re.MULTILINE):
            yield f"{suite}.{name}"
    for path in (project / "tests" / "e2e").glob("*_*.py"):
        group = re.sub("^(test|long)_", "", path.stem)
        for name in re.findall(r"^def test_(\w+)", path.read_text(), re.MULTILINE):
            yield f"e2e.{group}.{name}"
    fuzzers = (project / "tests" / "fuzz" / "CMakeLists.txt").read_text()
    for name in re.findall(r"^fuzzer\((\w+)", fuzzers, re.MULTILINE):
        yield f"fuzz.{name}"


def main(project):
    page = (project / "docs" / "reliability.md").read_text()
    named = set(re.findall(r"`((?:e2e\.)?\w+\.\w+)`", page))
    # Placeholders that explain the names.
    named -= {"Suite.Name", "e2e.file.name", "fuzz.name"}
    if not named:
        return "no test is named: has the page changed its form?"
    missing = sorted(named - set(existing_tests(project)))
    print(f"{len(named)} tests named, {len(missing)} of them missing")
    print("\n".join(missing))
    return 1 if missing else 0


if __name__ == "__main__":
    if len(sys.argv) != 2:
        sys.exit(__doc__)
    sys.exit(main(pathlib.Path(sys.argv[1])))
