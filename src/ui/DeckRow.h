#pragma once

#include "ui/ChannelView.h"
#include "ui/CommandButton.h"
#include "ui/DeckCommands.h"
#include "ui/EffectRow.h"
#include "ui/OverviewWaveform.h"
#include "ui/PitchFader.h"
#include "ui/PollingView.h"

#include <array>
#include <memory>

class CPlatterdex;

/** Where the parts of a deck's row lie. */
struct DeckRowLayout
{
    static constexpr int minimumWidth = 1080, minimumHeight = 140;

    explicit DeckRowLayout (juce::Rectangle<int> row);

    juce::Rectangle<int> stripe, letter, load, title, state, tempo, position, length, waveform, play, cue,
        sync, keyLock, keyLabel, keyTuning, nudgeMinus, nudgePlus, effects, pitch, pitchText, channel;
    std::array<juce::Rectangle<int>, DeckCommands::hotCueButtons> hotCues;
};

/** One deck: what is on it, where it plays, and the controls of its transport. Files dropped on it are loaded. */
class DeckRow : public PollingView, public juce::FileDragAndDropTarget
{
public:
    /** @param deck   0 to 3 */
    DeckRow (CPlatterdex&, int deck);
    ~DeckRow() override;

    /** Shows a text of the engine, whose lines are parted by "|". On a deck with a track it goes after five seconds, on
        an empty one it stays until something is loaded. */
    void showMessage (const juce::String&);

    /** Takes the message away. */
    void clearMessage();

    void paint (juce::Graphics&) override;
    void paintOverChildren (juce::Graphics&) override;
    void resized() override;

    bool isInterestedInFileDrag (const juce::StringArray&) override;
    void fileDragEnter (const juce::StringArray&, int, int) override { setDropTarget (true); }
    void fileDragExit (const juce::StringArray&) override { setDropTarget (false); }
    void filesDropped (const juce::StringArray&, int, int) override;

    /** What the row says at the moment. */
    struct Texts
    {
        juce::String title, state, tempo, position, length, pitch;
        bool playing = false;
        bool operator== (const Texts&) const = default;
    };

    const Texts& texts() const noexcept { return shown; }
    const OverviewWaveform& waveform() const noexcept { return overview; }

private:
    void pollMoving() override;
    void pollCalm() override;
    void take (const Texts&);
    void updateNotice();
    void setDropTarget (bool);
    void chooseFile();

    CPlatterdex& engine;
    const int deckIndex;
    const DeckCommands commands;

    OverviewWaveform overview;
    juce::TextButton load { "Load" };
    CommandButton play, cue, sync, keyLock, nudgeMinus, nudgePlus;
    std::array<std::unique_ptr<CommandButton>, DeckCommands::hotCueButtons> hotCues;
    CommandSlider keyTuning;
    PitchFader pitch;
    ChannelView channel;
    EffectRow effects;
    std::unique_ptr<juce::FileChooser> chooser;

    Texts shown;
    juce::StringArray message;
    int messageTurns = 0; ///< calm polls that the message still stands on a deck with a track
    bool dropTarget = false;
};
