#include "ui/manual/ManualReader.h"

#include "skin/Palette.h"
#include "support/language/Language.h"
#include "support/language/Translate.h"
#include "ui/panel/PanelPaint.h"

namespace
{
constexpr const char* title = N_ ("Manual");
constexpr int margin = 8, rowHeight = 26, inset = 10, listWidth = 210, noteHeight = 40, keptInView = 40;

juce::String stringOf (std::string_view text)
{
    return { text.data(), text.size() };
}
}

ManualReader::ManualReader (const juce::File& folder)
    : pages (folder),
      note (LanguageInUse::code() != "en" ? tr ("The manual is in English.") : juce::String())
{
    list.setRowHeight (rowHeight);
    list.setTitle (tr ("Pages of the manual"));
    list.addKeyListener (this); // it would page through itself
    viewport.setScrollBarsShown (true, false);
    viewport.setViewedComponent (&view, false);
    viewport.setWantsKeyboardFocus (false); // its keys are the reader's
    view.onLink = [this] (const juce::String& target) { follow (target); };
    addAndMakeVisible (list);
    addAndMakeVisible (viewport);
    setOpaque (true);
    setWantsKeyboardFocus (true);
    setSize (width, height);
    show ({});
}

ManualReader::~ManualReader()
{
    list.removeKeyListener (this);
}

void ManualReader::open (ToolWindows& windows, juce::Component& opener, const HelpTopic& topic)
{
    windows.open (tr (title), opener,
                  [] (const std::function<void()>&) { return std::make_unique<ManualReader>(); });
    if (auto* const reader = windows.tool<ManualReader>())
        reader->show (topic);
}

void ManualReader::show (const HelpTopic& topic)
{
    const auto page = pages.find (stringOf (topic.page));
    if (page >= 0)
        return showPage (page, stringOf (topic.heading));
    shown = -1;
    list.deselectAllRows();
    view.say (tr ("The manual has no page %1: the file %2 is missing.", stringOf (topic.page),
                  pages.folder().getChildFile (stringOf (topic.page) + ".md").getFullPathName()));
    viewport.setViewPosition ({});
}

void ManualReader::follow (const juce::String& target)
{
    const auto name =
        target.upToFirstOccurrenceOf ("#", false, false).upToFirstOccurrenceOf (".md", false, false);
    const auto anchor = target.fromFirstOccurrenceOf ("#", false, false);
    const auto page = name.isEmpty() ? shown : pages.find (name);
    if (page >= 0)
        showPage (page, anchor);
}

void ManualReader::showPage (int number, const juce::String& anchor)
{
    if (number != shown)
    {
        shown = number;
        view.show (pages.pages()[static_cast<size_t> (number)], pages.folder());
        list.selectRow (number);
    }
    viewport.setViewPosition (0, view.topOf (anchor));
}

void ManualReader::paint (juce::Graphics& g)
{
    g.fillAll (palette::ground);
    if (note.isEmpty())
        return;
    g.setColour (palette::label);
    g.setFont (SMLookAndFeel::font (SMLookAndFeel::valueSize));
    g.drawFittedText (note, list.getBounds().withY (list.getBottom()).withHeight (noteHeight),
                      juce::Justification::centredLeft, 2);
}

void ManualReader::resized()
{
    auto area = getLocalBounds().reduced (margin);
    auto left = area.removeFromLeft (listWidth);
    area.removeFromLeft (margin);
    list.setBounds (left.withTrimmedBottom (note.isEmpty() ? 0 : noteHeight));
    viewport.setBounds (area);
    view.fit (viewport.getWidth() - viewport.getScrollBarThickness());
}

bool ManualReader::keyPressed (const juce::KeyPress& key)
{
    using Key = juce::KeyPress;
    const auto isDown = key == Key (Key::spaceKey) || key == Key (Key::pageDownKey);
    if (!isDown && key != Key (Key::pageUpKey))
        return false;
    const auto step = viewport.getMaximumVisibleHeight() - keptInView;
    viewport.setViewPosition (0, viewport.getViewPositionY() + (isDown ? step : -step));
    return true;
}

void ManualReader::paintListBoxItem (int row, juce::Graphics& g, int rowWidth, int itemHeight, bool selected)
{
    const juce::Rectangle<int> area (rowWidth, itemHeight);
    SMLookAndFeel::fillRow (g, area, row, selected);
    PanelPaint::value (g, getNameForRow (row), area.reduced (inset, 0), juce::Justification::centredLeft);
}

void ManualReader::selectedRowsChanged (int row)
{
    if (row >= 0 && row < getNumRows() && row != shown)
        showPage (row, {});
}

juce::String ManualReader::getNameForRow (int row)
{
    return row >= 0 && row < getNumRows() ? pages.pages()[static_cast<size_t> (row)].title : juce::String();
}
