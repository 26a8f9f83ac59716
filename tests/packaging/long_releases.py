"""The package made from the sources, checked, installed and played on clean systems of each release of Debian."""

import os
import subprocess
import tempfile

import pytest

from clean_system import CleanSystem
from conftest import PROJECT
from long_package import check_with_lintian, ended_whatever_happens, play_own_song  # noqa: F401

RELEASES = ("bookworm", "trixie")
SOURCES = "/srv/zanto"


def give_sources(system):
    """What git knows of, as it is now."""
    names = subprocess.run(["git", "ls-files", "-z"], cwd=PROJECT, stdout=subprocess.PIPE, check=True).stdout
    packed = subprocess.run(["tar", "--create", "--null", "--files-from=-"], cwd=PROJECT, input=names,
                            stdout=subprocess.PIPE, check=True).stdout
    system.path(SOURCES).mkdir()
    subprocess.run(["tar", "--extract", "--directory", system.path(SOURCES)], input=packed, check=True)


@pytest.mark.skipif(os.geteuid() != 0, reason="making a clean system takes root")
@pytest.mark.parametrize("release", RELEASES)
def test_the_package_is_made_checked_installed_and_played(release, monkeypatch):
    with CleanSystem(release) as system:
        give_sources(system)
        system.run(f"{SOURCES}/packaging/make-deb")
        (package,) = system.path(f"{SOURCES}/build/package").glob("zanto_*.deb")
        inside = f"{SOURCES}/build/package/{package.name}"
        system.run("apt-get", "install", "--yes", "--no-install-recommends", "lintian")
        check_with_lintian(inside, system.run)
        system.run("apt-get", "install", "--yes", inside)
        monkeypatch.setattr(tempfile, "tempdir", str(system.path("/tmp")))
        play_own_song(system)
