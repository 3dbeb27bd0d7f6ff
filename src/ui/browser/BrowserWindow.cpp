#include "ui/browser/BrowserWindow.h"

#include <algorithm>
#include <utility>

namespace
{
constexpr int leastWidth = 800, leastHeight = 500;
}

BrowserWindow::BrowserWindow (SongManager& b, Owner o) : browser (b), owner (std::move (o))
{
    setSize (std::max (leastWidth, browser.getWidth()), std::max (leastHeight, browser.getHeight()));
    addAndMakeVisible (browser);
}

BrowserWindow::~BrowserWindow()
{
    removeChildComponent (&browser);
    if (owner.onClose != nullptr)
        owner.onClose();
}
