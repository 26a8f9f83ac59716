"""The game among other programs: a sound server that comes back, window managers, what the terminal sees."""

import os
import pathlib
import subprocess
import time

import pytest
from Xlib import Xatom

from conftest import BUILD, close, moves
from stage import processes
from stage.screen import Screen

TICKS_PER_SECOND = os.sysconf("SC_CLK_TCK")
LOST = "No sound arrives from the microphone. The game tries to open it anew."
BACK = "The microphone is heard again."
SHORT_TEXT = "1 1\n" + "C2\n\n" * 8 + "\n" * 12
HALF_OF_SHORT = 800


@pytest.fixture
def window_manager(display):
    with subprocess.Popen(["openbox"], env={**os.environ, **display.environment}, stdout=subprocess.DEVNULL,
                          stderr=subprocess.DEVNULL) as manager, Screen(display.name) as screen:
        processes.wait_until(screen.is_managed, 20, "the window manager")
        yield manager
        manager.terminate()


def processor_seconds(game):
    fields = pathlib.Path(f"/proc/{game.id}/stat").read_text().rsplit(") ", 1)[1].split()
    return (int(fields[11]) + int(fields[12])) / TICKS_PER_SECOND


def earns_half(player, mic, perform, song):
    performance = mic.play(perform(song, "--ahead", "0.08"))
    player.type_at("r", performance.begins_at)
    processes.wait_until(lambda: (player.score() or 0) >= HALF_OF_SHORT, performance.begins_at + 15 - time.monotonic(),
                         "half of the notes' score")


def told_of_sound(player):
    return [line for line in player.game.output("err") if line in (LOST, BACK)]


@pytest.fixture
def short_song(data):
    song = data / "Songs" / "short.txt"
    song.write_text(SHORT_TEXT)
    return song


@pytest.mark.parametrize("lose, regain", [("kill_server", "restart_server"), ("remove_source", "add_source")])
def test_a_sound_server_or_source_that_went_and_comes_again_is_heard(play, mic, perform, data, short_song, lose, regain):
    player = play("short.txt", folder=data)
    getattr(mic, lose)()
    player.game.wait_for_line(LOST)
    getattr(mic, regain)()
    player.game.wait_for_line(BACK)
    earns_half(player, mic, perform, short_song)
    assert told_of_sound(player) == [LOST, BACK]
    assert close(player) == 0


def test_another_default_source_is_heard_from_then_on(play, mic, perform, data, short_song):
    player = play("short.txt", folder=data)
    player.wait_for_score()
    mic.add_source("other")
    earns_half(player, mic, perform, short_song)
    assert told_of_sound(player) == []
    assert close(player) == 0


def test_a_monitor_is_told_from_a_microphone(mic):
    listed = subprocess.run([BUILD / "tools" / "zanto-mic", "list"], env={**os.environ, **mic.environment},
                            stdout=subprocess.PIPE, text=True, check=True).stdout
    assert "The game records from a monitor" in listed


@pytest.mark.parametrize("seconds", [0.5, 3])  # before the game notices that nothing arrives, and after it
def test_a_dead_sound_server_holds_up_neither_the_song_nor_the_end(play_long, mic, seconds):
    player = play_long()
    mic.kill_server()
    time.sleep(seconds)
    assert moves(player)
    begun = time.monotonic()
    assert close(player) == 0
    assert time.monotonic() - begun < 1.0 * processes.PATIENCE


def test_minimised_it_rests_and_comes_back_with_its_song(play_long, window_manager):
    assert window_manager.poll() is None
    player = play_long()
    player.view.minimise(player.window)
    time.sleep(0.5)
    before = processor_seconds(player.game)
    time.sleep(5)
    assert processor_seconds(player.game) - before <= 0.02 * 5
    player.view.restore(player.window)
    assert player.wait_for_score() == 0
    assert moves(player)
    assert close(player) == 0


def test_a_desktop_is_told_whose_window_it_is(play):
    player = play()
    player.wait_to_see("New Game")  # GLUT shows a window before the game can say anything of it
    window, atom = player.window, player.view.display.intern_atom
    assert window.get_wm_class() == ("zanto", "zanto")
    assert list(window.get_full_property(atom("_NET_WM_PID"), Xatom.CARDINAL).value) == [player.game.id]
    hints = window.get_wm_normal_hints()
    assert (hints.min_width, hints.min_height) == (320, 240)
    assert (hints.min_aspect.num, hints.min_aspect.denum) == (4, 3)
    icon = list(window.get_full_property(atom("_NET_WM_ICON"), Xatom.CARDINAL).value)
    sizes = []
    while icon:
        width, height = icon[:2]
        sizes.append((width, height))
        assert any(pixel >> 24 == 255 for pixel in icon[2:2 + width * height])
        del icon[:2 + width * height]
    assert sizes == [(16, 16), (48, 48), (128, 128)]
    assert close(player) == 0


def test_what_sound_systems_say_is_shown_on_request_only(launch, no_microphone):
    configuration = pathlib.Path(no_microphone["ALSA_CONFIG_PATH"])
    configuration.write_text('pcm.!default { type plug slave.pcm "nobody" }')

    def errors(log):
        game = launch(no_microphone, extra={"ZANTO_AUDIO_LOG": log})
        assert game.wait() == 254
        return game.output("err")
    quiet = errors("0")
    assert quiet == ["Open stream failed:Invalid device", "Cannot start recording."]
    assert len(errors("1")) > len(quiet)

    def listing(log):
        return subprocess.run([BUILD / "tools" / "zanto-mic", "list"], stderr=subprocess.PIPE, text=True, check=False,
                              env={**os.environ, **no_microphone, "ZANTO_AUDIO_LOG": log}).stderr
    assert len(listing("1")) > len(listing("0"))
