#pragma once

#include "support/language/Translate.h"

#include <juce_gui_basics/juce_gui_basics.h>

#include <array>
#include <functional>

class CPlatterdex;

/** The block between the decks: six pages of tools for all decks. A change of the mode drops them and makes them again,
    for no page holds state. */
class GlobalComponent : public juce::TabbedComponent
{
public:
    enum Tab
    {
        mixer,
        fx,
        sampler,
        wav,
        vst,
        env,
        tabs
    };

    static constexpr std::array<const char*, tabs> names { N_ ("MIXER"), N_ ("FX"),  N_ ("SAMPLER"),
                                                           N_ ("WAV"),   N_ ("VST"), N_ ("ENV") };
    static constexpr int tabDepth = 24;

    explicit GlobalComponent (CPlatterdex&);

    /** The preferences that decide on the pages. */
    struct Mode
    {
        bool fourDecks = false, orderABCD = true;
        bool operator== (const Mode&) const = default;
    };

    /** Makes the pages of a mode. The shown tab stays. */
    void setMode (Mode);

    std::function<void()> onTabChange;

    bool showsMixer() const { return getCurrentTabIndex() == mixer; }

    void paint (juce::Graphics&) override;

private:
    void currentTabChanged (int, const juce::String&) override;
    juce::TabBarButton* createTabButton (const juce::String& name, int index) override;

    CPlatterdex& engine;
    Mode mode;
    bool isMaking = false; ///< the pages come and go, and the shown tab with them
};
