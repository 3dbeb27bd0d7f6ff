"""What goes wrong on a stage, in the real application over JACK and on a display: the music goes on where it can, each fault has its
sentence, and nothing that is older than two seconds is lost."""

import os
import re
import resource
import signal
import subprocess
import sys
import tempfile
import time
from pathlib import Path

sys.path.insert(0, str(Path(__file__).resolve().parents[1] / "midi"))

from jack_controller import Controller, comes, run, start_server, until, window_when_still  # noqa: E402

PLAY, RECORD, CUE, CROSSFADER = (0x90, 1), (0x90, 2), (0x90, 3), (0xB0, 7)
MAPPING = """<midiMapping version="2000" name="" lamps="1"><controls>
<value id="1" status="144" data="1" res0="0" res1="0"/>
<value id="465" status="144" data="2" res0="0" res1="0"/>
<value id="53" status="144" data="3" res0="0" res1="0"/>
<value id="277" status="176" data="7" res0="0" res1="0"/>
</controls></midiMapping>"""
DEVICES = """<midiList version="2000" name=""><MIDIINPUT name="Stage:out"/><MIDIOUTPUT name="Stage:in"/></midiList>"""
FAULTS = ("disk", "library", "clock", "kill", "crash", "display", "server")
LOST, SERVERS = [], []  # clients whose server has died; servers started later
KEPT = 2.2  # seconds: the promise, and a bit


class Stage:
    """The application with a long track that plays on deck A."""

    def __init__(self, program, work, track, prepare=None, environment=None, arguments=()):
        self.program, self.work, self.track = program, work, track
        self.root = work / "root"
        setup = self.root / "setup"
        setup.mkdir(parents=True, exist_ok=True)
        (setup / "default_midi_mapping.xml").write_text(MAPPING)
        (setup / "midi_devices_list.xml").write_text(DEVICES)
        (self.root / "audio").mkdir(exist_ok=True)
        self.controller = Controller("Stage")
        self.log = work / "app.log"
        with open(self.log, "w") as out:
            self.process = subprocess.Popen([program, track, "--root", str(self.root), "--report", *arguments], stdout=out, stderr=out,
                                            env={**os.environ, **(environment or {})}, preexec_fn=prepare)
        window_when_still("Platterdex")
        until("the controller's ports", lambda: self.controller.output.number_of_connections > 0)
        time.sleep(2.0)  # the track is long, and played before all of it is decoded
        self.press(PLAY)
        self.has_lamp(PLAY, "a deck that plays")

    def says(self, pattern):
        return re.search(pattern, self.log.read_text(errors="replace"))

    def press(self, button):
        for value in (127, 0):
            self.controller.send(*button, value)

    def is_lit(self, button):
        return self.controller.lamps.get(button, 0) > 0

    def has_lamp(self, button, what, lit=True, seconds=30.0):
        until(what, lambda: self.is_lit(button) == lit, seconds)

    def still_plays(self, what):
        if self.process.poll() is not None:
            raise SystemExit(f"FAILED: {what}: the application has ended with {self.process.returncode}\n{self.log.read_text()}")
        self.press(PLAY)
        self.has_lamp(PLAY, f"{what}: the deck's answer to a stop", False)
        self.press(PLAY)
        self.has_lamp(PLAY, f"{what}: a deck that plays on")

    def touch(self):
        """What must not be lost: a hot cue, and the crossfader to the left."""
        self.press(CUE)
        self.controller.send(*CROSSFADER, 13)
        self.has_lamp(CUE, "the hot cue")

    def has_kept(self, what):
        questions = self.work / "questions.txt"
        questions.write_text(f"0 load A {self.track}\n1 print HOT_CUE_2_A\n1 print CROSSFADER\n")
        answers = re.findall(r"^\d\S* +\S+ +(\S+)", run(self.program, "perform", str(questions), "--root", str(self.root), "--out",
                                                       str(self.work / "out.wav")), re.M)
        if len(answers) != 2 or float(answers[0]) != 1.0 or abs(float(answers[1]) - 13 / 127) > 0.01:
            raise SystemExit(f"FAILED: {what}: lost the hot cue or the crossfader's place: {answers}")

    def end(self):
        self.controller.unplug()
        if self.process.poll() is None:
            self.process.terminate()
            if self.process.wait(60) != 0:
                raise SystemExit(f"FAILED: it ends with {self.process.returncode}\n{self.log.read_text()}")


def uses_no_network(process):
    """No open socket of the process is one of the internet's."""
    inodes = set()
    for link in Path(f"/proc/{process.pid}/fd").iterdir():
        try:
            inodes.update(re.findall(r"^socket:\[(\d+)\]$", os.readlink(link)))
        except FileNotFoundError:
            pass  # closed meanwhile
    for table in ("tcp", "tcp6", "udp", "udp6", "raw", "raw6"):
        lines = Path(f"/proc/net/{table}").read_text().splitlines()[1:] if Path(f"/proc/net/{table}").exists() else []
        if used := inodes.intersection(line.split()[9] for line in lines):
            raise SystemExit(f"FAILED: the application has {len(used)} sockets of {table}")
    if not inodes:
        raise SystemExit("FAILED: no socket was found, not even those of the display")


def playable_seconds(folder):
    files = list(folder.glob("**/*.wav"))
    if len(files) != 1:
        raise SystemExit(f"FAILED: {len(files)} recordings")
    return float(run("ffprobe", "-v", "error", "-show_entries", "stream=duration", "-of", "csv=p=0", str(files[0])))


def left_behind(stage, reason):
    """What a run leaves that ended by a fault: a report with the reason and without a path of music, and the set so far as lines
    that are performed to the same end. Returns nothing; the set needs no root."""
    left = stage.root / "reports" / "running"
    played = (left / "set.txt").read_text()
    last = float(re.findall(r"^(\d+\.\d+) ", played, re.M)[-1])
    questions = stage.work / "again.txt"
    questions.write_text(f"{played}{last + 1} print HOT_CUE_2_A\n{last + 1} print CROSSFADER\n")
    answers = re.findall(r"^\d\S* +\S+ +(\S+)", run(stage.program, "perform", str(questions), "--out", str(stage.work / "again.wav")), re.M)
    if len(answers) != 2 or float(answers[0]) != 1.0 or abs(float(answers[1]) - 13 / 127) > 0.01:
        raise SystemExit(f"FAILED: the set so far does not end as it did: {answers}\n{played}")
    loudest = subprocess.run(["ffmpeg", "-hide_banner", "-nostats", "-i", str(stage.work / "again.wav"), "-af", "volumedetect", "-f", "null", "-"],
                             check=True, capture_output=True, text=True).stderr
    if float(re.search(r"max_volume: (\S+) dB", loudest)[1]) < -40.0:
        raise SystemExit("FAILED: the set so far is silent")

    again = Stage(stage.program, stage.work, stage.track)
    try:
        reports = list((stage.root / "reports").glob("20*/report.txt"))
        if len(reports) != 1 or (left / "end.txt").exists():
            raise SystemExit(f"FAILED: {len(reports)} reports were put aside")
        report = reports[0].read_text()
        for sign in ("Platterdex ", "[Audio]\nAudio device: JACK", "[MIDI inputs]\n", "[Last notices]\n", f"[End]\n{reason}"):
            if sign not in report:
                raise SystemExit(f"FAILED: the report lacks {sign!r}\n{report}")
        if str(stage.work) in report:
            raise SystemExit(f"FAILED: the report names a path\n{report}")
    finally:
        again.end()
    if not again.says("The last run ended by a fault") or again.says("runs twice"):
        raise SystemExit(f"FAILED: the next start does not say what was left\n{again.log.read_text()}")
    if (stage.root / "reports" / "running").exists():
        raise SystemExit("FAILED: an end as it should be leaves a report")


def crashes(stage_of):
    """The program crashes: it leaves a report and the set so far, and the next start says so."""
    stage = stage_of()
    stage.touch()
    time.sleep(KEPT)
    stage.process.send_signal(signal.SIGSEGV)
    if (code := stage.process.wait()) != -signal.SIGSEGV:
        raise SystemExit(f"FAILED: a crash ends the program with {code}")
    stage.end()
    stage.has_kept("a crash")
    left_behind(stage, "SIGSEGV in the thread")


def disk_full(stage_of):
    """The disk of the recording is full: its lamp goes dark, what was written can be played, the deck plays on."""
    most = 3_000_000

    def limit():
        signal.signal(signal.SIGXFSZ, signal.SIG_IGN)
        resource.setrlimit(resource.RLIMIT_FSIZE, (most, most))

    stage = stage_of(prepare=limit)
    stage.press(RECORD)
    stage.has_lamp(RECORD, "the recorder's lamp")
    stage.has_lamp(RECORD, "the end of a recording on a full disk", False, 60.0)
    stage.still_plays("after the disk was full")
    stage.end()
    seconds = playable_seconds(stage.root / "disk_recorder")
    if seconds < most / 4 / 48000 - 1.0:
        raise SystemExit(f"FAILED: only {seconds} s of the recording are left")


def server_dies(stage_of, server):
    """The JACK server is killed and started anew: the deck plays on without it, and with it again."""
    stage = stage_of()
    name = os.environ["JACK_DEFAULT_SERVER"]
    server.kill()
    server.wait()
    until("a device in place of the lost one", lambda: stage.says("running silently"), 60.0)
    LOST.append(stage.controller)
    SERVERS.append(start_server((name,)))
    until("the lost device, taken up again", lambda: len(re.findall("Audio device: JACK", stage.log.read_text())) == 2, 90.0)
    stage.controller = Controller("Stage")
    until("the controller's ports", lambda: stage.controller.output.number_of_connections > 0)
    stage.has_lamp(PLAY, "a deck that has played on without a device")
    stage.still_plays("after the server came back")
    stage.end()


def library_goes(stage_of):
    """The library is deleted under the running application, and its folder with it, and then the settings can't be written: the
    deck plays on, hands are kept as long as there is a place, each loss is told once."""
    stage = stage_of()
    until("the library", lambda: list((stage.root / "SongManager").glob("*.sqlite")))
    time.sleep(5.0)  # two looks at it
    run("rm", "-r", str(stage.root / "SongManager"))
    stage.touch()
    time.sleep(KEPT)
    stage.still_plays("without its library")
    stage.has_kept("a deleted library")
    (stage.root / "setup").rename(stage.root / "moved")
    (stage.root / "setup").write_text("in the way of a folder")
    for place in (40, 60, 80):
        stage.controller.send(*CROSSFADER, place)
        time.sleep(KEPT)
    stage.still_plays("without its settings")
    stage.end()
    for told in ("is gone: nothing that is done to the library is kept", r"\*\*\* Preferences \*\*\*"):
        if len(re.findall(told, stage.log.read_text())) != 1:
            raise SystemExit(f"FAILED: this is not told once: {told}\n{stage.log.read_text()}")


def clock_goes_back(stage_of, shift):
    """The clock of the machine is set back by an hour: playing, recording and keeping go by another one."""
    file = Path(tempfile.mkstemp()[1])
    stage = stage_of(environment={"LD_PRELOAD": shift, "CLOCK_SHIFT_FILE": str(file)})
    stage.press(RECORD)
    stage.has_lamp(RECORD, "the recorder's lamp")
    time.sleep(1.0)
    file.write_text("-3600")
    time.sleep(1.0)
    stage.touch()
    time.sleep(KEPT)
    stage.still_plays("an hour earlier")
    stage.press(RECORD)
    stage.has_lamp(RECORD, "the end of the recording", False)
    stage.process.kill()
    stage.process.wait()
    stage.end()
    stage.has_kept("a clock that was set back")
    if playable_seconds(stage.root / "disk_recorder") < 4.0:
        raise SystemExit("FAILED: the recording does not last over the change of the clock")
    file.unlink()


def killed_while_recording(stage_of):
    """SIGKILL: the recording can be played but for its last two seconds, hands are kept."""
    stage = stage_of()
    stage.press(RECORD)
    stage.has_lamp(RECORD, "the recorder's lamp")
    begin = time.monotonic()
    stage.touch()
    uses_no_network(stage.process)
    time.sleep(6.0)
    recorded = time.monotonic() - begin
    stage.process.kill()
    stage.process.wait()
    stage.end()
    stage.has_kept("a killed program")
    left_behind(stage, "killed, or the machine went down")
    seconds = playable_seconds(stage.root / "disk_recorder")
    if seconds < recorded - 3.0:
        raise SystemExit(f"FAILED: {seconds} s of {recorded:.1f} are left of the recording")


def display_goes(stage_of):
    """The display server is gone: the program ends, as every window's does, with hands and recording kept."""
    read, write = os.pipe()
    display = subprocess.Popen(["Xvfb", "-displayfd", str(write), "-screen", "0", "1400x900x24"], pass_fds=[write],
                               stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
    os.close(write)
    own, number = os.environ["DISPLAY"], os.read(read, 16).decode().strip()
    os.environ["DISPLAY"] = f":{number}"
    try:
        stage = stage_of()
        stage.press(RECORD)
        stage.has_lamp(RECORD, "the recorder's lamp")
        stage.touch()
        time.sleep(4.0)
        display.kill()
        display.wait()
        if not comes(lambda: stage.process.poll() is not None, 30.0):
            stage.still_plays("without a display")
            stage.process.kill()
        code = stage.process.wait()
        print(f"  the application has ended with {code}")
        stage.end()
        stage.has_kept("a display that is gone")
        if playable_seconds(stage.root / "disk_recorder") < 3.0:
            raise SystemExit("FAILED: the recording is lost")
    finally:
        os.environ["DISPLAY"] = own
        if display.poll() is None:
            display.kill()
            display.wait()


def bring_about(program, shift, name):
    server, stages = start_server(), []
    try:
        with tempfile.TemporaryDirectory() as folder:
            track = f"{folder}/track.wav"
            run("ffmpeg", "-loglevel", "error", "-f", "lavfi", "-i", "sine=frequency=220:duration=600", "-ac", "2", track)

            def stage_of(**how):
                stages.append(Stage(program, Path(folder), track, **how))
                return stages[-1]

            faults = {"disk": disk_full, "library": library_goes, "clock": lambda make: clock_goes_back(make, shift),
                      "kill": killed_while_recording, "crash": crashes, "display": display_goes, "server": lambda make: server_dies(make, server)}
            faults[name](stage_of)
    finally:
        for process in [*(stage.process for stage in stages), server, *SERVERS]:
            if process.poll() is None:
                process.kill()
                process.wait()


def main():
    program, shift, *wanted = sys.argv[1:]
    if len(wanted) == 1:
        bring_about(program, shift, wanted[0])
        sys.stdout.flush()
        os._exit(0)  # the end of a client whose server has died would crash
    for name in wanted or FAULTS:  # each in a process of its own: libjack does not get over the death of a server
        print(name, flush=True)
        if subprocess.run([sys.executable, __file__, program, shift, name]).returncode != 0:
            raise SystemExit(f"FAILED: {name}")


if __name__ == "__main__":
    main()
