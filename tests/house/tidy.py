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
    """(folder, compiler, options) of the compilation of the source, without a precompiled header: clang cannot
    read another compiler's."""
    for entry in json.loads((build / "compile_commands.json").read_text()):
        if pathlib.Path(entry["directory"], entry["file"]).resolve() == source:
            words = shlex.split(entry["command"])
            options = words[1:words.index("-o")]
            for place, word in enumerate(options[:-1]):
                if word == "-include" and options[place + 1].endswith("cmake_pch.hxx"):
                    options[place:place + 2] = []
                    break
            return entry["directory"], words[0], options
    sys.exit(f"{source} is not compiled in {build}")


def digest_of(tidy, build, source):
    """What a clean finding depends on, as a hexadecimal digest; None when the source does not preprocess."""
    folder, compiler, options = compile_command(build, source)
    preprocess = [compiler, *options, "-E", "-o", "-", str(source)]
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
    folder, _, options = compile_command(build, source)
    status = subprocess.run([tidy, "--quiet", str(source), "--", *options], cwd=folder, check=False).returncode
    if status == 0 and digest:
        clean_file.parent.mkdir(exist_ok=True)
        clean_file.write_text(digest)
    return status


if __name__ == "__main__":
    if len(sys.argv) != 4:
        sys.exit(__doc__)
    sys.exit(main(sys.argv[1], pathlib.Path(sys.argv[2]), pathlib.Path(sys.argv[3])))
