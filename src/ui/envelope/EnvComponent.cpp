#include "ui/envelope/EnvComponent.h"

#include "skin/Palette.h"
#include "support/language/Translate.h"
#include "ui/look/OpenMenu.h"

namespace
{
constexpr double wholeWindow = 4.0; // the envelope time of the instruments
constexpr double shortestView = 0.0625, flattestView = 0.0625;

/** A range of some length that keeps inside another. */
juce::Range<double> inside (juce::Range<double> range, juce::Range<double> limits, double shortest)
{
    const auto length = juce::jlimit (shortest, limits.getLength(), range.getLength());
    return limits.constrainRange ({ range.getStart(), range.getStart() + length });
}
}

EnvComponent::EnvComponent() : PollingView (Pace::moving), playColour (palette::accent)
{
    setOpaque (true);
    setWantsKeyboardFocus (true);
    setTitle (tr ("Curve"));
    addChildComponent (info);
}

EnvComponent::~EnvComponent() = default;

void EnvComponent::setLanes (EnvLanes next)
{
    lanes.clear();
    for (auto& each : next)
    {
        Lane made;
        made.lane = std::move (each);
        takeOver (made);
        lanes.push_back (std::move (made));
    }
    history.forget();
    drag = {};
    selectLane (0);
}

bool EnvComponent::takeOver (Lane& lane)
{
    const auto& bank = *lane.lane.bank;
    lane.revision = bank.revision (lane.lane.row);
    lane.isVisible = bank.isVisible (lane.lane.row);
    auto next = bank.copy (lane.lane.row);
    const auto isOther = !next.isSameCurve (lane.shown);
    lane.shown = std::move (next);
    return isOther;
}

void EnvComponent::selectLane (int index)
{
    selected = juce::jlimit (0, std::max (0, static_cast<int> (lanes.size()) - 1), index);
    chosenPoint = 0;
    under = {};
    setView (shownView);
    edited();
}

const Envelope& EnvComponent::envelope() const noexcept
{
    static const Envelope none;
    return lanes.empty() ? none : lanes[static_cast<size_t> (selected)].shown;
}

void EnvComponent::show (int index, Envelope next)
{
    auto& changed = lanes[static_cast<size_t> (index)];
    next.recalculate();
    changed.lane.bank->replace (changed.lane.row, next);
    ++changed.revision; // one who changes it at the same time is found by the next poll
    changed.shown = std::move (next);
}

void EnvComponent::apply (std::vector<std::pair<int, Envelope>> next)
{
    EnvHistory::Edit edit;
    for (auto& [index, envelope] : next)
    {
        const auto& before = lanes[static_cast<size_t> (index)].shown;
        if (before.isSameCurve (envelope))
            continue;
        edit.push_back ({ index, before, envelope });
        show (index, std::move (envelope));
    }
    if (!edit.empty())
        history.record (std::move (edit));
    edited();
}

void EnvComponent::recordAround (const std::function<void()>& change)
{
    drag = {};
    pollMoving();
    change();
    EnvHistory::Edit edit;
    for (size_t i = 0; i < lanes.size(); ++i)
        if (auto before = lanes[i].shown; takeOver (lanes[i]))
            edit.push_back ({ static_cast<int> (i), std::move (before), lanes[i].shown });
    if (!edit.empty())
        history.record (std::move (edit));
    edited();
}

void EnvComponent::playChanges (const EnvHistory::Edit& edit, bool before)
{
    for (const auto& change : edit)
        show (change.lane, before ? change.before : change.after);
    if (!edit.empty())
        selected = edit.front().lane;
    edited();
}

void EnvComponent::undo()
{
    if (drag.hold == Hold::nothing)
        if (const auto* edit = history.undo())
            playChanges (*edit, true);
}

void EnvComponent::redo()
{
    if (drag.hold == Hold::nothing)
        if (const auto* edit = history.redo())
            playChanges (*edit, false);
}

void EnvComponent::edited()
{
    chosenPoint = juce::jlimit (0, std::max (0, envelope().pointCount() - 1), chosenPoint);
    repaint();
    for (auto* listener : listeners)
        listener->graphEnvChanged (*this);
}

juce::Range<double> EnvComponent::fullTime() const noexcept
{
    return { 0.0, std::max (wholeWindow, envelope().absoluteTime (Envelope::maxPoints)) };
}

void EnvComponent::setView (EnvView next)
{
    next.time = inside (next.time, fullTime(), shortestView);
    next.level = inside (next.level, { 0.0, 1.0 }, flattestView);
    if (std::exchange (shownView, next) == next)
        return;
    edited();
}

void EnvComponent::pollMoving()
{
    auto isOther = false, needsPaint = false;
    for (auto& each : lanes)
        if (each.revision != each.lane.bank->revision (each.lane.row))
        {
            isOther = takeOver (each) || isOther;
            needsPaint = true;
        }
    if (isOther)
    {
        drag = {};
        history.forget();
    }
    if (needsPaint)
        edited();

    const auto time = playTime != nullptr ? playTime() : std::nullopt;
    if (time == shownTime)
        return;
    repaint (playArea (std::exchange (shownTime, time)));
    repaint (playArea (time));
}

juce::Rectangle<int> EnvComponent::playArea (std::optional<double> time) const
{
    if (!time)
        return {};
    const auto x = juce::roundToInt (geometry().x (*time));
    return { x - 6, 0, 12, getHeight() };
}

juce::PopupMenu EnvComponent::pointMenu (int point) const
{
    const auto count = envelope().pointCount();
    juce::PopupMenu menu;
    menu.addItem (-1, tr ("Point %1 / %2", point + 1, count), false);
    if (!(rules.pinLast && point == count - 1))
        menu.addItem (deleteItem, tr ("Delete Point"), EnvEdit::canDelete (envelope(), point, rules));
    menu.addSeparator();
    for (size_t type = 0; type < SegmentShapes::names.size(); ++type)
        menu.addItem (typeItem + static_cast<int> (type), SegmentShapes::names[type], true,
                      envelope().point (point).type == type);
    menu.addSeparator();
    menu.addItem (copyItem, tr ("Copy Value"));
    menu.addItem (pasteItem,
                  copiedLevel ? tr ("Paste Value (%1)", juce::String (static_cast<double> (*copiedLevel), 3))
                              : tr ("Paste Value"),
                  copiedLevel.has_value());
    return menu;
}

void EnvComponent::openPointMenu (int point)
{
    auto menu = pointMenu (point);
    const auto place = geometry().pointPlace (envelope(), point).roundToInt();
    openMenu (menu, *this,
              juce::PopupMenu::Options().withTargetScreenArea (
                  localAreaToGlobal (juce::Rectangle<int> (place.x, place.y, 1, 1))),
              [this, point] (int id) { pointMenuChosen (point, id); });
}

void EnvComponent::pointMenuChosen (int point, int id)
{
    auto next = envelope();
    if (id >= typeItem && id < typeItem + static_cast<int> (SegmentShapes::names.size()))
    {
        lastType = static_cast<std::uint8_t> (id - typeItem);
        EnvEdit::setType (next, point, lastType);
    }
    else if (id == deleteItem)
        return deletePoint (point);
    else if (id == copyItem)
        copiedLevel = next.point (0).value;
    else if (id == pasteItem && copiedLevel)
        EnvEdit::setLevel (next, 0, *copiedLevel);
    applyToSelected (std::move (next));
}

void EnvComponent::deletePoint (int point)
{
    if (!EnvEdit::canDelete (envelope(), point, rules))
        return;
    auto next = envelope();
    next.deletePoint (point);
    under = {};
    applyToSelected (std::move (next));
}

void EnvComponent::showInfo (int point, juce::Point<float> beside)
{
    const auto p = envelope().point (point);
    const auto& words = lanes[static_cast<size_t> (selected)].lane.words;
    info.show (words != nullptr ? words (p.value) : juce::String (p.value, 2),
               timeWords != nullptr ? timeWords (p.time) : juce::String (p.time, 2), beside.roundToInt());
}
