"""The game under valgrind: no error and no definite leak that is ours."""

import time
import xml.etree.ElementTree as ElementTree

from conftest import DATA

# Where a fault is looked for in a stack: below these, which do what their caller asks.
BYSTANDERS = ("vgpreload", "libc.so", "libstdc++", "libm.so", "ld-linux")


def culprit(stack):
    """The object file of the function that a fault is down to; "" for one in a library that is gone by now."""
    for frame in stack.iter("frame"):
        name = frame.findtext("obj") or ""
        if not any(bystander in name for bystander in BYSTANDERS):
            return name
    return ""


def own_faults(report):
    """(kind, functions from the innermost) of all faults that are down to the game's own code."""
    faults = []
    for error in ElementTree.parse(report).getroot().iter("error"):
        kind = error.findtext("kind")
        stack = error.find("stack")
        if kind not in ("Leak_StillReachable", "Leak_PossiblyLost") and culprit(stack).endswith("/zanto"):
            faults.append((kind, [frame.findtext("fn") for frame in stack.iter("frame")]))
    return faults


def test_the_memory_of_a_game_with_a_song_and_all_its_panels(play, mic, perform, tmp_path):
    report = tmp_path / "valgrind.xml"
    song = sorted((DATA / "Songs").glob("[a-k]*.txt"))[0]
    player = play(prefix=["valgrind", "--xml=yes", f"--xml-file={report}", "--leak-check=full",
                          "--show-leak-kinds=definite", "--num-callers=40", "--error-limit=no"])
    player.wait_to_see("New Game", 600)
    player.open_chooser()
    player.hold("Play")
    performance = mic.play(perform(song))
    player.let_go_at(performance.begins_at)
    time.sleep(10)
    player.view.key(player.window, "f")
    player.wait_to_see("Frequency", 120)
    time.sleep(5)
    player.view.key(player.window, "r")
    time.sleep(5)
    performance.stop()
    player.view.press_close_button(player.window)
    assert player.game.wait(300) == 0
    errors = ElementTree.parse(report).getroot()
    assert errors.find("status") is not None, "valgrind wrote no report"
    assert own_faults(report) == []
