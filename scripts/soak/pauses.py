"""An idle loop at the highest priority on one processor: writes when it was kept from running, which is the machine's doing and not
that of any program beside it. A pause that takes it in its sleep begins somewhere in that: it is written from the begin of the
sleep on, half a millisecond too much at most, so that many short pauses in a row count in full. usage: pauses.py PROCESSOR FILE"""

import os
import sys
import time

STEP, WORTH = 0.0005, 0.0005  # seconds: of sleep, and of a pause that is written down

if __name__ == "__main__":
    os.sched_setaffinity(0, {int(sys.argv[1])})
    os.sched_setscheduler(0, os.SCHED_FIFO, os.sched_param(95))
    with open(sys.argv[2], "w", buffering=1) as out:
        last = time.monotonic()
        while True:
            time.sleep(STEP)
            now = time.monotonic()
            if now - last - STEP > WORTH:
                out.write(f"{last:.6f} {now:.6f}\n")
            last = now
