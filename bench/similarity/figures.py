#!/usr/bin/env python3
"""Quality of the similarity library: figures.py BENCH_SIMILARITY WORK [MUSIC...] [--debian] [--most N] [--songs N]
           [--keys FILE.tsv]

MUSIC are folders of audio, each one group: an album, an artist or a game. --debian fetches games' music from Debian's packages
into WORK: one group for each game, or for all games of one composer. Of up to 18 tracks of each, or --most, the middle two
minutes are taken, and of these made: a 30 s excerpt, and of every fourth one 6 % faster and slower, 12 dB softer and
an MP3 at 96 kbit/s. --songs has known_keys.py render songs whose keys are known; FILE.tsv has other ones, in lines
"NUMBER<tab>FILE.wav", 0 to 11 for C to B major and 12 to 23 for minor. Needs ffmpeg and 40 MB of WORK for each track;
what is in WORK is used again."""

import argparse
import concurrent.futures as futures
import os
import random
import subprocess
import sys

import known_keys

KINDS = (".ogg", ".opus", ".mp3", ".flac", ".wav", ".m4a")
LONGEST, EXCERPT = 120, 30
LEAST_BYTES = 250_000  # no smaller file is long enough

# Games whose music Debian has as audio.
DEBIAN = {
    "btanks": ("btanks-data",),
    "colobot": ("colobot-common-sounds",),
    "drascula": ("drascula-music",),
    "fillets": ("fillets-ng-data",),
    "flare": ("flare-game",),
    "freedroid": ("freedroidrpg-data",),
    "hedgewars": ("hedgewars-data",),
    "horizons": ("unknown-horizons",),
    "kenta-cho": ("gunroar-data", "mu-cade-data", "noiz2sa-data", "parsec47-data", "titanion-data",
                  "torus-trooper-data", "tumiki-fighters-data"),
    "openclonk": ("openclonk-data",),
    "planetblupi": ("planetblupi-music-ogg",),
}


def ffmpeg(source, target, *options, before=()):
    if not os.path.exists(target):
        subprocess.run(["ffmpeg", "-v", "error", "-y", *before, "-i", source, *options, "-map_metadata", "-1",
                        "-fflags", "+bitexact", target], check=True)
    return target


def seconds(file):
    found = subprocess.run(["ffprobe", "-v", "error", "-show_entries", "format=duration", "-of", "csv=p=0", file],
                           capture_output=True, text=True, check=False).stdout
    try:
        return float(found)
    except ValueError:
        return 0.0


def tracks_of(folder, rng, most):
    files = sorted(os.path.join(at, name) for at, _, names in os.walk(folder) for name in names
                   if name.lower().endswith(KINDS) and os.path.getsize(os.path.join(at, name)) >= LEAST_BYTES)
    rng.shuffle(files)
    found = []
    for file in files:
        if len(found) < most and seconds(file) >= 45:
            found.append(file)
    return found


def lines_of(file, name, group, number):
    """Makes a track's two minutes and their copies. @returns its lines of the list"""
    rng = random.Random(name)
    begin = max(0.0, (seconds(file) - LONGEST) / 2)
    whole = ffmpeg(file, name + ".wav", "-t", str(LONGEST), "-ac", "2", "-ar", "44100", "-c:a", "pcm_s16le",
                   before=("-ss", str(begin)))
    start = rng.uniform(0, max(0.0, seconds(whole) - EXCERPT))
    made = [("excerpt", ffmpeg(whole, name + ".excerpt.wav", "-t", str(EXCERPT), before=("-ss", str(start))))]
    if number % 4 == 0:
        for kind, rate in (("faster", 46746), ("slower", 41454)):
            made.append((kind, ffmpeg(whole, f"{name}.{kind}.wav", "-af", f"asetrate={rate},aresample=44100")))
        made.append(("softer", ffmpeg(whole, name + ".softer.wav", "-af", "volume=-12dB")))
        mp3 = ffmpeg(whole, name + ".mp3", "-b:a", "96k")
        made.append(("mp3", ffmpeg(mp3, name + ".mp3.wav")))
    return [f"track\t{group}\t{whole}"] + [f"copy\t{kind}\t{whole}\t{copy}" for kind, copy in made]


def debian_games(work):
    """The folders of the games' music, fetched if they are not there. Nothing is installed."""
    folders = []
    for game, packages in DEBIAN.items():
        folder = os.path.join(work, "games", game)
        folders.append(folder)
        if os.path.isdir(folder):
            continue
        fetched = folder + ".part"
        os.makedirs(fetched, exist_ok=True)
        subprocess.run(["apt-get", "-q", "download", *packages], cwd=fetched, check=True)
        for package in sorted(name for name in os.listdir(fetched) if name.endswith(".deb")):
            package = os.path.join(fetched, package)
            with subprocess.Popen(["dpkg-deb", "--fsys-tarfile", package], stdout=subprocess.PIPE) as files:
                # tar's result says no more than that a package has no file of one of the kinds.
                subprocess.run(["tar", "-x", "-C", fetched, "--wildcards", *("*" + kind for kind in KINDS)],
                               stdin=files.stdout, stderr=subprocess.DEVNULL, check=False)
            os.remove(package)
        os.rename(fetched, folder)
    return folders


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("bench")
    parser.add_argument("work")
    parser.add_argument("music", nargs="*")
    parser.add_argument("--debian", action="store_true")
    parser.add_argument("--most", type=int, default=18)
    parser.add_argument("--songs", type=int, default=0)
    parser.add_argument("--keys")
    given = parser.parse_args()
    os.makedirs(given.work, exist_ok=True)
    rng = random.Random(7)
    with futures.ThreadPoolExecutor(2 * os.cpu_count()) as pool:
        jobs = []
        for folder in given.music + (debian_games(given.work) if given.debian else []):
            group = os.path.basename(os.path.normpath(folder))
            for number, file in enumerate(tracks_of(folder, rng, given.most)):
                name = os.path.join(given.work, f"{group}.{number:02}")
                jobs.append(pool.submit(lines_of, file, name, group, number))
        lines = sorted((line for job in jobs for line in job.result()), reverse=True)  # the tracks before their copies
    if given.songs > 0:
        rendered = known_keys.render(os.path.join(given.work, "keys"), given.songs)
        lines += ["key\t" + line for line in rendered]
    if given.keys:
        lines += ["key\t" + line.rstrip("\n") for line in open(given.keys, encoding="utf-8")]
    listed = os.path.join(given.work, "list.tsv")
    with open(listed, "w", encoding="utf-8") as out:
        out.write("\n".join(lines) + "\n")
    return subprocess.run([given.bench, "judge", listed], check=False).returncode


sys.exit(main())
