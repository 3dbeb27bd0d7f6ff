#include "ui/look/OpenMenu.h"

namespace
{
constexpr int swallowMs = 50; ///< for the click that has closed the menu and is still on its way

/** Takes the keys of a component's window. */
juce::Component* keyTakerOf (juce::Component& component)
{
    for (auto* c = &component; c != nullptr; c = c->getParentComponent())
        if (c->getWantsKeyboardFocus() || c->getParentComponent() == nullptr)
            return c;
    return nullptr;
}
}

void openMenu (juce::PopupMenu& menu, juce::Component& owner, juce::PopupMenu::Options options,
               std::function<void (int id)> onChoice)
{
    menu.setLookAndFeel (&owner.getLookAndFeel());
    // JUCE hands a click that closes a menu on to what it hit; while this is modal below the menu, it hits nothing.
    auto guard = std::make_shared<juce::Component>();
    keyTakerOf (owner)->addAndMakeVisible (*guard);
    guard->enterModalState (false);
    menu.showMenuAsync (options.withDeletionCheck (owner),
                        [guard, onChoice = std::move (onChoice),
                         alive = juce::Component::SafePointer<juce::Component> (&owner)] (int chosen)
                        {
                            juce::Timer::callAfterDelay (swallowMs, [guard] { guard->exitModalState (0); });
                            if (alive != nullptr && chosen != 0 && onChoice != nullptr)
                                onChoice (chosen);
                        });
}
