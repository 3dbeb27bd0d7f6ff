#include "app/MainWindow.h"

#include "skin/Palette.h"
#include "ui/window/FullScreen.h"

#include <algorithm>

namespace
{
constexpr int smallestWidth = 512, smallestHeight = 296;
constexpr const char *placeName = "window", *fullScreenName = "full_screen";
constexpr int startWidth = 1280, startHeight = 800;
}

MainWindow::MainWindow (std::unique_ptr<juce::Component> content, PreferencesFile& p, std::function<void()> c)
    : DocumentWindow ("Platterdex", palette::ground, allButtons),
      preferences (p),
      close (std::move (c))
{
    setUsingNativeTitleBar (true);
    setContentOwned (content.release(), true);
    setResizable (true, false);
    setResizeLimits (smallestWidth, smallestHeight, 16384, 16384);
    restorePlace();
    // The focus goes on to the content, whose keys play the decks.
    setWantsKeyboardFocus (false);
    setVisible (true);
    grabKeyboardFocus();
    if (preferences.get (fullScreenName) == "1")
        FullScreen::ask (*this, true); // after the place, which the window gets back with it
}

MainWindow::~MainWindow()
{
    // Unwritten, the next start takes the last place that was. A window that fills the screen has its place still.
    const auto fills = FullScreen::covers (*this);
    juce::ignoreUnused (preferences.set (fullScreenName, fills ? "1" : "0"));
    if (!fills)
        juce::ignoreUnused (preferences.set (placeName, getWindowStateAsString()));
}

void MainWindow::restorePlace()
{
    // A window manager that is still starting may tell of no screen, or of an empty one.
    const auto* display = juce::Desktop::getInstance().getDisplays().getPrimaryDisplay();
    const auto room = display != nullptr && !display->userArea.isEmpty()
                          ? display->userArea
                          : juce::Rectangle<int> (startWidth, startHeight);
    setBounds (room.withSizeKeepingCentre (std::min (startWidth, room.getWidth()),
                                           std::min (startHeight, room.getHeight())));
    if (const auto place = preferences.get (placeName); place.isNotEmpty())
        restoreWindowStateFromString (place);
}
