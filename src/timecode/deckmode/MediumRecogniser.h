#pragma once

#include "timecode/TimecodeDecoder.h"

#include <memory>
#include <vector>

/** Finds which medium a control signal comes from, by trying the codes of all of them side by side.

    Building it reads all codes, some tenths of a second and tens of megabytes the first time in a process; a second of
    sound takes some 30 ms. Any thread, one at a time. */
class MediumRecogniser
{
public:
    explicit MediumRecogniser (double sampleRate);
    ~MediumRecogniser();

    void process (float left, float right) noexcept;

    /** The medium whose code has been read for a tenth of a second, or null. */
    const ControlMedium* found() const noexcept { return recognised; }

private:
    struct Trial;
    std::vector<std::unique_ptr<Trial>> trials;
    const ControlMedium* recognised = nullptr;
    int framesToBelieve;
};
