#!/usr/bin/env python3
"""Gives the program files that were made to harm it, and holds it to bounds: each ends by itself with an exit code of its own and a
few lines, and takes no more memory than stands beside it, however large the file says to be or swells.
usage: hostile.py PROGRAM [--only NAME]    hostile.py --make FOLDER writes the files alone"""
import argparse
import gzip
import os
import struct
import subprocess
import sys
import tarfile
import tempfile
import zlib

MB = 1 << 20
deep, most = 1_000_000, 256  # most: megabytes of memory


def synchsafe(n):
    return bytes([n >> 21 & 127, n >> 14 & 127, n >> 7 & 127, n & 127])


def mp3(frames, stated=None):
    """An MP3 of silence behind an ID3v2.4 tag. @param stated  bytes that the tag says to have"""
    tag = b"ID3\x04\x00\x00" + synchsafe(len(frames) if stated is None else stated) + frames
    return tag + (b"\xff\xfb\x90\x00" + bytes(413)) * 200


def id3(kind, data, flags=b"\0\0", stated=None):
    return kind + synchsafe(len(data) if stated is None else stated) + flags + data


def swelling(kind, size):
    """A frame that is packed and swells to `size` bytes."""
    packed = zlib.compress(bytes([3]) + b"A" * (size - 1), 9)
    return id3(kind, synchsafe(size) + packed, b"\x00\x09")


def flac(blocks):
    info = struct.pack(">HH", 4096, 4096) + bytes(6) + (44100 << 44 | 1 << 41 | 15 << 36).to_bytes(8, "big") + bytes(16)
    out = b"fLaC\0" + len(info).to_bytes(3, "big") + info
    for i, (kind, data, stated) in enumerate(blocks):
        last = 0x80 if i == len(blocks) - 1 else 0
        out += bytes([kind | last]) + (len(data) if stated is None else stated).to_bytes(3, "big") + data
    return out


def boxes(depth):
    """An MP4 whose boxes lie within each other."""
    return struct.pack(">I", 16) + b"ftypM4A \0\0\0\0" + b"".join(
        struct.pack(">I", 8 * (depth - i)) + b"moov" for i in range(depth))


def chapters(depth):
    """Frames within each other, behind a title."""
    head = b"a\0" + bytes(16)
    return mp3(id3(b"TIT2", b"\x03Harmless") + b"".join(
        id3(b"CHAP", head, stated=len(head) + (10 + len(head)) * (depth - 1 - i)) for i in range(depth)))


def riff(chunks, stated=0x7fffffff):
    return b"RIFF" + struct.pack("<I", stated) + b"WAVE" + b"".join(chunks)


def swollen_tar(path, size):
    """A backup of one entry of zeros."""
    entry = tarfile.TarInfo("platterdex-backup")
    entry.size = size
    with gzip.open(path, "wb", 1) as packed:
        packed.write(entry.tobuf())
        for _ in range(size // MB):
            packed.write(bytes(MB))
        packed.write(bytes(1024))


fmt = struct.pack("<4sIHHIIHH", b"fmt ", 16, 1, 2, 44100, 176400, 4, 16)
many = struct.pack("<I", 0xfffffff0)
laughs = '<!DOCTYPE r [<!ENTITY a0 "' + "ha" * 50 + '">' + "".join(
    f'<!ENTITY a{i} "{f"&a{i - 1};" * 10}">' for i in range(1, 12)) + "]>"
plist = '<?xml version="1.0"?><plist version="1.0"><dict><key>Tracks</key>'
def songs():
    """Audio that is imported and analysed. Names that begin with "harmless" are of files whose title has to be read."""
    yield "harmless-packed.mp3", mp3(swelling(b"APIC", MB) + id3(b"TIT2", b"\x03Harmless"))
    yield "harmless-chapters.mp3", chapters(2)
    yield "tag-states-256-mb.mp3", mp3(id3(b"TIT2", b"\x03A", stated=(1 << 28) - 1), stated=(1 << 28) - 1)
    yield "tag-swells-to-200-mb.mp3", mp3(swelling(b"TIT2", 200 * MB))
    yield "tags-behind-noise-swell.mp3", bytes(100_000) + mp3(swelling(b"TIT2", 200 * MB))
    yield "tag-of-many-frames.mp3", mp3(id3(b"TXXX", b"\x03A\0B") * 300_000)
    yield "chapters-within-chapters.mp3", chapters(200_000)
    yield "comments-counted-falsely.flac", flac([(4, many + many * 4, None)])
    yield "block-states-16-mb.flac", flac([(4, many, 0xffffff)])
    yield "boxes-within-boxes.m4a", boxes(1_000_000)
    yield "boxes-within-no-mp4.m4a", boxes(1_000_000)[16:]
    yield "chunks-without-end.wav", riff([fmt] + [b"LIST" + struct.pack("<I", 4) + b"INFO"] * 300_000 + [b"data" + many])
    yield "states-four-gb.wav", riff([fmt, b"data" + many, bytes(1000)])
    yield "rate-of-four-ghz.wav", riff([fmt[:12] + struct.pack("<II", 0xffffffff, 0xffffffff) + fmt[20:], b"data" + many])


def texts():
    """Playlists and rules."""
    laughs = '<!DOCTYPE r [<!ENTITY a0 "' + "ha" * 50 + '">' + "".join(
        f'<!ENTITY a{i} "{f"&a{i - 1};" * 10}">' for i in range(1, 12)) + "]>"
    plist = '<?xml version="1.0"?><plist version="1.0"><dict><key>Tracks</key>'
    yield "laughs.xml", laughs + "<plist><dict><key>&a11;</key></dict></plist>"
    yield "nested.xml", plist + "<dict>" * deep
    yield "nested-closed.xml", plist + "<dict><key>1</key>" * deep + "</dict>" * deep
    yield "names-of-32-mb.xml", plist + f"<{'n' * 32 * MB} {'a' * 32 * MB}='{'v' * 32 * MB}'/>"
    yield "attributes.xml", "<plist " + "".join(f"a{i}='1' " for i in range(deep)) + "/>"
    yield "line-of-64-mb.m3u", "a" * 64 * MB
    yield "lines.m3u", "x.wav\n" * deep
    yield "nested.rules.xml", "<smartplaylist>" + "<rule>" * deep
    yield "laughs.rules.xml", laughs + "<smartplaylist name='&a11;'/>"


def make(folder, only):
    for name, content in [*songs(), *texts()]:
        if only in name:
            with open(os.path.join(folder, name), "wb") as file:
                file.write(content if isinstance(content, bytes) else content.encode())
    if only in "swollen.tar.gz":
        swollen_tar(os.path.join(folder, "swollen.tar.gz"), 1024 * MB)


def commands(path, root):
    """What a program is asked to do with a file."""
    if path.endswith(".rules.xml"):
        return [["smart", "create", "x", "--rules", path, *root]]
    if path.endswith((".xml", ".m3u")):
        return [["playlist", "import", path, *root]]
    if path.endswith(".gz"):
        return [["restore", path, *root]]
    return [["import", path, *root], ["analyse", path]]


def run(program, name, arguments):
    # This process is small: what a child took before it became the program counts as the program's.
    process = subprocess.Popen([program, *arguments], stdin=subprocess.DEVNULL, stdout=subprocess.PIPE,
                               stderr=subprocess.STDOUT)
    said = process.stdout.read()
    _, status, usage = os.wait4(process.pid, 0)
    code = process.returncode = os.waitstatus_to_exitcode(status)
    taken = usage.ru_maxrss // 1024
    faults = [text for fault, text in (
        (code not in (0, 1, 2), "does not end by itself"),
        (taken > most, f"takes more than {most} MB"),
        (len(said) > 20_000 or max(map(len, said.splitlines()), default=0) > 2_000, "says too much"),
        (not said.strip(), "says nothing")) if fault]
    print(f"{name:34} {arguments[0]:9} {code:3} {taken:5} MB {usage.ru_utime + usage.ru_stime:6.2f} s  {'; '.join(faults)}",
          flush=True)
    return not faults


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("program")
    parser.add_argument("--make")
    parser.add_argument("--only", default="")
    given = parser.parse_args()
    if given.make:
        return make(given.make, given.only)
    program, fine = os.path.realpath(given.program), True
    with tempfile.TemporaryDirectory() as work:
        subprocess.run([sys.executable, __file__, program, "--make", work, "--only", given.only], check=True)
        root = ["--root", os.path.join(work, "root")]
        for name in sorted(os.listdir(work)):
            for arguments in commands(os.path.join(work, name), root):
                fine &= run(program, name, arguments)
        listed = subprocess.run([program, "list", *root], capture_output=True, text=True).stdout
        read = listed.count("Harmless")
        expected = sum(name.startswith("harmless") for name in os.listdir(work))
        if read != expected:
            print(f"{read} titles of {expected} harmless files are read")
            fine = False
    sys.exit(0 if fine else 1)


main()
