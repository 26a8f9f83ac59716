"""`cmake --install` puts everything where it belongs, and what it puts there works."""

import os
import re
import stat

from conftest import COMPONENT, PROJECT, TOOLS, run

ICON_SIZES = (16, 22, 24, 32, 48, 64, 128, 256, 512)


def files_below(folder):
    return {str(path.relative_to(folder)) for path in folder.rglob("*") if not path.is_dir() or path.is_symlink()}


def expected_files():
    data = PROJECT / "data"
    share = "usr/share/"
    yield from ("usr/games/zanto", "usr/libexec/zanto/zanto", *(f"usr/games/{tool}" for tool in TOOLS))
    for path in ["notes.txt", "Images/title.png", "Fonts/Vera.ttf", "Fonts/Vera-LICENSE.txt"]:
        yield f"{share}games/zanto/{path}"
    yield from (f"{share}games/zanto/Songs/{path.name}" for path in (data / "Songs").iterdir())
    yield f"{share}applications/zanto.desktop"
    yield f"{share}metainfo/{COMPONENT}.metainfo.xml"
    yield f"{share}icons/hicolor/scalable/apps/zanto.svg"
    yield from (f"{share}icons/hicolor/{size}x{size}/apps/zanto.png" for size in ICON_SIZES)
    yield from (f"{share}bash-completion/completions/{name}" for name in ("zanto", *TOOLS))
    yield f"{share}man/man6/zanto.6.gz"
    yield from (f"{share}man/man1/{tool}.1.gz" for tool in TOOLS)


def test_everything_is_installed_and_nothing_else(root):
    documents = "usr/share/doc/zanto/"
    files = files_below(root)
    assert {name for name in files if not name.startswith(documents)} == set(expected_files())
    told = {name.removeprefix(documents) for name in files if name.startswith(documents)}
    assert {"copyright", "changelog.gz", "song-format.md", "zanto-song.md"} <= told


def test_programs_can_be_run_and_nothing_can_be_written_by_others(root):
    programs = {"usr/games/zanto", "usr/libexec/zanto/zanto", *(f"usr/games/{tool}" for tool in TOOLS)}
    for name in files_below(root):
        mode = stat.S_IMODE(os.stat(root / name).st_mode)
        assert mode == (0o755 if name in programs else 0o644), name


def test_the_data_is_what_the_game_is_developed_with(root):
    installed = root / "usr/share/games/zanto"
    for path in installed.rglob("*"):
        if path.is_file():
            assert path.read_bytes() == (PROJECT / "data" / path.relative_to(installed)).read_bytes(), path.name


def test_pages_that_installed_pages_link_to_are_installed_too(root):
    folder = root / "usr/share/doc/zanto"
    links = {(page.name, target) for page in folder.glob("*.md")
             for target in re.findall(r"\]\((?!https?:)([^)#]+)", page.read_text(encoding="utf-8"))}
    assert ("zanto-song.md", "song-format.md") in links
    assert [link for link in sorted(links)
            if (PROJECT / "docs" / link[1]).exists() and not (folder / link[1]).exists()] == []


def test_installed_companions_find_the_installed_note_table(root, tmp_path):
    song, sound = root / "usr/share/games/zanto/Songs/first_notes.txt", tmp_path / "song.wav"
    assert run(root / "usr/games/zanto-song", "render", song, "-o", sound, cwd=tmp_path).returncode == 0
    graded = run(root / "usr/games/zanto-song", "perform", song, sound, cwd=tmp_path)
    assert graded.returncode == 0 and " 0 penalties" in graded.stdout, graded.stdout
    (root / "usr/share/games/zanto/notes.txt").rename(tmp_path / "notes.kept")
    try:
        lost = run(root / "usr/games/zanto-song", "perform", song, sound, cwd=tmp_path)
    finally:
        (tmp_path / "notes.kept").rename(root / "usr/share/games/zanto/notes.txt")
    assert lost.returncode == 1 and "notes.txt" in lost.stdout, lost.stdout
