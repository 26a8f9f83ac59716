"""The companions with a real sound server."""

import os
import subprocess

from conftest import BUILD, SONG_TEXT

from stage import processes

TOOLS = BUILD / "tools"


def run(*command, folder):
    """What a program prints; it must succeed."""
    return subprocess.run(command, cwd=folder, check=True, stdout=subprocess.PIPE, text=True,
                          timeout=60 * processes.PATIENCE).stdout


def test_what_is_played_into_the_microphone_is_recorded_and_written_down(mic, tmp_path):
    (tmp_path / "song.txt").write_text(SONG_TEXT)
    run(TOOLS / "zanto-song", "render", "song.txt", "-o", "song.wav", folder=tmp_path)
    performance = mic.play(tmp_path / "song.wav")
    with subprocess.Popen([TOOLS / "zanto-mic", "record", "take.wav", "--silence", "3"], cwd=tmp_path, text=True,
                          stdout=subprocess.PIPE, env={**os.environ, **mic.environment}) as recorder:
        told, _ = recorder.communicate(timeout=60 * processes.PATIENCE)
    performance.stop()
    assert recorder.returncode == 0
    assert told.startswith("3 2 1 play\n") and " s recorded, " in told
    run(TOOLS / "zanto-song", "listen", "take.wav", "-o", "heard.txt", folder=tmp_path)
    assert (tmp_path / "heard.txt").read_text() == SONG_TEXT
