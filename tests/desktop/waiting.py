"""Waiting for what can be seen, and saying what was not."""

import time

PATIENCE = 20  # seconds for what is sure to come: the machine may be busy


class Wrong(Exception):
    """Something is not as it should be; the text says what was seen."""


def comes(condition, patience=PATIENCE):
    """Looks again and again; whether the condition has come true in that time."""
    end = time.monotonic() + patience
    while True:
        seen = condition()
        if seen:
            return seen
        if time.monotonic() > end:
            return False
        time.sleep(0.001)


def wait_for(what, condition, patience=PATIENCE):
    """The same; fails when it has not."""
    seen = comes(condition, patience)
    if not seen:
        raise Wrong(f"waited {patience} s in vain for {what}")
    return seen
