#include "ui/global/DeckStackPage.h"

#include "ui/deckviews/scope/DeckPeakScope.h"
#include "ui/global/Fx1DeckComponent.h"
#include "ui/panel/PanelPaint.h"
#include "ui/plugins/VstSlotComponent.h"
#include "ui/slicegate/SlicegateComponent.h"

void DeckStackPage::resized()
{
    auto area = getLocalBounds();
    for (size_t i = 0; i < views.size(); ++i)
        views[i]->setBounds (area.removeFromTop (area.getHeight() / static_cast<int> (views.size() - i)));
}

void DeckStackPage::paintOverChildren (juce::Graphics& g)
{
    constexpr int place = 4, size = 20;
    for (size_t deck = 0; letters == Letters::over && deck < views.size(); ++deck)
        PanelPaint::badge (g, views[deck]->getBounds().translated (place, place).withSize (size, size),
                           static_cast<int> (deck), false);
}

Fx2DecksComponent::Fx2DecksComponent (CPlatterdex& engine)
{
    addViews<Fx1DeckComponent> (engine, 2);
}

Fx4DecksComponent::Fx4DecksComponent (CPlatterdex& engine)
{
    addViews<Fx1DeckComponent> (engine, 4);
}

Peakscope2DecksComponent::Peakscope2DecksComponent (CPlatterdex& engine) : DeckStackPage (Letters::over)
{
    addViews<DeckPeakScope> (engine, 2);
}

Peakscope4DecksComponent::Peakscope4DecksComponent (CPlatterdex& engine) : DeckStackPage (Letters::over)
{
    addViews<DeckPeakScope> (engine, 4);
}

Slicegate2DecksComponent::Slicegate2DecksComponent (CPlatterdex& engine)
{
    addViews<SlicegateComponent> (engine, 2);
}

Slicegate4DecksComponent::Slicegate4DecksComponent (CPlatterdex& engine)
{
    addViews<SlicegateComponent> (engine, 4);
}

VstHost2DecksComponent::VstHost2DecksComponent (CPlatterdex& engine)
{
    addViews<VstSlotComponent> (engine, 2);
}

VstHost4DecksComponent::VstHost4DecksComponent (CPlatterdex& engine)
{
    addViews<VstSlotComponent> (engine, 4);
}
