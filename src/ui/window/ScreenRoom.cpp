#include "ui/window/ScreenRoom.h"

juce::Rectangle<int> screenRoomOf (const juce::Component& component)
{
    if (!component.isShowing())
        return {};
    const auto inside = component.getScreenBounds();
    const auto* display = juce::Desktop::getInstance().getDisplays().getDisplayForRect (inside);
    const auto* window = component.getTopLevelComponent();
    if (display == nullptr || window->getPeer() == nullptr)
        return {};
    juce::BorderSize<int> frame;
    if (const auto known = window->getPeer()->getFrameSizeIfPresent())
        frame = *known;
    const auto outside = window->getScreenBounds();
    frame.setTop (frame.getTop() + inside.getY() - outside.getY());
    frame.setLeft (frame.getLeft() + inside.getX() - outside.getX());
    frame.setBottom (frame.getBottom() + outside.getBottom() - inside.getBottom());
    frame.setRight (frame.getRight() + outside.getRight() - inside.getRight());
    return frame.subtractedFrom (display->userArea);
}
