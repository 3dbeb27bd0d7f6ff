"""The browser as a hand uses it, in a real window, a part at a time:

lists   made, filled, moved, renamed, exported and deleted by menus, keys and drags
songs   edited in a cell, stars by the mouse, the automix list, a foreign library, rules
files   imports with a damaged file and a list of what failed, one that is ended by its button, a drop from another program
entries every other entry of the menus, by keys, with what each changes

The library's file tells what was done. After each turn of the hand the test waits until the program sleeps and the picture stands
still.

usage: browser_window.py PROGRAM DRAG_SOURCE PART [FOLDER]    pictures of the window are left in FOLDER"""

import ctypes
import os
import sqlite3
import subprocess
import sys
import tempfile
import time
import zlib
from pathlib import Path

sys.path.insert(0, str(Path(__file__).resolve().parents[3] / "scripts"))

from window_rest import wait_for_rest  # noqa: E402

FORMATS = {
    "mp3": ["-c:a", "libmp3lame"],
    "flac": [],
    "ogg": ["-c:a", "libvorbis"],
    "m4a": ["-c:a", "aac"],
    "wav": [],
    "aiff": ["-write_id3v2", "1"],
    "wma": ["-c:a", "wmav2"],
}
FOREIGN = """<?xml version="1.0" encoding="UTF-8"?><plist version="1.0"><dict><key>Tracks</key><dict><key>7</key><dict>
<key>Track ID</key><integer>7</integer><key>Name</key><string>Far</string><key>Location</key><string>file://localhost{}</string>
</dict></dict><key>Playlists</key><array><dict><key>Name</key><string>Abroad</string><key>Playlist ID</key><integer>9</integer>
<key>Playlist Items</key><array><dict><key>Track ID</key><integer>7</integer></dict></array></dict></array></dict></plist>"""

# Of the browser's own window, in its pixels.
ARROW_X, TREE_X, TREE_TOP, ROW = 8, 60, 37, 24
TABLE_X, HEADER, TABLE_TOP = 420, 65, 90
MENU_TOP, MENU_LINE = 14, 9
COLUMNS = ["Status", "#", "Title", "Artist", "Album", "Time", "BPM", "Key", "Genre", "Comments", "Grouping", "Track Number",
           "Year", "Rating"]  # of the header's menu, behind the two entries on widths and a line
NEXT_COLUMNS = 700, 66, 380, 16  # of the header, on the screen, where the menu does not lie
SECOND_STAR = 866  # while there is no column of albums
JOB_BUTTON = 818, 868
# Of the screen, each with its width and height.
SEARCH, CANCEL, SEARCH_IN, FITS, GRIDS, FILES_X = 37, 606, 670, 770, 900, 1180
ROWS, PREVIEW = (320, 92, 600, 400), (970, 866, 400, 20)
MANY = 30000  # files, an import of which lasts longer than a click
DOUBLE_CLICK = 0.42  # seconds; a second press of a button within them is the other half of a double click


def run(*command):
    return subprocess.run(command, check=True, capture_output=True, text=True, timeout=60).stdout


class Screen:
    """The display's pixels, read through the X library, of which every program here has one."""

    class Image(ctypes.Structure):
        _fields_ = [("width", ctypes.c_int), ("height", ctypes.c_int), ("xoffset", ctypes.c_int), ("format", ctypes.c_int),
                    ("data", ctypes.c_void_p), ("orders", ctypes.c_int * 5), ("bytes_per_line", ctypes.c_int)]

    def __init__(self):
        self.x = ctypes.CDLL("libX11.so.6")
        self.x.XOpenDisplay.restype = ctypes.c_void_p
        self.x.XDefaultRootWindow.argtypes = [ctypes.c_void_p]
        self.x.XDefaultRootWindow.restype = ctypes.c_ulong
        self.x.XGetImage.argtypes = [ctypes.c_void_p, ctypes.c_ulong, *[ctypes.c_int] * 2, *[ctypes.c_uint] * 2,
                                     ctypes.c_ulong, ctypes.c_int]
        self.x.XFree.argtypes = [ctypes.c_void_p]
        self.x.XGetImage.restype = ctypes.POINTER(self.Image)
        self.display = self.x.XOpenDisplay(None)
        self.root = self.x.XDefaultRootWindow(self.display)
        self.size = [int(word) for word in run("xdotool", "getdisplaygeometry").split()]

    def sum(self, x=0, y=0, width=None, height=None):
        z_pixmap, all_planes = 2, (1 << 64) - 1
        size = [width or self.size[0], height or self.size[1]]
        image = self.x.XGetImage(self.display, self.root, x, y, *size, all_planes, z_pixmap)
        found = zlib.crc32(ctypes.string_at(image.contents.data, image.contents.bytes_per_line * image.contents.height))
        self.x.XFree(image.contents.data)
        self.x.XFree(image)
        return found


def windows(name):
    """The windows of a name, a regular expression. A search fails when any window goes while it looks, so it is one of several."""
    for _ in range(3):
        found = subprocess.run(["xdotool", "search", "--onlyvisible", "--name", f"^{name}$"], capture_output=True, text=True)
        if found.stdout:
            break
    return found.stdout.split()


def comes(condition, seconds=20.0):
    end = time.monotonic() + seconds
    while not (value := condition()) and time.monotonic() < end:
        time.sleep(0.1)
    return value


def keys(*names):
    run("xdotool", "key", "--delay", "30", *names)


def type_text(text):
    run("xdotool", "type", "--delay", "25", text)


def focused():
    return subprocess.run(["xdotool", "getwindowfocus"], capture_output=True, text=True).stdout.strip()


def geometry(window):
    lines = run("xdotool", "getwindowgeometry", "--shell", window).split()
    found = {name: int(value) for name, value in (line.split("=") for line in lines)}
    return found["WIDTH"], found["HEIGHT"]


class Browser:
    """The program with its browser in a window of its own."""

    def __init__(self, program, root, pictures, environment):
        self.root, self.pictures = root, pictures
        self.library = root / "SongManager" / "px_music_library.sqlite"
        self.process = subprocess.Popen([program, "--root", root], env=environment,
                                        stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        self.screen = Screen()
        self.pressed = 0.0
        self.until("the program's window", lambda: windows("Platterdex"), 60.0)
        self.rest()
        self.picture("in-the-window")
        main = windows("Platterdex")[-1]
        width, _ = geometry(main)
        places = [342, 334, 350] * 8  # the button above the table, below the notice of the missing device
        while places and not comes(lambda: windows("Song Manager"), 1.0):
            self.click(0.77 * width - 15, places.pop(0), window=main)
        self.until("the browser in a window of its own", lambda: windows("Song Manager"))
        self.window = windows("Song Manager")[-1]
        run("xdotool", "windowmove", self.window, "100", "10", "windowsize", self.window, "1290", "880")
        self.until("the window's place", lambda: geometry(self.window) == (1290, 880))
        self.rest()

    def rest(self, seconds=2.0):
        """Waits until the program has taken all that was done, and nothing moves; not for long, as a caret blinks."""
        wait_for_rest([self.process.pid], self.screen.sum, seconds)

    def until(self, what, condition, seconds=60.0):
        if not comes(condition, seconds):
            self.picture("failed")
            raise SystemExit(f"FAILED: {what}: not seen within {seconds} s")
        print(f"{what}: seen", flush=True)
        self.rest()  # the library's file has it before the window

    def picture(self, name):
        if self.pictures:
            size = "x".join(run("xdotool", "getdisplaygeometry").split())
            run("ffmpeg", "-loglevel", "error", "-y", "-f", "x11grab", "-video_size", size, "-i", os.environ["DISPLAY"],
                "-frames:v", "1", f"{self.pictures}/{name}.png")

    def ask(self, sql):
        end = time.monotonic() + 60.0
        while True:
            try:
                with sqlite3.connect(f"file:{self.library}?mode=ro", uri=True) as library:
                    return library.execute(sql).fetchall()
            except sqlite3.OperationalError:  # the program is just opening it
                if time.monotonic() > end:
                    raise
                time.sleep(0.1)

    def value(self, sql):
        return self.ask(sql)[0][0]

    # The hand

    def move(self, x, y, window=None):
        run("xdotool", "mousemove", "--window", window or self.window, "--", str(round(x)), str(round(y)))

    def click(self, x, y, button=1, window=None, hold=0.06):
        self.move(x, y, window)
        time.sleep(max(0.0, self.pressed + DOUBLE_CLICK - time.monotonic()))
        run("xdotool", "mousedown", str(button), "sleep", str(hold), "mouseup", str(button))
        self.pressed = time.monotonic()
        self.rest()

    def show(self, source):
        """Opens a source, and gives its rows time to come."""
        self.click(*self.source(source))

    def again(self, what, act, done):
        """Does what may be done twice until it is seen: a busy machine misses a hand."""
        for attempt in range(3):
            if attempt:
                print(f"{what}: tried again", flush=True)
            act()
            self.rest()
            if comes(done, 8.0):
                break
        self.until(what, done)

    def drag(self, what, start, end, done):
        """Drags as a hand does."""
        def act():
            self.move(*start)
            run("xdotool", "mousedown", "1")
            for step in range(1, 13):
                self.move(start[0] + (end[0] - start[0]) * step / 12, start[1] + (end[1] - start[1]) * step / 12)
            self.rest()
            run("xdotool", "mouseup", "1")
            self.pressed = time.monotonic()
            self.rest()

        self.again(what, act, done)

    def tree(self):
        """The texts of the tree's rows, as they stand while its headings are open."""
        lists = lambda table: [name for (name,) in self.ask(f"SELECT name FROM {table} ORDER BY sort_order")]
        rows = ["Library", "Albums", "Artists", "Genres", "Playlists", "Create Playlist", *lists("playlists")]
        return [*rows, "Smart Playlists", "Create Smart Playlist", *lists("smart_playlists"), "Automix List",
                "Recommendation List"]

    def source(self, name):
        return TREE_X, TREE_TOP + ROW * self.tree().index(name)

    def song(self, row, x=TABLE_X):
        return x, TABLE_TOP + ROW * row

    def choose(self, place, entry, *then, done, name=None):
        """Opens a menu by the right button, and presses an entry; `then` are further ones in the menus of entries. From 1 on,
        in front of the first line that parts them. Again if it is not done: a change of the focus closes menus."""
        what = name or f"the menu at {place}"
        for attempt in range(4):
            if attempt:
                print(f"{what}: tried again", flush=True)
            self.until(f"{what}: no other menu", lambda: not windows("menu"))
            self.click(*place, button=3, hold=0.4)  # a slow hand chooses nothing by it
            if name and comes(lambda: windows("menu"), 8.0):
                self.picture(f"menu-{name}")
            if self.press_entries([entry, *then]) and comes(done, 8.0):
                break
        self.until(f"{what}: done", done)

    def press_entries(self, numbers):
        """False if a menu does not come, or goes before it is pressed."""
        known = []
        for number in numbers:
            opened = comes(lambda: [each for each in windows("menu") if each not in known], 8.0)
            if not opened:
                return False
            known.append(opened[-1])
            self.press_entry(opened[-1], number)
        for _ in range(3):  # a menu takes no press that comes just with it
            if comes(lambda: known[-1] not in windows("menu"), 4.0):
                break
            self.press_entry(known[-1], numbers[-1])
        self.until("the end of the menu", lambda: not windows("menu"))
        return True

    def press_entry(self, menu, number):
        try:
            self.click(40, MENU_TOP + ROW * (number - 1), window=menu)
        except subprocess.CalledProcessError:
            if menu in windows("menu"):
                raise  # else it has just gone

    def pick(self, what, place, *steps, done):
        """Opens a menu by the right button and chooses by keys: so many entries down, then on in the menu of that entry."""
        def act():
            self.until(f"{what}: no other menu", lambda: not windows("menu"))
            self.click(*place, button=3, hold=0.4)
            if not comes(lambda: windows("menu"), 8.0):
                return
            self.picture("pick-" + what.replace(" ", "-"))
            keys(*["Down"] * steps[0])
            for step in steps[1:]:
                keys("Right", *["Down"] * (step - 1))
            self.rest()
            self.picture("picked-" + what.replace(" ", "-"))
            keys("Return")

        self.again(what, act, done)

    def changes(self, place):
        """A condition: this part of the screen is not as it is now."""
        before = self.screen.sum(*place)
        return lambda: self.screen.sum(*place) != before

    def tell(self, sql):
        """Writes to the library as another program does."""
        with sqlite3.connect(self.library, timeout=60.0) as library:
            library.execute(sql)

    def choose_and_answer(self, place, *entries, title, text=None, name=None):
        """Chooses what asks in a dialog, and answers that."""
        self.choose(place, *entries, done=lambda: windows(title), name=name)
        self.answer(title, text)

    def answer(self, title, text=None):
        """Types into a dialog, or takes its Yes."""
        self.until(f"the dialog {title}", lambda: windows(title))
        self.take_keyboard(title)
        self.picture("dialog-" + "".join(c for c in title.lower() if c.isalnum()))

        def act():
            if not windows(title):
                return
            self.take_keyboard(title)
            if text is None:
                keys("y")
            else:
                keys("ctrl+a")
                type_text(text)
                keys("Return")

        self.again(f"the end of {title}", act, lambda: not windows(title))

    def take_keyboard(self, title):
        """Waits until a window has the keyboard, which its manager gives it."""
        self.rest()
        if not comes(lambda: focused() in windows(title), 8.0) and windows(title):
            subprocess.run(["xdotool", "windowfocus", windows(title)[-1]], timeout=60)
        self.until(f"the keyboard in {title}", lambda: focused() in windows(title) or not windows(title))


def make_songs(folder):
    """A short song of each format, with tags and, where the format has them, a cover."""
    folder.mkdir(parents=True)
    for number, (kind, codec) in enumerate(FORMATS.items()):
        tone = f"sine=frequency={220 + 40 * number}:duration=3"
        tags = {"title": f"Tone {number} {kind}", "artist": f"Artist {number % 2}", "album": "Tones", "genre": "Test"}
        run("ffmpeg", "-loglevel", "error", "-f", "lavfi", "-i", tone, *codec,
            *[word for key, value in tags.items() for word in ("-metadata", f"{key}={value}")], f"{folder}/{number}.{kind}")


def make_lists(browser):
    browser.choose_and_answer(browser.source("Playlists"), 1, title="Enter Playlist Name", text="Alpha", name="playlists")
    browser.until("a playlist made by the menu", lambda: "Alpha" in browser.tree())
    browser.again("the question for a name", lambda: browser.click(*browser.source("Create Playlist")),
                  lambda: windows("Enter Playlist Name"))
    browser.answer("Enter Playlist Name", "Beta")
    browser.until("a playlist made by a click", lambda: "Beta" in browser.tree())


def count(browser, name):
    return browser.value("SELECT COUNT(*) FROM playlists_songs s JOIN playlists p ON p.id = s.playlist_id "
                         f"WHERE p.name = '{name}'")


def fill_lists(browser):
    browser.show("Library")
    browser.click(*browser.song(0))
    keys("ctrl+a")
    browser.drag("all songs in Alpha by a drag", browser.song(1), browser.source("Alpha"),
                 lambda: count(browser, "Alpha") == len(FORMATS))
    browser.click(*browser.song(1))
    keys("ctrl+p")
    browser.until("the menu of playlists by keys", lambda: windows("menu"))
    keys("Down", "Down", "Return")
    browser.until("a song in Beta by keys", lambda: count(browser, "Beta") == 1)
    browser.drag("a list in a list by a drag", browser.source("Alpha"), browser.source("Beta"),
                 lambda: count(browser, "Beta") == 1 + len(FORMATS))
    browser.show("Alpha")
    order = "SELECT group_concat(song_id) FROM (SELECT song_id FROM playlists_songs WHERE playlist_id = " \
            "(SELECT id FROM playlists WHERE name = 'Alpha') ORDER BY id)"
    before = browser.value(order)
    browser.click(*browser.song(0))
    browser.drag("another order by a drag", browser.song(0), browser.song(3), lambda: browser.value(order) != before)
    browser.click(*browser.song(0))
    keys("ctrl+z")
    browser.until("the order before it by Ctrl+Z", lambda: browser.value(order) == before)
    keys("Delete")
    browser.answer("REMOVE ITEM")
    browser.until("a song taken out", lambda: count(browser, "Alpha") == len(FORMATS) - 1)


def rearrange_lists(browser):
    browser.choose(browser.source("Beta"), 3, name="playlist",  # up
                   done=lambda: browser.tree().index("Beta") < browser.tree().index("Alpha"))
    browser.choose(browser.source("Beta"), 4, name="playlist-up",  # down
                   done=lambda: browser.tree().index("Beta") > browser.tree().index("Alpha"))

    def rename():
        before = browser.screen.sum()
        browser.choose(browser.source("Beta"), 2, done=lambda: browser.screen.sum() != before)
        keys("ctrl+a")
        type_text("Gamma")
        keys("Return")

    browser.again("Beta renamed", rename, lambda: "Gamma" in browser.tree())


def export(browser, folder):
    for entry, kind, title, mark in ((1, "m3u", "Save the playlist...", "#EXTM3U"),
                                     (2, "html", "Save the webpage...", "<td>")):
        file = folder / f"out.{kind}"
        browser.choose_and_answer(browser.source("Alpha"), 6, entry, title=title.replace(".", "[.]"), text=str(file))
        browser.until(f"the export {file.name}", lambda: file.exists() and mark in file.read_text())
    copy = folder / "copy.sqlite"
    browser.choose_and_answer(browser.source("Library"), 2, title="Save Backup Collection File As", text=str(copy), name="library")
    browser.until("the backup", lambda: copy.exists() and copy.stat().st_size > 0)


def edit_songs(browser):
    def rename():
        browser.show("Library")
        browser.click(*browser.song(0))
        keys("F2")
        browser.rest()
        keys("ctrl+a")
        type_text("Renamed")
        browser.picture("cell")
        keys("Return")

    browser.again("a title edited in its cell", rename,
                  lambda: browser.value("SELECT COUNT(*) FROM songs WHERE title = 'Renamed'"))


def automix(browser):
    def songs():
        return browser.value("SELECT COUNT(*) FROM automix_songs")

    browser.show("Library")
    browser.click(*browser.song(0))
    browser.choose(browser.song(0), 4, name="row", done=lambda: songs() == 1)  # of a song that is selected
    browser.choose(browser.source("Alpha"), 5, name="list", done=lambda: songs() == 1 + len(FORMATS))
    browser.choose_and_answer(browser.source("Automix List"), 1, title="Confirm clear", name="automix")
    browser.until("an empty automix list", lambda: songs() == 0)


def rate(browser):
    browser.show("Library")
    for column in ("Album", "Rating"):  # that of the stars takes the place
        before = browser.screen.sum(*NEXT_COLUMNS)
        browser.choose((TABLE_X, HEADER), 3 + COLUMNS.index(column) + MENU_LINE / ROW, name="columns",
                       done=lambda: browser.screen.sum(*NEXT_COLUMNS) != before)
    browser.picture("rating")
    browser.again("two stars by the mouse", lambda: browser.click(*browser.song(0, SECOND_STAR)),
                  lambda: browser.value("SELECT COUNT(*) FROM songs WHERE rating = 2") == 1)


def foreign(browser, folder):
    heading = TREE_TOP + ROW * len(browser.tree())
    for _ in range(3):  # there is nothing to open while the foreign library is being read
        browser.click(ARROW_X, heading)
        browser.click(TREE_X, heading + ROW, button=3, hold=0.4)
        if comes(lambda: windows("menu")):
            keys("Escape")
            browser.until("the end of the first menu", lambda: not windows("menu"))
            break
    file = folder / "abroad.m3u"
    browser.choose_and_answer((TREE_X, heading + ROW), 1, 1, title="Save the playlist[.][.][.]", text=str(file), name="foreign")
    browser.until("the export of a foreign list", lambda: file.exists() and "/0.mp3" in file.read_text())


def smart_lists(browser):
    browser.choose_and_answer(browser.source("Smart Playlists"), 1, title="Enter smart playlist name", text="Best")
    rules = "Edit Smart Playlist: Best"
    browser.until("the editor of rules", lambda: windows(rules))
    browser.take_keyboard(rules)
    browser.picture("rules")
    keys("Return")
    browser.until("the end of the editor", lambda: not windows(rules))
    browser.until("a smart playlist", lambda: "Best" in browser.tree())
    browser.choose_and_answer(browser.source("Best"), 2, title="Confirm delete")
    browser.until("the smart playlist deleted", lambda: "Best" not in browser.tree())


def imports(browser, folder):
    folder.mkdir()
    run("ffmpeg", "-loglevel", "error", "-f", "lavfi", "-i", "sine=duration=2", f"{folder}/good.mp3")
    (folder / "damaged.mp3").write_bytes(b"no sound at all")
    browser.choose_and_answer(browser.source("Library"), 1, title="Please select a song directory[.][.][.]", text=str(folder))
    browser.until("the song of a folder", lambda: browser.value("SELECT COUNT(*) FROM songs WHERE filename LIKE '%good.mp3'"))
    browser.picture("failures-line")
    browser.again("the list of what failed", lambda: browser.click(*JOB_BUTTON), lambda: windows("Importing Music Files"))
    browser.picture("failures")

    def close():
        browser.take_keyboard("Importing Music Files")
        keys("Escape")

    browser.again("the end of that list", close, lambda: not windows("Importing Music Files"))


def cancel(browser, song, folder):
    """Ends an import by its button: what it has read by then stays."""
    folder.mkdir()
    for number in range(MANY):
        os.link(song, folder / f"{number}{song.suffix}")

    def read():
        return browser.value("SELECT COUNT(*) FROM songs WHERE filename LIKE '%/many/%'")

    def rests():
        before = read()
        time.sleep(1.0)
        return read() == before

    title = "Please select a song directory[.][.][.]"
    browser.choose(browser.source("Library"), 1, done=lambda: windows(title))
    browser.take_keyboard(title)
    keys("ctrl+a")
    type_text(str(folder))
    browser.move(*JOB_BUTTON)  # where a press ends the import, which does not wait
    keys("Return")
    if not comes(read, 60.0):
        browser.until("an import at work", read, 0.1)
    run("xdotool", "mousedown", "1", "sleep", "0.06", "mouseup", "1")
    browser.until("its end by the button", rests, 60.0)
    browser.picture("import-ended")
    if read() == MANY:
        raise SystemExit("FAILED: the import went on")


def outside(browser, work):
    file = work / "outside.wav"
    run("ffmpeg", "-loglevel", "error", "-f", "lavfi", "-i", "sine=duration=1", str(file))
    dragged = subprocess.Popen([browser.drag_source, file])
    try:
        browser.until("the other program", lambda: windows("Drag source"))
        before = browser.value("SELECT COUNT(*) FROM songs")
        x, y = browser.song(2)

        def drop():
            run("xdotool", "mousemove", "45", "45", "mousedown", "1")
            for step in range(1, 13):
                run("xdotool", "mousemove", str(45 + 2 * step), str(45 + step))
            for step in range(8):  # each is an answer of the window below to the program that drags
                browser.move(x + step, y + step)
                browser.rest()
            run("xdotool", "mouseup", "1")

        browser.again("a file dropped from another program", drop,
                      lambda: browser.value("SELECT COUNT(*) FROM songs") == before + 1)
    finally:
        dragged.kill()


def delete(browser):
    def press():
        browser.show("Gamma")
        keys("Delete")

    browser.again("the question before a playlist goes", press, lambda: windows("Confirm delete"))
    browser.answer("Confirm delete")
    browser.until("a playlist deleted by its key", lambda: "Gamma" not in browser.tree())
    browser.choose_and_answer(browser.source("Alpha"), 1, title="Confirm delete")
    browser.until("a playlist deleted by its menu", lambda: "Alpha" not in browser.tree())


def clear_library(browser):
    browser.choose_and_answer(browser.source("Library"), 3, title="Confirm delete")
    browser.until("an empty library", lambda: browser.value("SELECT COUNT(*) FROM songs") == 0)


def song_entries(browser, work):
    root, row = work / "root", browser.song(0)
    one, shown = "FROM songs WHERE filename LIKE '%/0.mp3'", work / "shown"
    plays = lambda: sum(each.read_text().count("/0.mp3") for each in root.rglob("history/*"))
    browser.show("Alpha")
    browser.click(*row)

    def edit():
        browser.pick("edit", row, 1, done=lambda: True)
        keys("ctrl+a")
        type_text("By Menu")
        keys("Return")

    browser.again("a title edited by the menu", edit, lambda: browser.value(f"SELECT title {one}") == "By Menu")
    for deck, key in enumerate(("space", "Return")):
        browser.pick(f"load to deck {deck + 1}", row, 2 + deck, done=browser.changes(ROWS))
        subprocess.run(["xdotool", "windowfocus", "--sync", windows("Platterdex")[-1]], timeout=60)
        browser.again(f"deck {deck + 1} plays it", lambda key=key: keys(key), lambda deck=deck: plays() == deck + 1)
        subprocess.run(["xdotool", "windowfocus", "--sync", browser.window], timeout=60)
    browser.pick("preview", row, 5, done=browser.changes(PREVIEW))
    browser.pick("reset played status", row, 6, done=browser.changes(ROWS))
    browser.tell(f"UPDATE songs SET playcount = 9, title = 'Wrong' WHERE id IN (SELECT id {one})")
    browser.pick("reset played statistics", row, 7, done=lambda: browser.value(f"SELECT playcount {one}") == 0)
    browser.pick("reload tags", row, 8, done=lambda: browser.value(f"SELECT title {one}") == "By Menu")
    browser.pick("show in explorer", row, 9, done=lambda: shown.exists() and str(root / "audio") in shown.read_text())
    browser.tell(f"UPDATE songs SET analyzed = 0 WHERE id IN (SELECT id {one})")
    browser.pick("analyze", row, 10, done=lambda: browser.value(f"SELECT analyzed {one}"))
    browser.pick("find similar songs", row, 11, done=browser.changes(ROWS))
    browser.show("Alpha")
    browser.pick("remove", row, 12, done=lambda: windows("REMOVE ITEM"))
    browser.answer("REMOVE ITEM")
    browser.until("a song taken out by the menu", lambda: count(browser, "Alpha") == len(FORMATS) - 1)
    browser.pick("add to a playlist", row, 13, 1, done=lambda: count(browser, "Alpha") == len(FORMATS))
    browser.pick("add to a new playlist", row, 13, 2, done=lambda: windows("Enter Playlist Name"))
    browser.answer("Enter Playlist Name", "New")
    browser.until("a playlist of a song", lambda: count(browser, "New") == 1)
    browser.pick("undo", row, 14, done=lambda: "New" not in browser.tree())


def source_entries(browser, work):
    audio, source = work / "root" / "audio", browser.source
    preferences = work / "root" / "setup" / "preferences.txt"
    kept = lambda line: lambda: line in preferences.read_text().split("\n")
    order = lambda table: browser.value(f"SELECT group_concat(name) FROM (SELECT name FROM {table} ORDER BY sort_order)")
    listed = "SELECT group_concat(song_id) FROM (SELECT song_id FROM playlists_songs ORDER BY id)"
    name = "Select a playlist file"

    browser.show("Library")
    dim = browser.changes(ROWS)
    (work / "moved").mkdir()
    os.rename(audio / "4.wav", work / "moved" / "4.wav")
    browser.until("a song whose file has gone grows dim", dim)
    (audio / "new.mp3").write_bytes((audio / "0.mp3").read_bytes())
    missing = "Please select the folder that holds the missing files[.][.][.]"
    for what, place, steps, done, title, text in (
            ("show missing files", source("Library"), [4], browser.changes(ROWS), None, None),
            ("relocate missing files", source("Library"), [6], lambda: windows(missing), missing, str(work / "moved")),
            ("look for new files", source("Library"), [5],
             lambda: browser.value("SELECT COUNT(*) FROM songs WHERE filename LIKE '%/new.mp3'"), None, None),
            ("write keys as 8A", source("Library"), [7], kept("keyNotation=wheel"), None, None),
            ("automix export", source("Automix List"), [2, 1], lambda: windows("Save the playlist[.][.][.]"),
             "Save the playlist[.][.][.]", str(work / "automix.m3u")),
            ("automix goes on", source("Automix List"), [3], kept("automixByFit=yes"), None, None),
            ("recommendations export", source("Recommendation List"), [2, 2], lambda: windows("Save the webpage[.][.][.]"),
             "Save the webpage[.][.][.]", str(work / "similar.html")),
            ("recommendations by tempo", source("Recommendation List"), [5], lambda: "similarBy=" in preferences.read_text(),
             None, None),
            ("clear recommendations", source("Recommendation List"), [1], lambda: windows("Confirm clear"), "Confirm clear",
             None)):
        browser.pick(what, place, *steps, done=done)
        if title:
            browser.answer(title, text)
    browser.until("a song found again", lambda: browser.value("SELECT COUNT(*) FROM songs WHERE filename LIKE '%/moved/4.wav'"))
    browser.until("exports of the lists", lambda: (work / "automix.m3u").exists() and (work / "similar.html").exists())

    (work / "back.m3u").write_text(f"{audio}/1.flac\n{audio}/2.ogg\n")
    browser.pick("import a playlist", source("Playlists"), 2, done=lambda: windows(name))
    browser.answer(name, str(work / "back.m3u"))
    browser.answer("Enter Playlist Name", "Back")
    browser.until("a playlist out of a file", lambda: count(browser, "Back") == 2)
    browser.show("Back")
    browser.again("songs sorted by a click on the header", lambda: browser.click(TABLE_X + 60, HEADER), browser.changes(ROWS))
    browser.again("songs sorted backwards", lambda: browser.click(TABLE_X + 60, HEADER), browser.changes(ROWS))
    before = browser.value(listed)
    browser.pick("copy to play order", source("Back"), 7, done=lambda: browser.value(listed) != before)
    browser.pick("fit a column", (TABLE_X + 60, HEADER), 1, done=browser.changes(ROWS))
    browser.pick("fit all columns", (TABLE_X + 60, HEADER), 2, done=browser.changes(ROWS))

    smart, editor = "Recently Added", "Edit Smart Playlist: Recently Added"
    browser.pick("edit rules", source(smart), 1, done=lambda: windows(editor))
    browser.take_keyboard(editor)
    keys("Return")
    browser.until("the end of the rules", lambda: not windows(editor))
    before = order("smart_playlists")
    browser.pick("smart list up", source(smart), 4, done=lambda: order("smart_playlists") != before)
    browser.pick("smart list down", source(smart), 5, done=lambda: order("smart_playlists") == before)
    browser.pick("smart list to automix", source(smart), 6,
                 done=lambda: browser.value("SELECT COUNT(*) FROM automix_songs") == len(FORMATS) + 1)
    browser.pick("smart list export", source(smart), 7, 1, done=lambda: windows("Save the playlist[.][.][.]"))
    browser.answer("Save the playlist[.][.][.]", str(work / "smart.m3u"))
    browser.until("the export of a smart list", lambda: (work / "smart.m3u").exists())


def search_entries(browser, work):
    preferences = work / "root" / "setup" / "preferences.txt"
    browser.show("Library")
    chosen = lambda: "fields=artist,album" in preferences.read_text()
    for what, x, steps, done in (("a field of the search", SEARCH_IN, 1, chosen), ("a span of tempos", FITS, 3, lambda: True),
                                 ("all tempos", FITS, 1, lambda: True)):
        browser.again(f"the menu of {what}", lambda x=x: browser.click(x, SEARCH), lambda: windows("menu"))
        browser.picture("menu-" + what.replace(" ", "-"))
        keys(*["Down"] * steps, "Return")
        browser.until(what, lambda done=done: done() and not windows("menu"))
    keys("ctrl+f")
    browser.rest()
    none = browser.changes(ROWS)
    type_text("nothing of this kind")
    browser.until("a search that finds nothing", none)
    browser.rest()
    browser.again("all songs after a press on cancel", lambda: browser.click(CANCEL, SEARCH), browser.changes(ROWS))
    browser.again("songs of doubtful grids", lambda: browser.click(GRIDS, SEARCH), browser.changes(ROWS))
    browser.again("all songs again", lambda: browser.click(GRIDS, SEARCH), browser.changes(ROWS))


def file_entries(browser, work):
    """Of the column browser, where the songs' folder is the second one in sight."""
    row, shown, one = (FILES_X, TREE_TOP), work / "shown", "FROM songs WHERE filename LIKE '%/0.mp3'"
    shown.unlink(missing_ok=True)
    browser.pick("file preview", row, 3, done=browser.changes(PREVIEW))
    browser.tell(f"DELETE {one}")
    browser.pick("file import", row, 4, done=lambda: browser.value(f"SELECT COUNT(*) {one}") == 1)
    browser.pick("file in explorer", row, 5, done=shown.exists)


def lists(browser, work):
    make_lists(browser)
    fill_lists(browser)
    rearrange_lists(browser)
    export(browser, work)
    delete(browser)


def songs(browser, work):
    automix(browser)
    edit_songs(browser)
    rate(browser)
    foreign(browser, work)
    smart_lists(browser)


def files(browser, work):
    imports(browser, work / "more")
    outside(browser, work)
    cancel(browser, work / "root" / "audio" / "4.wav", work / "many")
    clear_library(browser)


def entries(browser, work):
    song_entries(browser, work)
    source_entries(browser, work)
    search_entries(browser, work)
    file_entries(browser, work)


def main():
    program, drag_source, part, pictures = sys.argv[1], sys.argv[2], sys.argv[3], (sys.argv[4] if len(sys.argv) > 4 else None)
    if pictures:
        os.makedirs(pictures, exist_ok=True)
    with tempfile.TemporaryDirectory() as work:
        work = Path(work)
        root = work / "root"
        make_songs(root / "audio")
        (work / "Music" / "iTunes").mkdir(parents=True)
        (work / "Music" / "iTunes" / "iTunes Music Library.xml").write_text(FOREIGN.format(root / "audio" / "0.mp3"))
        run(program, "import", str(root / "audio"), "--root", str(root))
        if part in ("songs", "entries"):
            run(program, "playlist", "create", "Alpha", str(root / "audio"), "--root", str(root))
        opener = work / "bin" / "xdg-open"  # takes the place of the desktop's
        opener.parent.mkdir()
        opener.write_text(f'#!/bin/sh\necho "$@" >>{work}/shown\n')
        opener.chmod(0o755)
        browser = Browser(program, root, pictures, {**os.environ, "HOME": str(work), "PATH": f"{opener.parent}:{os.environ['PATH']}",
                                                    "JACK_NO_START_SERVER": "1", "JACK_DEFAULT_SERVER": f"platterdex-none-{os.getpid()}"})
        browser.drag_source = drag_source
        try:
            {"lists": lists, "songs": songs, "files": files, "entries": entries}[part](browser, work)
            if browser.process.poll() is not None:
                raise SystemExit("FAILED: the program is gone")
        finally:
            browser.process.terminate()
            browser.process.wait(120)


main()
