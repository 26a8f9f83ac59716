"""The stage: a private display, a private microphone, a running game and somebody who plays it.

Everything here starts real programs, waits for conditions instead of fixed times, and ends what it started,
whatever happens. Its users are the demo (`stage.demo`) and the end-to-end tests.
"""
