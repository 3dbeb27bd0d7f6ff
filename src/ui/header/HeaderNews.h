#pragma once

#include "ui/poll/DeckWatch.h"
#include "ui/poll/PollingView.h"

#include <array>
#include <functional>
#include <optional>
#include <vector>

class CPlatterdex;

/** The line above the block between the decks: a lamp, one sentence on what goes wrong or goes on, the most urgent first, and
    the time of day. */
class HeaderNews : public PollingView
{
public:
    explicit HeaderNews (CPlatterdex&);

    /** One sentence on what goes on in the background; empty for nothing. */
    void setStatus (const juce::String&);

    /** A sentence on what a hand has just done, for five seconds. @param offer   done by a click on it; may be empty */
    void tell (const juce::String&, std::function<void()> offer = {});

    /** Is told the file and the seconds of a recording that has ended. */
    std::function<void (const juce::File&, double seconds)> onRecorded;

    enum class Weight
    {
        none,
        quiet, ///< goes on
        danger ///< goes wrong
    };

    struct News
    {
        juce::String sentence, clock;
        Weight weight = Weight::none;
        bool operator== (const News&) const = default;
    };

    const News& shown() const noexcept { return news; }

    void paint (juce::Graphics&) override;
    void mouseUp (const juce::MouseEvent&) override;

private:
    void pollCalm() override;
    News read();
    juce::String readDanger() const;
    juce::String readWork() const;
    juce::String readAutomix() const;
    void followRecorder();
    void followAutomix();
    void followLoops();
    bool missesTheBeat (const DeckWatch&);

    CPlatterdex& engine;
    std::vector<DeckWatch> decks;
    juce::String status, told;
    std::optional<juce::uint32> toldUntil; ///< on the engine's clock
    News news;
    bool isRecording = false;
    std::function<void()> offered;
    std::array<std::optional<TrackPlaces::Loop>, deckCount> loops; ///< that run
    std::vector<GridBeat> beats;
    bool hasOfferedSnap = false;
    int automixStops = 0; ///< Automix::timesWithoutTrack that was told
};
