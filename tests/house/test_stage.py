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


@pytest.mark.parametrize("size", [14, 18, 24, 27, 33])
@pytest.mark.parametrize("number", [0, 1234567890, -20, -9876, 100, 6666, 808080, -35, 71714])
def test_numbers_are_read_exactly(number, size):
    assert reader.read_number_after(picture_of(f"Score:{number:5.0f}", size), "Score:") == number


@pytest.mark.parametrize("colour", [(255, 0, 0), (217, 255, 217), (0, 255, 0), (255, 191, 191)])
def test_tinted_numbers_are_read(colour):
    assert reader.read_number_after(picture_of("Score:  340", 27, colour), "Score:") == 340


@pytest.mark.parametrize("text", ["Score:", "Score: x", "Sure: 100", ""])
def test_what_is_no_number_gives_none(text):
    assert reader.read_number_after(picture_of(text, 27), "Score:") is None


@pytest.mark.parametrize("colour, background", [("white", (60, 100, 190)), ((20, 20, 40), (240, 240, 255))])
def test_text_is_found_light_and_dark_and_where_it_stands(colour, background):
    line = reader.find_text(picture_of("New Game", 20, colour, background), "New Game")
    assert line is not None
    assert line.box.left == pytest.approx(12, abs=3)
    assert line.box.height == pytest.approx(15, abs=3)
    assert reader.find_text(picture_of("New Game", 20, colour, background), "Exit") is None


def test_the_region_limits_what_is_read_and_boxes_are_in_the_whole_picture():
    picture = picture_of("Score: 12", 27)
    assert reader.find_text(picture, "Score: 12", (0, 60, 640, 80)) is None
    box = reader.find_text(picture, "Score: 12", (5, 10, 640, 80)).box
    assert (box.left, box.top) == (reader.find_text(picture, "Score: 12").box.left,
                                   reader.find_text(picture, "Score: 12").box.top)


def test_a_melody_is_worth_its_slots():
    song = Song("song.txt", "120 4\nC\n\nE2\n\nG4\n")
    assert (song.notes, song.worth, song.is_melody) == (3, 700, True)
    assert song.seconds == 2 + (6 + 4) * 0.5


@pytest.mark.parametrize("text", ["1 1\nC E\n", "1 1\nC2\nE\n"])
def test_notes_that_sound_together_are_no_melody(text):
    assert not Song("song.txt", text).is_melody


def test_a_file_without_a_header_is_no_song():
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


def summary_of(folder, **parts):
    for name, content in parts.items():
        (folder / f"{name}.xml").write_text(f'<testsuite name="x">{content}</testsuite>')
    return subprocess.run(["/usr/bin/env", "python3", PROJECT / "tests/house/summary.py", folder, "61"],
                          capture_output=True, text=True, check=False)


PASSED = '<testcase name="good" status="run"/>'
FAILED = '<testcase name="bad" status="fail"><failure message=""/></testcase>'
SKIPPED = '<testcase name="left out" status="notrun"><skipped message=""/></testcase>'


def test_the_summary_is_good_only_when_all_passed(tmp_path):
    outcome = summary_of(tmp_path, unit=PASSED * 3)
    assert outcome.returncode == 0
    assert "3 tests passed, 0 failed, 0 not run, in 1 min 1 s: all is well" in outcome.stdout


@pytest.mark.parametrize("content, complaint", [(PASSED + FAILED, "failed in unit: bad"),
                                                (PASSED + SKIPPED, "not run in unit: left out"),
                                                ("", "no test ran in unit")])
def test_the_summary_names_what_is_not_well(tmp_path, content, complaint):
    outcome = summary_of(tmp_path, unit=content, other=PASSED)
    assert outcome.returncode == 1
    assert complaint in outcome.stdout


def test_the_summary_fails_without_any_test_and_for_a_failed_part(tmp_path):
    assert summary_of(tmp_path).returncode == 1
    (tmp_path / "failed").write_text("build\n")
    outcome = summary_of(tmp_path, unit=PASSED)
    assert outcome.returncode == 1
    assert "part failed: build" in outcome.stdout


def shell(script):
    return subprocess.run(["bash", "-uc", script], cwd=PROJECT, capture_output=True, text=True, check=False)


def test_a_player_is_not_asked_to_install_what_only_tests_need():
    outcome = shell(". tools/stage/packages.sh; packages_of build demo")
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
