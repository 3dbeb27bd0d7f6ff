#pragma once

#include "timecode/CarrierTracker.h"
#include "timecode/ControlMedium.h"

#include <algorithm>
#include <array>

/** Finds and keeps the place of the needle in a coded groove.

    Each cycle that was passed from end to end leaves its bits under its number in the count of turns, whichever way
    it was passed. Enough neighbours that stand somewhere in the code fix how the count lies on the groove; from then
    on the place is the count, through reversals, slow hands and dropouts, and the bits that pass only test it:
    when they stop agreeing, places nearby are tried before the place is given up. Audio thread; allocates nothing. */
class PositionLock
{
public:
    /** Sets the medium and its code, both outliving this, and the rate of the input, and resets. */
    void prepare (const ControlMedium&, const GrooveCode&, double sampleRate, int framesInTick) noexcept;
    PX_AUDIO_THREAD void reset() noexcept;

    /** Takes in one reading of the carrier. */
    PX_AUDIO_THREAD void process (const CarrierTracker::Reading&) noexcept;

    /** Running share of bits that the code foretold, 0 to 1; 0 while the place is unknown. */
    PX_AUDIO_THREAD float trustInPlace() const noexcept { return known ? std::max (0.0f, trust) : 0; }

    /** Place of the needle in cycles of the medium, or nothing. */
    PX_AUDIO_THREAD std::optional<double> cycle() const noexcept;

private:
    static constexpr int history = 256; // cycles, a power of two
    static constexpr int slots = 6;     // of a disc's cycle

    struct Cycle
    {
        std::int64_t number = -1;
        unsigned epoch = 0;                         ///< cycles of an older one lie elsewhere
        float covered = 0;                          ///< share of the cycle that was heard
        std::array<float, slots> sum {}, weight {}; ///< by slot; a record's whole cycle in the first
        std::array<float, slots> value {};          ///< soft bits, above 0 for a 1
        bool read = false;
    };

    PX_AUDIO_THREAD Cycle& cycleAt (std::int64_t number) noexcept
    {
        return cycles[static_cast<std::size_t> (number) & (history - 1)];
    }
    PX_AUDIO_THREAD bool wasRead (std::int64_t number) noexcept
    {
        const auto& c = cycleAt (number);
        return c.number == number && c.epoch == epoch && c.read;
    }
    PX_AUDIO_THREAD void watchHand (const CarrierTracker::Reading&) noexcept;
    PX_AUDIO_THREAD void loseCount() noexcept;
    PX_AUDIO_THREAD void enter (std::int64_t number) noexcept;
    PX_AUDIO_THREAD void gather (const CarrierTracker::Reading&, int firstFrame, int endFrame) noexcept;
    PX_AUDIO_THREAD bool readSlots (Cycle&) noexcept;
    PX_AUDIO_THREAD bool readHeight (Cycle&) noexcept;
    PX_AUDIO_THREAD unsigned hardBits (std::int64_t number) noexcept;
    PX_AUDIO_THREAD void finish (std::int64_t number, bool forward) noexcept;
    PX_AUDIO_THREAD int wrongBits (std::int64_t oldest, std::int64_t latest, std::int64_t offset) noexcept;
    PX_AUDIO_THREAD void recall (std::int64_t newest, bool forward) noexcept;
    PX_AUDIO_THREAD void search (std::int64_t newest, bool forward) noexcept;
    PX_AUDIO_THREAD void contest (std::int64_t newest, bool forward) noexcept;
    /** Mean height of the bits in which two places differ, 1 where they are sure. */
    PX_AUDIO_THREAD float clarity (std::int64_t oldest, std::int64_t latest, std::int64_t at,
                                   std::int64_t other) noexcept;
    PX_AUDIO_THREAD void test (std::int64_t newest, bool forward) noexcept;
    PX_AUDIO_THREAD float agreement (std::int64_t oldest, std::int64_t newest, std::int64_t offset,
                                     int& bitsSeen) noexcept;

    const ControlMedium* medium = nullptr;
    const GrooveCode* code = nullptr;
    int framesPerTick = 6, longestGapTicks = 441;
    double turnsNow = 0, fastestStep = 0.15; // turns a frame at which bits can be read

    std::array<Cycle, history> cycles {};
    std::int64_t current = 0;
    unsigned epoch = 0; ///< goes up when the count is lost
    bool started = false, enteredForward = true;
    float meanHeight = 0, spread = 0;
    int heightsSeen = 0;
    struct SlotLevels
    {
        float clear = 0, set = 1;
    };
    std::array<std::array<SlotLevels, slots>, 2> slotLevels {}; ///< backwards, forwards
    bool tooFast = false, even = false;
    float swiftness = 0, meanStep = 0; ///< highest and mean turns a frame of late
    float swiftStep = 0.02f, swiftLeak = 0.01f, stepLeak = 0.1f;
    int stoodTicks = 0, longestStandTicks = 44; ///< after a swift movement
    bool wasEven = false;                       ///< when the signal went away

    bool known = false, remembered = false;
    bool unproved = false;   // the count went through noise: no bit has confirmed it since
    int cyclesToProve = 0;   // in a row, until it is confirmed
    std::int64_t offset = 0; // cycle of the medium minus number in the count
    float trust = 0;
    int absentTicks = 0, awayTicks = 0, hiddenTicks = 0;
    int doubtful = 0;
};
