#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

// The language in which the factory's patterns are written; docs/slicegate.md describes it. A pattern is a file's paragraph:
//
//   106 1/3 Beat Rpt
//     time   (0:1/3)*12
//     volume (1:1/6 0:1/6)*12

/** A breakpoint of a curve, as the program keeps it. */
struct PatternPoint
{
    double delta = 0.0; ///< beats since the one before
    double value = 1.0, tension = 0.0;
    int type = 0; ///< a SegmentShape
};

using PatternCurve = std::vector<PatternPoint>;

struct Pattern
{
    int id = 0;
    std::string name;
    std::string timeText, volumeText; ///< as they are written
    PatternCurve time, volume;
};

struct PatternGroup
{
    std::string name;
    int menuPlace = 0; ///< from 1; 0 stands in no menu
    bool setsFlags = false;
    std::vector<Pattern> patterns;
};

/** The fault of a text: a sentence. */
struct PatternFault
{
    std::string sentence;
};

/** Reads the text of a time curve: the places of the track that are heard, in beats from the begin of the window.
    @throws PatternFault */
PatternCurve timeCurve (std::string_view text);

/** Reads the text of a volume curve: levels, 0 to 1. @throws PatternFault */
PatternCurve volumeCurve (std::string_view text);

/** Reads a file of patterns. @throws PatternFault, with the line */
PatternGroup patternGroup (std::string_view text);
