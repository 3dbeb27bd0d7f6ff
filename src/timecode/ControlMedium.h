#pragma once

#include "support/AudioThread.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string_view>
#include <vector>

/** A code pressed along a groove: each cycle of the carrier holds one bit or six.

    Cycles count from the beginning of the medium. Immutable once built, so all decks share one; building one
    allocates and takes some milliseconds, reading it neither allocates nor waits. */
class GrooveCode
{
public:
    virtual ~GrooveCode() = default;

    /** Bits in one cycle: 1 or 6. */
    PX_AUDIO_THREAD virtual int bitsPerCycle() const noexcept = 0;

    /** Bits of a cycle, the first in the lowest bit; 0 outside the medium. */
    PX_AUDIO_THREAD virtual unsigned bitsAt (std::int64_t cycle) const noexcept = 0;

    /** Cycles that locate() needs. */
    PX_AUDIO_THREAD virtual int cyclesToLocate() const noexcept = 0;

    /** Cycles beyond those that must agree before a place is believed. */
    PX_AUDIO_THREAD virtual int cyclesToBelieve() const noexcept = 0;

    /** Finds where cycles lie that were read in the groove's order.
        @returns the first one's cycle, or nothing when they stand nowhere. Audio thread. */
    PX_AUDIO_THREAD virtual std::optional<std::int64_t>
    locate (std::span<const unsigned> cycles) const noexcept = 0;

    /** Cycles of the whole medium. */
    PX_AUDIO_THREAD virtual std::int64_t length() const noexcept = 0;
};

/** A record or disc that steers a deck: two channels of one carrier, a quarter of a cycle apart. */
struct ControlMedium
{
    std::string_view id;   /**< short name for lists and the command line */
    std::string_view name; /**< name for users */
    double carrierHz;      /**< at nominal speed */
    int bits;              /**< width of the register; 0: the system's own disc */
    std::uint32_t seed;    /**< register at cycle 0 */
    std::uint32_t taps;
    std::int64_t length;     /**< cycles */
    std::int64_t safeLength; /**< cycles before the zone at the end */
    bool primaryIsLeft;      /**< channel whose upward crossings begin a cycle */
    bool readBelowCentre;    /**< the bit is read where the primary is negative */
    bool reversedPhase;      /**< secondary leads where others follow */
    bool levelFollowsSpeed;  /**< a cartridge gives velocity, a disc player does not */

    PX_AUDIO_THREAD bool isOwnDisc() const noexcept { return bits == 0; }
};

/** The system's own disc first, then the media whose code is publicly known. */
std::span<const ControlMedium> controlMedia() noexcept;

/** Medium of an id, or null. */
const ControlMedium* findControlMedium (std::string_view id) noexcept;

/** Code of a medium, built on first use and kept for the process. Not on the audio thread. */
std::shared_ptr<const GrooveCode> codeOf (const ControlMedium&);
