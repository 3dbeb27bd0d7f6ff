#pragma once

#include "demo/Drums.h"
#include "demo/Tones.h"

/** The instruments that the songs share. */
namespace Patches
{
// clang-format off
//                                       s     body  Hz    sweep  time   decay  click noise low     high     time  burst metal Hz    time  drive
inline constexpr DrumPatch kickRound   { 0.45, 1.0,  47.0, 260.0, 0.020, 0.17,  0.25, 0.0,  0.0,    0.0,     1.0,  0,    0.0,  0.0,  1.0,  1.5 };
inline constexpr DrumPatch kickHard    { 0.42, 1.0,  49.0, 420.0, 0.016, 0.15,  0.5,  0.05, 900.0,  5000.0,  0.02, 0,    0.0,  0.0,  1.0,  2.4 };
inline constexpr DrumPatch kickDusty   { 0.34, 1.0,  52.0, 180.0, 0.018, 0.12,  0.3,  0.10, 300.0,  3500.0,  0.03, 0,    0.0,  0.0,  1.0,  2.2 };
inline constexpr DrumPatch kickTight   { 0.30, 1.0,  52.0, 380.0, 0.013, 0.105, 0.6,  0.08, 1200.0, 7000.0,  0.02, 0,    0.0,  0.0,  1.0,  2.4 };
inline constexpr DrumPatch snareDry    { 0.30, 0.55, 188.0,120.0, 0.012, 0.055, 0.4,  0.75, 1100.0, 9500.0,  0.070,0,    0.0,  0.0,  1.0,  1.6 };
inline constexpr DrumPatch snareDusty  { 0.36, 0.60, 172.0,100.0, 0.012, 0.065, 0.3,  0.70, 800.0,  6500.0,  0.085,0,    0.0,  0.0,  1.0,  2.2 };
inline constexpr DrumPatch snareCrack  { 0.32, 0.50, 205.0,160.0, 0.010, 0.060, 0.7,  0.85, 1500.0, 12000.0, 0.080,0,    0.0,  0.0,  1.0,  2.2 };
inline constexpr DrumPatch clap        { 0.40, 0.0,  0.0,  0.0,   1.0,   1.0,   0.0,  1.0,  900.0,  6500.0,  0.085,2,    0.0,  0.0,  1.0,  1.6 };
inline constexpr DrumPatch rim         { 0.09, 0.55, 820.0,500.0, 0.004, 0.012, 0.5,  0.10, 1500.0, 6000.0,  0.010,0,    0.0,  0.0,  1.0,  1.8 };
inline constexpr DrumPatch hatClosed   { 0.14, 0.0,  0.0,  0.0,   1.0,   1.0,   0.0,  0.40, 6800.0, 17000.0, 0.022,0,    0.45, 540.0,0.026,1.0 };
inline constexpr DrumPatch hatSoft     { 0.12, 0.0,  0.0,  0.0,   1.0,   1.0,   0.0,  0.50, 5200.0, 13000.0, 0.020,0,    0.15, 480.0,0.020,1.0 };
inline constexpr DrumPatch hatOpen     { 0.42, 0.0,  0.0,  0.0,   1.0,   1.0,   0.0,  0.38, 6200.0, 17000.0, 0.110,0,    0.45, 520.0,0.120,1.0 };
inline constexpr DrumPatch shaker      { 0.16, 0.0,  0.0,  0.0,   1.0,   1.0,   0.0,  0.45, 4800.0, 12000.0, 0.032,1,    0.0,  0.0,  1.0,  1.0 };
inline constexpr DrumPatch ride        { 0.80, 0.05, 2900.0,0.0,  1.0,   0.060, 0.1,  0.14, 5500.0, 15000.0, 0.200,0,    0.40, 610.0,0.240,1.0 };
inline constexpr DrumPatch conga       { 0.28, 0.60, 235.0,60.0,  0.015, 0.070, 0.15, 0.08, 1800.0, 6000.0,  0.012,0,    0.0,  0.0,  1.0,  1.4 };
inline constexpr DrumPatch tomLow      { 0.40, 0.70, 98.0, 50.0,  0.040, 0.110, 0.10, 0.06, 900.0,  4000.0,  0.020,0,    0.0,  0.0,  1.0,  1.5 };

//                                     saws gain  cents squ   sub   fm    ratio index time  cutoff  env  time  reson track attack decay sust rel    width drive
inline constexpr TonePatch bassOrgan   { 0, 0.0,  0.0,  0.25, 0.0,  0.75, 1.0,  0.9,  0.12, 260.0,  1.6, 0.09, 0.8,  0.5,  0.003, 0.30, 0.6, 0.03, 0.0,  1.4 };
inline constexpr TonePatch bassDisco   { 1, 0.55, 0.0,  0.25, 0.0,  0.55, 1.0,  0.6,  0.10, 320.0,  2.6, 0.08, 1.3,  0.4,  0.002, 0.25, 0.5, 0.02, 0.0,  1.6 };
inline constexpr TonePatch bassRolling { 2, 0.75, 9.0,  0.0,  0.0,  0.55, 1.0,  0.0,  1.0,  170.0,  2.8, 0.10, 1.6,  0.4,  0.002, 0.30, 0.6, 0.02, 0.0,  1.8 };
inline constexpr TonePatch bassAcid    { 1, 0.85, 0.0,  0.0,  0.0,  0.50, 1.0,  0.0,  1.0,  190.0,  3.0, 0.09, 4.0,  0.3,  0.002, 0.30, 0.5, 0.02, 0.0,  2.0 };
inline constexpr TonePatch bassSub     { 0, 0.0,  0.0,  0.12, 0.0,  1.0,  1.0,  0.5,  0.20, 300.0,  1.2, 0.10, 0.7,  0.3,  0.004, 0.70, 0.7, 0.05, 0.0,  1.8 };
inline constexpr TonePatch bassReese   { 3, 0.55, 22.0, 0.0,  0.0,  1.00, 1.0,  0.0,  1.0,  300.0,  1.2, 0.30, 1.1,  0.2,  0.006, 1.00, 0.9, 0.04, 0.0,  1.9 };

inline constexpr TonePatch epiano      { 0, 0.0,  0.0,  0.0,  0.0,  0.75, 1.0,  2.3,  0.35, 3600.0, 1.2, 0.40, 0.6,  0.4,  0.002, 1.10, 0.1, 0.14, 0.8,  1.0 };
inline constexpr TonePatch organStab   { 3, 0.35, 12.0, 0.15, 0.0,  0.60, 2.0,  1.1,  0.25, 1500.0,  2.0, 0.16, 0.9,  0.3,  0.002, 0.30, 0.4, 0.09, 1.0,  1.2 };
inline constexpr TonePatch sawChord    { 7, 1.0,  26.0, 0.0,  0.0,  0.0,  1.0,  0.0,  1.0,  2400.0, 2.0, 0.22, 0.8,  0.3,  0.004, 0.60, 0.6, 0.10, 1.0,  1.0 };
inline constexpr TonePatch sawPad      { 5, 0.9,  18.0, 0.0,  0.0,  0.0,  1.0,  0.0,  1.0,  2600.0, 0.6, 1.20, 0.7,  0.3,  0.30,  2.00, 0.8, 0.35, 1.0,  1.0 };
inline constexpr TonePatch dubStab     { 5, 0.9,  20.0, 0.2,  0.0,  0.0,  1.0,  0.0,  1.0,  800.0,  3.2, 0.12, 1.4,  0.3,  0.002, 0.22, 0.2, 0.10, 1.0,  1.3 };

inline constexpr TonePatch pluck       { 3, 0.70, 10.0, 0.25, 0.0,  0.0,  1.0,  0.0,  1.0,  1300.0,  3.4, 0.10, 1.2,  0.5,  0.001, 0.28, 0.2, 0.09, 0.8,  1.0 };
inline constexpr TonePatch bell        { 0, 0.0,  0.0,  0.0,  0.0,  0.80, 3.0,  1.9,  0.18, 7000.0, 0.6, 0.40, 0.6,  0.3,  0.001, 0.50, 0.1, 0.25, 0.7,  1.0 };
inline constexpr TonePatch lead        { 5, 0.80, 14.0, 0.2,  0.0,  0.0,  1.0,  0.0,  1.0,  2400.0, 2.2, 0.25, 0.9,  0.4,  0.004, 0.50, 0.7, 0.10, 0.9,  1.1 };
// clang-format on
}
