#include "engine/CPlatterdex.h"
#include "support/language/Translate.h"
#include "ui/CPlatterdexVstEditor.h"
#include "ui/browser/BrowserWindow.h"
#include "ui/window/FullScreen.h"
#include "ui/window/ScreenRoom.h"

#include <algorithm>

// The window's size, and what changes it: browser, stacked waves, scale, full screen.

namespace
{
constexpr int browserHeight = 332; ///< of a browser that comes back
constexpr const char* browserTitle = N_ ("Song Manager");
}

void CPlatterdexVstEditor::showBrowser (bool shown)
{
    if (shown == browserShown)
        return;
    if (!shown)
        keepHeight();
    browserShown = shown;
    arrange();
    shown ? giveHeightBack() : snapHeight();
}

void CPlatterdexVstEditor::showWaves (bool shown)
{
    if (std::exchange (wavesShown, shown) == shown)
        return;
    preferences.set (wavesName, shown ? "1" : "0");
    arrange();
    if (!browserShown || isBrowserInWindow())
        snapHeight();
    if (shown && !waves->isVisible())
        header->newsLine().tell (tr ("THE WAVES NEED A TALLER WINDOW"));
}

void CPlatterdexVstEditor::showBrowserInWindow (bool inWindow)
{
    if (inWindow == isBrowserInWindow())
        return;
    if (!inWindow)
        return tools.find (tr (browserTitle))->closeButtonPressed();
    tools.open (tr (browserTitle), content,
                [this] (const std::function<void()>&)
                {
                    auto made = std::make_unique<BrowserWindow> (
                        *browser, BrowserWindow::Owner { tools,
                                                         [this] (const juce::KeyPress& key)
                                                         { return keyPressed (key); },
                                                         [this] { browserWindowClosed(); } });
                    browserWindow = made.get();
                    return made;
                });
    keepHeight();
    arrange();
    snapHeight();
}

void CPlatterdexVstEditor::browserWindowClosed()
{
    browserWindow = nullptr;
    if (!isArranged)
        return;
    content.addChildComponent (*browser);
    giveHeightBack();
    arrange();
}

/** The height of a window without a browser, unscaled. */
int CPlatterdexVstEditor::bareHeight() const
{
    const auto four = arranged.mode.fourDecks;
    const auto bare = EditorLayout::heightWithoutBrowser (four);
    return wavesShown ? std::max (bare, EditorLayout::heightWithWaves (four)) : bare;
}

/** Remembers the height that the browser will get back. */
void CPlatterdexVstEditor::keepHeight()
{
    if (!isFullScreen())
        heightWithBrowser = getHeight() * 100.0 / scale.percent();
}

/** Makes room for a browser that comes back, unless a hand has made some. */
void CPlatterdexVstEditor::giveHeightBack()
{
    if (isFullScreen() || getHeight() > scale.scaled (bareHeight()))
        return;
    const auto height =
        heightWithBrowser > 0.0 ? juce::roundToInt (heightWithBrowser) : bareHeight() + browserHeight;
    setSize (getWidth(), scale.scaled (height));
}

void CPlatterdexVstEditor::snapHeight()
{
    if (!isFullScreen())
        setSize (getWidth(), scale.scaled (bareHeight()));
}

void CPlatterdexVstEditor::limitSize()
{
    auto least = juce::Point<int> (scale.scaled (EditorLayout::minimumWidth),
                                   scale.scaled (EditorLayout::minimumHeight));
    if (const auto room = screenRoomOf (*this); !room.isEmpty())
        least = { std::min (least.x, room.getWidth()), std::min (least.y, room.getHeight()) };
    setResizeLimits (least.x, least.y, scale.scaled (EditorLayout::maximum),
                     scale.scaled (EditorLayout::maximum));
}

void CPlatterdexVstEditor::setScale (int percent)
{
    scale.set (percent);
    const juce::ScopedValueSetter<bool> own (isScaling, true);
    limitSize();
    auto size = (wantedSize * (scale.percent() / 100.0)).roundToInt();
    const auto room = screenRoomOf (*this);
    if (!room.isEmpty())
        size = { std::min (size.x, room.getWidth()), std::min (size.y, room.getHeight()) };
    if (isFullScreen() || (size.x == getWidth() && size.y == getHeight()))
        return resized();
    setSize (size.x, size.y);
    // A window of ours that has grown over an edge of the screen moves in.
    if (auto* window = findParentComponentOfClass<juce::ResizableWindow>();
        window != nullptr && !room.isEmpty())
        window->setTopLeftPosition (window->getPosition()
                                    + getScreenBounds().constrainedWithin (room).getPosition()
                                    - getScreenBounds().getPosition());
}

void CPlatterdexVstEditor::setFullScreen (bool full)
{
    if (auto* window = findParentComponentOfClass<juce::ResizableWindow>())
        if (!FullScreen::ask (*window, full))
            window->setFullScreen (full);
}

bool CPlatterdexVstEditor::isFullScreen() const
{
    const auto* window = findParentComponentOfClass<juce::ResizableWindow>();
    return window != nullptr && (window->isFullScreen() || FullScreen::covers (*window));
}
