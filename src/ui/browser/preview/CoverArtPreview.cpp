#include "ui/browser/preview/CoverArtPreview.h"

#include "skin/Palette.h"
#include "support/language/Translate.h"
#include "ui/panel/PanelPaint.h"

CoverArtPreview::CoverArtPreview (BrowserWorld& w) : world (w)
{
    setOpaque (true);
    setTitle (tr ("Cover"));
}

void CoverArtPreview::show (const juce::String& wanted)
{
    if (wanted == path)
        return;
    path = wanted;
    find();
}

void CoverArtPreview::find()
{
    juce::Image next;
    if (path.isNotEmpty() && world.room != nullptr)
    {
        const auto read =
            world.room->covers.find (path,
                                     [alive = juce::Component::SafePointer<CoverArtPreview> (this)]
                                     {
                                         if (alive != nullptr)
                                             alive->find();
                                     });
        if (!read)
            return;
        next = *read;
    }
    picture = next;
    repaint();
}

void CoverArtPreview::paint (juce::Graphics& g)
{
    g.fillAll (palette::ground);
    if (picture.isValid())
        return g.drawImageWithin (picture, 0, 0, getWidth(), getHeight(), juce::RectanglePlacement::centred);
    PanelPaint::label (g, tr ("No Album Art"), getLocalBounds());
}
