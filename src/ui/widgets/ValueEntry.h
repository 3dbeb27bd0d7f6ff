#pragma once

#include "support/language/Translate.h"

#include <juce_gui_basics/juce_gui_basics.h>

#include <functional>
#include <memory>

/** The field for a typed value. It is modal: when a menu closes, the window system may hand the keyboard back to the
    window, and what is typed must not play the decks. */
class ValueEntry : public juce::TextEditor
{
public:
    /** Opens a field over a view, which keeps it. Return hands over what is typed; escape, or a click anywhere else, puts
        the field away. A text that is refused is taken out of the field, which then says that it takes a number.
        @param area      of the view that the value stands in
        @param entered   takes a text, or returns false
        @returns nothing for a view without a window */
    static std::unique_ptr<ValueEntry> open (juce::Component& owner, juce::Rectangle<int> area,
                                             const juce::String& text,
                                             std::function<bool (const juce::String&)> entered)
    {
        auto* window = owner.getTopLevelComponent();
        if (window == nullptr || window == &owner)
            return {};
        auto entry = std::make_unique<ValueEntry>();
        entry->owner = &owner;
        entry->setBounds (window->getLocalArea (&owner, area)
                              .withSizeKeepingCentre (width, height)
                              .constrainedWithin (window->getLocalBounds()));
        entry->setText (text, false);
        entry->onReturnKey = [shown = entry.get(), entered = std::move (entered)]
        {
            if (entered (shown->getText()))
                return shown->close();
            shown->clear();
            shown->setTextToShowWhenEmpty (tr ("a number"),
                                           shown->findColour (textColourId).withAlpha (0.6f));
        };
        window->addAndMakeVisible (*entry);
        entry->selectAll();
        entry->enterModalState (true);
        return entry;
    }

    ValueEntry()
    {
        setComponentID ("_valueEntry");
        setJustification (juce::Justification::centred);
        onEscapeKey = [this] { close(); };
    }

    void inputAttemptWhenModal() override { close(); }

private:
    static constexpr int width = 72, height = 22;

    /** Hands the keyboard back to whoever takes the window's keys. */
    void close()
    {
        setVisible (false); // ends the modal state
        for (auto* other = owner.getComponent(); other != nullptr; other = other->getParentComponent())
            if (other->getWantsKeyboardFocus())
                return other->grabKeyboardFocus();
    }

    SafePointer<juce::Component> owner;
};
