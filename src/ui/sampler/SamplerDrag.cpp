#include "ui/sampler/SamplerDrag.h"

#include "support/files/AudioFileTypes.h"
#include "ui/deckviews/DeckWaveform.h"
#include "ui/drag/FileDragSource.h"

#include <algorithm>

namespace
{
constexpr const char* slotProperty = "samplerSlot";

/** The slot that a drag comes from, or -1. */
int slotOf (const SamplerDrag::Details& details)
{
    const auto name = details.description.toString();
    if ((name != SamplerDrag::ofWaveform && name != SamplerDrag::ofPad) || details.sourceComponent == nullptr)
        return -1;
    return details.sourceComponent->getProperties().getWithDefault (slotProperty, -1);
}

juce::File fileOf (CPlatterdex& engine, const SamplerDrag::Details& details)
{
    const auto name = details.description.toString();
    auto* const source = details.sourceComponent.get();
    if (name == DeckWaveform::dragDescription)
    {
        if (const auto* wave = dynamic_cast<DeckWaveform*> (source))
            if (const auto* deck = engine.decks.deck (wave->deck()); deck != nullptr && !deck->isEmpty())
                return juce::File (deck->texts().filePath);
        return {};
    }
    for (const auto& path : DragSourceName::filesOf (details))
        if (const juce::File file (path); AudioFileTypes::matches (file))
            return file;
    return {};
}
}

bool SamplerDrag::isTaken (CPlatterdex& engine, const Details& details, int pad)
{
    const auto slot = slotOf (details);
    return slot >= 0 ? slot != pad : fileOf (engine, details) != juce::File();
}

void SamplerDrag::drop (CPlatterdex& engine, const Details& details, int pad)
{
    if (const auto slot = slotOf (details); slot >= 0)
        engine.sampler.copySlot (slot, pad);
    else if (const auto file = fileOf (engine, details); file != juce::File())
        engine.sampler.loadSample (pad, file);
}

bool SamplerDrag::isTaken (const juce::StringArray& files)
{
    return std::any_of (files.begin(), files.end(),
                        [] (const auto& path) { return AudioFileTypes::matches (juce::File (path)); });
}

void SamplerDrag::drop (CPlatterdex& engine, const juce::StringArray& files, int pad)
{
    for (const auto& path : files)
        if (const juce::File file (path); AudioFileTypes::matches (file))
            return engine.sampler.loadSample (pad, file);
}

void SamplerDrag::start (juce::Component& from, const char* source, int slot)
{
    auto* const container = juce::DragAndDropContainer::findParentDragContainerFor (&from);
    if (container == nullptr || container->isDragAndDropActive())
        return;
    from.getProperties().set (slotProperty, slot);
    auto picture = from.createComponentSnapshot (from.getLocalBounds());
    picture.multiplyAllAlphas (0.6f);
    container->startDragging (source, &from, juce::ScaledImage (picture));
}
