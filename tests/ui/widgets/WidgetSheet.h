#pragma once

#include "WidgetBench.h"
#include "ui/widgets/MenuButton.h"
#include "ui/widgets/PXFxSlider.h"
#include "ui/widgets/PXImageButton.h"
#include "ui/widgets/PXImageLevelMeter.h"
#include "ui/widgets/PXImageLinearSlider.h"
#include "ui/widgets/PXTabBarButton.h"
#include "ui/widgets/ResizableScrollBar.h"

#include <memory>
#include <vector>

/** Every widget in every state, and the toolkit's controls in the dark look, on one sheet. */
class WidgetSheet : public juce::Component
{
public:
    WidgetSheet();

    void paint (juce::Graphics&) override;

    /** Everything on the sheet that a hand works. */
    std::vector<juce::Component*> touched() const;

private:
    /** Puts a new widget on the sheet. */
    template <typename Widget, typename... Arguments>
    Widget& add (juce::Rectangle<int> place, Arguments&&... arguments)
    {
        auto widget = std::make_unique<Widget> (std::forward<Arguments> (arguments)...);
        auto& added = *widget;
        added.setBounds (place);
        addAndMakeVisible (added);
        widgets.push_back (std::move (widget));
        return added;
    }

    void addImageButtons (int y);
    void addTextButtons (int y);
    void addKnobs (int y);
    void addFaders (int x, int y);
    void addMeters (int x, int y);
    void addToolkit (int x, int y);

    void paintMenu (juce::Graphics&, juce::Rectangle<int>) const;

    std::vector<std::unique_ptr<juce::Component>> widgets;
};
