#include "ui/browser/smart/SmartPlaylistEditor.h"

#include "skin/Palette.h"
#include "support/language/Translate.h"

#include <algorithm>

namespace
{
constexpr int margin = 12, gap = 8, boxHeight = 24, buttonWidth = 88, width = 600, height = 320;
enum Match
{
    all = 1,
    any
};
}

SmartPlaylistEditor::SmartPlaylistEditor (
    const SmartPlaylist& playlist, std::function<void (const juce::String&, const juce::String&)> saved,
    std::function<void()> close)
    : onSave (std::move (saved)),
      onClose (std::move (close))
{
    matchBox.addItem (tr ("all rules"), all);
    matchBox.addItem (tr ("any rule"), any);
    matchBox.setSelectedId (playlist.matchAll ? all : any, juce::dontSendNotification);
    int order = 0;
    for (const auto& each : smartOrders)
        orderBox.addItem (tr (each.text), ++order);
    orderBox.setSelectedItemIndex (
        static_cast<int> (orderIndexOf (playlist.orderField.toStdString(), playlist.ascending)),
        juce::dontSendNotification);
    limitBox.setToggleState (playlist.limited, juce::dontSendNotification);
    limitBox.onClick = [this] { resized(); };
    limit.setInputRestrictions (6, "0123456789");
    limit.setText (juce::String (playlist.limit > 0 ? playlist.limit : 25), false);
    addButton.setTooltip (tr ("Adds a rule."));
    addButton.onClick = [this] { add ({ static_cast<int32_t> (SongField::artist), 0, {}, {} }); };
    saveButton.setTooltip (tr ("Stores the rules."));
    saveButton.onClick = [this] { save(); };
    cancelButton.setTooltip (tr ("Leaves the rules as they were."));
    cancelButton.onClick = [this] { onClose(); };
    for (auto* part : std::initializer_list<juce::Component*> { &matchLabel, &matchBox, &limitBox, &limit,
                                                                &selectedBy, &orderBox, &addButton,
                                                                &saveButton, &cancelButton, &viewport })
        addAndMakeVisible (part);
    addChildComponent (hint);
    viewport.setViewedComponent (&rows, false);
    viewport.setScrollBarsShown (true, false);
    for (const auto& rule : playlist.rules)
        add (rule);
    hint.setColour (juce::Label::textColourId, palette::label);
    hint.setText (tr ("Without rules and limit there is nothing to save."), juce::dontSendNotification);
    setSize (width, height);
}

void SmartPlaylistEditor::add (const SmartRule& rule)
{
    auto& row = *rules.emplace_back (std::make_unique<SmartRuleRow> (rule));
    rows.addAndMakeVisible (row);
    row.onRemove = [this, &row]
    {
        // The button is still in a call of its own.
        juce::MessageManager::callAsync (
            [this, gone = &row, alive = SafePointer<SmartPlaylistEditor> (this)]
            {
                if (alive == nullptr)
                    return;
                std::erase_if (rules, [gone] (const auto& each) { return each.get() == gone; });
                resized();
            });
    };
    resized();
}

SmartPlaylist SmartPlaylistEditor::playlist() const
{
    SmartPlaylist made;
    for (const auto& row : rules)
        made.rules.push_back (row->rule());
    made.matchAll = matchBox.getSelectedId() == all;
    made.limited = limitBox.getToggleState();
    made.limit = std::max (1, limit.getText().getIntValue());
    const auto& order = smartOrders[static_cast<size_t> (std::max (0, orderBox.getSelectedItemIndex()))];
    made.orderField = order.column;
    made.ascending = order.ascending;
    return made;
}

void SmartPlaylistEditor::save()
{
    if (!saveButton.isEnabled())
        return;
    const auto made = playlist();
    onSave (buildSql (made), buildXml (made));
    onClose();
}

bool SmartPlaylistEditor::keyPressed (const juce::KeyPress& key)
{
    if (key != juce::KeyPress (juce::KeyPress::returnKey))
        return false;
    save();
    return true;
}

void SmartPlaylistEditor::paint (juce::Graphics& g)
{
    g.fillAll (palette::panel);
}

void SmartPlaylistEditor::resized()
{
    auto area = getLocalBounds().reduced (margin);
    auto top = area.removeFromTop (boxHeight);
    matchLabel.setBounds (top.removeFromLeft (124));
    matchBox.setBounds (top.removeFromLeft (112));
    addButton.setBounds (top.removeFromRight (buttonWidth));
    area.removeFromTop (gap);
    const auto isSomething = !rules.empty() || limitBox.getToggleState();
    saveButton.setEnabled (isSomething);
    hint.setVisible (!isSomething);
    for (auto* part : std::initializer_list<juce::Component*> { &limit, &selectedBy, &orderBox })
        part->setEnabled (limitBox.getToggleState());
    auto bottom = area.removeFromBottom (boxHeight);
    cancelButton.setBounds (bottom.removeFromRight (buttonWidth));
    bottom.removeFromRight (gap);
    saveButton.setBounds (bottom.removeFromRight (buttonWidth));
    hint.setBounds (bottom);
    area.removeFromBottom (gap);
    auto limits = area.removeFromBottom (boxHeight);
    limitBox.setBounds (limits.removeFromLeft (140));
    limit.setBounds (limits.removeFromLeft (56));
    selectedBy.setBounds (limits.removeFromLeft (140));
    orderBox.setBounds (limits.removeFromLeft (180));
    area.removeFromBottom (gap);
    viewport.setBounds (area);
    rows.setSize (viewport.getMaximumVisibleWidth(), static_cast<int> (rules.size()) * SmartRuleRow::height);
    int y = 0;
    for (const auto& row : rules)
    {
        row->setBounds (0, y, rows.getWidth(), SmartRuleRow::height);
        y += SmartRuleRow::height;
    }
}
