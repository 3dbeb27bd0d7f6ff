#include "ui/ParameterList.h"

#include "engine/CommandTable.h"
#include "engine/CommandTitle.h"
#include "skin/Palette.h"
#include "support/language/Translate.h"
#include "ui/ParameterRow.h"
#include "ui/look/SMLookAndFeel.h"

#include <algorithm>
#include <memory>

namespace
{
constexpr int rowHeight = 28, margin = 8, searchHeight = 24, searchWidth = 280;
constexpr int startWidth = 640, startHeight = 560;
}

ParameterList::ParameterList (CPlatterdex& e, std::function<void()> c)
    : engine (e),
      close (std::move (c)),
      list ({}, this)
{
    setWantsKeyboardFocus (true); // and goes on to the field
    searchField.setFont (SMLookAndFeel::font (SMLookAndFeel::valueSize));
    searchField.setJustification (juce::Justification::centredLeft);
    searchField.setTextToShowWhenEmpty (tr ("Search"), palette::label);
    searchField.onEscapeKey = [this]
    {
        if (!searchField.isEmpty())
            searchField.clear();
        else if (close != nullptr)
            close();
    };
    searchField.onReturnKey = [this] { list.grabKeyboardFocus(); };
    searchField.onTextChange = [this] { search (searchField.getText()); };
    list.setRowHeight (rowHeight);
    addAndMakeVisible (searchField);
    addAndMakeVisible (list);
    search ({});
    setSize (startWidth, startHeight);
}

void ParameterList::search (const juce::String& text)
{
    const auto words = juce::StringArray::fromTokens (text, true);
    found.clear();
    for (int number = 1; number <= CommandTable::commandCount; ++number)
    {
        const auto name = commandTitle (number);
        if (std::all_of (words.begin(), words.end(),
                         [&name] (const auto& word) { return name.containsIgnoreCase (word); }))
            found.push_back (number);
    }
    list.updateContent();
    list.repaint();
}

void ParameterList::paint (juce::Graphics& g)
{
    g.fillAll (palette::ground);
}

void ParameterList::resized()
{
    auto area = getLocalBounds().reduced (margin);
    searchField.setBounds (area.removeFromTop (searchHeight).removeFromLeft (searchWidth));
    area.removeFromTop (margin);
    list.setBounds (area);
}

void ParameterList::paintListBoxItem (int row, juce::Graphics& g, int width, int height, bool)
{
    g.setColour (row % 2 == 0 ? palette::panel : palette::raised);
    g.fillRect (0, 0, width, height);
}

juce::Component* ParameterList::refreshComponentForRow (int row, bool, juce::Component* existing)
{
    std::unique_ptr<juce::Component> owned (existing);
    if (row < 0 || row >= getNumRows())
        return nullptr;
    if (owned == nullptr)
        owned = std::make_unique<ParameterRow> (engine);
    static_cast<ParameterRow&> (*owned).show (found[static_cast<size_t> (row)]);
    return owned.release();
}
