#pragma once

#include "timecode/ControlMedium.h"

#include <span>
#include <string>

/** An entry of the list of records and discs that a deck can be steered by. */
struct TimecodeBrand
{
    std::string name;
    const ControlMedium*
        medium;    ///< null: the code is not known, only the motion of the carrier can be followed
    bool isRecord; ///< played by a needle, behind a lead-in groove; else a disc

    bool isCoded() const noexcept { return medium != nullptr; }

    /** Medium to decode by.
        @param calibration   factor from the speed of a 1 kHz carrier to nominal speed, above 0; says the carrier of a
                             brand without a known code, others have their own */
    ControlMedium mediumAt (double calibration) const noexcept;
};

/** All brands; a deck's setup holds the index. The first nine are fixed, the media of known code follow. */
std::span<const TimecodeBrand> timecodeBrands() noexcept;

/** Brand of an index; the first one for an index outside. Any thread. */
const TimecodeBrand& timecodeBrand (int index) noexcept;

/** Index of the brand that stands for a medium. */
int timecodeBrandOf (const ControlMedium&) noexcept;
