#pragma once

#include "ui/poll/DeckWatch.h"
#include "ui/poll/PollingView.h"

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

    /** A sentence on what a hand has just done, for five seconds. */
    void tell (const juce::String&);

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

private:
    void pollCalm() override;
    News read();
    juce::String readDanger() const;
    juce::String readWork() const;

    CPlatterdex& engine;
    std::vector<DeckWatch> decks;
    juce::String status, told;
    std::optional<juce::uint32> toldUntil; ///< on the engine's clock
    News news;
};
