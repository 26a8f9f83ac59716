"""Half an hour of play in real time: song after song through the virtual microphone.

ZANTO_SOAK_MINUTES changes how long; what it measured is printed (pytest -s).
"""

import os
import pathlib
import time

from conftest import SONG_TEXT, close, open_files, play_one, preload, resident
from stage.songs import Song

MINUTES = float(os.environ.get("ZANTO_SOAK_MINUTES", "30"))
MOST_GROWTH = 1 << 20  # bytes, after the first minute
FIRST_SECONDS = 60
LEAST_EARNED = 0.8     # of what the song is worth; one note may get lost on a busy machine
LONGEST_FRAME = 100_000  # microseconds of processor time; the first thousand frames may compile shaders


def processor_seconds(process_id):
    fields = pathlib.Path(f"/proc/{process_id}/stat").read_text().rsplit(")", 1)[1].split()
    return (int(fields[11]) + int(fields[12])) / os.sysconf("SC_CLK_TCK")


def test_half_an_hour_of_songs_leaves_memory_speed_and_scores_as_they_were(play, mic, data, perform, tmp_path):
    (data / "Songs" / "soak.txt").write_text(SONG_TEXT)
    (data / "Songs" / "listing.txt").write_text("Soak soak.txt\n")
    worth = Song("soak.txt", SONG_TEXT).worth
    sound = perform(data / "Songs" / "soak.txt", "--gap", "0.18")
    frames = tmp_path / "frames"
    player = play(folder=data, extra={"LD_PRELOAD": preload("watch_frames"), "FRAME_TIMES": str(frames)})
    started = time.monotonic()
    earned = []
    sizes = []
    shared = []
    files = []
    loads = []
    while time.monotonic() - started < MINUTES * 60 or len(earned) < 4:
        before = processor_seconds(player.game.id), time.monotonic()
        if time.monotonic() - started < FIRST_SECONDS:
            settled = len(earned)
        player.press("New Game")
        earned.append(play_one(player, mic, sound).earned)
        loads.append((processor_seconds(player.game.id) - before[0]) / (time.monotonic() - before[1]))
        sizes.append(resident(player.game.id, "RssAnon"))
        shared.append(resident(player.game.id, "RssShmem"))
        files.append(open_files(player.game.id))
    longest = [int(line) for line in frames.read_text().splitlines()]
    print(f"{len(earned)} songs, worth {worth}: earned {min(earned)} to {max(earned)}; own memory, in KiB, after each: "
          f"{[size >> 10 for size in sizes]}; processor share {loads[0]:.2f} for the first, {loads[-1]:.2f} for the "
          f"last; longest frame of every thousand, in microseconds of processor time: {longest}")
    assert min(earned) >= LEAST_EARNED * worth, earned
    for amounts in (sizes, shared):
        assert amounts[-1] - amounts[settled] < MOST_GROWTH, amounts
    assert files[-1] == files[0]
    assert max(longest[1:]) < LONGEST_FRAME
    assert loads[-1] < 1.5 * loads[0] + 0.05
    assert close(player) == 0
