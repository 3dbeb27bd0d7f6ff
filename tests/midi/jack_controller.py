"""A controller on JACK and the hands of a user on a display, for tests of the application."""

import os
import subprocess
import time

os.environ.update(JACK_NO_AUDIO_RESERVATION="1", JACK_NO_START_SERVER="1")

import jack  # noqa: E402: it reads the environment


class Controller:
    """The device: sends what is queued, keeps the last value of every lamp and the times of all that comes."""

    def __init__(self, name="Contrôleur", output="out", input="in"):
        self.client = jack.Client(name, no_start_server=True)
        self.output = self.client.midi_outports.register(output)
        self.input = self.client.midi_inports.register(input)
        self.queue, self.lamps, self.exclusive = [], {}, []
        self.client.set_process_callback(self.process)
        self.client.activate()

    def process(self, _frames):
        self.output.clear_buffer()
        while self.queue:
            self.output.write_midi_event(0, self.queue.pop(0))
        for _, data in self.input.incoming_midi_events():
            message = bytes(data)
            if len(message) == 3:
                self.lamps[message[0], message[1]] = message[2]
            elif message[:1] == b"\xf0":
                self.exclusive.append(message)

    def send(self, *message):
        self.queue.append(bytes(message))

    def is_connected(self):
        """Both the mapping and the scripts have the ports open."""
        return self.output.number_of_connections == 2 and self.input.number_of_connections == 2

    def unplug(self):
        self.client.deactivate()
        self.client.close()


def until(what, condition, seconds=30.0):
    """Waits until a condition holds. Returns the seconds that it took."""
    begin = time.monotonic()
    while not condition():
        if time.monotonic() - begin > seconds:
            raise SystemExit(f"FAILED: {what} did not come true within {seconds} s")
        time.sleep(0.01)
    return time.monotonic() - begin


def run(*command):
    return subprocess.run(command, check=True, capture_output=True, text=True, timeout=300).stdout


def start_server(names=tuple(f"px-{number}" for number in range(8)), scheduling=("-r",)):
    """Starts a JACK server, without real time if not told otherwise. JACK remembers eight names, also of servers that were killed:
    one of a few names is taken again."""
    for name in names:
        os.environ["JACK_DEFAULT_SERVER"] = name
        server = subprocess.Popen(["jackd", "-n", name, *scheduling, "-d", "dummy", "-r", "48000", "-p", "256", "-C", "10", "-P", "14"],
                                  stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        if comes(lambda: server.poll() is not None, 1.0):
            continue  # another server has the name
        until("the JACK server", lambda: subprocess.run(["jack_lsp", "-s", name], capture_output=True).returncode == 0)
        return server
    raise SystemExit("FAILED: no JACK server starts")


def window(name):
    found = subprocess.run(["xdotool", "search", "--onlyvisible", "--name", f"^{name}$"], capture_output=True, text=True)
    return found.stdout.split()[-1] if found.stdout.split() else None


def window_when_still(name):
    until(f"a window {name}", lambda: window(name))
    shown, last = window(name), None
    while last != (now := run("xdotool", "getwindowgeometry", shown)):
        last = now
        time.sleep(0.5)
    return shown


def click(shown, x, y, times=1, button=1):
    run("xdotool", "mousemove", "--window", shown, str(x), str(y))
    time.sleep(0.2)
    run("xdotool", "click", "--repeat", str(times), "--delay", "80", str(button))
    time.sleep(0.2)


def picture(folder, name):
    if folder:
        run("ffmpeg", "-loglevel", "error", "-y", "-f", "x11grab", "-video_size", "1400x900", "-i", os.environ["DISPLAY"],
            "-frames:v", "1", f"{folder}/{name}.png")


def comes(condition, seconds):
    end = time.monotonic() + seconds
    while not condition() and time.monotonic() < end:
        time.sleep(0.1)
    return condition()


def open_page(name, row):
    """Opens a window from the menu, again if a change of the focus has closed that."""
    main = window_when_still("Platterdex")
    for _ in range(10):
        click(main, 219, 28, button=3)
        if not comes(lambda: window("menu"), 5.0):
            continue
        run("xdotool", "key", *["Down"] * row, "Return")
        if comes(lambda: window(name), 5.0):
            break
        if window("menu"):
            run("xdotool", "key", "Escape")
            comes(lambda: not window("menu"), 5.0)
    return window_when_still(name)


def close(shown, name):
    """Closes a window as a hand does; xdotool's "windowclose" would take it away behind the application's back."""
    run("xdotool", "windowactivate", "--sync", shown)
    run("xdotool", "key", "alt+F4")
    until(f"the end of the window {name}", lambda: not window(name))


def close_with_picture(name, pictures):
    shown = window_when_still(name)
    picture(pictures, name.replace(" ", "-").lower())
    close(shown, name)
