#define JUCE_GUI_BASICS_INCLUDE_XHEADERS 1
#include "ui/window/FullScreen.h"

bool FullScreen::ask (juce::Component& window, bool full)
{
    auto* display = juce::XWindowSystem::getInstance()->getDisplay();
    const auto* peer = window.getPeer();
    if (display == nullptr || peer == nullptr)
        return false;
    // JUCE makes a window with a title bar as large as the screen's free area, with its frame; a window manager takes it away.
    const juce::XWindowSystemUtilities::ScopedXLock lock;
    auto* x = juce::X11Symbols::getInstance();
    XEvent event {};
    event.xclient.type = ClientMessage;
    event.xclient.window =
        reinterpret_cast<::Window> (peer->getNativeHandle()); // JUCE hides the number in a pointer
    event.xclient.message_type = x->xInternAtom (display, "_NET_WM_STATE", False);
    event.xclient.format = 32;
    event.xclient.data.l[0] = full ? 1 : 0; // adds or removes
    event.xclient.data.l[1] = static_cast<long> (x->xInternAtom (display, "_NET_WM_STATE_FULLSCREEN", False));
    event.xclient.data.l[3] = 1; // asked for by an application
    x->xSendEvent (display, x->xDefaultRootWindow (display), False,
                   SubstructureRedirectMask | SubstructureNotifyMask, &event);
    x->xFlush (display);
    return true;
}

bool FullScreen::covers (const juce::Component& window)
{
    if (window.getPeer() == nullptr)
        return false;
    const auto area = window.getScreenBounds();
    const auto* display = juce::Desktop::getInstance().getDisplays().getDisplayForRect (area);
    return display != nullptr && !display->totalArea.isEmpty() && area.contains (display->totalArea);
}
