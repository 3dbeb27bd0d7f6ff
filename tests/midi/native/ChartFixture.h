#pragma once

#include "Chart.h"
#include "JackDevice.h"
#include "NativeFixture.h"
#include "engine/BrowserRequests.h"

#include <map>
#include <set>

/** Counts what controllers ask of the browser. */
struct BrowserLog : BrowserRequests::Receiver
{
    static constexpr size_t requests = 18;

    void carryOut (BrowserRequest request, int deck) override
    {
        ++counts[static_cast<size_t> (request) * 4 + static_cast<size_t> (deck)];
    }

    std::array<double, requests * 4> counts {};
};

/** One of the things that a control can change. */
struct ChartReading
{
    juce::String name; ///< a command's constant without its deck, or a word for what no command reads
    int deck = -1;     ///< -1 of what belongs to none
    double value = 0.0;

    bool operator== (const ChartReading&) const = default;
};

/** A controller, brought into states in which every function has something to change; played through a real JACK port if that
    is wanted, else directly. */
class ChartFixture : public NativeFixture
{
public:
    explicit ChartFixture (int model);
    ~ChartFixture();

    /** Loads a track into each deck, and samples into the pads. */
    void loadTracks();

    /** Sets the state in which a row has something to change, the layers of the surface those of the start. */
    void prepare (const ChartRow&);

    /** The same, leaving the surface alone. */
    void prepareEngine (const ChartRow&);

    using Message = std::array<int, 3>;

    /** The messages of a row's control when a hand uses it. */
    static std::vector<Message> messagesOf (const ChartRow&);

    /** States for lamps that no control of the surface lights: all decks stopped at a cue and synced for once, in a loop of
        two marks, loud. */
    void stopAtCues();
    void loopByMarks();

    /** Runs a pad of each deck's Slicegate. @param pad   0 to 7 */
    void slice (int pad);

    /** Sets every command that has a place to it, while the decks sound. @param share   0 to 1 */
    void sweep (float share);
    void soundAll();

    /** Plays a row's control as a hand would, and lets it go. */
    void play (const ChartRow&);
    void release (const ChartRow&);

    /** All that a control can change. */
    std::vector<ChartReading> world();

    /** States the lamps once. The last value of each is in `lamps`. */
    void stateLamps();

    /** True while a control of this name, or of another name for the same, is pressed. */
    bool isHeld (const juce::String& function, int deckIndex) const
    {
        return held.contains ({ sameFor (function), deckIndex });
    }

    std::map<std::pair<int, int>, int> lamps; ///< by status and data

private:
    /** One of the names that charts have for a function. */
    static juce::String sameFor (const juce::String& function)
    {
        return function.replace ("beat jump", "search").upToFirstOccurrenceOf (" or ", false, false);
    }

    void send (int status, int data, int value);
    void setPlaces (float share);

    std::unique_ptr<JackDevice::Plugged> jack; ///< null if messages go directly
    BrowserLog browser;
    std::set<std::pair<juce::String, int>> held;
};
