#pragma once

#include "analysis/beats/TaktEngine.h"

/** The simpler engine, for clips of less than 30 seconds. It takes the tempo from the last 24 seconds at once. */
class CaufTAKT : public TaktEngine
{
protected:
    void take (std::span<const float> mono) override;
    void concludeTempo() override;

private:
    /** The tempo that most marks stand for, in hundredths of a BPM; 0 if there is none. */
    double tempoOfMarks() const;

    int64_t framesTaken = 0;
};
