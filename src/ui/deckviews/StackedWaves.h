#pragma once

#include "deck/state/DeckNumbers.h"
#include "ui/deckviews/StackedWave.h"

#include <array>
#include <memory>

/** The waveforms of all decks with a track, large and one below the other on one line of time. Message thread. */
class StackedWaves : public PollingView
{
public:
    explicit StackedWaves (CPlatterdex&);

    /** @param deck   0 to 3 */
    const StackedWave& row (int deck) const { return *rows[static_cast<size_t> (deck)]; }

    void paint (juce::Graphics&) override;
    void resized() override;

private:
    void pollCalm() override;

    CPlatterdex& engine;
    std::array<std::unique_ptr<StackedWave>, deckCount> rows;
    std::array<bool, deckCount> shown {};
};
