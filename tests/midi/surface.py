"""A controller on JACK, played into the application: learnt in the mapping editor, played, turned, lit, unplugged; a script
that hears it too, and one with an error."""

import os
import re
import subprocess
import sys
import tempfile
import time
from pathlib import Path

from jack_controller import Controller, click, close, close_with_picture, open_page, picture, run, start_server, until

NOTE_ON, CONTROLLER = 0x90, 0xB0
PLAY_NOTE, SCRATCH_NOTE, FADER, WHEEL = 10, 20, 7, 21
MAPPING = """<midiMapping version="2000" name="" lamps="1"><controls>
<value id="277" status="176" data="7" res0="0" res1="0"/>
<value id="205" status="144" data="20" res0="0" res1="0"/>
<value id="201" status="176" data="21" res0="0" res1="0" features="wheel"/>
</controls></midiMapping>"""
PORTS = """<MIDIINPUT name="Contrôleur:out"/><MIDIOUTPUT name="Contrôleur:in"/>"""
DEVICES = f"""<midiList version="2000" name="">{PORTS}</midiList>"""
SCRIPTS = f"""<midiScript version="2000" name="">{PORTS}<script file="broken.c"/><script file="kill.c"/></midiScript>"""
SCRIPT_NOTE_ON, KILL_NOTE = 0x91, 40
IDENTITY_REQUEST = bytes((0xF0, 0x7E, 0x7F, 0x06, 0x01, 0xF7))
BROKEN_SCRIPT = "void OnStart() { turn(1); }"
MENDED_NOTE = 41
MENDED_SCRIPT = """void OnMidiMessageReceived (const string &in name, int status, int data, int value) {}
void OnTimerCallback () {}
void OnStart () { sendMidiMessage(0x91, 41, 5); }
void OnStop () {}
"""
SCRIPT = """#include "px_commands.h"
void OnMidiMessageReceived (const string &in name, int status, int data, int value)
{
  if(status == 0x91 && data == 40 && value > 0) { set(EQ_HIGH_KILL_B); log("pressed on " + name); }
}
void OnTimerCallback () { sendMidiMessage(0x91, 40, get(EQ_HIGH_KILL_B) > 0.0f ? 127 : 0); }
void OnStart () { sendSysExMessage("F0 7E 7F 06 01 F7"); }
void OnStop () { sendMidiMessage(0x91, 40, 1); }
"""


LOST = []  # clients whose server has died


def learn(controller, pictures):
    """Has the first row of the mapping editor, Play/Pause A, learn a note."""
    editor = open_page("MIDI Mapping Editor", 3)
    click(editor, 120, 72, times=2)
    time.sleep(0.3)
    picture(pictures, "learning")
    controller.send(NOTE_ON, PLAY_NOTE, 127)
    until("the lamp of the learnt button", lambda: controller.lamps.get((NOTE_ON, PLAY_NOTE)) == 127)
    picture(pictures, "learnt")
    click(editor, 670, 555)


def hear_scripts(controller, pictures):
    """The script with an error is told of in one window, the other one lives: its lamp follows a button that only it knows."""
    until("what a script sends at its start", lambda: IDENTITY_REQUEST in controller.exclusive)
    close_with_picture("Midi Scripting Message", pictures)
    until("the lamp of the script", lambda: controller.lamps.get((SCRIPT_NOTE_ON, KILL_NOTE)) == 0)
    press_killed(controller, 127)
    close_with_picture("Midi Scripting Log Message", pictures)


def reload_script(controller, pictures, script):
    """A script that was mended is built anew by the button of its page."""
    page = open_page("MIDI Scripting", 4)
    script.write_text(MENDED_SCRIPT)
    click(page, 100, 44)  # the first script of the list
    click(page, 590, 100)
    until("the lamp of the mended script", lambda: controller.lamps.get((SCRIPT_NOTE_ON, MENDED_NOTE)) == 5)
    picture(pictures, "reloaded")
    close(page, "MIDI Scripting")


def press_killed(controller, expected):
    for value in (127, 0):
        controller.send(SCRIPT_NOTE_ON, KILL_NOTE, value)
    until("the lamp of the script after a press", lambda: controller.lamps.get((SCRIPT_NOTE_ON, KILL_NOTE)) == expected)


def press_play(controller):
    before = controller.lamps[NOTE_ON, PLAY_NOTE]
    for value in (0, 127, 0):
        controller.send(NOTE_ON, PLAY_NOTE, value)
    until("another lamp after a press of play", lambda: controller.lamps[NOTE_ON, PLAY_NOTE] == 127 - before)


def play(controller):
    press_play(controller)
    if controller.lamps[NOTE_ON, PLAY_NOTE] != 0:
        press_play(controller)  # a wheel scratches a stopped deck only
    for value in range(128):
        controller.send(CONTROLLER, FADER, value)
    until("the place of the crossfader", lambda: controller.lamps.get((CONTROLLER, FADER)) == 127)

    def turn():
        controller.send(CONTROLLER, WHEEL, 70)
        return controller.lamps.get((NOTE_ON, SCRATCH_NOTE)) == 127

    until("the lamp of a scratch while the wheel turns", turn)
    until("the end of the scratch", lambda: controller.lamps.get((NOTE_ON, SCRATCH_NOTE)) == 0)


def replug(controller):
    controller.unplug()
    again = Controller()
    print(f"replug: open after {until('the port that came back', again.is_connected, 2.0):.2f} s", end=", ")
    wanted = {(NOTE_ON, PLAY_NOTE), (CONTROLLER, FADER), (NOTE_ON, SCRATCH_NOTE), (SCRIPT_NOTE_ON, KILL_NOTE)}
    print(f"painted after {until('all lamps again', lambda: wanted <= set(again.lamps), 2.0):.2f} s more")
    return again


def lose_server(started, controller):
    """The server dies and comes back. libjack frees the old client by itself, so Python must not."""
    LOST.append(controller)
    server = started[0]
    server.kill()
    server.wait(20)
    started[0] = start_server([os.environ["JACK_DEFAULT_SERVER"]])
    again = Controller()
    print(f"server: open after {until('the port after the server', again.is_connected, 10.0):.2f} s")
    until("all lamps after the server", lambda: (CONTROLLER, FADER) in again.lamps, 5.0)
    return again


def main():
    program, pictures = sys.argv[1], (sys.argv[2] if len(sys.argv) > 2 else None)
    started = []
    with tempfile.TemporaryDirectory() as work:
        if pictures:
            Path(pictures).mkdir(parents=True, exist_ok=True)
        setup = Path(work, "root", "setup")
        setup.mkdir(parents=True)
        (setup / "default_midi_mapping.xml").write_text(MAPPING)
        (setup / "midi_devices_list.xml").write_text(DEVICES)
        folder = Path(work, "root", "script_files")
        folder.mkdir()
        (folder / "broken.c").write_text(BROKEN_SCRIPT)
        (folder / "kill.c").write_text(SCRIPT)
        (folder / "script_setup.xml").write_text(SCRIPTS)
        run(program, "demo-tracks", f"{work}/tracks")
        try:
            started.append(start_server())
            controller = Controller()
            log = open(f"{work}/log", "w+")
            track = next(Path(work, "tracks").glob("*.flac"))
            application = subprocess.Popen([program, str(track), "--root", f"{work}/root"], stdout=log, stderr=log)
            started.append(application)
            until("the ports of the application", controller.is_connected, 60.0)
            hear_scripts(controller, pictures)
            reload_script(controller, pictures, folder / "broken.c")
            learn(controller, pictures)
            play(controller)
            controller = replug(controller)
            play(controller)
            press_killed(controller, 0)
            controller = lose_server(started, controller)
            play(controller)
            application.terminate()
            if application.wait(20) != 0:
                raise SystemExit("FAILED: the application did not end well")
            until("the lamp that the script lights at its end", lambda: controller.lamps[SCRIPT_NOTE_ON, KILL_NOTE] == 1, 2.0)
            row = re.search(r'<value id="1" status="(\d+)" data="(\d+)"', (setup / "default_midi_mapping.xml").read_text())
            if row is None or row.groups() != (str(NOTE_ON), str(PLAY_NOTE)):
                raise SystemExit("FAILED: the learnt row was not kept")
            print("scripted, learnt, played, turned, unplugged and kept")
        except BaseException:
            picture(pictures, "failed")
            if Path(work, "log").exists():
                print(Path(work, "log").read_text()[-3000:], file=sys.stderr)
            raise
        finally:
            for process in reversed(started):
                process.terminate()
                process.wait(20)


main()
sys.stdout.flush()
os._exit(0)  # the end of Python would close the lost client
