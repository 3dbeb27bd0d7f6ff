#include "standalone/MainWindow.h"

#include "ui/Look.h"

#include <algorithm>

namespace
{
constexpr int smallestWidth = 512, smallestHeight = 320;
constexpr int startWidth = 1280, startHeight = 800;

/** Gives its one child the whole area, and a scale where that is less than the child needs. */
class ScaledContent : public juce::Component
{
public:
    ScaledContent (std::unique_ptr<juce::Component> c, juce::Point<int> least)
        : content (std::move (c)),
          smallest (least)
    {
        setOpaque (true);
        addAndMakeVisible (*content);
    }

private:
    void paint (juce::Graphics& g) override { g.fillAll (Look::ground); }

    void resized() override
    {
        const auto scale =
            std::min ({ 1.0f, static_cast<float> (getWidth()) / static_cast<float> (smallest.x),
                        static_cast<float> (getHeight()) / static_cast<float> (smallest.y) });
        if (scale <= 0.0f)
            return;
        content->setTransform (juce::AffineTransform::scale (scale));
        content->setBounds (0, 0, juce::roundToInt (static_cast<float> (getWidth()) / scale),
                            juce::roundToInt (static_cast<float> (getHeight()) / scale));
    }

    const std::unique_ptr<juce::Component> content;
    const juce::Point<int> smallest;
};
}

MainWindow::MainWindow (std::unique_ptr<juce::Component> content, juce::Point<int> smallest,
                        const juce::File& file, std::function<void()> c)
    : DocumentWindow ("Platterdex", Look::ground, allButtons),
      placeFile (file),
      close (std::move (c))
{
    setUsingNativeTitleBar (true);
    auto scaled = std::make_unique<ScaledContent> (std::move (content), smallest);
    setContentOwned (scaled.release(), false);
    setResizable (true, false);
    setResizeLimits (smallestWidth, smallestHeight, 16384, 16384);
    restorePlace();
    // The focus goes on to the content, whose keys play the decks.
    setWantsKeyboardFocus (false);
    setVisible (true);
    grabKeyboardFocus();
}

MainWindow::~MainWindow()
{
    placeFile.replaceWithText (getWindowStateAsString());
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
    if (const auto place = placeFile.loadFileAsString(); place.isNotEmpty())
        restoreWindowStateFromString (place);
}
