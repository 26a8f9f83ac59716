"""Runs clang-tidy over one source, unless nothing that it would see has changed since it last found it clean.

Usage: tidy.py CLANG-TIDY BUILD-FOLDER SOURCE. The build folder holds compile_commands.json and, in tidy/, one
small file for each clean source: a digest of the preprocessed source, the configuration and the version.
"""

import hashlib
import json
import pathlib
import shlex
import subprocess
import sys


def compile_command(build, source):
    """(folder, words) of the command that compiles the source."""
    for entry in json.loads((build / "compile_commands.json").read_text()):
        if pathlib.Path(entry["directory"], entry["file"]).resolve() == source:
            return entry["directory"], shlex.split(entry["command"])
    sys.exit(f"{source} is not compiled in {build}")


def digest_of(tidy, build, source):
    """What a clean finding depends on, as a hexadecimal digest; None when the source does not preprocess."""
    folder, words = compile_command(build, source)
    output = words.index("-o")
    preprocess = words[:output] + ["-E", "-o", "-"] + words[output + 2:]
    preprocessed = subprocess.run(preprocess, cwd=folder, capture_output=True, check=False)
    if preprocessed.returncode != 0:
        return None
    version = subprocess.run([tidy, "--version"], capture_output=True, check=True).stdout
    configuration = subprocess.run([tidy, "--dump-config", str(source)], capture_output=True, check=True).stdout
    # Comments are gone from the preprocessed text, but a comment can switch a check off.
    parts = [version, configuration, preprocessed.stdout, source.read_bytes()]
    return hashlib.sha256(b"\0".join(hashlib.sha256(part).digest() for part in parts)).hexdigest()


def main(tidy, build, source):
    source = source.resolve()
    clean_file = build / "tidy" / hashlib.sha256(str(source).encode()).hexdigest()
    digest = digest_of(tidy, build, source)
    if digest and clean_file.exists() and clean_file.read_text() == digest:
        print("unchanged since it was found clean")
        return 0
    status = subprocess.run([tidy, "--quiet", "-p", str(build), str(source)], check=False).returncode
    if status == 0 and digest:
        clean_file.parent.mkdir(exist_ok=True)
        clean_file.write_text(digest)
    return status


if __name__ == "__main__":
    if len(sys.argv) != 4:
        sys.exit(__doc__)
    sys.exit(main(sys.argv[1], pathlib.Path(sys.argv[2]), pathlib.Path(sys.argv[3])))
