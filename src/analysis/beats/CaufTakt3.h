#pragma once

#include "analysis/beats/TaktEngine.h"

/** The full engine, for tracks of 30 seconds and more. Segments of 30 seconds are judged as they come in, the whole
    signal at the end. Of the signal itself it keeps less than a second; the onset functions grow with it. */
class CaufTAKT3 : public TaktEngine
{
protected:
    void take (std::span<const float> mono) override;
    void concludeTempo() override;

private:
    void judge (double firstFrame, double endFrame, double weight);

    int64_t framesTaken = 0;
    int64_t framesSeen = 0; ///< since the end of the last segment, and 15 seconds more
};
