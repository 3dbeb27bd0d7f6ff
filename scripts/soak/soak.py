"""Plays a plan (plan.py) in the real application by a MIDI controller of another program, keys and windows, and measures meanwhile.
Started by scripts/soak.sh."""

import argparse
import os
import queue
import re
import shutil
import signal
import subprocess
import sys
import tempfile
import threading
import time
from pathlib import Path

SOURCES = Path(__file__).resolve().parents[2]
sys.path[:0] = [str(SOURCES / "tests/midi"), str(Path(__file__).parent)]

from jack_controller import Controller, close, comes, run, start_server, until, window, window_when_still  # noqa: E402
from plan import plan  # noqa: E402

RATE, BLOCK = 48000, 256
TRACK_SECONDS = 150  # all of one length, so that decks in use hold the same memory whatever lies on them
NOTE_ON, CONTROLLER = 0x90, 0xB0
MEASURE_EVERY, WARM_UP, WINDOW = 5.0, 600.0, 120.0  # seconds
MEMORY_GROWTH = 1.0  # percent, from the end of the warm-up to the end
RECORDING_SLACK = 0.15  # seconds: a lamp's tick at either end of a recording
PORTS = '<MIDIINPUT name="Soak:out"/><MIDIOUTPUT name="Soak:in"/>'


class Surface(Controller):
    """A controller with a button or a knob for every command."""

    def __init__(self, rows):
        self.frames = 0  # of the cycles so far
        self.controls = {}
        for index, (_, kind, name) in enumerate(rows):
            status = NOTE_ON if kind in ("trigger", "state") else CONTROLLER
            self.controls[name] = (status + index // 120, index % 120)
        super().__init__("Soak")

    def process(self, frames):
        self.frames += frames
        super().process(frames)

    def mapping(self, rows):
        lines = []
        for number, _, name in rows:
            status, data = self.controls[name]
            wheel = ' features="wheel"' if re.fullmatch("JOG_[A-D]", name) else ""
            lines.append(f'<value id="{number}" status="{status}" data="{data}" res0="0" res1="0"{wheel}/>')
        return f'<midiMapping version="2000" name="" lamps="1"><controls>{"".join(lines)}</controls></midiMapping>'

    def put(self, name, value):
        self.send(*self.controls[name], value)

    def tap(self, name):
        self.put(name, 127)
        self.put(name, 0)

    def is_lit(self, name):
        return self.lamps.get(self.controls[name], 0) > 0


class Recordings:
    """When the recorder was on, by its lamp, in frames of the server."""

    def __init__(self, surface):
        self.surface, self.begin, self.lengths = surface, None, []

    def want(self, on):
        if self.surface.is_lit("DISK_RECORDER") == on:
            return
        self.surface.tap("DISK_RECORDER")
        comes(lambda: self.surface.is_lit("DISK_RECORDER") == on, 5.0)
        if on:
            self.begin = self.surface.frames
        elif self.begin is not None:
            self.lengths.append(self.surface.frames - self.begin)
            self.begin = None

    def compared(self, folder):
        """Seconds that the server played and that each file holds."""
        files = sorted(folder.glob("**/*.wav"), key=lambda file: file.stat().st_mtime)
        held = []
        for file in files:
            shown = run("ffprobe", "-v", "error", "-show_entries", "stream=duration", "-of", "csv=p=0", str(file))
            held.append(float(shown))
        return [length / RATE for length in self.lengths], held


class Screen(threading.Thread):
    """The hand at keys and windows: it takes its time, and holds up no controller."""

    def __init__(self, application):
        super().__init__(daemon=True)
        self.application, self.wanted = application, queue.Queue()
        self.main = window_when_still("Platterdex")  # searched once: a search fails when any window goes while it looks
        self.done, self.failed, self.opened = 0, [], {}

    def run(self):
        while (action := self.wanted.get()) is not None:
            try:
                getattr(self, action.kind)(action)
                self.done += 1
            except (SystemExit, subprocess.SubprocessError, OSError) as error:
                self.failed.append(f"{action.line()}: {error}")

    def focus(self):
        self.answer(None)
        run("xdotool", "windowfocus", "--sync", self.main)

    def key(self, action):
        self.focus()
        run("xdotool", "key", action.what)

    def type(self, action):
        self.focus()
        run("xdotool", "type", "--delay", "60", action.what)

    def answer(self, action):
        """The question whether a song may take the place of one that plays; Return says no."""
        if question := window(".* is playing"):
            run("xdotool", "windowfocus", "--sync", question)
            run("xdotool", "key", *(["Tab"] if action and action.what == "yes" else []), "Return")
            until("the end of the question", lambda: not window(".* is playing"), 10.0)

    def size(self, action):
        run("xdotool", "windowsize", self.main, *action.what.split("x"))

    def window(self, action):
        """A window out of the menu, or the manual, looked at and closed."""
        self.focus()
        before = set(self.shown())
        run("xdotool", "mousemove", "--window", self.main, "219", "28")
        if action.value == 0:
            run("xdotool", "key", "F1")
        else:
            run("xdotool", "click", "3")
            time.sleep(1.0)
            run("xdotool", "key", *["Down"] * round(action.value), "Return")
        comes(lambda: any(map(self.title, set(self.shown()) - before)), 3.0)
        time.sleep(2.0)
        for opened in set(self.shown()) - before:
            if (name := self.title(opened)) not in ("", "menu", "Platterdex"):
                self.opened[name] = self.opened.get(name, 0) + 1
                close(opened, re.escape(name))
        run("xdotool", "key", "Escape")

    def title(self, shown):
        return subprocess.run(["xdotool", "getwindowname", shown], capture_output=True, text=True).stdout.strip()

    def shown(self):
        found = subprocess.run(["xdotool", "search", "--onlyvisible", "--pid", str(self.application.process.pid)],
                               capture_output=True, text=True)
        return found.stdout.split()

    def import_files(self, _):
        self.application.bring()


setattr(Screen, "import", Screen.import_files)


class Application:
    """The program under test and what the system says of it."""

    def __init__(self, program, work, surface, rows, plugins):
        self.program, self.work, self.root = program, work, work / "root"
        self.brought = 0
        self.make_tracks()
        setup = self.root / "setup"
        setup.mkdir(parents=True)
        (setup / "default_midi_mapping.xml").write_text(surface.mapping(rows))
        (setup / "midi_devices_list.xml").write_text(f'<midiList version="2000" name="">{PORTS}</midiList>')
        run(program, "import", str(work / "tracks"), "--root", str(self.root))
        self.plugin = plugins is not None and (plugins / "gain.so").exists()
        if self.plugin:
            (work / "plugins").mkdir()
            shutil.copy(plugins / "gain.so", work / "plugins")
            run(program, "plugins", "scan", str(work / "plugins"), "--root", str(self.root))
            (setup / "vst_slots.xml").write_text('<vstSlots><slot deck="A" plugin="gain" on="1" insert="1" dryWet="1" '
                                                 'param1="0" param2="1"/></vstSlots>')
        self.log = open(work / "app.log", "w")
        first = sorted(map(str, (work / "tracks").iterdir()))[:4]
        self.process = subprocess.Popen([program, *first, "--root", str(self.root), "--report"], stdout=self.log, stderr=self.log)

    def make_tracks(self):
        run(self.program, "demo-tracks", str(self.work / "demo"))
        tracks = self.work / "tracks"
        tracks.mkdir()
        for index, demo in enumerate(sorted((self.work / "demo").glob("*.flac"))):
            for suffix in ("wav", ("mp3", "flac", "ogg")[index % 3]):
                run("ffmpeg", "-loglevel", "error", "-stream_loop", "-1", "-i", str(demo), "-t", str(TRACK_SECONDS), "-ar", "44100",
                    str(tracks / f"{demo.stem} {suffix}.{suffix}"))

    def bring(self):
        """Another program writes to the library while this one plays."""
        self.brought += 1
        folder = self.work / "brought" / str(self.brought)
        folder.mkdir(parents=True)
        run("ffmpeg", "-loglevel", "error", "-f", "lavfi", "-i", f"sine=frequency={100 + self.brought}:duration=20",
            str(folder / f"tone {self.brought}.flac"))
        run(self.program, "import", str(folder), "--root", str(self.root))

    def measure(self):
        """Kilobytes that are its own, open files, threads."""
        pid = f"/proc/{self.process.pid}"
        rollup = Path(f"{pid}/smaps_rollup").read_text()
        own = sum(int(number) for number in re.findall(r"^Private_(?:Clean|Dirty): +(\d+)", rollup, re.M))
        return own, len(list(Path(f"{pid}/fd").iterdir())), len(list(Path(f"{pid}/task").iterdir()))

    def kinds(self):
        """Kilobytes of its own by what holds them: the heap, mappings without a name by their size, files."""
        held, kind = {}, ""
        for line in Path(f"/proc/{self.process.pid}/smaps").read_text().splitlines():
            if mapping := re.match(r"([0-9a-f]+)-([0-9a-f]+) \S+ \S+ \S+ \S+ *(.*)", line):
                begin, end = int(mapping[1], 16), int(mapping[2], 16)
                size = "small" if end - begin < 1 << 20 else "arena" if begin % (64 << 20) == 0 else "large"
                kind = Path(mapping[3]).name or f"nameless, {size}"
            elif found := re.match(r"Private_(?:Clean|Dirty): +(\d+)", line):
                held[kind] = held.get(kind, 0) + int(found[1])
        return held

    def disk_faults(self):
        """How often each thread has waited for a page of memory from the disk, by the thread's name."""
        faults = {}
        for stat in Path(f"/proc/{self.process.pid}/task").glob("*/stat"):
            name, _, rest = stat.read_text().partition("(")[2].rpartition(")")
            faults[name] = faults.get(name, 0) + int(rest.split()[9])
        return {name: count for name, count in faults.items() if count > 0}

    def has_ended(self):
        return self.process.poll() is not None

    def end(self):
        self.process.send_signal(signal.SIGTERM)
        try:
            return self.process.wait(60)
        except subprocess.TimeoutExpired:
            self.process.kill()
            return "no end within 60 s"


def late_blocks(log, pauses):
    """All late blocks that the application counts, those that it tells of, and of these the ones that no pause explains.
    A block runs on one processor: what is taken out is the time for which the one was away that was away longest."""
    counted = re.search(r"(\d+) blocks, (\d+) late, longest ([\d.]+) ms", log)
    told = [(float(end), float(took) / 1e3) for end, took in re.findall(r"(\d+\.\d+) s (\d+\.\d+) ms", log)]
    ours = []
    for end, took in told:
        away = max(sum(max(0.0, min(end, stop) - max(end - took, start)) for start, stop in of_one) for of_one in pauses)
        if took - away > BLOCK / RATE:
            ours.append((end, took, away))
    return counted, told, ours


def read_pauses(files):
    """Begins and ends in seconds, a list for each processor."""
    return [[tuple(map(float, line.split())) for line in file.read_text().splitlines() if line.count(" ") == 1] for file in files]


class Verdict:
    """Rows of what was measured, what was asked, and whether that holds."""

    def __init__(self):
        self.rows, self.held = [], True

    def add(self, what, found, asked, holds):
        self.rows.append(f"| {what} | {found} | {asked} | {'yes' if holds else 'NO'} |")
        self.held = self.held and holds

    def table(self):
        return "\n".join(["| what | found | asked | holds |", "|---|---|---|---|", *self.rows])


def judge(measured, seconds, log, pauses, recordings, folder, code):
    verdict = Verdict()
    verdict.add("end", f"code {code}", "code 0", code == 0)
    if seconds >= WARM_UP + 2 * WINDOW:
        first = [row for row in measured if WARM_UP <= row[0] < WARM_UP + WINDOW]
        last = [row for row in measured if row[0] >= seconds - WINDOW]
        begin, end = (min(row[1] for row in rows) for rows in (first, last))
        growth = 100.0 * (end - begin) / begin
        verdict.add("memory of its own, the least of two minutes", f"{begin / 1e3:.1f} MB, {end / 1e3:.1f} MB at the end ({growth:+.2f} %)",
                    f"below {MEMORY_GROWTH:.0f} %", growth < MEMORY_GROWTH)
        for column, name in ((2, "open files"), (3, "threads")):
            begin, end = (min(row[column] for row in rows) for rows in (first, last))
            verdict.add(f"{name}, the fewest of two minutes", f"{begin}, {end} at the end", "no more", end <= begin)
    counted, told, ours = late_blocks(log, pauses)
    if counted is None:
        verdict.add("late blocks", "no report", "0 of ours", False)
    else:
        blocks, late, longest = counted.groups()
        verdict.add("late blocks", f"{late} of {blocks}, longest {longest} ms; {len(told) - len(ours)} of {len(told)} in a pause of "
                    "the machine", "0 of ours", not ours and len(told) == int(late))
    played, held = recordings.compared(folder)
    worst = max((abs(a - b) for a, b in zip(played, held)), default=0.0)
    verdict.add("recordings", f"{len(held)} of {len(played)}, {sum(held):.1f} s of {sum(played):.1f}, worst {worst:.3f} s off",
                f"all, {RECORDING_SLACK} s", len(held) == len(played) and worst <= RECORDING_SLACK)
    verdict.add("frames that the recorder lost", "some" if "Recorder:" in log else "0", "0", "Recorder:" not in log)
    return verdict, ours


def play(application, surface, recordings, actions, seconds):
    """Carries the plan out. Returns what was measured: seconds, kilobytes, files, threads; what held the memory, now and then."""
    screen = Screen(application)
    screen.start()
    begin, next_measure, measured, kinds = time.monotonic(), 0.0, [], []
    pending = list(reversed(actions))
    while not application.has_ended():
        now = time.monotonic() - begin
        if now >= next_measure:
            measured.append((now, *application.measure()))
            if len(kinds) <= now / WINDOW:
                kinds.append(application.kinds())
            next_measure += MEASURE_EVERY
        if now >= seconds:
            break
        if not pending or pending[-1].at > now:
            time.sleep(0.005)
            continue
        carry_out(pending.pop(), surface, recordings, screen)
    screen.wanted.put(None)
    recordings.want(False)
    screen.join(60)
    return measured, kinds, screen


def grown(kinds):
    """Of samples at every window: kilobytes at the end of the warm-up and at the end, for what has grown by more than 100."""
    first = kinds[min(len(kinds) - 1, round(WARM_UP / WINDOW))]
    return {kind: (first.get(kind, 0), held) for kind, held in kinds[-1].items() if held > first.get(kind, 0) + 100}


def carry_out(action, surface, recordings, screen):
    if action.kind == "tap":
        surface.tap(action.what)
    elif action.kind in ("press", "release"):
        surface.put(action.what, 127 if action.kind == "press" else 0)
    elif action.kind == "move":
        surface.put(action.what, max(0, min(127, round(action.value * 127))))
    elif action.kind == "turn":
        surface.put(action.what, 66 if action.value > 0 else 62)
    elif action.kind in ("play", "stop"):
        if surface.is_lit(f"PLAY_PAUSE_{action.what}") == (action.kind == "stop"):
            surface.tap(f"PLAY_PAUSE_{action.what}")
    elif action.kind == "record":
        recordings.want(action.what == "on")
    else:
        screen.wanted.put(action)


def main():
    for number in (signal.SIGTERM, signal.SIGINT):  # also where it was started in the background, which ignores SIGINT
        signal.signal(number, lambda *_: sys.exit("ended from outside"))
    options = argparse.ArgumentParser(prog="scripts/soak.sh")
    options.add_argument("minutes", type=float)
    options.add_argument("--seed", type=int, default=1)
    options.add_argument("--build", type=Path, default=SOURCES / "build/release")
    options.add_argument("--out", type=Path, default=SOURCES / "build/soak")
    options.add_argument("--only", default="", help="phrases of plan.py, as mix,window")
    given = options.parse_args()
    out = given.out.resolve()
    out.mkdir(parents=True, exist_ok=True)
    program = str(given.build.resolve() / "bin/platterdex")
    rows = [line.split("\t")[:3] for line in run(program, "commands", "--tsv").splitlines()[1:]]
    rows = [row for row in rows if row[1] != "meter"]
    seconds = given.minutes * 60.0
    actions = plan(given.seed, seconds, tuple(filter(None, given.only.split(","))))
    (out / "plan.txt").write_text("\n".join(action.line() for action in actions) + "\n")

    server = start_server(scheduling=("-R", "-P", "80"))
    pause_files = [out / f"pauses-{cpu}.txt" for cpu in sorted(os.sched_getaffinity(0))]
    loops = [subprocess.Popen([sys.executable, str(Path(__file__).parent / "pauses.py"), file.stem.split("-")[1], str(file)])
             for file in pause_files]
    work = Path(tempfile.mkdtemp(prefix="soak-"))
    application = None
    try:
        surface = Surface(rows)
        application = Application(program, work, surface, rows, given.build.resolve() / "tests/plugins/evil")
        until("the controller's port", lambda: surface.output.number_of_connections > 0, 60.0)
        recordings = Recordings(surface)
        print(f"{len(actions)} actions, seed {given.seed}, {'with' if application.plugin else 'WITHOUT'} a plug-in", flush=True)
        measured, kinds, screen = play(application, surface, recordings, actions, seconds)
        faults = application.disk_faults()
        code = application.end()
        log = (work / "app.log").read_text(errors="replace")
        (out / "app.log").write_text(log)
        (out / "measured.csv").write_text("seconds,kilobytes,files,threads\n" + "".join(
            f"{at:.1f},{own},{files},{threads}\n" for at, own, files, threads in measured))
        pauses = read_pauses(pause_files)
        lengths = [stop - start for of_one in pauses for start, stop in of_one]
        verdict, ours = judge(measured, seconds, log, pauses, recordings, application.root / "disk_recorder", code)
        opened = ", ".join(f"{name} {count}" for name, count in sorted(screen.opened.items()))
        print(f"{measured[-1][0]:.0f} s played; keys and windows: {screen.done} done, {len(screen.failed)} failed; opened: {opened}; "
              f"{application.brought} imports; pauses of the machine: {len(lengths)}, longest {max(lengths, default=0.0) * 1e3:.1f} ms")
        print("kilobytes that grew since the warm-up, by what holds them:", grown(kinds) or "none")
        print(f"pages waited for from the disk, by thread: {faults}")
        for line in screen.failed[:10]:
            print("  failed:", line)
        for end, took, away in ours[:20]:
            print(f"  late: at {end:.4f} s, {took * 1e3:.3f} ms, of which the machine {away * 1e3:.3f} ms")
        print(verdict.table())
        return 0 if verdict.held else 1
    finally:
        for process in [*loops, *([application.process] if application else []), server]:
            if process.poll() is None:
                process.kill()
                process.wait()
        shutil.rmtree(work, ignore_errors=True)


if __name__ == "__main__":
    sys.exit(main())
