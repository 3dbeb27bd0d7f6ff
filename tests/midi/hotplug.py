"""Controllers that come: one that is there at a first run plays at once, one that comes later is offered, once."""

import os
import subprocess
import sys
import tempfile
from pathlib import Path

from jack_controller import Controller, click, comes, picture, run, start_server, until, window, window_when_still

FOUND = "Vestax {} controller found".format
TYPHOON_LAMPS, VCI400_LAMPS = 27, 114
YES = (146, 107)  # in the question
TYPHOON_PLAY, VCI400_PLAY = (0x90, 50), (0x92, 26)


def vestax(name):
    """A controller whose two ports are called as the maker does, so that the output is found by the input's name."""
    return Controller(name, "Vestax MIDI In", "Vestax MIDI Out")


def press(controller, button):
    for value in (127, 0):
        controller.send(*button, value)


def first_run(program, root, track, pictures):
    """A controller that is there needs no answer: it is lit, plays, and the run is logged."""
    controller = vestax("Typhoon")
    application = subprocess.Popen([program, track, "--root", root], stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
    until("the lamps of the controller of a first run", lambda: len(controller.lamps) == TYPHOON_LAMPS, 60.0)
    until("the lamp of play after a press", lambda: press(controller, TYPHOON_PLAY)
          or comes(lambda: controller.lamps[TYPHOON_PLAY] == 127, 3.0))
    picture(pictures, "first-run")
    if window(FOUND("Typhoon")):
        raise SystemExit("FAILED: a first run asks")
    log = Path(root, "auto-detect-controllers.log").read_text()
    for line in ("*** Starting auto-detect process ***", FOUND("Typhoon"),
                 "Selected controller idx AFTER auto-detect process: 39"):
        if line not in log:
            raise SystemExit(f"FAILED: the log lacks: {line}\n{log}")
    controller.unplug()
    return application


def hot_plug(pictures):
    """A controller that comes is offered; after a yes it is woken and lit, and plays. It is not offered again."""
    controller = vestax("Vestax VCI-400")
    question = window_when_still(FOUND("VCI-400"))
    picture(pictures, "offered")
    click(question, *YES)
    until("the lamps after a yes", lambda: len(controller.lamps) == VCI400_LAMPS)
    before = controller.lamps[VCI400_PLAY]
    press(controller, VCI400_PLAY)
    until("the lamp of play", lambda: controller.lamps[VCI400_PLAY] != before)
    controller.unplug()
    again = vestax("Vestax VCI-400")
    until("the lamps of the controller that came back", lambda: len(again.lamps) == VCI400_LAMPS)
    if window(FOUND("VCI-400")):
        raise SystemExit("FAILED: a controller that comes back is offered again")


def refuse(pictures):
    """After a no it stays as it is, and the same controller is not offered again."""
    controller = vestax("VESTAX VCI-100MKII")
    question = window_when_still(FOUND("VCI-100 MKII"))
    run("xdotool", "windowactivate", "--sync", question)
    run("xdotool", "key", "Escape")
    until("the end of the question", lambda: not window(FOUND("VCI-100 MKII")))
    controller.unplug()
    again = vestax("VESTAX VCI-100MKII")
    vestax("VCI 300")  # is asked for after it
    until("the question for the next controller", lambda: window(FOUND("VCI-300")))
    picture(pictures, "refused")
    if window(FOUND("VCI-100 MKII")):
        raise SystemExit("FAILED: a controller that was refused is offered again")
    if again.lamps:
        raise SystemExit("FAILED: a controller that was refused is lit")


def main():
    program, pictures = os.path.abspath(sys.argv[1]), (sys.argv[2] if len(sys.argv) > 2 else None)
    started = []
    with tempfile.TemporaryDirectory() as work:
        if pictures:
            Path(pictures).mkdir(parents=True, exist_ok=True)
        run(program, "demo-tracks", f"{work}/tracks")
        try:
            started.append(start_server())
            track = str(next(Path(work, "tracks").glob("*.flac")))
            started.append(first_run(program, f"{work}/root", track, pictures))
            hot_plug(pictures)
            refuse(pictures)
            print("a first run asks nothing, a controller that comes is offered once")
        except BaseException:
            picture(pictures, "failed")
            raise
        finally:
            for process in reversed(started):
                process.terminate()
                process.wait(90)  # a first run that is ended meanwhile has demo tracks to finish


main()
sys.stdout.flush()
os._exit(0)  # the end of Python would close clients whose server has gone
