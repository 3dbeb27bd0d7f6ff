#include "ui/midi/ScriptMessagesView.h"

#include "skin/Palette.h"
#include "ui/panel/PanelPaint.h"

namespace
{
constexpr int footHeight = 24, margin = 8;
}

ScriptMessagesView::ScriptMessagesView (const ScriptJournal& j, Shown s, uint64_t from)
    : PollingView (Pace::calm),
      journal (j),
      shown (s),
      lastNumber (from)
{
    text.setMultiLine (true, true);
    text.setReadOnly (true);
    text.setCaretVisible (false);
    text.setColour (juce::TextEditor::backgroundColourId, palette::ground);
    text.setColour (juce::TextEditor::outlineColourId, juce::Colours::transparentBlack);
    addAndMakeVisible (text);
    setSize (560, 240);
}

bool ScriptMessagesView::isShown (const ScriptEntry& entry, Shown shown)
{
    return shown == Shown::all || (entry.kind == ScriptEntry::Kind::log) == (shown == Shown::log);
}

bool ScriptMessagesView::hasNews (const ScriptJournal& journal, Shown shown, uint64_t from)
{
    const auto entries = journal.after (from);
    return std::any_of (entries.begin(), entries.end(),
                        [shown] (const auto& entry) { return isShown (entry, shown); });
}

void ScriptMessagesView::pollCalm()
{
    const auto entries = journal.after (lastNumber);
    if (entries.empty())
        return;
    lastNumber = entries.back().number;
    const auto hadError = hasError;
    for (const auto& entry : entries)
        if (isShown (entry, shown))
            append (entry);
    if (hasError != hadError)
    {
        resized();
        repaint();
    }
}

void ScriptMessagesView::append (const ScriptEntry& entry)
{
    const auto isError = entry.kind == ScriptEntry::Kind::error;
    hasError = hasError || (isError && shown == Shown::messages);
    const auto add = [this] (juce::Colour colour, const juce::String& words)
    {
        text.moveCaretToEnd();
        text.setColour (juce::TextEditor::textColourId, colour);
        text.insertTextAtCaret (words);
    };
    add (palette::label, juce::File::createFileWithoutCheckingPath (entry.file).getFileName() + "  ");
    add (entry.kind == ScriptEntry::Kind::info ? palette::label : palette::value, textOf (entry) + "\n");

    // The journal forgets its oldest entries, and so does the view.
    constexpr int mostCharacters = 100000;
    if (const auto all = text.getText(); all.length() > mostCharacters)
        text.setText (all.substring (all.length() / 2), false);
}

void ScriptMessagesView::resized()
{
    auto area = getLocalBounds();
    foot = hasError ? area.removeFromBottom (footHeight) : juce::Rectangle<int>();
    text.setBounds (area);
}

void ScriptMessagesView::paint (juce::Graphics& g)
{
    g.fillAll (palette::panel);
    if (hasError)
        PanelPaint::value (g, correctErrorsSentence, foot.reduced (margin, 0),
                           juce::Justification::centredLeft);
}
