// Mouse and keyboard.

#include "support/language/Translate.h"
#include "ui/envelope/EnvComponent.h"

namespace
{
constexpr double tensionPerPixel = 0.01;
constexpr double keyLevel = 0.01, keyTime = 0.03125, keyTension = 0.05, fineShare = 0.1;
using Hit = EnvGeometry::Hit;
}

void EnvComponent::beginDrag (Hold hold, int index, juce::Point<float> place, Envelope before)
{
    drag = { hold, index, place, std::move (before), envelope(), shownView };
    if (hold == Hold::point || hold == Hold::tension)
        chosenPoint = index;
    if (hold == Hold::point)
        showInfo (index, place);
    repaint();
}

void EnvComponent::mouseMove (const juce::MouseEvent& event)
{
    if (lanes.empty())
        return;
    const auto next = geometry().hit (envelope(), event.position);
    if (std::exchange (under, next) == next)
        return;
    if (under.kind == Hit::point)
        showInfo (under.index, geometry().pointPlace (envelope(), under.index));
    else
        info.setVisible (false);
    setMouseCursor (under.kind == Hit::nothing ? juce::MouseCursor::NormalCursor
                                               : juce::MouseCursor::PointingHandCursor);
    repaint();
}

void EnvComponent::mouseExit (const juce::MouseEvent&)
{
    if (drag.hold != Hold::nothing)
        return;
    under = {};
    info.setVisible (false);
    repaint();
}

void EnvComponent::mouseDown (const juce::MouseEvent& event)
{
    if (lanes.empty() || drag.hold != Hold::nothing)
        return;
    grabKeyboardFocus();
    const auto found = geometry().hit (envelope(), event.position);
    const auto isRight = event.mods.isRightButtonDown();
    if (isRight && event.mods.isAltDown())
    {
        if (found.kind == Hit::point)
            deletePoint (found.index);
        return;
    }
    if (event.mods.isMiddleButtonDown())
        return;
    if (isRight && found.kind == Hit::tension)
    {
        auto next = envelope();
        EnvEdit::setTension (next, found.index, 0.0);
        return applyToSelected (std::move (next));
    }
    if (isRight && found.kind == Hit::point)
    {
        chosenPoint = found.index;
        return openPointMenu (found.index);
    }
    if (isRight)
    {
        auto before = envelope(), next = before;
        const auto place = geometry();
        auto wanted = rules;
        if (event.mods.isShiftDown())
            wanted.snapX = wanted.snapY = false;
        // Beyond the edge of the plot no point may lengthen the curve.
        const auto time = fullTime().clipValue (place.time (event.position.x));
        const auto index =
            EnvEdit::insertPoint (next, { time, place.level (event.position.y) }, lastType, wanted);
        if (index < 0)
            return;
        show (selected, std::move (next));
        edited();
        return beginDrag (Hold::point, index, event.position, std::move (before));
    }
    if (found.kind == Hit::point)
        return beginDrag (Hold::point, found.index, event.position, envelope());
    if (found.kind == Hit::tension)
    {
        beginDrag (Hold::tension, found.index, event.position, envelope());
        auto source = event.source;
        source.enableUnboundedMouseMovement (true);
        return;
    }
    if (event.mods.isShiftDown())
        beginDrag (Hold::view, 0, event.position, envelope());
}

void EnvComponent::dragPoint (const juce::MouseEvent& event)
{
    const auto place = geometry();
    const auto from = place.pointPlace (drag.start, drag.index);
    auto wanted = rules;
    if (event.mods.isShiftDown())
        wanted.snapX = wanted.snapY = false;
    auto next = drag.start;
    EnvEdit::movePoint (
        next, drag.index,
        { drag.start.absoluteTime (drag.index) + place.time (event.position.x) - place.time (drag.from.x),
          place.level (from.y + event.position.y - drag.from.y) },
        wanted);
    show (selected, std::move (next));
    showInfo (drag.index, event.position);
}

void EnvComponent::dragTension (const juce::MouseEvent& event)
{
    const auto end = drag.start.point (drag.index);
    const auto falls = end.value < drag.start.point (drag.index - 1).value;
    const auto moved = static_cast<double> (event.position.y - drag.from.y) * (falls ? -1.0 : 1.0);
    auto next = drag.start;
    EnvEdit::setTension (next, drag.index, end.tension - moved * tensionPerPixel);
    const auto tension = next.point (drag.index).tension;
    show (selected, std::move (next));
    info.show (juce::String (tension, 2), tr ("bend"),
               geometry().tensionPlace (envelope(), drag.index).roundToInt());
}

void EnvComponent::mouseDrag (const juce::MouseEvent& event)
{
    switch (drag.hold)
    {
    case Hold::nothing:
        return;
    case Hold::point:
        dragPoint (event);
        break;
    case Hold::tension:
        dragTension (event);
        break;
    case Hold::view:
    {
        const EnvGeometry start (getLocalBounds().toFloat(), drag.view);
        auto next = drag.view;
        next.time -= start.time (event.position.x) - start.time (drag.from.x);
        next.level -= start.level (event.position.y) - start.level (drag.from.y);
        return setView (next);
    }
    }
    edited();
}

void EnvComponent::mouseUp (const juce::MouseEvent& event)
{
    const auto ended = std::exchange (drag, {});
    if (ended.hold == Hold::tension)
    {
        auto source = event.source;
        source.enableUnboundedMouseMovement (false);
        if (isShowing())
            source.setScreenPosition (localPointToGlobal (geometry().tensionPlace (envelope(), ended.index)));
    }
    if ((ended.hold == Hold::point || ended.hold == Hold::tension) && !ended.before.isSameCurve (envelope()))
        history.record ({ { selected, ended.before, envelope() } });
    info.setVisible (false);
    under = {};
    edited();
}

void EnvComponent::mouseWheelMove (const juce::MouseEvent& event, const juce::MouseWheelDetails& wheel)
{
    if (!zoomEnabled)
        return PollingView::mouseWheelMove (event, wheel);
    const auto way = wheel.deltaY != 0.0f ? wheel.deltaY : wheel.deltaX;
    if (drag.hold == Hold::nothing && way != 0.0f)
        zoom (way > 0.0f ? 0.5 : 2.0, event.position, event.mods.isCtrlDown());
}

void EnvComponent::zoom (double factor, juce::Point<float> about, bool level)
{
    auto next = shownView;
    auto& range = level ? next.level : next.time;
    const auto centre = level ? geometry().level (about.y) : geometry().time (about.x);
    const auto limits = level ? juce::Range<double> (0.0, 1.0) : fullTime();
    const auto length = juce::jlimit (0.0625, limits.getLength(), range.getLength() * factor);
    const auto share = length / range.getLength();
    range = juce::Range<double>::withStartAndLength (centre - (centre - range.getStart()) * share, length);
    setView (next);
}

void EnvComponent::nudge (double time, double level)
{
    const auto p = envelope().point (chosenPoint);
    auto next = envelope();
    auto free = rules;
    free.snapX = free.snapY = false;
    EnvEdit::movePoint (next, chosenPoint, { p.time + time, p.value + level }, free);
    applyToSelected (std::move (next));
    showInfo (chosenPoint, geometry().pointPlace (envelope(), chosenPoint));
}

bool EnvComponent::moveKey (const juce::KeyPress& key)
{
    const auto mods = key.getModifiers();
    const auto code = key.getKeyCode();
    const auto across = code == juce::KeyPress::rightKey ? 1 : code == juce::KeyPress::leftKey ? -1 : 0;
    const auto up = code == juce::KeyPress::upKey ? 1 : code == juce::KeyPress::downKey ? -1 : 0;
    const auto fine = mods.isShiftDown() ? fineShare : 1.0;
    if (across != 0 && mods.isCtrlDown())
        nudge (across * fine * (rules.snapX && fine == 1.0 ? EnvEdit::snapTime : keyTime), 0.0);
    else if (up != 0 && mods.isCtrlDown())
    {
        auto next = envelope();
        EnvEdit::setTension (next, chosenPoint, next.point (chosenPoint).tension + up * fine * keyTension);
        applyToSelected (std::move (next));
    }
    else if (up != 0)
        nudge (0.0, up * fine * (rules.snapY && fine == 1.0 ? EnvEdit::snapLevel : keyLevel));
    else if (across != 0)
    {
        chosenPoint = juce::jlimit (0, std::max (0, envelope().pointCount() - 1), chosenPoint + across);
        showInfo (chosenPoint, geometry().pointPlace (envelope(), chosenPoint));
        repaint();
    }
    else
        return false;
    return true;
}

bool EnvComponent::editKey (const juce::KeyPress& key)
{
    const auto mods = key.getModifiers();
    const auto code = key.getKeyCode();
    if (mods.isCtrlDown() && (code == 'Z' || code == 'z'))
        mods.isShiftDown() ? redo() : undo();
    else if (mods.isCtrlDown() && (code == 'Y' || code == 'y'))
        redo();
    else if (code == juce::KeyPress::deleteKey || code == juce::KeyPress::backspaceKey)
        deletePoint (chosenPoint);
    else if (code == juce::KeyPress::insertKey && chosenPoint + 1 < envelope().pointCount())
    {
        // In the middle of the stretch that follows.
        auto next = envelope();
        const auto time = 0.5 * (next.absoluteTime (chosenPoint) + next.absoluteTime (chosenPoint + 1));
        const auto index = EnvEdit::insertPoint (next, { time, next.evaluate (time) }, lastType, rules);
        applyToSelected (std::move (next));
        chosenPoint = std::max (index, 0);
    }
    else if (code == juce::KeyPress::returnKey)
        openPointMenu (chosenPoint);
    else if (code == juce::KeyPress::homeKey || code == juce::KeyPress::endKey)
        chosenPoint = code == juce::KeyPress::homeKey ? 0 : std::max (0, envelope().pointCount() - 1);
    else if (key.getTextCharacter() == '+' || key.getTextCharacter() == '-')
        zoom (key.getTextCharacter() == '+' ? 0.5 : 2.0, geometry().pointPlace (envelope(), chosenPoint),
              false);
    else
        return false;
    repaint();
    return true;
}

bool EnvComponent::keyPressed (const juce::KeyPress& key)
{
    return !lanes.empty() && drag.hold == Hold::nothing && (moveKey (key) || editKey (key));
}
