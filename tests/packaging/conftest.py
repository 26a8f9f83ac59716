"""What the tests of installing share."""

import os
import pathlib
import subprocess

import pytest

PROJECT = pathlib.Path(__file__).resolve().parents[2]
BUILD = pathlib.Path(os.environ["ZANTO_BUILD"])
TOOLS = ("zanto-song", "zanto-notes", "zanto-mic")
COMPONENT = "example.zanto.zanto"


def run(*command, **options):
    """The finished process, with all that it printed as text."""
    return subprocess.run([str(word) for word in command], stdout=subprocess.PIPE, stderr=subprocess.STDOUT,
                          text=True, check=False, **options)


@pytest.fixture(scope="session")
def root(tmp_path_factory):
    """A folder in which the game is installed below usr, as a package would be made of it."""
    folder = tmp_path_factory.mktemp("root")
    outcome = run("cmake", "--install", BUILD, "--prefix", "/usr", env={**os.environ, "DESTDIR": str(folder)})
    assert outcome.returncode == 0, outcome.stdout
    return folder
