"""Tests of tests/e2e/ that are skipped with the Windows program, each with the reason; a plugin for pytest."""

import pytest

PRELOADED = "puts a library of Linux in front of the game's own"
SIGNALS = "Windows has no signals"

LEFT_OUT = {
    "test_no_display_is_reported_and_ends_with_1": "Windows always has a display",
    "test_the_probe_tells_what_the_game_would_find": "the probe is for ./play",
    "test_sound_that_cannot_be_opened_ends_with_254_and_the_reason": PRELOADED,
    "test_a_display_that_dies_during_a_song_ends_the_game_with_1_at_once": "Windows always has a display",
    "test_signals_end_the_game_at_once_at_24_moments_of_the_start_and_in_a_song": SIGNALS,
    "test_an_ordinary_user_plays_with_a_data_folder_that_may_only_be_read": "changes to another user of Linux",
}


def pytest_collection_modifyitems(items):
    for item in items:
        reason = LEFT_OUT.get(item.originalname)
        if reason:
            item.add_marker(pytest.mark.skip(reason=reason))
