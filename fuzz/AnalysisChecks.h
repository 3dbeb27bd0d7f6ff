#pragma once

#include "Check.h"

#include "analysis/files/AnalysisXml.h"

#include <cmath>

/** Checks what decks take for granted of an analysis that was read, and that it survives being written. */
inline void checkAnalysis (const TrackAnalysis& analysis, size_t bytes)
{
    const auto isTempo = [] (double bpm) { return bpm >= 1.0 && bpm <= 1000.0; };
    FUZZ_CHECK (isTempo (analysis.tempoTracker) && isTempo (analysis.tempoAverage));
    const auto marks = analysis.beatMarks.value_or (std::vector<BeatMark>());
    FUZZ_CHECK (marks.size() <= bytes);
    for (size_t i = 0; i < marks.size(); ++i)
        FUZZ_CHECK (isTempo (marks[i].bpm) && marks[i].pos >= 0
                    && (i == 0 || marks[i].pos > marks[i - 1].pos));
    FUZZ_CHECK (analysis.downbeatId >= 0 && analysis.downbeatPos >= 0);
    FUZZ_CHECK (analysis.downbeatId == 0 || static_cast<size_t> (analysis.downbeatId) < marks.size());
    FUZZ_CHECK (!analysis.autogain || (*analysis.autogain > 0.0 && *analysis.autogain < 100.0));
    if (analysis.cues)
    {
        for (const auto cue : analysis.cues->cuePos)
            FUZZ_CHECK (cue == TrackAnalysis::unsetCue || (cue >= 0.0 && cue <= INT32_MAX));
        FUZZ_CHECK (analysis.cues->phaseStart >= 0.0 && analysis.cues->phaseStart <= INT32_MAX);
        FUZZ_CHECK (analysis.cues->transportCueSel.value_or (0) >= 0
                    && analysis.cues->transportCueSel.value_or (0) < 16);
    }

    const auto text = AnalysisXml::write (analysis);
    const auto back = AnalysisXml::read (std::as_bytes (std::span (text)));
    FUZZ_CHECK (back && AnalysisXml::write (*back) == text);
}
