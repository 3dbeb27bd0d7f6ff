#include "ui/sampler/SamplerPad.h"

#include "engine/CommandTitle.h"
#include "skin/Palette.h"
#include "support/language/Translate.h"
#include "ui/panel/PanelPaint.h"
#include "ui/sampler/SamplerDrag.h"
#include "ui/sampler/SamplerPadMenu.h"

#include <cmath>

namespace
{
constexpr int margin = 3, dragDistance = 8;
constexpr const char* menuTooltip = N_ ("Open popup menu with extended options for this pad");
constexpr const char* modeTexts[samplePlayModeCount] { "", N_ ("TRIG"), N_ ("RETR"), N_ ("LOOP") };
}

SamplerPad::SamplerPad (CPlatterdex& e, int p) : engine (e), pad (p), slot (*e.sampler.desk.find (p))
{
    setName ("_samplerPad" + juce::String (pad + 1));
    setTooltip (tr (menuTooltip));
    setTitle (commandTitle (command()));
    shown = faceNow();
}

juce::String SamplerPad::lengthText (double beats)
{
    if (!(beats > 0.0))
        return {};
    if (beats == 1.0)
        return tr ("1 beat");
    if (beats < 1.0)
        return tr ("1/%1 beats", juce::roundToInt (1.0 / beats));
    return tr ("%1 beats", beats == std::floor (beats) ? juce::String (juce::roundToInt (beats))
                                                       : juce::String (beats, 1));
}

SamplerPad::Face SamplerPad::faceNow() const
{
    Face now;
    const auto texts = slot.texts();
    now.isFilled = !slot.isEmpty();
    now.isPlaying = slot.playing != 0 && now.isFilled;
    now.fault = texts.fault;
    now.isFaulty = !now.isFilled && texts.fault.isNotEmpty();
    now.name = now.isFilled || now.isFaulty ? texts.name : juce::String();
    if (now.isFilled)
    {
        now.length = now.fault.isEmpty() ? lengthText (slot.musicalBeats()) : tr ("NO FILE");
        now.mode = tr (modeTexts[juce::jlimit (0, samplePlayModeCount - 1, slot.playMode.get())]);
    }
    else if (now.isFaulty)
        now.length = tr ("FAILED");
    else if (slot.isLoading != 0)
        now.length = tr ("LOADING");
    if (now.isPlaying)
        now.progress = static_cast<int> (slot.position / slot.lengthFrames * (getWidth() - 2));
    return now;
}

void SamplerPad::poll()
{
    auto now = faceNow();
    if (now == shown)
        return;
    if (now.fault != shown.fault)
        setTooltip (now.fault.isNotEmpty() ? now.fault : tr (menuTooltip));
    shown = std::move (now);
    repaint();
}

void SamplerPad::paint (juce::Graphics& g)
{
    const auto area = getLocalBounds();
    const auto fill = shown.isPlaying  ? palette::accent
                      : isPressed      ? palette::line
                      : shown.isFilled ? palette::well
                                       : palette::raised;
    SMLookAndFeel::fillRaised (g, area, fill);

    auto inside = area.reduced (margin, 2);
    const auto text = shown.isPlaying ? palette::ink : palette::value;
    const auto quiet = shown.isPlaying ? palette::ink : palette::label;
    const auto bottom = inside.removeFromBottom (12);
    g.setFont (SMLookAndFeel::labelFont());
    g.setColour (quiet);
    g.drawText (shown.length, bottom, juce::Justification::bottomLeft, false);
    const auto wide =
        getWidth() >= 52 && shown.length.length() + shown.mode.length() <= (getWidth() - 2 * margin) / 6;
    if (shown.mode.isNotEmpty() && (wide || inside.getHeight() > 30))
        g.drawText (shown.mode, wide ? bottom : inside.removeFromBottom (12),
                    wide ? juce::Justification::bottomRight : juce::Justification::bottomLeft, false);
    if (shown.name.isEmpty())
        g.drawText (juce::String (pad + 1), inside, juce::Justification::topLeft, false);
    else
    {
        g.setColour (shown.isFaulty ? palette::label : text);
        g.drawFittedText (shown.name, inside, juce::Justification::topLeft,
                          std::max (1, inside.getHeight() / 12), 1.0f);
    }
    if (shown.isPlaying)
    {
        g.setColour (palette::ink);
        g.fillRect (1, getHeight() - 2, shown.progress, 2);
    }
    if (isDropTarget)
    {
        g.setColour (palette::accent);
        g.drawRect (area, 2);
    }
}

void SamplerPad::mouseDown (const juce::MouseEvent& event)
{
    if (event.mods.isPopupMenu())
        return openSamplerPadMenu (engine, pad, *this);
    if (event.mods.isLeftButtonDown())
        press();
}

bool SamplerPad::keyPressed (const juce::KeyPress& key)
{
    if (KeyFinger::isMenu (key))
        return openSamplerPadMenu (engine, pad, *this), true;
    if (!KeyFinger::isPress (key))
        return false;
    if (finger.goesDown (key))
        press();
    return true;
}

bool SamplerPad::keyStateChanged (bool)
{
    if (finger.comesUp())
        release();
    return false;
}

void SamplerPad::focusLost (FocusChangeType)
{
    finger = {};
    release();
}

std::unique_ptr<juce::AccessibilityHandler> SamplerPad::createAccessibilityHandler()
{
    const auto click = [this]
    {
        press();
        release();
    };
    return std::make_unique<juce::AccessibilityHandler> (
        *this, juce::AccessibilityRole::button,
        juce::AccessibilityActions().addAction (juce::AccessibilityActionType::press, click));
}

void SamplerPad::press()
{
    isPressed = true;
    engine.edit (command(), 1.0f);
    repaint();
}

void SamplerPad::release()
{
    if (!isPressed)
        return;
    isPressed = false;
    engine.edit (command(), 0.0f);
    repaint();
}

void SamplerPad::mouseUp (const juce::MouseEvent&)
{
    release();
}

void SamplerPad::mouseDrag (const juce::MouseEvent& event)
{
    if (isPressed && event.getDistanceFromDragStart() >= dragDistance && !slot.isEmpty())
        SamplerDrag::start (*this, SamplerDrag::ofPad, pad);
}

bool SamplerPad::isInterestedInDragSource (const SourceDetails& details)
{
    return SamplerDrag::isTaken (engine, details, pad);
}

void SamplerPad::itemDropped (const SourceDetails& details)
{
    setDropTarget (false);
    SamplerDrag::drop (engine, details, pad);
}

bool SamplerPad::isInterestedInFileDrag (const juce::StringArray& files)
{
    return SamplerDrag::isTaken (files);
}

void SamplerPad::filesDropped (const juce::StringArray& files, int, int)
{
    setDropTarget (false);
    SamplerDrag::drop (engine, files, pad);
}

void SamplerPad::setDropTarget (bool target)
{
    isDropTarget = target;
    repaint();
}
