#pragma once

#include "deck/state/DeckNumbers.h"
#include "ui/panel/ControlPanel.h"

#include <array>
#include <functional>

class PXTextButton;

/** The utility panels of a deck, each 100 by 166. Which of them can be offered says UtilityPanels.h. */

/** Beat loops by size, rolling ones, and those set by hand. */
class DeckLoopPanel : public ControlPanel
{
public:
    DeckLoopPanel (CPlatterdex&, int deck);
};

/** The eight hot cues. */
class DeckCuePanel : public ControlPanel
{
public:
    DeckCuePanel (CPlatterdex&, int deck);

    void paintOverChildren (juce::Graphics&) override;

private:
    void mouseDown (const juce::MouseEvent&) override;

    const int deckIndex;
    std::array<PXTextButton*, hotCueCount> buttons {};
};

/** Key and key lock. */
class DeckKeyPanel : public ControlPanel
{
public:
    DeckKeyPanel (CPlatterdex&, int deck);

    void paint (juce::Graphics&) override;

    /** "+1.50", semitones. */
    const juce::String& tuningText() const noexcept { return shown; }

private:
    void pollCalm() override;
    void tune (double semitones);

    const int deckIndex;
    juce::String shown;
};

/** Where the beats lie. */
class DeckGridPanel : public ControlPanel
{
public:
    DeckGridPanel (CPlatterdex&, int deck);

    void paint (juce::Graphics&) override;

private:
    void pollCalm() override;
    void mouseDown (const juce::MouseEvent&) override;
    PXTextButton& addButton (const char* name, const char* text, juce::Rectangle<int>, const char* tip,
                             std::function<void()> act);

    const int deckIndex;
    PXTextButton& fixed;
    juce::String tempo;
};
