"""Waits until programs have taken what a hand did: on a busy machine the picture also stands still while they wait for a core.

usage: window_rest.py [--whole] PROCESS...    waits until the first threads of the processes sleep, which take what a hand does, or
all their threads, in three looks; five seconds at most"""

import os
import sys
import time
from pathlib import Path

LOOKS, BETWEEN = 3, 0.04  # seconds
LONGEST = 5.0  # for work that goes on and on


def sleeps(process, whole=True):
    """No thread of the process, or not its first one, runs, or waits for a core or the disk. One that is gone sleeps."""
    try:
        for thread in os.listdir(f"/proc/{process}/task") if whole else [process]:
            state = Path(f"/proc/{process}/task/{thread}/stat").read_text().rpartition(")")[2].split()[0]
            if state in "RD":
                return False
    except (FileNotFoundError, ProcessLookupError):
        pass
    return True


def manager():
    """The window manager that scripts/on-display.sh has started: windows come, and get the keyboard, by it."""
    return [int(number) for number in os.environ.get("WINDOW_MANAGER", "").split()]


def wait_for_rest(processes, picture=lambda: None, seconds=LONGEST, whole=True):
    """Waits until the processes sleep in several looks, all of which see the same picture."""
    processes = [*processes, *manager()]
    end = time.monotonic() + seconds
    looks, last = 0, picture()
    while looks < LOOKS and time.monotonic() < end:
        time.sleep(BETWEEN)
        now = picture()
        looks = 0 if now != last else looks + all(sleeps(each, whole) for each in processes)
        last = now


if __name__ == "__main__":
    wait_for_rest([int(word) for word in sys.argv[1:] if word != "--whole"], whole="--whole" in sys.argv)
