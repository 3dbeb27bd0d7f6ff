#pragma once

#include "session/PreferencesFile.h"
#include "ui/look/FileDialog.h"
#include "ui/poll/DeckWatch.h"

#include <functional>
#include <memory>
#include <vector>

class CPlatterdex;

/** The dialog that loads tracks: one for all decks. It opens in the folder of the last track that it gave, in this session or one
    before. Several files go onto the decks in their order. Message thread. */
class LoadDialog
{
public:
    /** @param preferences   keep the folder */
    LoadDialog (CPlatterdex&, PreferencesFile& preferences);

    /** @param deck    0 to 3, where the first track goes
        @param asker   without it, when the answer comes, nothing is loaded */
    void open (int deck, juce::Component& asker);

    /** The dialog's answer. @param asker   null if it has gone */
    void chosen (const juce::Array<juce::File>&, int deck, juce::Component* asker);

    /** Loads tracks from a hand onto the decks in their order: see TrackLoad::inOrder(). */
    void load (const juce::Array<juce::File>&, int deck, juce::Component& asker, bool isHeld = false);

    /** Is told how many tracks found no deck. */
    std::function<void (int count)> onLeft;

    /** The folder that it opens in. */
    juce::File folder() const;

private:
    CPlatterdex& engine;
    PreferencesFile& preferences;
    std::vector<DeckWatch> decks;
    std::unique_ptr<FileDialog> dialog;
};
