#include "ui/browser/search/SearchEditor.h"

#include "skin/Palette.h"
#include "support/language/Translate.h"
#include "ui/browser/search/SearchFields.h"
#include "ui/look/SMLookAndFeel.h"
#include "ui/look/SkinPicture.h"

#include <algorithm>

namespace
{
constexpr int height = 24, gap = 4, signWidth = 24, cancelWidth = 24, menuWidth = 100, fitWidth = 112,
              checkWidth = 116, leastFieldWidth = 120;
constexpr std::array spans { 2.0, 4.0, 6.0, 8.0, 12.0, 16.0 };
}

SearchEditor::SearchEditor()
{
    field.setTitle (tr ("Search"));
    field.setFont (SMLookAndFeel::font (SMLookAndFeel::valueSize));
    field.setSelectAllWhenFocused (true);
    field.onTextChange = [this] { startTimer (typingPauseMs); };
    field.onReturnKey = [this]
    {
        askNow();
        if (onLeave != nullptr)
            onLeave();
    };
    field.onEscapeKey = [this]
    {
        if (field.isEmpty())
        {
            if (onLeave != nullptr)
                onLeave();
            return;
        }
        cancel();
    };
    addAndMakeVisible (field);

    cancelButton.setButtonText (juce::String::charToString (0x00d7));
    cancelButton.setComponentID ("_cancelSearchButton");
    cancelButton.setTooltip (tr ("Cancel search."));
    cancelButton.onClick = [this] { cancel(); };
    addAndMakeVisible (cancelButton);

    fieldsButton.setComponentID ("_searchFieldsButton");
    fieldsButton.setTooltip (tr ("Selects the fields that are searched."));
    fieldsButton.onFillMenu = [this] (juce::PopupMenu& menu) { fillFields (menu); };
    addAndMakeVisible (fieldsButton);

    fitButton.setComponentID ("_fitsMasterButton");
    fitButton.setTooltip (tr ("Shows only songs whose tempo, half or double fits the master's."));
    fitButton.onFillMenu = [this] (juce::PopupMenu& menu) { fillFits (menu); };
    addAndMakeVisible (fitButton);

    checkButton.setButtonText (tr ("GRIDS TO CHECK"));
    checkButton.setComponentID ("_gridsToCheckButton");
    checkButton.setTooltip (tr (
        "Shows only songs of whose beats the analysis is not sure: listen before you trust their grids."));
    checkButton.setClickingTogglesState (true);
    checkButton.onClick = [this] { askNow(); };
    addAndMakeVisible (checkButton);

    setFields (SearchFields::fromText (SearchFields::byDefault));
}

void SearchEditor::setHint (const juce::String& hint)
{
    field.setTextToShowWhenEmpty (hint, palette::label);
}

void SearchEditor::setText (const juce::String& text)
{
    field.setText (text, false);
    askNow();
}

void SearchEditor::setFields (std::vector<SongField> fields)
{
    chosen = std::move (fields);
}

void SearchEditor::setFitPercent (std::optional<double> percent)
{
    fit = percent;
    fitButton.setToggleState (fit.has_value(), juce::dontSendNotification);
}

void SearchEditor::cancel()
{
    field.setText ({}, false);
    askNow();
}

void SearchEditor::timerCallback()
{
    askNow();
}

void SearchEditor::askNow()
{
    stopTimer();
    if (onSearch != nullptr)
        onSearch();
}

void SearchEditor::fillFields (juce::PopupMenu& menu)
{
    menu.addSectionHeader (tr ("Search in:"));
    for (const auto& choice : SearchFields::choices)
    {
        const auto found = std::find (chosen.begin(), chosen.end(), choice.field);
        menu.addItem (tr (choice.text), true, found != chosen.end(),
                      [this, wanted = choice.field]
                      {
                          if (std::erase (chosen, wanted) == 0)
                              chosen.push_back (wanted);
                          if (onFields != nullptr)
                              onFields();
                          askNow();
                      });
    }
}

void SearchEditor::fillFits (juce::PopupMenu& menu)
{
    const auto choose = [this] (std::optional<double> percent)
    {
        return [this, percent]
        {
            setFitPercent (percent);
            askNow();
        };
    };
    menu.addItem (tr ("All tempos"), true, !fit, choose ({}));
    for (const auto percent : spans)
        menu.addItem (tr ("Within %1 %", juce::roundToInt (percent)), true, fit == percent, choose (percent));
}

bool SearchEditor::keyPressed (const juce::KeyPress& key)
{
    // The field leaves them alone.
    if (key.getKeyCode() != juce::KeyPress::downKey || onLeave == nullptr)
        return false;
    onLeave();
    return true;
}

void SearchEditor::paint (juce::Graphics& g)
{
    g.fillAll (palette::panel);
    SkinPicture ("sign_search").draw (g, getLocalBounds().removeFromLeft (signWidth));
}

void SearchEditor::resized()
{
    auto area = getLocalBounds().withSizeKeepingCentre (getWidth(), height);
    area.removeFromLeft (signWidth);
    checkButton.setBounds (area.removeFromRight (checkWidth));
    area.removeFromRight (gap);
    fitButton.setBounds (area.removeFromRight (fitWidth));
    area.removeFromRight (gap);
    fieldsButton.setBounds (area.removeFromRight (menuWidth));
    area.removeFromRight (gap);
    cancelButton.setBounds (area.removeFromRight (cancelWidth));
    area.removeFromRight (gap);
    field.setBounds (area.withWidth (std::max (leastFieldWidth, area.getWidth())));
}
