#!/usr/bin/env python3
"""Bands in known keys: known_keys.py OUT [--songs N] [--seed N]

Writes songs of 16 bars as MIDI, each of the 24 keys in its turn, and renders them with fluidsynth. Progression, tempo, instruments,
soundfont and tuning (within 30 cents) are drawn; drums, a bass, chords and a melody play. OUT/keys.tsv has the keys as
figures.py reads them: "NUMBER<tab>FILE.wav", 0 to 11 for C to B major, 12 to 23 for minor. Needs the Debian packages
fluidsynth, fluid-soundfont-gm and timgm6mb-soundfont."""

import argparse
import os
import random
import struct
import subprocess

FONTS = ("/usr/share/sounds/sf2/FluidR3_GM.sf2", "/usr/share/sounds/sf2/TimGM6mb.sf2")
TICKS = 480

# Semitones above the tonic, and the third and fifth (and seventh) of the chord; a bar each.
MAJOR, MINOR, SEVENTH, MINOR_SEVENTH = (0, 4, 7), (0, 3, 7), (0, 4, 7, 10), (0, 3, 7, 10)
CHORDS = {"I": (0, MAJOR), "ii": (2, MINOR), "iii": (4, MINOR), "IV": (5, MAJOR), "V": (7, MAJOR), "vi": (9, MINOR),
          "I7": (0, SEVENTH), "ii7": (2, MINOR_SEVENTH), "IV7": (5, SEVENTH), "V7": (7, SEVENTH), "VI7": (9, SEVENTH),
          "bVII": (10, MAJOR), "i": (0, MINOR), "iv": (5, MINOR), "v": (7, MINOR), "bIII": (3, MAJOR),
          "bVI": (8, MAJOR), "i7": (0, MINOR_SEVENTH), "iv7": (5, MINOR_SEVENTH)}
PROGRESSIONS = {
    False: ("I V vi IV", "I vi IV V", "vi IV I V", "I IV V I", "ii7 V7 I I", "I bVII IV I", "I iii IV V",
            "I vi ii7 V7", "I7 IV7 I7 I7 IV7 IV7 I7 VI7 ii7 V7 I7 V7", "I IV vi V", "I I IV V"),
    True: ("i bVI bIII bVII", "i bVII bVI V7", "i iv V7 i", "i iv bVII bIII", "i i iv V", "i bVI iv V",
           "i7 iv7 i7 V7", "i v bVI bVII", "iv bVII i i")}
SCALES = {False: (0, 2, 4, 5, 7, 9, 11), True: (0, 2, 3, 5, 7, 8, 10)}
CHORD_PROGRAMS, BASS_PROGRAMS = (0, 4, 16, 24, 27, 48, 50, 80, 88), (32, 33, 34, 38, 39)
LEAD_PROGRAMS = (0, 11, 25, 40, 56, 65, 73, 81, 85)


def band(rng, tonic, is_minor):
    """Events of a song: (tick, bytes)."""
    events = []

    def note(channel, tick, length, pitch, velocity):
        events.append((tick, bytes((0x90 | channel, pitch, velocity))))
        events.append((tick + length, bytes((0x80 | channel, pitch, 0))))

    events.append((0, b"\xff\x51\x03" + struct.pack(">I", int(60e6 / rng.uniform(75, 165)))[1:]))
    bend = 8192 + int(8191 * rng.uniform(-0.15, 0.15))  # of two semitones
    for channel, programs in ((0, CHORD_PROGRAMS), (1, BASS_PROGRAMS), (2, LEAD_PROGRAMS)):
        events.append((0, bytes((0xC0 | channel, rng.choice(programs)))))
        events.append((0, bytes((0xE0 | channel, bend & 127, bend >> 7))))
    progression = [CHORDS[name] for name in rng.choice(PROGRESSIONS[is_minor]).split()]
    drums = rng.random() < 0.85
    arpeggio = rng.random() < 0.4
    degree = rng.randrange(7)
    for bar in range(16):
        begin = bar * 4 * TICKS
        root, tones = progression[bar % len(progression)]
        chord = [48 + (tonic + root + tone) % 12 + (12 if rng.random() < 0.3 else 0) for tone in tones]
        for beat in range(4):
            tick = begin + beat * TICKS
            if arpeggio:
                note(0, tick, TICKS // 2 - 10, chord[beat % len(chord)], 70)
                note(0, tick + TICKS // 2, TICKS // 2 - 10, chord[(beat + 1) % len(chord)] + 12, 60)
            elif beat in (0, 2):
                for pitch in chord:
                    note(0, tick, 2 * TICKS - 20, pitch, 64)
            note(1, tick, TICKS - 40, 36 + (tonic + root) % 12 + (7 if beat == 3 and rng.random() < 0.4 else 0), 90)
            if drums:
                note(9, tick, 60, 36 if beat in (0, 2) else 38, 100)
                note(9, tick + TICKS // 2, 60, 42, 70)
            for part in range(2):
                if rng.random() < 0.35:
                    continue
                degree = max(0, min(13, degree + rng.choice((-2, -1, -1, 0, 1, 1, 2))))
                pitch = (SCALES[is_minor][degree % 7] + 12 * (degree // 7)) % 24
                if part == 0:  # a tone of the chord on the beat
                    pitch = min((t for octave in (0, 12) for t in ((root + tone) % 12 + octave for tone in tones)),
                                key=lambda t, p=pitch: abs(t - p))
                note(2, tick + part * TICKS // 2, TICKS // 2 - 20, 60 + tonic + pitch, 75)
    return events


def midi(events):
    def length(value):
        out = [value & 127]
        while value := value >> 7:
            out.insert(0, 128 | value & 127)
        return bytes(out)

    track, last = b"", 0
    for tick, data in sorted(events, key=lambda event: event[0]):
        track += length(tick - last) + data
        last = tick
    track += b"\x00\xff\x2f\x00"
    return b"MThd" + struct.pack(">IHHH", 6, 0, 1, TICKS) + b"MTrk" + struct.pack(">I", len(track)) + track


def render(out, songs, seed=1):
    """Makes what is not there yet. @returns lines of "NUMBER<tab>FILE.wav" """
    os.makedirs(out, exist_ok=True)
    lines = []
    for number in range(songs):
        rng = random.Random(seed * 1000 + number)
        key = number % 24
        name = os.path.join(out, f"band{number:03}")
        if not os.path.exists(name + ".wav"):
            with open(name + ".mid", "wb") as file:
                file.write(midi(band(rng, key % 12, key >= 12)))
            # FluidSynth writes no tags, so that the audio begins at byte 44.
            subprocess.run(["fluidsynth", "-n", "-i", "-q", "-g", "0.5", "-r", "44100", "-O", "s16", "-T", "wav",
                            "-F", name + ".part", rng.choice(FONTS), name + ".mid"], check=True)
            os.rename(name + ".part", name + ".wav")
        lines.append(f"{key}\t{name}.wav")
    with open(os.path.join(out, "keys.tsv"), "w", encoding="utf-8") as table:
        table.write("\n".join(lines) + "\n")
    return lines


if __name__ == "__main__":
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("out")
    parser.add_argument("--songs", type=int, default=96)
    parser.add_argument("--seed", type=int, default=1)
    given = parser.parse_args()
    render(given.out, given.songs, given.seed)
