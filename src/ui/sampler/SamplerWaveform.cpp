#include "ui/sampler/SamplerWaveform.h"

#include "skin/Palette.h"
#include "support/language/Translate.h"
#include "ui/panel/PanelPaint.h"
#include "ui/sampler/SamplerDrag.h"

namespace
{
const SamplerSlot& previewOf (const CPlatterdex& engine)
{
    return engine.sampler.desk.slots[Sampler::preview];
}
}

SamplerWaveform::SamplerWaveform (CPlatterdex& e) : engine (e)
{
    setName ("_samplerWaveform");
    setTooltip (tr ("Click and drag the loop sample into the pads."));
}

int SamplerWaveform::playColumn() const
{
    const auto& slot = previewOf (engine);
    return slot.playing != 0 && !slot.isEmpty()
               ? static_cast<int> (slot.position / slot.lengthFrames * (getWidth() - 2))
               : -1;
}

void SamplerWaveform::poll()
{
    const auto& slot = previewOf (engine);
    const int frames = slot.lengthFrames;
    const auto version = slot.outline.version.get();
    const auto column = playColumn();
    if (frames == shownFrames && version == shownVersion && column == shownColumn)
        return;
    shownFrames = frames;
    shownVersion = version;
    shownColumn = column;
    repaint();
}

void SamplerWaveform::paint (juce::Graphics& g)
{
    const auto area = getLocalBounds();
    g.setColour (palette::edgeDark);
    g.fillRect (area);
    g.setColour (palette::ground);
    g.fillRect (area.reduced (1));

    const auto& slot = previewOf (engine);
    if (slot.isEmpty())
        return PanelPaint::label (g, slot.isLoading != 0 ? tr ("RECORDING...") : tr ("NO LOOP RECORDED"),
                                  area);

    const auto inside = area.reduced (1).toFloat();
    const auto half = inside.getHeight() / 2.0f, step = inside.getWidth() / SampleOutline::columns;
    g.setColour (palette::scope);
    for (int i = 0; i < SampleOutline::columns; ++i)
    {
        const auto high = static_cast<float> (slot.outline.highest[static_cast<size_t> (i)].get()) / 100.0f;
        const auto low = static_cast<float> (slot.outline.lowest[static_cast<size_t> (i)].get()) / 100.0f;
        const auto top = inside.getCentreY() - high * half;
        g.fillRect (inside.getX() + static_cast<float> (i) * step, top, std::max (1.0f, step),
                    std::max (1.0f, (high - low) * half));
    }
    if (const auto column = playColumn(); column >= 0)
    {
        g.setColour (palette::accent);
        g.fillRect (area.getX() + 1 + column, area.getY() + 1, 1, area.getHeight() - 2);
    }
}

void SamplerWaveform::mouseDrag (const juce::MouseEvent& event)
{
    if (event.mouseWasDraggedSinceMouseDown() && !previewOf (engine).isEmpty())
        SamplerDrag::start (*this, SamplerDrag::ofWaveform, Sampler::preview);
}
