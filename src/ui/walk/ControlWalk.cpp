#include "ui/walk/ControlWalk.h"

#include "skin/Palette.h"
#include "ui/command/CommandWidget.h"
#include "ui/walk/WalkStop.h"

#include <algorithm>
#include <limits>
#include <tuple>

namespace
{
constexpr int reach = 3; // pixels between a control and its ring
constexpr float thickness = 2.0f, corner = 3.0f;

bool isStop (const juce::Component& component)
{
    if (dynamic_cast<const juce::Viewport*> (&component) != nullptr)
        return false;
    // A slider's own field and buttons are reached by its keys.
    const auto* const parent = component.getParentComponent();
    if (dynamic_cast<const juce::ScrollBar*> (&component) != nullptr
        || dynamic_cast<const juce::Slider*> (parent) != nullptr)
        return false;
    return component.getWantsKeyboardFocus() || dynamic_cast<const CommandWidget*> (&component) != nullptr
           || dynamic_cast<const juce::Button*> (&component) != nullptr
           || dynamic_cast<const juce::Slider*> (&component) != nullptr
           || dynamic_cast<const WalkStop*> (&component) != nullptr;
}

/** Scrolls by the arrows, as it holds no control. */
bool isTextToScroll (const juce::Component& component)
{
    const auto* const viewport = dynamic_cast<const juce::Viewport*> (&component);
    return viewport != nullptr && viewport->getWantsKeyboardFocus() && viewport->canScrollVertically();
}

/** Puts what has an explicit order first, the rest from top to bottom and from left to right. */
std::tuple<int, int, int> orderOf (const juce::Component& component)
{
    const auto given = component.getExplicitFocusOrder();
    return { given > 0 ? given : std::numeric_limits<int>::max(), component.getY(), component.getX() };
}

void collect (juce::Component& parent, std::vector<juce::Component*>& found)
{
    std::vector<juce::Component*> children;
    for (auto* child : parent.getChildren())
        if (child->isVisible() && child->isEnabled() && !child->getBounds().isEmpty())
            children.push_back (child);
    std::stable_sort (children.begin(), children.end(),
                      [] (const auto* one, const auto* other) { return orderOf (*one) < orderOf (*other); });
    for (auto* child : children)
    {
        if (child->isKeyboardFocusContainer())
            continue;
        const auto before = found.size();
        if (!isStop (*child))
            collect (*child, found);
        if (isStop (*child) || (found.size() == before && isTextToScroll (*child)))
            found.push_back (child);
    }
}

/** Finds the page that a control is scrolled with; null without one. */
juce::Component* pageOf (const juce::Component& control)
{
    const auto* const viewport = control.findParentComponentOfClass<juce::Viewport>();
    return viewport != nullptr ? viewport->getViewedComponent() : nullptr;
}

/** Scrolls what a control lies in until it is seen. */
void bringIntoView (juce::Component& control)
{
    auto* const viewport = control.findParentComponentOfClass<juce::Viewport>();
    if (viewport == nullptr || viewport->getViewedComponent() == nullptr)
        return;
    const auto place = viewport->getViewedComponent()->getLocalArea (&control, control.getLocalBounds());
    const auto view = viewport->getViewArea();
    if (place.getY() < view.getY() || place.getBottom() > view.getBottom())
        viewport->setViewPosition (view.getX(), std::max (0, place.getCentreY() - view.getHeight() / 2));
}
}

ControlWalk::Ring::Ring()
{
    setInterceptsMouseClicks (false, false);
    setAlwaysOnTop (true);
}

void ControlWalk::Ring::paint (juce::Graphics& g)
{
    const auto area = getLocalBounds().toFloat().reduced (thickness / 2.0f);
    // A dark line on either side of the light one is seen on whatever lies below.
    g.setColour (palette::ink);
    g.drawRoundedRectangle (area, corner, thickness + 2.0f);
    g.setColour (palette::accent);
    g.drawRoundedRectangle (area, corner, thickness);
}

ControlWalk::ControlWalk (juce::Component& r) : root (r)
{
    juce::Desktop::getInstance().addFocusChangeListener (this);
}

ControlWalk::~ControlWalk()
{
    onStop = nullptr;
    leave();
    juce::Desktop::getInstance().removeFocusChangeListener (this);
}

std::vector<juce::Component*> ControlWalk::stops() const
{
    std::vector<juce::Component*> found;
    collect (root, found);
    return found;
}

bool ControlWalk::go (int direction)
{
    const auto all = stops();
    const auto isWalking = stop != nullptr;
    auto* const from = isWalking ? stop.getComponent() : last.getComponent();
    leave();
    if (all.empty())
        return false;
    // It goes on from where the keyboard is; a walk that begins anew, from where it had ended.
    auto found =
        std::find_if (all.begin(), all.end(), [] (auto* each) { return each->hasKeyboardFocus (true); });
    const auto isThere = isWalking || found != all.end();
    if (found == all.end())
        found = std::find (all.begin(), all.end(), from);
    const auto count = static_cast<int> (all.size());
    auto next = direction > 0 ? 0 : count - 1;
    if (found != all.end())
        next = (static_cast<int> (found - all.begin()) + (isThere ? direction : 0) + count) % count;

    stop = last = all[static_cast<size_t> (next)];
    wantedKeyboard = stop->getWantsKeyboardFocus();
    stop->setWantsKeyboardFocus (true);
    stop->addComponentListener (this);
    stop->addKeyListener (this);
    if (auto* const page = pageOf (*stop))
        page->addComponentListener (this);
    bringIntoView (*stop);
    stop->grabKeyboardFocus();
    root.addAndMakeVisible (ring);
    placeRing();
    if (onStop != nullptr)
        onStop (stop);
    return true;
}

void ControlWalk::leave()
{
    if (stop == nullptr)
        return;
    auto* const left = stop.getComponent();
    stop = nullptr;
    // It still lies in its page, which may not be shown any more.
    for (auto* each = left; each != nullptr; each = each->getParentComponent())
        each->removeComponentListener (this);
    left->removeKeyListener (this);
    finger = {};
    left->setWantsKeyboardFocus (wantedKeyboard);
    root.removeChildComponent (&ring);
    if (onStop != nullptr)
        onStop (nullptr);
}

bool ControlWalk::press (const juce::KeyPress& key)
{
    auto* const tick = dynamic_cast<juce::ToggleButton*> (stop.getComponent());
    auto* const box = dynamic_cast<juce::ComboBox*> (stop.getComponent());
    if ((tick == nullptr && box == nullptr) || !KeyFinger::isPress (key))
        return false;
    if (!finger.goesDown (key))
        return true;
    if (tick != nullptr)
        tick->triggerClick();
    else
        box->showPopup();
    return true;
}

bool ControlWalk::keyStateChanged (bool, juce::Component*)
{
    finger.comesUp();
    return false;
}

void ControlWalk::placeRing()
{
    if (stop == nullptr)
        return;
    const auto area = root.getLocalArea (stop, stop->getLocalBounds());
    const auto* const viewport = stop->findParentComponentOfClass<juce::Viewport>();
    ring.setBounds (area.expanded (reach));
    ring.setVisible (viewport == nullptr
                     || root.getLocalArea (viewport, viewport->getLocalBounds()).intersects (area));
}

void ControlWalk::globalFocusChanged (juce::Component* focused)
{
    // Parts of a control, as a list's rows, have the keyboard for it.
    if (stop != nullptr && focused != stop && !(focused != nullptr && stop->isParentOf (focused)))
        leave();
}
