#include "UiBench.h"

#include "adec/BuiltDecoder.h"
#include "ui/widgets/MenuButton.h"
#include "ui/widgets/PXImageButton.h"

#include <gtest/gtest.h>

namespace
{
EngineWorld world (const juce::File& root, const juce::uint32& now, std::shared_ptr<Prompts> prompts)
{
    EngineWorld w;
    w.folders.root = root;
    w.decoderLibrary = juce::File (builtDecoder());
    w.pacing = Pacing::Mode::offline;
    w.seed = 1;
    w.clock = [&now] { return now; };
    w.prompts = std::move (prompts);
    return w;
}

std::shared_ptr<Session> sessionIn (const juce::File& root)
{
    Session::Options options;
    options.folders.root = root;
    options.library.folder = root.getChildFile ("SongManager");
    return std::make_shared<Session> (std::move (options));
}
}

UiBench::UiBench (std::shared_ptr<Prompts> prompts)
    : engine (world (folder, now, std::move (prompts))),
      session (sessionIn (folder)),
      editor (std::make_unique<CPlatterdexVstEditor> (engine, session.get()))
{
    engine.setRateAndBufferSizeDetails (48000.0, 512);
    editor->setVisible (true);
}

juce::File UiBench::halfLoudTrack (double seconds) const
{
    const auto file = folder.file ("Half Loud.wav");
    const auto frames = juce::roundToInt (seconds * 44100.0);
    juce::AudioBuffer<float> tone (2, frames);
    tone.clear();
    for (int i = 0; i < frames / 2; ++i)
        for (int side = 0; side < 2; ++side)
            tone.setSample (side, i, 0.8f * std::sin (0.03f * static_cast<float> (i)));
    juce::WavAudioFormat format;
    const std::unique_ptr<juce::AudioFormatWriter> writer (
        format.createWriterFor (new juce::FileOutputStream (file), 44100.0, 2, 16, {}, 0));
    writer->writeFromAudioSampleBuffer (tone, 0, frames);
    return file;
}

void UiBench::load (const juce::File& file, int deck)
{
    engine.loadTrack (file, deck);
    wait (deck);
}

void UiBench::wait (int deck)
{
    engine.loaders.waitUntilIdle (deck);
    engine.deliverMessages();
    refresh();
}

void UiBench::render (int frames)
{
    juce::AudioBuffer<float> buffer (CPlatterdex::outputChannels, frames);
    juce::MidiBuffer midi;
    buffer.clear();
    const juce::ScopedLock lock (engine.getCallbackLock());
    engine.processBlock (buffer, midi);
}

void UiBench::refresh()
{
    now += PollingView::calmMs;
    // By safe pointers, since a poll may make and drop views.
    std::vector<juce::Component::SafePointer<juce::Component>> all;
    for (auto* component : descendants (*editor))
        all.emplace_back (component);
    for (auto& component : all)
        if (auto* view = dynamic_cast<PollingView*> (component.getComponent()))
            view->refresh();
}

juce::Image UiBench::picture (juce::Component& component, const juce::String& name, float scale)
{
    const auto image = component.createComponentSnapshot (component.getLocalBounds(), true, scale);
    if (const auto path = juce::SystemStats::getEnvironmentVariable ("PX_PICTURES", {}); path.isNotEmpty())
    {
        const auto file =
            juce::File (path).getChildFile (name + (scale > 1.0f ? "@" + juce::String (scale) : "") + ".png");
        file.deleteFile();
        juce::FileOutputStream stream (file);
        juce::PNGImageFormat().writeImageToStream (image, stream);
    }
    return image;
}

void UiBench::reopen()
{
    editor.reset();
    editor = std::make_unique<CPlatterdexVstEditor> (engine, session.get());
    editor->setVisible (true);
    refresh();
}

std::vector<juce::Component*> descendants (juce::Component& parent)
{
    std::vector<juce::Component*> all;
    for (auto* child : parent.getChildren())
    {
        all.push_back (child);
        for (auto* below : descendants (*child))
            all.push_back (below);
    }
    return all;
}

juce::MouseEvent mouseAt (juce::Component& component, juce::Point<float> position,
                          juce::ModifierKeys modifiers, int clicks)
{
    const auto now = juce::Time::getCurrentTime();
    return { juce::Desktop::getInstance().getMainMouseSource(),
             position,
             modifiers,
             juce::MouseInputSource::defaultPressure,
             juce::MouseInputSource::defaultOrientation,
             juce::MouseInputSource::defaultRotation,
             juce::MouseInputSource::defaultTiltX,
             juce::MouseInputSource::defaultTiltY,
             &component,
             &component,
             now,
             position,
             now,
             clicks,
             false };
}

void press (juce::Component& c, juce::ModifierKeys with)
{
    c.mouseDown (mouseAt (c, c.getLocalBounds().getCentre().toFloat(), with));
}

void release (juce::Component& c, juce::ModifierKeys with)
{
    c.mouseUp (mouseAt (c, c.getLocalBounds().getCentre().toFloat(), with));
}

bool hasOwnAction (juce::Component& component)
{
    if (const auto* menu = dynamic_cast<MenuButton*> (&component))
        return menu->onFillMenu != nullptr;
    if (const auto* button = dynamic_cast<PXTextButton*> (&component))
        return button->onClick != nullptr;
    const auto* button = dynamic_cast<PXImageButton*> (&component);
    return button != nullptr && button->onClick != nullptr;
}
