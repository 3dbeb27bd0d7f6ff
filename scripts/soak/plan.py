"""What a night's hands do, decided by a seed: a list of timed actions. The same seed and duration give the same list."""

import random
from dataclasses import dataclass

DECKS = "ABCD"
WORDS = ("light", "copper", "night", "relay", "slow", "tide", "ff", "zzz", "bpm:120-128", "rating:>2")
MENU_ROWS = 8  # of the gear that open windows; 0 stands for F1, the manual


@dataclass(frozen=True)
class Action:
    at: float  # seconds from the start
    kind: str  # press, release, tap, move, turn, play, stop, record; for the screen: key, type, answer, window, size, import
    what: str  # a command's constant, keys, a word, a window
    value: float = 0.0

    def line(self):
        return f"{self.at:10.3f} {self.kind} {self.what} {self.value:.3f}"


class Hands:
    """Draws phrases, one after the other and with pauses, until the time is over."""

    def __init__(self, seed, seconds):
        self.random = random.Random(seed)
        self.seconds = seconds
        self.actions = []
        self.now = 0.0

    def add(self, kind, what, value=0.0, after=0.0):
        self.actions.append(Action(self.now + after, kind, what, value))

    def deck(self):
        return self.random.choice(DECKS)

    def sweep(self, what, begin, end, seconds, steps):
        """A hand moves a fader or a knob from one place to another."""
        for step in range(1, steps + 1):
            self.add("move", what, begin + (end - begin) * step / steps, seconds * step / steps)
        self.now += seconds

    def hold(self, what, seconds):
        self.add("press", what)
        self.add("release", what, after=seconds)
        self.now += seconds

    # The phrases.

    def mix(self):
        """A song of the list onto a deck, in time with the others, and a blend into it."""
        deck = self.deck()
        for _ in range(self.random.randint(1, 6)):
            self.add("tap", self.random.choice(("PLAYLIST_DOWN", "PLAYLIST_UP", "PLAYLIST_DOWN")))
            self.now += 0.25
        self.add("stop", deck)
        self.now += 0.5
        self.add("tap", f"PLAYLIST_LOAD_{deck}")
        self.now += 4.0
        self.add("play", deck)
        self.now += 1.0
        self.add("tap", f"SYNC_{deck}")
        target = self.random.random()
        self.sweep("CROSSFADER", 1.0 - target, target, 8.0, 80)

    def equaliser(self):
        deck, band = self.deck(), self.random.choice(("HIGH", "MID", "LOW"))
        self.add("tap", f"EQ_{band}_KILL_{deck}")
        self.sweep(f"EQ_{band}_{deck}", 0.5, self.random.random(), 2.0, 40)
        self.add("tap", f"EQ_{band}_KILL_{deck}")
        self.add("tap", f"EQ_{band}_RESET_{deck}", after=0.5)

    def loop(self):
        deck = self.deck()
        self.add("tap", f"LOOP_{deck}")
        for _ in range(self.random.randint(0, 4)):
            self.now += 0.5
            self.add("tap", self.random.choice((f"LOOP_HALF_{deck}", f"LOOP_DOUBLE_{deck}", f"LOOP_MOVE_FORWARD_{deck}")))
        self.now += 2.0
        self.add("tap", f"LOOP_{deck}")

    def cues(self):
        deck = self.deck()
        for _ in range(self.random.randint(3, 12)):
            self.add("tap", f"HOT_CUE_{self.random.randint(1, 8)}_{deck}")
            self.now += self.random.choice((0.12, 0.25, 0.5))
        if self.random.random() < 0.3:
            self.add("tap", f"DELETE_HOT_CUE_{self.random.randint(1, 8)}_{deck}")

    def scratch(self):
        deck = self.deck()
        self.add("press", f"JOG_SCRATCH_ON_{deck}")
        for _ in range(self.random.randint(2, 8)):
            direction = self.random.choice((-1, 1))
            for step in range(20):
                self.add("turn", f"JOG_{deck}", direction, step * 0.008)
            self.now += 0.2
        self.add("release", f"JOG_SCRATCH_ON_{deck}")

    def effects(self):
        deck, slot = self.deck(), self.random.randint(1, 3)
        self.add("move", f"EFFECT_SELECT_{slot}_GROUP_{deck}", self.random.random())
        self.add("tap", f"EFFECT_ON_{slot}_GROUP_{deck}", after=0.2)
        self.now += 0.3
        self.sweep(f"FX_DRY_WET_GROUP_{deck}", 0.0, 0.8, 1.0, 20)
        self.sweep(f"EFFECT_PARAM_{slot}_GROUP_{deck}", 0.0, self.random.random(), 3.0, 60)
        self.sweep(f"FILTER_{deck}", 0.5, self.random.random(), 1.0, 20)
        self.sweep(f"FILTER_{deck}", 0.3, 0.5, 1.0, 20)
        self.add("tap", f"EFFECT_ON_{slot}_GROUP_{deck}")
        self.add("tap", f"FX_DRY_WET_RESET_GROUP_{deck}", after=0.3)

    def pads(self):
        deck = self.deck()
        for _ in range(self.random.randint(1, 5)):
            self.hold(f"SLICEGATE_PAD_{deck}_{self.random.randint(1, 8)}", self.random.choice((0.5, 1.0, 2.0)))

    def knob(self):
        deck, knob = self.deck(), self.random.randint(1, 2)
        self.add("tap", f"SMARTKNOB_{knob}_ON_{deck}")
        self.sweep(f"SMARTKNOB_{knob}_{deck}", 0.0, 1.0, 3.0, 60)
        self.sweep(f"SMARTKNOB_{knob}_{deck}", 1.0, 0.0, 1.0, 20)
        self.add("tap", f"SMARTKNOB_{knob}_ON_{deck}")

    def sampler(self):
        for _ in range(self.random.randint(2, 16)):
            self.hold(f"SAMPLER_PLAY_PAD_{self.random.randint(1, 16)}", self.random.choice((0.1, 0.25, 0.5)))
        if self.random.random() < 0.1:
            self.add("tap", "SAMPLER_RECORD_LOOP")

    def plugin(self):
        deck = "A"
        self.add("tap", f"VST_ON_SLOT_{deck}")
        self.sweep(f"VST_PARAM_{self.random.randint(1, 2)}_SLOT_{deck}", 0.0, self.random.random(), 2.0, 40)
        self.sweep(f"VST_DRY_WET_SLOT_{deck}", 0.0, self.random.random(), 1.0, 20)

    def pitch(self):
        deck = self.deck()
        self.sweep(f"PITCH_{deck}", 0.5, 0.5 + self.random.uniform(-0.2, 0.2), 2.0, 40)
        self.add("tap", self.random.choice((f"KEY_LOCK_{deck}", f"PITCH_RESET_{deck}", f"SYNC_LOCK_{deck}")))
        self.sweep(f"KEY_TUNING_{deck}", 0.5, self.random.random(), 1.0, 20)
        self.add("tap", f"KEY_RESET_{deck}")

    def jump(self):
        deck = self.deck()
        self.add("move", f"SEEK_{deck}", self.random.uniform(0.0, 0.5))
        self.add("tap", self.random.choice((f"LEAP_{deck}", f"CUT_{deck}", f"PUNCH_{deck}", f"PFL_{deck}", f"MASTER_{deck}")), after=1.0)

    def browse(self):
        """A word typed into the search, a song of what it finds loaded by key, and all songs again."""
        word = self.random.choice(WORDS)
        self.add("key", "ctrl+f")
        self.now += 0.5
        self.add("type", word)
        self.now += 2.0
        self.add("key", "Tab")
        for _ in range(self.random.randint(0, 5)):
            self.now += 0.3
            self.add("key", "Down")
        self.now += 0.3
        self.add("key", f"ctrl+{self.random.randint(1, 4)}")
        self.now += 1.5
        self.add("answer", self.random.choice(("no", "yes")))
        self.now += 2.0
        for keys in ("ctrl+f", "Escape", "Escape", "Escape"):
            self.add("key", keys)
            self.now += 0.3

    def keys(self):
        for _ in range(self.random.randint(2, 8)):
            self.add("key", self.random.choice(("1", "2", "7", "8", "comma", "period", "t", "t", "y", "y", "ctrl+c", "shift+q", "shift+a")))
            self.now += 0.3

    def window(self):
        self.add("window", "row", self.random.randint(0, MENU_ROWS))
        self.now += 8.0

    def size(self):
        self.add("size", self.random.choice(("1280x800", "1024x640", "1366x768", "1100x850")))
        self.now += 3.0

    def record(self):
        self.add("record", "on")
        self.add("record", "off", after=self.random.choice((20.0, 45.0, 90.0)))
        self.now += 5.0

    def bring(self):
        self.add("import", "files")
        self.now += 2.0

    phrases = ((mix, 10), (equaliser, 6), (loop, 6), (cues, 6), (scratch, 6), (effects, 8), (pads, 6), (knob, 6), (sampler, 6),
               (plugin, 3), (pitch, 4), (jump, 5), (browse, 4), (keys, 3), (window, 3), (size, 1), (record, 3), (bring, 1))

    def play(self, names):
        phrases, weights = zip(*[(phrase, weight) for phrase, weight in self.phrases if not names or phrase.__name__ in names])
        self.now = next_care = 5.0
        while self.now < self.seconds:
            if self.now >= next_care:  # what has run to its end or was stopped goes on
                for deck in DECKS:
                    self.add("play", deck)
                next_care = self.now + 10.0
            self.random.choices(phrases, weights)[0](self)
            self.now += self.random.uniform(0.1, 1.5)
        recording_ends = [a.at for a in self.actions if a.kind == "record"]
        actions = sorted(self.actions, key=lambda action: action.at)
        return [a for a in actions if a.at < max([self.seconds, *recording_ends])]


def plan(seed, seconds, names=()):
    """@param names   of the phrases to draw from; all if none is named"""
    return Hands(seed, seconds).play(names)
