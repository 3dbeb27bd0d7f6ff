#pragma once

#include "session/PreferencesFile.h"
#include "session/similar/KeyText.h"
#include "support/language/Translate.h"
#include "ui/decks/DeckContainerPanel.h"
#include "ui/decks/LoadDialog.h"
#include "ui/decks/TrackLoad.h"
#include "ui/deckviews/DeckWaveform.h"
#include "ui/deckviews/DeckWaveformThumbnail.h"
#include "ui/layout/DeckLayout.h"
#include "ui/panel/ControlPanel.h"
#include "ui/panel/DeckBadge.h"
#include "ui/poll/DeckWatch.h"
#include "ui/widgets/MenuButton.h"
#include "ui/widgets/PXImageButton.h"

#include <memory>
#include <optional>
#include <vector>

/** A deck's strip: transport, waveform, thumbnail and the utility panels on both sides. It takes audio files from outside
    and the tracks of other decks. */
class DeckComponent : public ControlPanel, public juce::FileDragAndDropTarget, public juce::DragAndDropTarget
{
public:
    /** @param deck   0 to 3
        @param loader        takes the files that are let go over the deck; outlives it
        @param preferences   say how keys are written; outlive it */
    DeckComponent (CPlatterdex&, int deck, LoadDialog& loader, const PreferencesFile& preferences);

    int deck() const noexcept { return watch.deck(); }

    /** Shows a text of the engine, whose lines are parted by "|". On a deck with a track it goes after five seconds, on
        an empty one it stays until something is loaded. */
    void showMessage (const juce::String&);
    void clearMessage();

    /** The lines that stand over the waveform. */
    const juce::StringArray& notice() const noexcept { return shownNotice; }

    /** The track's words in the strip. The tempo is the track's own where a tempo panel says the one that is heard; else both,
        the one that is heard first. The key is that of the file; empty if nobody knows it. */
    struct Texts
    {
        juce::String title, artist, album, tempo, key;
        bool operator== (const Texts&) const = default;
    };

    const Texts& texts() const noexcept { return shown; }

    bool isPlaying() const noexcept { return watch->playing; }
    DeckWaveform& waveformView() noexcept { return waveform; }

    /** True if fewer panels stand in the strip than the preferences want. */
    bool lacksRoomForPanels() const;

    /** Marks the deck as the one that the keys of undo mean. */
    void setTouched (bool);

    /** The deck's answer to a track that hangs over it; nothing while none does. */
    std::optional<TrackLoad::Consent> dropConsent() const noexcept { return drop; }

    void paint (juce::Graphics&) override;
    void paintOverChildren (juce::Graphics&) override;
    void resized() override;

    void mouseDown (const juce::MouseEvent&) override;

    bool isInterestedInFileDrag (const juce::StringArray&) override;
    void fileDragEnter (const juce::StringArray&, int, int) override { followDrop (true); }
    void fileDragMove (const juce::StringArray&, int, int) override { followDrop (true); }
    void fileDragExit (const juce::StringArray&) override { followDrop (false); }
    void filesDropped (const juce::StringArray&, int, int) override;

    bool isInterestedInDragSource (const SourceDetails&) override;
    void itemDragEnter (const SourceDetails&) override { followDrop (true); }
    void itemDragMove (const SourceDetails&) override { followDrop (true); }
    void itemDragExit (const SourceDetails&) override { followDrop (false); }
    void itemDropped (const SourceDetails&) override;

private:
    void pollMoving() override;
    void pollCalm() override;
    DeckLayout layout() const;
    void makePanels();
    void updateNotice();
    void updateTexts();
    bool hasTempoPanel() const;
    juce::String tempoText() const;
    void paintGround (juce::Graphics&);
    void paintTexts (juce::Graphics&) const;
    void followDrop (bool isOver);
    void openMenu();
    juce::Array<juce::File> tracksOf (const SourceDetails&) const;

    LoadDialog& loader;
    const PreferencesFile& preferences;
    KeyText::Notation notation = KeyText::Notation::letters;
    const DeckWatch watch;
    DeckBadge lamp;
    PXImageButton& loadButton;
    DeckWaveform waveform;
    DeckWaveformThumbnail thumbnail;
    MenuButton gridSign { tr ("GRID ?") };
    std::vector<std::unique_ptr<DeckContainerPanel>> leftPanels, rightPanels;

    juce::Image ground; ///< of the strip, in the pixels of the last paint
    Texts shown;
    juce::StringArray message, shownNotice;
    std::optional<juce::uint32> messageEnds; ///< when the message goes from a deck with a track
    int seatsLeft = -1, seatsRight = -1;
    std::optional<TrackLoad::Consent> drop;
    bool touched = false;
};
