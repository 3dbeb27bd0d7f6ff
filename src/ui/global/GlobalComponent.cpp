#include "ui/global/GlobalComponent.h"

#include "skin/Palette.h"
#include "support/language/Translate.h"
#include "ui/global/DeckStackPage.h"
#include "ui/global/MixerPages.h"
#include "ui/look/SMLookAndFeel.h"
#include "ui/sampler/SamplerPages.h"
#include "ui/widgets/PXTabBarButton.h"

GlobalComponent::GlobalComponent (CPlatterdex& e)
    : TabbedComponent (juce::TabbedButtonBar::TabsAtTop),
      engine (e)
{
    setTabBarDepth (tabDepth);
    setOutline (0);
    setColour (backgroundColourId, palette::panel);
    setColour (outlineColourId, juce::Colours::transparentBlack);
    setWantsKeyboardFocus (false);
    setMode ({});
}

void GlobalComponent::setMode (Mode next)
{
    if (next == mode && getNumTabs() == tabs)
        return;
    mode = next;
    const juce::ScopedValueSetter<bool> quiet (isMaking, true);
    const auto shown = juce::jmax (0, getCurrentTabIndex());
    // A page that comes to the front takes the keyboard if it shows, even from another window.
    const auto wasVisible = isVisible();
    setVisible (false);
    clearTabs();
    const auto add = [this] (auto* page)
    { addTab (tr (names[static_cast<size_t> (getNumTabs())]), palette::ground, page, true); };

    if (mode.fourDecks)
    {
        add (new Mixer4ChannelsComponent (engine, mode.orderABCD));
        add (new Fx4DecksComponent (engine));
        add (new Sampler4DecksComponent (engine));
        add (new Peakscope4DecksComponent (engine));
        add (new VstHost4DecksComponent (engine));
        add (new Slicegate4DecksComponent (engine));
    }
    else
    {
        add (new Mixer2ChannelsComponent (engine));
        add (new Fx2DecksComponent (engine));
        add (new Sampler2DecksComponent (engine));
        add (new Peakscope2DecksComponent (engine));
        add (new VstHost2DecksComponent (engine));
        add (new Slicegate2DecksComponent (engine));
    }
    setCurrentTabIndex (shown);
    setVisible (wasVisible);
}

void GlobalComponent::currentTabChanged (int, const juce::String&)
{
    if (onTabChange != nullptr && !isMaking)
        onTabChange();
}

juce::TabBarButton* GlobalComponent::createTabButton (const juce::String& name, int)
{
    return new PXTabBarButton (name, getTabbedButtonBar());
}

void GlobalComponent::paint (juce::Graphics& g)
{
    g.fillAll (palette::ground);
    SMLookAndFeel::fillRaised (g, getLocalBounds().withTrimmedTop (tabDepth), palette::panel);
}
