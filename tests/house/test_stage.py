"""The stage's own parts that need neither a display nor a microphone."""

import pathlib
import subprocess

import pytest
from PIL import Image, ImageDraw, ImageFont

from stage import reader
from stage.songs import Listing, ScoreBook, Song

PROJECT = pathlib.Path(__file__).resolve().parents[2]


def picture_of(text, size, colour="white", background="black"):
    picture = Image.new("RGB", (640, 80), background)
    font = ImageFont.truetype(str(reader.FACE), size)
    ImageDraw.Draw(picture).text((10, 20), text, fill=colour, font=font)
    return picture


@pytest.mark.parametrize("text, size, colour, number", [
    *((f"Score:{number:5.0f}", size, "white", number) for size in [14, 18, 24, 27, 33]
      for number in [0, 1234567890, -20, -9876, 100, 6666, 808080, -35, 71714]),
    *(("Score:  340", 27, colour, 340) for colour in [(255, 0, 0), (217, 255, 217), (0, 255, 0), (255, 191, 191)]),
    *((text, 27, "white", None) for text in ["Score:", "Score: x", "Sure: 100", ""])])
def test_numbers_of_any_tint_are_read_exactly_and_other_text_is_none(text, size, colour, number):
    assert reader.read_number_after(picture_of(text, size, colour), "Score:") == number


@pytest.mark.parametrize("colour, background", [("white", (60, 100, 190)), ((20, 20, 40), (240, 240, 255))])
def test_text_is_found_light_and_dark_and_where_it_stands(colour, background):
    picture = picture_of("New Game", 20, colour, background)
    line = reader.find_text(picture, "New Game")
    assert (line.box.left, line.box.height) == (pytest.approx(12, abs=3), pytest.approx(15, abs=3))
    assert reader.find_text(picture, "Exit") is None
    # A region limits what is read; boxes are in the whole picture.
    assert reader.find_text(picture, "New Game", (0, 60, 640, 80)) is None
    box = reader.find_text(picture, "New Game", (5, 10, 640, 80)).box
    assert (box.left, box.top) == (line.box.left, line.box.top)


def test_a_melody_is_worth_its_slots_and_notes_that_sound_together_are_none():
    song = Song("song.txt", "120 4\nC\n\nE2\n\nG4\n")
    assert (song.notes, song.worth, song.is_melody, song.seconds) == (3, 700, True, 2 + (6 + 4) * 0.5)
    assert not Song("song.txt", "1 1\nC E\n").is_melody and not Song("song.txt", "1 1\nC2\nE\n").is_melody
    with pytest.raises(ValueError):
        Song("song.txt", "C\nE\n")


def test_a_listing_pairs_names_and_files(tmp_path):
    path = tmp_path / "listing.txt"
    path.write_text("Scale scale.txt\nOde\node.txt odd\n")
    assert Listing(path).name_of("ode.txt") == "Ode"
    assert Listing(path).name_of("odd") is None
    assert Listing(path).first_file() == "scale.txt"


def test_awards_and_penalties_are_told_apart_also_when_they_come_together():
    book = ScoreBook()
    for score in (0, 100, None, 100, 380, 360, 420, 340):
        book.saw(score)
    # +100, then +300 with -20, -20, +100 with two penalties, four penalties
    assert (book.earned, book.penalties, book.awards) == (500, 8, 3)
    assert book.score == 340


PASSED = '<testcase name="good" status="run"/>'
FAILED = '<testcase name="bad" status="fail"><failure message=""/></testcase>'
SKIPPED = '<testcase name="left out" status="notrun"><skipped message=""/></testcase>'


@pytest.mark.parametrize("parts, failed, status, told", [
    ({"unit": PASSED * 3}, "", 0, "3 tests passed, 0 failed, 0 not run, in 1 min 1 s: all is well"),
    ({"unit": PASSED + FAILED, "other": PASSED}, "", 1, "failed in unit: bad"),
    ({"unit": PASSED + SKIPPED, "other": PASSED}, "", 1, "not run in unit: left out"),
    ({"unit": "", "other": PASSED}, "", 1, "no test ran in unit"),
    ({}, "", 1, "no test passed at all"),
    ({"unit": PASSED}, "build\n", 1, "part failed: build")])
def test_the_summary_is_good_only_when_all_passed_and_names_what_is_not(tmp_path, parts, failed, status, told):
    for name, content in parts.items():
        (tmp_path / f"{name}.xml").write_text(f'<testsuite name="x">{content}</testsuite>')
    if failed:
        (tmp_path / "failed").write_text(failed)
    outcome = subprocess.run(["/usr/bin/env", "python3", PROJECT / "tests/house/summary.py", tmp_path, "61"],
                             capture_output=True, text=True, check=False)
    assert outcome.returncode == status and told in outcome.stdout


def shell(script):
    return subprocess.run(["bash", "-uc", script], cwd=PROJECT, capture_output=True, text=True, check=False)


FAKE_APT = """\
#!/bin/sh
# Stands in for apt-get: writes down what it is asked, tells of $REMOVED in a simulation, and installs by a file's name.
echo "$*" >>asked
case " $* " in
*" --simulate "*)
    echo "Inst new-one (1.0 Debian:12 [amd64])"
    echo "Inst old-one [1.0] (1.1 Debian:12 [amd64])"
    [ -z "$REMOVED" ] || echo "Remv $REMOVED [1.0]"
    ;;
*" install "*) for name in "$@"; do touch "installed/$name"; done ;;
esac
"""
FAKE_DPKG_QUERY = """\
#!/bin/sh
for name in "$@"; do :; done
[ -e "installed/$name" ] && echo installed
"""


@pytest.fixture
def system(tmp_path):
    """system(script, installed...): the outcome of a script on a system of fakes, and what apt-get was asked."""
    for name, text in {"apt-get": FAKE_APT, "dpkg-query": FAKE_DPKG_QUERY, "id": "#!/bin/sh\necho 0\n"}.items():
        (tmp_path / name).write_text(text)
        (tmp_path / name).chmod(0o755)
    (tmp_path / "installed").mkdir()
    (tmp_path / "list.txt").write_text("demo  xvfb  display\ndemo  pulseaudio|pipewire-pulse+wireplumber  microphone\n")

    def outcome_of(script, *installed, removed=""):
        for name in installed:
            (tmp_path / "installed" / name).touch()
        outcome = subprocess.run(
            ["bash", "-uc", f". {PROJECT}/tools/stage/packages.sh; package_list=list.txt; {script}"], cwd=tmp_path,
            env={"PATH": f"{tmp_path}:/usr/bin:/bin", "REMOVED": removed}, capture_output=True, text=True, check=False)
        asked = tmp_path / "asked"
        return outcome, asked.read_text().splitlines() if asked.exists() else []
    return outcome_of


@pytest.mark.parametrize("installed, chosen", [
    ([], ["pulseaudio"]), (["pulseaudio"], ["pulseaudio"]), (["pulseaudio", "pipewire-pulse"], ["pulseaudio"]),
    (["pipewire-pulse"], ["pipewire-pulse", "wireplumber"])])
def test_of_two_sound_servers_the_one_that_is_installed_is_taken(system, installed, chosen):
    outcome, _ = system("packages_of demo", *installed)
    assert outcome.stdout.split() == ["xvfb", *chosen]


@pytest.mark.parametrize("removed, plan", [
    ("", "to be installed: new-one\n  to be upgraded: old-one\n"), ("pipewire-alsa", "to be removed: pipewire-alsa\n")])
def test_the_plan_is_told_before_anything_is_installed_and_apt_may_remove_nothing(system, removed, plan):
    outcome, asked = system("install_packages demo", removed=removed)
    assert outcome.returncode == (1 if removed else 0), outcome.stderr
    assert plan in outcome.stdout
    assert ("would be removed, so nothing is installed" in outcome.stderr) == bool(removed)
    if not removed:
        last = asked.pop()
        assert last.endswith(" xvfb pulseaudio") and {"--no-remove", "--yes"} < set(last.split())
    assert all("--yes" not in words for words in asked) and "--simulate" in asked[-1]


def test_nothing_is_asked_of_apt_where_all_is_there(system):
    assert system("install_packages demo", "xvfb", "pipewire-pulse", "wireplumber")[1] == []


def test_a_player_is_not_asked_to_install_what_only_tests_need():
    outcome = shell(". tools/stage/packages.sh; packages_of build play demo")
    names = outcome.stdout.split()
    assert "freeglut3-dev" in names and "xvfb" in names
    assert not {"libgtest-dev", "clang-tidy", "valgrind", "python3-pytest"} & set(names)


def test_without_apt_the_needs_are_listed_and_the_status_says_so(tmp_path):
    for tool in ("awk", "id"):
        (tmp_path / tool).symlink_to(f"/usr/bin/{tool}")
    outcome = shell(f'. tools/stage/packages.sh; PATH={tmp_path}; install_packages build; echo "status $?"')
    assert "status 1" in outcome.stdout
    assert "freeglut3-dev" in outcome.stderr and "the window, its events" in outcome.stderr
    assert "xvfb" not in outcome.stderr


def test_an_unknown_option_is_refused_by_play_and_check():
    assert shell("./play --loud").returncode == 2
    assert shell("./check --loud").returncode == 2
    assert "./play --demo [SONG]" in shell("./play --help").stdout
    assert "./check --long" in shell("./check --help").stdout
