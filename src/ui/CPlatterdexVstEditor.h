#pragma once

#include "deck/DeckNumbers.h"
#include "support/EngineListener.h"
#include "ui/DeckRow.h"
#include "ui/HeaderBar.h"
#include "ui/KeyboardCommands.h"
#include "ui/Look.h"
#include "ui/MixerBar.h"
#include "ui/ParameterList.h"

#include <juce_audio_processors/juce_audio_processors.h>

#include <array>
#include <functional>
#include <memory>

class CPlatterdex;

/** The window's content, in plug-in and application alike. Message thread. */
class CPlatterdexVstEditor : public juce::AudioProcessorEditor, private EngineListener
{
public:
    static constexpr int minimumWidth = 1100, minimumHeight = 680;

    /** @param audioSettings   opens the dialog of the audio device; empty inside a host, which has its own */
    explicit CPlatterdexVstEditor (CPlatterdex&, std::function<void()> audioSettings = {});
    ~CPlatterdexVstEditor() override;

    /** One sentence in the header on what goes on in the background; empty for nothing. */
    void setStatus (const juce::String& sentence) { header.setStatus (sentence); }

    /** Shows the list of all commands in place of the decks. */
    void showParameters (bool);

    DeckRow& deckRow (int deck) { return *rows[static_cast<size_t> (deck)]; }

    void paint (juce::Graphics&) override;
    void resized() override;
    bool keyPressed (const juce::KeyPress& key) override { return keyboard.keyPressed (key); }
    bool keyStateChanged (bool isKeyDown) override;
    void focusOfChildComponentChanged (FocusChangeType) override;

private:
    struct Layout
    {
        explicit Layout (juce::Rectangle<int> window);
        juce::Rectangle<int> header, desk, mixer;
        std::array<juce::Rectangle<int>, deckCount> rows;
    };

    void engineEvent (EngineEvent, int index) override;
    void engineMessage (const juce::String&, int deck) override;

    /** First in, last out: every control below draws with it. */
    struct Dressed
    {
        explicit Dressed (juce::Component& c) : component (c) { component.setLookAndFeel (&look); }
        ~Dressed() { component.setLookAndFeel (nullptr); }
        juce::Component& component;
        Look look;
    };

    CPlatterdex& engine;
    Dressed dressed { *this };
    HeaderBar header;
    MixerBar mixer;
    std::array<std::unique_ptr<DeckRow>, deckCount> rows;
    std::unique_ptr<ParameterList> parameters;
    std::unique_ptr<juce::TooltipWindow> tooltips;
    KeyboardCommands keyboard;
};
