#include "demo/Song.h"

#include "demo/Patches.h"

#include <algorithm>
#include <string_view>

// The rows are read in columns.
// clang-format off
namespace
{
using namespace Patches;

// Pitch classes, and chords as semitones above the root.
constexpr int C = 0, D = 2, E = 4, F = 5, G = 7, A = 9, B = 11, Bflat = 10;
constexpr std::array minor7 { 0, 3, 7, 10 }, minor9 { 0, 3, 10, 14 }, minorAdd9 { 0, 3, 7, 14 };
constexpr std::array major7 { 0, 4, 7, 11 }, major9 { 0, 4, 11, 14 }, add9 { 0, 4, 7, 14 }, sixth { 0, 4, 7, 9 };
constexpr std::array dominant { 0, 4, 10, 13 };
constexpr std::array minorScale { 0, 2, 3, 5, 7, 8, 10 }, majorScale { 0, 2, 4, 5, 7, 9, 11 };

constexpr auto intro = DemoSection::Kind::intro, build = DemoSection::Kind::build, mainPart = DemoSection::Kind::mainPart,
               breakdown = DemoSection::Kind::breakdown, outro = DemoSection::Kind::outro;

// Layers: K kick, S backbeat, H hats, P percussion, R roll, F fill; B bass, C chords, D pad, A arpeggio, L lead.

// ---- First Light: deep house; swung hats, electric piano over an organ bass.
constexpr Chord firstLightChords[] { { A, minor9 }, { F, major7 }, { D, minor9 }, { E, minor7 } };
constexpr DrumLine firstLightDrums[] {
    { 'K', kickRound, Bus::kick, 0.0, 0.0,    "X...X...X...X..." },
    { 'S', clap,      Bus::hits, -7.0, 0.0,   "....X.......X..." },
    { 'S', snareDry,  Bus::hits, -17.0, 0.1,  ".......o.o....o." },
    { 'H', hatOpen,   Bus::hats, -9.0, 0.15,  "..X...X...X...X." },
    { 'H', hatSoft,   Bus::hats, -10.0, -0.2, "x..ox..ox.oox..o" },
    { 'P', shaker,    Bus::hats, -13.0, 0.4,  "oxXxoxXxoxXxoxXx" },
    { 'P', conga,     Bus::hits, -13.0, -0.35,"...x..o....x.o.." "...x..o...ox.x.." },
    { 'P', rim,       Bus::hits, -15.0, 0.35, "..x..x....x..x.." },
    { 'F', snareDry,  Bus::hits, -11.0, 0.0,  "..........x.xoxX" },
};
constexpr ToneLine firstLightTones[] {
    { 'B', bassOrgan, Bus::bass, -3.0, 0.0, 33,    "1-.1..1-..3.1.4." "1-.1..1-...51.3." },
    { 'C', epiano,    Bus::chords, -7.0, 0.0, 55,  "x--.--x---..x-.." "..x--..x--x-..--" },
    { 'D', sawPad,    Bus::chords, -13.0, 0.0, 52, "x---------------" },
    { 'A', bell,      Bus::lead, -15.0, -0.2, 69,  "..1...3..4....2." "..1..3....4.5..." },
    { 'L', pluck,     Bus::lead, -12.0, 0.15, 57,  "e--.d.c-..a-....c--.b.a---......"
                                                   "d--.e.f-..e-....e---..d.b-..g..." },
};
constexpr SongSection firstLightForm[] {
    { intro, 4,     "KSH",      12000.0, 0.0, 0, true },
    { build, 4,     "KSHPF",    12000.0, 0.0, 4, false },
    { mainPart, 8,  "KSHPBCAF", 9000.0, 0.4, 0, true },
    { breakdown, 8, "CDL",      1500.0, 2.6, 4, true },
    { mainPart, 8,  "KSHPBCLF", 12000.0, 0.0, 0, true },
    { outro, 8,     "KSHP",     12000.0, 0.0, 0, true },
};

// ---- Copper Stairs: filtered disco house; saw chords through a sweeping filter, octaves in the bass.
constexpr Chord copperChords[] { { F, major9 }, { G, sixth }, { E, minor7 }, { A, minor7 } };
constexpr DrumLine copperDrums[] {
    { 'K', kickRound, Bus::kick, 0.0, 0.0,    "X...X...X...X..." },
    { 'S', clap,      Bus::hits, -7.0, 0.0,   "....X.......X..." },
    { 'S', snareDry,  Bus::hits, -10.0, 0.0,  "....X.......X..o" "....X..o....X.o." },
    { 'H', hatOpen,   Bus::hats, -8.0, 0.1,   "..X...X...X...X." },
    { 'H', hatClosed, Bus::hats, -12.0, -0.2, "xox.xox.xox.xoxo" },
    { 'P', shaker,    Bus::hats, -12.0, 0.45, "xoXoxoXoxoXoxoXo" },
    { 'P', conga,     Bus::hits, -14.0, -0.4, "..x..x.o..x.x..o" },
    { 'F', tomLow,    Bus::hits, -7.0, -0.2,  "...........x..xx" },
    { 'F', snareDry,  Bus::hits, -10.0, 0.1,  "........x..x..xX" },
};
constexpr ToneLine copperTones[] {
    { 'B', bassDisco, Bus::bass, -3.5, 0.0, 28,    "1-5.1.5.1-5.1353" "1-5.1.5.1.5.3.4." },
    { 'C', sawChord,  Bus::chords, -5.0, 0.0, 53,  "x-.x-..x-..x-.x." "x-.x-..x-.x-.x--" },
    { 'D', sawPad,    Bus::chords, -14.0, 0.0, 53, "x---------------" },
    { 'A', pluck,     Bus::lead, -14.0, -0.25, 65, "1.3.5.3.1.3.6.3." "1.3.5.3.7.5.3.2." },
    { 'L', lead,      Bus::lead, -14.0, 0.1, 60,   "e-.e-.f-..e-.c--b-.b-.c-..d-.b--"
                                                   "g-.g-.f-..e-.b--c-.c-.d-..e---.." },
};
constexpr SongSection copperForm[] {
    { intro, 4,     "KH",       12000.0, 0.0, 0, true },
    { build, 4,     "KSHPF",    12000.0, 0.0, 4, false },
    { mainPart, 8,  "KSHPBCF",  1400.0, 3.0, 0, true },
    { breakdown, 8, "CDA",      500.0, 3.8, 4, true },
    { mainPart, 8,  "KSHPBCLF", 11000.0, 0.0, 0, true },
    { outro, 8,     "KSHP",     12000.0, 0.0, 0, true },
};

// ---- Night Ferry: melodic house; rolling bass off the beat, plucked sixteenths with echoes.
constexpr Chord ferryChords[] { { E, minorAdd9 }, { C, add9 }, { G, add9 }, { D, add9 } };
constexpr DrumLine ferryDrums[] {
    { 'K', kickRound, Bus::kick, 0.0, 0.0,    "X...X...X...X..." },
    { 'S', clap,      Bus::hits, -8.0, 0.0,   "....X.......X..." },
    { 'H', hatOpen,   Bus::hats, -8.5, 0.1,   "..X...X...X...X." },
    { 'H', hatClosed, Bus::hats, -13.0, -0.25,"xoxoxoxoxoxoxoxo" },
    { 'P', ride,      Bus::hats, -13.0, 0.3,  "x.x.x.x.x.x.x.x." },
    { 'P', rim,       Bus::hits, -15.0, -0.3, "...x..x....x...." "...x..x....x.x.." },
    { 'P', tomLow,    Bus::hits, -12.0, 0.25, "..........o..x.." },
    { 'F', snareDry,  Bus::hits, -10.0, 0.0,  "........x.x.xxxX" },
};
constexpr ToneLine ferryTones[] {
    { 'B', bassRolling, Bus::bass, -3.0, 0.0, 28,  "..11..11..11..15" },
    { 'C', sawChord,  Bus::chords, -8.0, 0.0, 55,  "x-----x-----x---" },
    { 'D', sawPad,    Bus::chords, -11.0, 0.0, 52, "x---------------" },
    { 'A', pluck,     Bus::lead, -11.0, 0.0, 64,   "1.35.31.53.15.3." "1.35.31.53.67.5." },
    { 'L', lead,      Bus::lead, -12.0, 0.1, 64,   "e-----d---c-----e-----f---g-----"
                                                   "e-----d---c-----b-----c---b-a---" },
};
constexpr SongSection ferryForm[] {
    { intro, 4,     "KH",       12000.0, 0.0, 0, true },
    { build, 4,     "KSHPF",    12000.0, 0.0, 4, false },
    { mainPart, 8,  "KSHPBDAF", 2500.0, 2.0, 0, true },
    { breakdown, 8, "DAL",      900.0, 3.2, 8, true },
    { mainPart, 8,  "KSHPBCALF", 11000.0, 0.0, 0, true },
    { outro, 8,     "KSHP",     12000.0, 0.0, 0, true },
};

// ---- Relay Room: techno; hard kick, resonant sixteenths, dub stabs with long echoes.
constexpr Chord relayChords[] { { A, minor7 }, { A, minor7 }, { F, major7 }, { G, sixth } };
constexpr DrumLine relayDrums[] {
    { 'K', kickHard,  Bus::kick, 0.0, 0.0,    "X...X...X...X..." },
    { 'S', clap,      Bus::hits, -8.0, 0.0,   "....X.......X..." },
    { 'H', hatOpen,   Bus::hats, -7.5, 0.0,   "..X...X...X...X." },
    { 'H', hatClosed, Bus::hats, -11.0, -0.2, "x.oxx.oxx.oxx.xo" },
    { 'P', ride,      Bus::hats, -11.0, 0.25, "x.x.x.x.x.x.x.x." },
    { 'P', rim,       Bus::hits, -12.0, 0.35, "x..x..x..x..x.x." },
    { 'P', tomLow,    Bus::hits, -12.0, -0.3, "......x..x......" "......x..x...x.." },
    { 'R', snareCrack, Bus::hits, -15.0, 0.0, "o...o...o...o..." "o.o.o.o.o.o.o.o." "x.x.x.x.x.x.x.x." "xxxxxxxxxxxxXXXX" },
    { 'F', snareCrack, Bus::hits, -11.0, 0.0, "............x.xX" },
};
constexpr ToneLine relayTones[] {
    { 'B', bassAcid,  Bus::bass, -4.0, 0.0, 28,    "..1.1.15..1.1.41" "..1.1.15..1.5.14" },
    { 'C', dubStab,   Bus::chords, -5.0, 0.0, 52,  "...x..x........." "...x..x.....x..." },
    { 'D', sawPad,    Bus::chords, -13.0, 0.0, 52, "x---------------" },
    { 'A', pluck,     Bus::lead, -13.0, -0.1, 57,  "1.31.41.31.51.4." },
    { 'L', lead,      Bus::lead, -13.0, 0.1, 57,   "a-..c-..e-..d-.." "a-..c-..g-..e-.." "f-..e-..c-..a-.." "g-..d-..b-..d-e." },
};
constexpr SongSection relayForm[] {
    { intro, 8,     "KHF",      12000.0, 0.0, 0, true },
    { build, 8,     "KSHBAPRF", 500.0, 4.0, 4, true },
    { mainPart, 8,  "KSHPBCAF", 9000.0, 0.4, 0, true },
    { breakdown, 8, "CDL",      700.0, 3.8, 8, true },
    { mainPart, 8,  "KSHPBCALF", 12000.0, 0.0, 0, true },
    { outro, 8,     "KSHP",     12000.0, 0.0, 0, true },
};

// ---- Slow Corner: hip-hop; dusty kit far behind the grid's sixteenths, sub bass, electric piano.
constexpr Chord cornerChords[] { { D, minor9 }, { Bflat, major7 }, { G, minor9 }, { A, dominant } };
constexpr DrumLine cornerDrums[] {
    { 'K', kickDusty, Bus::kick, 0.0, 0.0,    "X......x..X....." "X......x.xX...o." },
    { 'S', snareDusty, Bus::hits, -2.0, 0.0,  "....X.......X..." },
    { 'S', snareDusty, Bus::hits, -15.0, 0.0, ".......o.o.....o" },
    { 'H', hatSoft,   Bus::hats, -5.0, -0.15, "X.x.X.xoX.x.Xox." },
    { 'H', hatOpen,   Bus::hats, -14.0, -0.15,"..............x." "................" },
    { 'P', shaker,    Bus::hats, -12.0, 0.4,  "oxXooxXooxXooxXo" },
    { 'P', rim,       Bus::hits, -14.0, 0.3,  "...x......x....." },
    { 'F', snareDusty, Bus::hits, -6.0, 0.0,  "..........x..x.x" },
};
constexpr ToneLine cornerTones[] {
    { 'B', bassSub,   Bus::bass, -4.5, 0.0, 31,    "1--....1--1-..3." "1--....1-.1-4.5." },
    { 'C', epiano,    Bus::chords, -11.5, 0.0, 57,  "x------...x--..." "x-----.x--..x-.." },
    { 'D', sawPad,    Bus::chords, -19.0, 0.0, 52, "x---------------" },
    { 'A', bell,      Bus::lead, -14.5, -0.3, 65,  "......3.4...2..." "....5..4..3....." },
    { 'L', lead,      Bus::lead, -15.0, 0.1, 62,   "..e-f-e-c-.a----" "..c-d-c-..a-.b--" "..d-e-d-..b-.a--" "e---.f-e-c-b----" },
};
constexpr SongSection cornerForm[] {
    { intro, 4,     "KSH",      12000.0, 0.0, 0, true },
    { build, 4,     "KSHPF",    12000.0, 0.0, 2, false },
    { mainPart, 8,  "KSHPBCAF", 7000.0, 0.6, 0, true },
    { breakdown, 4, "CDL",      1500.0, 2.4, 2, true },
    { mainPart, 4,  "KSHPBCLF", 11000.0, 0.0, 0, true },
    { outro, 8,     "KSHP",     12000.0, 0.0, 0, true },
};

// ---- Tide Runner: drum and bass; two-step, ghost notes, detuned bass, soft chords.
constexpr Chord tideChords[] { { E, minor9 }, { C, major9 }, { A, minor9 }, { B, minor7 } };
constexpr DrumLine tideDrums[] {
    { 'K', kickTight, Bus::kick, 1.5, 0.0,    "X.........X....." "X.........X..x.." },
    { 'S', snareCrack, Bus::hits, -4.5, 0.0,  "....X.......X..." },
    { 'S', snareDry,  Bus::hits, -13.0, 0.1,  ".......o.o.....o" ".......o.o....oo" },
    { 'H', hatClosed, Bus::hats, -11.0, -0.2, "x.xox.x.x.xox.xo" },
    { 'P', ride,      Bus::hats, -13.0, 0.25, "x...x...x...x..." },
    { 'P', shaker,    Bus::hats, -15.0, 0.4,  "oxxooxxooxxooxxo" },
    { 'P', conga,     Bus::hits, -13.0, -0.35,"..x..x....x..x.." },
    { 'R', snareDry,  Bus::hits, -15.0, 0.0,  "o...o...o...o..." "o...o...o...o..." "o.o.o.o.o.o.o.o." "x.x.x.x.x.x.x.x."
                                              "x.x.x.x.x.x.x.x." "xxxxxxxxxxxxxxxx" "xxxxxxxxxxxxxxxx" "XXXXXXXXXXXXXXXX" },
    { 'F', snareCrack, Bus::hits, -6.0, 0.0,  "......x..x....xX" },
};
constexpr ToneLine tideTones[] {
    { 'B', bassReese, Bus::bass, -1.0, 0.0, 28,    "1-----..1-.5-.1-" "1--------.3-4-.." },
    { 'C', epiano,    Bus::chords, -14.5, 0.0, 57,  "x-----x---..x---" "..x-----x---x---" },
    { 'D', sawPad,    Bus::chords, -18.5, 0.0, 54, "x---------------" },
    { 'A', pluck,     Bus::lead, -16.0, -0.1, 64,  "1..3..5.3..6..5." "1..3..5.7..6..3." },
    { 'L', bell,      Bus::lead, -16.0, 0.15, 64,  "e-------c---d---" "e---------g-f-e-" "d-------c---b---" "b---c---d-----b-" },
};
constexpr SongSection tideForm[] {
    { intro, 16,    "KSHF",     12000.0, 0.0, 0, true },
    { build, 8,     "KSHDARF",  350.0, 4.4, 8, true },
    { mainPart, 16, "KSHPBDAF", 9000.0, 0.4, 0, true },
    { breakdown, 8, "CDL",      900.0, 3.4, 8, true },
    { mainPart, 8,  "KSHPBCDLF", 12000.0, 0.0, 0, true },
    { outro, 8,     "KSHP",     12000.0, 0.0, 0, true },
};

// The keys are neighbours: C and Am share their notes, Em and Dm lie a fifth above and below Am.
constexpr const char* artist = "Platterdex";
constexpr Song table[] {
    { { "First Light", artist, "Platterdex - First Light.flac", 120.0, 0, "Am", 40 },
      1201, A, minorScale, 0.16, 0.60, 0.60, 3, 1.3, firstLightChords, firstLightDrums, firstLightTones, firstLightForm },
    { { "Copper Stairs", artist, "Platterdex - Copper Stairs.flac", 124.0, 0, "C", 40 },
      1242, C, majorScale, 0.10, 0.70, 0.70, 3, 1.0, copperChords, copperDrums, copperTones, copperForm },
    { { "Night Ferry", artist, "Platterdex - Night Ferry.flac", 126.0, 2205, "Em", 40 },
      1263, E, minorScale, 0.0, 0.75, 0.75, 3, 1.8, ferryChords, ferryDrums, ferryTones, ferryForm },
    { { "Relay Room", artist, "Platterdex - Relay Room.flac", 128.0, 0, "Am", 48 },
      1284, A, minorScale, 0.0, 0.65, 0.60, 3, 1.6, relayChords, relayDrums, relayTones, relayForm },
    { { "Slow Corner", artist, "Platterdex - Slow Corner.flac", 100.0, 4410, "Dm", 32 },
      1005, D, minorScale, 0.28, 0.35, 0.50, 4, 0.9, cornerChords, cornerDrums, cornerTones, cornerForm },
    { { "Tide Runner", artist, "Platterdex - Tide Runner.flac", 174.0, 0, "Em", 64 },
      1746, E, minorScale, 0.0, 0.45, 0.60, 6, 1.5, tideChords, tideDrums, tideTones, tideForm },
};
// clang-format on

/** Patterns fill whole bars, and the sections make up the track. */
constexpr bool isWellFormed (const Song& song)
{
    int bars = 0;
    for (const auto& section : song.sections)
        bars += section.bars;
    const auto fillsBars = [] (const auto& line) { return std::string_view (line.pattern).size() % 16 == 0; };
    return bars == song.track.bars && std::ranges::all_of (song.drums, fillsBars)
           && std::ranges::all_of (song.tones, fillsBars);
}
static_assert (std::ranges::all_of (table, isWellFormed));
}

std::span<const Song> songs() noexcept
{
    return table;
}
