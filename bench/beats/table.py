#!/usr/bin/env python3
"""Scores beat trackers on songs of known beats, by kind and metre.

    table.py [--half tuning|judging] [--songs N] [--rows] [--doubt C] --songs-of FOLDER [FOLDER ...]
             --list | --trackers NAME=COMMAND ...

A FOLDER holds `bands.csv` with `file kind metre groove tempo tempo_lo tempo_hi music_end` and `truth/NAME.json` with all
`beats` and `downbeats` in seconds, or `corpus.csv` with `file kind true_bpm first_beat_seconds beats_per_bar music_start
music_end` of songs in one tempo. COMMAND gets {wav}; it prints `beat SECONDS`, and if it can `downbeat SECONDS`, `bpm X` and
`confidence 0..100`.

The halves. A song belongs to its style: the last part of `groove`, or the file's name before its seed, without case. It
is of the judging half when the third hex digit of the SHA-1 of that name is odd, else of the tuning half. Weights are
chosen on the tuning half alone, on seeds drawn for it.

Tempos are compared after both are folded into 65 to 165 BPM, and so are the beats: the true ones are halved or doubled
into that range. Columns, in percent of the songs unless a measure of 0 to 1:
  tempo  within 4 %            .05   within 0.05 BPM (strict songs only)
  3:2    off by 3/2, 2/3, 4/3 or 3/4          8th  right at the beat, or in 6/8 and 12/8 at its third, not folded
  F      beats within 70 ms    half  every beat half a beat off (F below 0.3, above 0.8 when moved)
  down   downbeat F            use   0.9 of the beats have a mark within 20 ms (strict) or 40 ms (others)
  found  of the songs that are not usable, those that the tracker called doubtful
  false  of those that are usable, those that it called doubtful
The first 5 seconds do not count.
"""
import argparse, csv, hashlib, json, os, re, shlex, subprocess
import numpy as np

COLUMNS = ['tempo', '.05', '3:2', '8th', 'F', 'half', 'down', 'use', 'found', 'false']


def half_of(style):
    digit = hashlib.sha1(os.path.basename(style).lower().encode()).hexdigest()[2]
    return 'judging' if int(digit, 16) % 2 else 'tuning'


def songs_of(folder):
    """One dictionary a song, with its true beats and downbeats."""
    if os.path.exists(folder + '/bands.csv'):
        for row in csv.DictReader(open(folder + '/bands.csv')):
            name = os.path.basename(row['file'])[:-4]
            truth = json.load(open('%s/truth/%s.json' % (folder, name)))
            metre = 'odd' if row['metre'][0] in '57' else row['metre']
            yield dict(wav=folder + '/' + row['file'], style=row['groove'], kind=row['kind'], metre=metre,
                       tempos=[float(row['tempo_lo']), float(row['tempo_hi'])], end=float(row['music_end']),
                       beats=np.array(truth['beats']), downs=np.array(truth['downbeats']))
        return
    for row in csv.DictReader(open(folder + '/corpus.csv')):
        bpm, first = float(row['true_bpm']), float(row['first_beat_seconds'])
        start, end = float(row['music_start']), float(row['music_end'])
        bar = int(row.get('beats_per_bar') or 4)
        k = np.arange(np.ceil((start - first) * bpm / 60 - 0.25), (end - first) * bpm / 60)
        yield dict(wav=folder + '/' + row['file'], style=re.sub(r'\.\w+$', '', row['file']), kind='produced',
                   metre='%d/4' % bar, tempos=[bpm, bpm], end=end, beats=first + k * 60 / bpm,
                   downs=first + k[k % bar == 0] * 60 / bpm)


def fold(bpm):
    while bpm > 165:
        bpm /= 2
    while 0 < bpm < 65:
        bpm *= 2
    return bpm


def run(command, wav):
    text = subprocess.run(command.replace('{wav}', shlex.quote(wav)), shell=True, capture_output=True, text=True,
                          errors='replace', stdin=subprocess.DEVNULL).stdout
    said = dict(beat=[], downbeat=[], bpm=[], confidence=[])
    for word in (line.split() for line in text.splitlines()):
        if len(word) > 1 and word[0] in said:
            said[word[0]].append(float(word[1]))
    return {k: np.array(v) for k, v in said.items()}


def near(these, those, tolerance):
    """Share of `these` with one of `those` within the tolerance."""
    if not len(these) or not len(those):
        return 0.0
    k = np.searchsorted(those, these)
    low, high = those[np.maximum(k - 1, 0)], those[np.minimum(k, len(those) - 1)]
    return float(np.mean(np.minimum(abs(these - low), abs(high - these)) <= tolerance))


def f_measure(true, found, tolerance=0.07):
    p, r = near(found, true, tolerance), near(true, found, tolerance)
    return 2 * p * r / (p + r) if p + r else 0.0


def folded_beats(song):
    """The true beats at the level that the range asks for: one list, or two where every second is one too many."""
    bpm, beats = np.mean(song['tempos']), song['beats']
    if bpm > 165:
        return [beats[::2], beats[1::2]]
    if bpm < 65:
        return [np.interp(np.arange(2 * len(beats) - 1) / 2, np.arange(len(beats)), beats)]
    return [beats]


def score(song, said):
    cut = lambda times: times[(times >= 5) & (times <= song['end'] + 0.1)]
    bpm = said['bpm'][0] if len(said['bpm']) else 60 / np.median(np.diff(said['beat'])) if len(said['beat']) > 2 else 0
    low, high = song['tempos']
    targets = [fold(low), fold(high), fold((low + high) / 2)]
    at = lambda ratio: any(bpm > 0 and abs(fold(bpm * ratio) / t - 1) <= 0.04 for t in targets) or (
        fold(low) < fold(high) and fold(low) <= fold(bpm * ratio) <= fold(high))
    found = cut(np.sort(said['beat']))
    best = max(folded_beats(song), key=lambda b: f_measure(cut(b), found))
    true, moved = cut(best), cut(best[:-1] + 0.5 * np.diff(best))
    s = {'tempo': at(1), '3:2': not at(1) and any(at(r) for r in (1.5, 2 / 3, 4 / 3, 0.75)), 'F': f_measure(true, found)}
    s['8th'] = at(1) or song['metre'] in ('6/8', '12/8') and abs(bpm / (low + high) / 1.5 - 1) <= 0.04
    s['.05'] = abs(fold(bpm) - targets[0]) <= 0.05 if song['kind'] in ('strict', 'produced') else np.nan
    s['half'] = s['F'] < 0.3 and f_measure(moved, found) > 0.8
    downs = said['downbeat']
    s['down'] = f_measure(cut(song['downs']), cut(downs)) if len(downs) > 1 else np.nan
    s['use'] = near(true, found, 0.02 if song['kind'] in ('strict', 'produced') else 0.04) >= 0.9 and s['F'] > 0.8
    s['bpm'] = bpm
    s['confidence'] = said['confidence'][0] if len(said['confidence']) else np.nan
    return s


def line(name, scores, doubt):
    text = '%-14s %4d' % (name, len(scores))
    for c in COLUMNS:
        if c in ('found', 'false'):
            of = [s['confidence'] < doubt for s in scores if bool(s['use']) == (c == 'false') and s['confidence'] == s['confidence']]
        else:
            of = [s[c] for s in scores if s[c] == s[c]]
        value = np.mean(of) if of else None
        text += ' %6s' % ('-' if value is None else '%.2f' % value if c in ('F', 'down') else '%.0f' % (100 * value))
    print(text, flush=True)


def main():
    ap = argparse.ArgumentParser(usage=__doc__)
    ap.add_argument('--half', choices=['tuning', 'judging'])
    ap.add_argument('--songs', type=int, help='of each folder, spread over it')
    ap.add_argument('--rows', action='store_true', help='print a line for each song that is wrong')
    ap.add_argument('--doubt', type=float, default=50, help='confidence below which a song is doubtful')
    ap.add_argument('--songs-of', nargs='+', required=True, metavar='FOLDER')
    ap.add_argument('--list', action='store_true', help='print the songs for bench_tempo_weights, and nothing else')
    ap.add_argument('--trackers', nargs='+', default=[], metavar='NAME=COMMAND')
    a = ap.parse_args()
    songs = []
    for folder in a.songs_of:
        of = [s for s in songs_of(folder) if a.half in (None, half_of(s['style']))]
        songs += of[:: max(1, len(of) // a.songs)] if a.songs else of
    if a.list:
        for s in songs:
            print('%.4f %.4f %s' % (*s['tempos'], os.path.abspath(s['wav'])))
        return
    print('%-14s %4s' % ('', 'n') + ''.join(' %6s' % c for c in COLUMNS))
    for tracker in a.trackers:
        name, command = tracker.split('=', 1)
        scores = [score(s, run(command, s['wav'])) for s in songs]
        line(name, scores, a.doubt)
        for key in ('kind', 'metre'):
            for value in sorted({s[key] for s in songs}):
                line('  ' + value, [c for s, c in zip(songs, scores) if s[key] == value], a.doubt)
        for s, c in zip(songs, scores) if a.rows else []:
            if not c['use'] or c['down'] == c['down'] and c['down'] < 0.7:
                print('%-24s %-22s %-8s %-5s true %6.2f found %6.2f x%.3f F %.2f down %.2f half %d conf %.0f' % (
                    os.path.basename(s['wav']), s['style'], s['kind'], s['metre'], np.mean(s['tempos']), c['bpm'],
                    c['bpm'] / np.mean(s['tempos']), c['F'], c['down'], c['half'], c['confidence']))


if __name__ == '__main__':
    main()
