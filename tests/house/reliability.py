"""Every test that docs/reliability.md names exists. Usage: reliability.py PROJECT-FOLDER."""

import pathlib
import re
import sys


def found(pattern, *paths):
    return {"".join(match) for path in paths for match in re.findall(pattern, path.read_text(), re.MULTILINE)}


def main(project):
    tests = project / "tests"
    existing = found(r"^TEST(?:_F|_P)?\((\w+)(,) (\w+)\)", *tests.rglob("*.cpp"))
    existing = {name.replace(",", ".") for name in existing}
    existing |= {f"fuzz.{name}" for name in found(r"^fuzzer\((\w+)", tests / "fuzz/CMakeLists.txt")}
    for path in (tests / "e2e").glob("*_*.py"):
        existing |= {f"e2e.{path.stem.split('_', 1)[1]}.{name}" for name in found(r"^def test_(\w+)", path)}
    named = found(r"`((?:e2e\.)?\w+\.\w+)`", project / "docs/reliability.md")
    named -= {"Suite.Name", "e2e.file.name", "fuzz.name"}  # they explain how tests are named
    missing = sorted(named - existing)
    print(f"{len(named)} tests named, {len(missing)} of them missing", *missing, sep="\n")
    return 1 if missing or not named else 0


if __name__ == "__main__":
    sys.exit(main(pathlib.Path(sys.argv[1])) if len(sys.argv) == 2 else __doc__)
