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
    yield from ("usr/bin/zanto", "usr/libexec/zanto/zanto", *(f"usr/bin/{tool}" for tool in TOOLS))
    yield "usr/libexec/zanto/zanto-no-microphone"
    for path in ["notes.txt", "Fonts/Vera.ttf", "Fonts/Vera-LICENSE.txt",
                 *(f"Images/{name}.png" for name in ("title", "icon-16", "icon-48", "icon-128"))]:
        yield f"{share}zanto/{path}"
    yield from (f"{share}zanto/Songs/{path.name}" for path in (data / "Songs").iterdir())
    yield f"{share}applications/zanto.desktop"
    yield f"{share}metainfo/{COMPONENT}.metainfo.xml"
    yield f"{share}icons/hicolor/scalable/apps/zanto.svg"
    yield from (f"{share}icons/hicolor/{size}x{size}/apps/zanto.png" for size in ICON_SIZES)
    yield from (f"{share}bash-completion/completions/{name}" for name in ("zanto", *TOOLS))
    yield f"{share}man/man6/zanto.6.gz"
    yield from (f"{share}man/man1/{tool}.1.gz" for tool in TOOLS)


def test_everything_is_installed_and_nothing_else_and_nothing_can_be_written_by_others(root):
    documents = "usr/share/doc/zanto/"
    files = files_below(root)
    assert {name for name in files if not name.startswith(documents)} == set(expected_files())
    told = {name.removeprefix(documents) for name in files if name.startswith(documents)}
    assert {"copyright", "changelog.gz", "song-format.md", "zanto-song.md"} <= told
    for name in files:
        program = name.startswith(("usr/bin/", "usr/libexec/"))
        assert stat.S_IMODE(os.stat(root / name).st_mode) == (0o755 if program else 0o644), name
        if name.startswith("usr/share/zanto/"):
            developed_with = PROJECT / "data" / name.removeprefix("usr/share/zanto/")
            assert (root / name).read_bytes() == developed_with.read_bytes(), name


def test_pages_that_installed_pages_link_to_are_installed_too(root):
    folder = root / "usr/share/doc/zanto"
    links = {(page.name, target) for page in folder.glob("*.md")
             for target in re.findall(r"\]\((?!https?:)([^)#]+)", page.read_text(encoding="utf-8"))}
    assert ("zanto-song.md", "song-format.md") in links
    assert [link for link in sorted(links)
            if (PROJECT / "docs" / link[1]).exists() and not (folder / link[1]).exists()] == []


def test_installed_companions_find_the_installed_note_table(root, tmp_path):
    song, sound = root / "usr/share/zanto/Songs/first_notes.txt", tmp_path / "song.wav"
    assert run(root / "usr/bin/zanto-song", "render", song, "-o", sound, cwd=tmp_path).returncode == 0
    graded = run(root / "usr/bin/zanto-song", "perform", song, sound, cwd=tmp_path)
    assert graded.returncode == 0 and " 0 penalties" in graded.stdout, graded.stdout
    (root / "usr/share/zanto/notes.txt").rename(tmp_path / "notes.kept")
    try:
        lost = run(root / "usr/bin/zanto-song", "perform", song, sound, cwd=tmp_path)
    finally:
        (tmp_path / "notes.kept").rename(root / "usr/share/zanto/notes.txt")
    assert lost.returncode == 1 and "notes.txt" in lost.stdout, lost.stdout
