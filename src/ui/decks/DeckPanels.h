#pragma once

#include "deck/state/DeckNumbers.h"
#include "ui/panel/ControlPanel.h"
#include "ui/poll/DeckWatch.h"
#include "ui/widgets/ValueEntry.h"

#include <array>
#include <functional>

class PXTextButton;

/** The utility panels of a deck, each 100 by 166. Which of them can be offered says UtilityPanels.h. */

/** Beat loops by size, rolling loops and manual ones. */
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
    void pollMoving() override;

    const DeckWatch watch;
    std::array<PXTextButton*, hotCueCount> buttons {};
    int cueSlot = -1; ///< that Cue writes and goes to, as shown
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
    void pollMoving() override;
    void tune (double semitones);

    const DeckWatch watch;
    juce::String shown;
};

/** The beat grid, the track's tempo and their edits. */
class DeckGridPanel : public ControlPanel
{
public:
    DeckGridPanel (CPlatterdex&, int deck);

    void paint (juce::Graphics&) override;

private:
    void pollMoving() override;
    void mouseDown (const juce::MouseEvent&) override;
    PXTextButton& addButton (const char* name, const juce::String& text, juce::Rectangle<int>,
                             const juce::String& tip, std::function<void()> act);
    void enterTempo();

    const DeckWatch watch;
    PXTextButton& fixed;
    std::unique_ptr<ValueEntry> entry;
    std::vector<PXTextButton*> moves; ///< of the fixed grid
    juce::String tempo;
};
