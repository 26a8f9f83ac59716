"""What menus, software centres and readers of manual pages are told: valid, and true."""

import re
import subprocess

import pytest
from PIL import Image, ImageChops, ImageStat

from conftest import BUILD, COMPONENT, PROJECT, TOOLS, run

PACKAGING = PROJECT / "packaging"
PAGES = sorted((PACKAGING / "man").iterdir())
OPTION = re.compile(r"(?<![\w-])(--[a-z][a-z0-9-]+|-o)\b")


def manual(page):
    """A manual page as text without bold or underlined letters."""
    out = subprocess.run(["mandoc", "-T", "utf8", str(page)], capture_output=True, text=True, check=True).stdout
    return re.sub(".\b", "", out)


def section(text, name):
    """The lines of one section of a manual page."""
    found = re.search(rf"^{name}\n(.*?)^(?=\S)", text, re.MULTILINE | re.DOTALL)
    return found.group(1) if found else ""


def test_the_desktop_entry_and_the_description_for_software_centres_are_valid():
    outcome = run("desktop-file-validate", BUILD / "packaging/zanto.desktop")
    assert (outcome.returncode, outcome.stdout) == (0, "")
    outcome = run("appstreamcli", "validate", "--no-net", "--pedantic", "--no-color",
                  BUILD / f"packaging/{COMPONENT}.metainfo.xml")
    remarks = re.findall(r"^[EWIP]: .*", outcome.stdout, re.MULTILINE)
    # Nobody owns the domain "example"; who publishes the game sets another. AppStream before 1.0 knows no developer tag.
    assert [remark for remark in remarks if not re.search("cid-maybe-not-rdns|unknown-tag developer$", remark)] == []
    assert outcome.returncode == 0 and "Validation was successful" in outcome.stdout, outcome.stdout


def test_screenshots_are_pictures_that_are_there_in_the_size_they_claim():
    text = (BUILD / f"packaging/{COMPONENT}.metainfo.xml").read_text()
    shots = re.findall(r'width="(\d+)" height="(\d+)">\S*/screenshots/(\S+?)<', text)
    assert len(shots) == 4
    for width, height, name in shots:
        with Image.open(PROJECT / "tests/pictures/expected" / name) as picture:
            assert picture.size == (int(width), int(height))


def test_every_file_tells_the_same_version():
    version = re.search(r"project\(zanto VERSION (\S+)", (PROJECT / "CMakeLists.txt").read_text()).group(1)
    assert (PACKAGING / "debian/changelog").read_text().startswith(f"zanto ({version}-1) ")
    assert f'<release version="{version}"' in (BUILD / f"packaging/{COMPONENT}.metainfo.xml").read_text()
    assert re.search(r"^## (\S+)", (PROJECT / "CHANGELOG.md").read_text(), re.MULTILINE).group(1) == version
    for tool in TOOLS:
        assert run(BUILD / "tools" / tool, "--version").stdout == f"{tool} {version}\n"


@pytest.mark.parametrize("size", [16, 22, 24, 32, 48, 64, 128, 256, 512])
def test_icons_show_the_drawing_in_their_size(size, tmp_path):
    drawn = tmp_path / "drawn.png"
    made = run("rsvg-convert", f"--width={size}", f"--height={size}", f"--output={drawn}",
               PACKAGING / "icons/zanto.svg")
    assert made.returncode == 0, made.stdout
    with Image.open(PACKAGING / f"icons/zanto-{size}.png") as icon, Image.open(drawn) as expected:
        assert icon.size == (size, size)
        difference = ImageChops.difference(icon.convert("RGBA"), expected.convert("RGBA"))
        assert max(ImageStat.Stat(difference).mean) < 1.0  # of 255: another version's rounding


@pytest.mark.parametrize("page", PAGES, ids=lambda page: page.name)
def test_manual_pages_are_sound(page):
    remarks = [line for line in run("mandoc", "-T", "lint", "-W", "style", page).stdout.splitlines()
               # Whether this machine has the pages of others installed.
               if "referenced manual not found" not in line and "mandoc.db" not in line]
    assert remarks == []
    assert run("groff", "-mandoc", "-ww", "-z", "-T", "utf8", page).stdout == ""


def test_every_program_has_a_manual_page_that_refers_to_pages_that_there_are():
    assert {page.name for page in PAGES} == {"zanto.6", *(f"{tool}.1" for tool in TOOLS)}
    names = {page.name for page in PAGES}
    for page in PAGES:
        references = re.findall(r"^\.Xr (\S+) (\d)", page.read_text(), re.MULTILINE)
        assert references and {f"{name}.{number}" for name, number in references} <= names
        assert section(manual(page), "NAME").strip().startswith(f"{page.stem} – ")


@pytest.mark.parametrize("tool", TOOLS)
def test_manual_pages_tell_all_options_and_no_others(tool):
    text = manual(PACKAGING / f"man/{tool}.1")
    told = set(OPTION.findall(section(text, "SYNOPSIS") + section(text, "DESCRIPTION")))
    known = set(OPTION.findall(run(BUILD / "tools" / tool, "--help").stdout)) | {"--help", "--version"}
    assert told == known


def test_the_licences_that_are_installed_are_those_of_the_project():
    installed = (PACKAGING / "copyright").read_text()
    plain = re.sub(r"^ \.?", "", installed, flags=re.MULTILINE)
    for name in ("LICENSE", "data/Fonts/Vera-LICENSE.txt"):
        for paragraph in (PROJECT / name).read_text().replace("\n .\n", "\n\n").split("\n\n"):
            if re.match(r" ?(Permission|THE|The above|Except|This License) ", paragraph):
                assert " ".join(paragraph.split()) in " ".join(plain.split())
