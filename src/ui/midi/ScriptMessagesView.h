#pragma once

#include "midi/script/ScriptJournal.h"
#include "ui/poll/PollingView.h"

/** The messages of scripts, one below the other, as text that can be marked and copied. New ones show up by themselves. */
class ScriptMessagesView : public PollingView
{
public:
    enum class Shown
    {
        messages, ///< of the compiler and of faults, with the sentence that belongs under errors
        log,      ///< lines of the scripts' own
        all
    };

    /** @param from   the number of the last entry that is left out; 0 shows all */
    ScriptMessagesView (const ScriptJournal&, Shown, uint64_t from = 0);

    /** True if the view's kind of entry stands behind a number. */
    static bool hasNews (const ScriptJournal&, Shown, uint64_t from);

    /** The text as it is shown. */
    juce::String shownText() const { return text.getText(); }

    void resized() override;
    void paint (juce::Graphics&) override;

private:
    static bool isShown (const ScriptEntry&, Shown);
    void pollCalm() override;
    void append (const ScriptEntry&);

    const ScriptJournal& journal;
    const Shown shown;
    uint64_t lastNumber;
    bool hasError = false;
    juce::TextEditor text;
    juce::Rectangle<int> foot;
};
