#include "ui/window/ToolWindows.h"

#include "skin/Palette.h"

namespace
{
constexpr int menuGoneMs = 150;

bool hasDisplay()
{
    return !juce::Desktop::getInstance().getDisplays().displays.isEmpty();
}
}

void ToolWindow::Scaled::resized()
{
    if (content == nullptr)
        return;
    content->setTransform (juce::AffineTransform::scale (scale));
    content->setSize (juce::roundToInt (static_cast<float> (getWidth()) / scale),
                      juce::roundToInt (static_cast<float> (getHeight()) / scale));
}

ToolWindow::ToolWindow (const juce::String& title, std::unique_ptr<juce::Component> made, float scale)
    : DocumentWindow (title, palette::panel, closeButton, false),
      content (std::move (made))
{
    const auto width = juce::roundToInt (static_cast<float> (content->getWidth()) * scale),
               height = juce::roundToInt (static_cast<float> (content->getHeight()) * scale);
    scaled.content = content.get();
    scaled.scale = scale;
    scaled.addAndMakeVisible (*content);
    scaled.setSize (width, height);
    setUsingNativeTitleBar (false);
    setTitleBarHeight (juce::roundToInt (24.0f * scale));
    setContentNonOwned (&scaled, true);
    setAlwaysOnTop (true); // a click on the decks does not hide it
    setResizable (true, true);
    setResizeLimits (width / 2, height / 2, 4 * width, 4 * height);
}

void ToolWindow::closeButtonPressed()
{
    if (onClose != nullptr)
        onClose();
}

bool ToolWindow::keyPressed (const juce::KeyPress& key)
{
    if (key == juce::KeyPress (juce::KeyPress::escapeKey))
        return closeButtonPressed(), true;
    if (key == juce::KeyPress (juce::KeyPress::F1Key) && onHelp != nullptr)
        return onHelp(), true;
    const auto isBack = key == juce::KeyPress (juce::KeyPress::tabKey, juce::ModifierKeys::shiftModifier, 0);
    if ((isBack || key == juce::KeyPress (juce::KeyPress::tabKey)) && walk.go (isBack ? -1 : 1))
        return true;
    return content->keyPressed (key);
}

void ToolWindow::focusGained (FocusChangeType)
{
    if (content->getWantsKeyboardFocus())
        content->grabKeyboardFocus();
}

ToolWindows* ToolWindows::of (juce::Component& component)
{
    auto* owner = component.findParentComponentOfClass<ToolWindowOwner>();
    return owner != nullptr ? &owner->toolWindows() : nullptr;
}

ToolWindow* ToolWindows::find (const juce::String& title) const
{
    for (const auto& window : windows)
        if (window->getName() == title)
            return window.get();
    return nullptr;
}

void ToolWindows::open (const juce::String& title, juce::Component& opener, const Make& make)
{
    if (auto* there = find (title))
        return there->toFront (true);
    // A window is never closed from within itself.
    const auto closeLater = [this, title]
    {
        juce::MessageManager::callAsync (
            [this, title, alive = std::weak_ptr (lifetime)]
            {
                if (!alive.expired())
                    close (title);
            });
    };
    const auto scale = juce::Component::getApproximateScaleFactorForComponent (&opener);
    windows.push_back (std::make_unique<ToolWindow> (title, make (closeLater), scale));
    auto& window = *windows.back();
    window.onClose = closeLater;
    window.onHelp = onHelp;
    if (hasDisplay())
    {
        window.centreAroundComponent (opener.getTopLevelComponent(), window.getWidth(), window.getHeight());
        window.addToDesktop();
    }
    window.setVisible (true);
    // The menu that has been chosen from takes the front back for its own window until it has gone, and a window manager
    // may put a new window where it likes.
    if (window.isShowing())
        juce::Timer::callAfterDelay (
            menuGoneMs,
            [shown = juce::Component::SafePointer<ToolWindow> (&window), place = window.getPosition()]
            {
                if (shown == nullptr)
                    return;
                shown->setTopLeftPosition (place);
                shown->toFront (true);
            });
}

void ToolWindows::close (const juce::String& title)
{
    std::erase_if (windows, [&title] (const auto& window) { return window->getName() == title; });
}
