#include "UiBench.h"

#include "skin/SkinRequests.h"
#include "skin/SkinTable.h"
#include "ui/decks/UtilityPanels.h"
#include "ui/global/DeckStackPage.h"
#include "ui/global/MixerPages.h"
#include "widgets/WidgetBench.h"

#include <gtest/gtest.h>

#include <map>

namespace
{
using Makers = std::map<std::string, std::function<std::unique_ptr<juce::Component>()>>;

/** JUCE's own controls as the look draws them: lists, fields and dialogs are made of these. */
struct Dialog : juce::DocumentWindow
{
    Dialog() : DocumentWindow ("Dialog", juce::Colours::black, allButtons, false)
    {
        for (const auto vertical : { false, true })
        {
            auto bar = std::make_unique<juce::ScrollBar> (vertical);
            bar->setRangeLimits (0.0, 1.0);
            bar->setCurrentRange (0.2, 0.4);
            add (std::move (bar),
                 vertical ? juce::Rectangle<int> (0, 0, 12, 90) : juce::Rectangle<int> (20, 0, 90, 12));
            add (std::make_unique<juce::Slider> (vertical ? juce::Slider::LinearVertical
                                                          : juce::Slider::LinearHorizontal,
                                                 juce::Slider::NoTextBox),
                 vertical ? juce::Rectangle<int> (120, 0, 24, 90) : juce::Rectangle<int> (20, 20, 90, 24));
        }
        add (std::make_unique<juce::ToggleButton> ("toggle"), { 20, 50, 90, 22 });
        add (std::make_unique<juce::ResizableCornerComponent> (&content, nullptr), { 184, 84, 16, 16 });
        content.setSize (200, 100);
        setContentNonOwned (&content, true);
    }

    ~Dialog() override { clearContentComponent(); }

    void add (std::unique_ptr<juce::Component> control, juce::Rectangle<int> area)
    {
        control->setBounds (area);
        content.addAndMakeVisible (*control);
        controls.push_back (std::move (control));
    }

    juce::Component content;
    std::vector<std::unique_ptr<juce::Component>> controls;
};
}

/** A picture is shown by a panel, or waits for one that is still to come: no other lies in the program. */
TEST (SkinUse, EveryStripIsShownOrWaitsForAPanel)
{
    const std::map<std::string, std::vector<std::string>> waiting {
        { "page SAMPLER",
          { "lock_24", "loop_24", "load_24", "eject_24", "sign_loop", "sign_padlock", "meter_level_a",
            "meter_level_b", "meter_level_c", "meter_level_d" } },
        { "page VST", { "menu_20" } },
        { "browser",
          { "sign_headphones", "sign_left", "sign_right", "sign_up", "sign_down", "panel", "well" } },
        { "learning of controllers", { "button_20_lime", "button_24_lime", "button_32_lime" } },
        { "dialogs of preferences and editors",
          { "button_32", "button_32_accent", "button_24_red", "button_32_red" } },
        { "an upright meter of the master", { "meter_upright" } },
    };

    const DarkLook dark;
    UiBench bench;
    bench.engine.settings.editor[EditorPreference::deckPanelsLeft] = 0;
    bench.engine.settings.editor[EditorPreference::deckPanelsRight] = 0;
    for (int deck = 0; deck < deckCount; ++deck)
    {
        bench.load (bench.halfLoudTrack(), deck);
        bench.engine.smartKnobs.setSmartKnobOn (deck, 0, true);
    }
    HeaderActions actions;
    actions.showWaves = [] (bool) {};
    actions.showsWaves = [] { return false; };
    actions.setFullScreen = [] (bool) {};
    actions.isFullScreen = [] { return false; };
    Makers views {
        { "header", [&] { return std::make_unique<HeaderComponent> (bench.engine, actions); } },
        { "mixer, two decks", [&] { return std::make_unique<Mixer2ChannelsComponent> (bench.engine); } },
        { "mixer, four decks",
          [&] { return std::make_unique<Mixer4ChannelsComponent> (bench.engine, true); } },
        { "ghost mixer", [&] { return std::make_unique<GhostMixerComponent> (bench.engine); } },
        { "effects", [&] { return std::make_unique<Fx4DecksComponent> (bench.engine); } },
        { "pads", [&] { return std::make_unique<Slicegate4DecksComponent> (bench.engine); } },
        { "browser", [&] { return std::make_unique<SongManager> (bench.engine, bench.session.get()); } },
        { "pages", [&] { return std::make_unique<GlobalComponent> (bench.engine); } },
        { "dialogs and lists", [] { return std::make_unique<Dialog>(); } }
    };
    for (int deck = 0; deck < deckCount; ++deck)
    {
        const auto letter = std::string (1, static_cast<char> ('A' + deck));
        views["deck " + letter] = [&, deck]
        {
            return std::make_unique<DeckComponent> (bench.engine, deck, bench.editor->loadDialog(),
                                                    bench.session->preferences());
        };
        for (int panel = 0; panel < UtilityPanels::count; ++panel)
            if (UtilityPanels::isOffered (panel) && panel != UtilityPanels::empty)
                views[std::string (UtilityPanels::names[static_cast<size_t> (panel)]) + " " + letter] =
                    [&, deck, panel] { return UtilityPanels::make (panel, bench.engine, deck); };
    }

    std::map<std::string_view, std::string> shownBy;
    for (const auto& [name, make] : views)
    {
        skin::takeRequests();
        const auto view = make();
        if (view->getWidth() == 0)
            view->setSize (1000, 240);
        view->setVisible (true);
        for (const auto lit : { false, true })
        {
            for (auto* component : descendants (*view))
                if (auto* button = dynamic_cast<PXTextButton*> (component))
                    button->setToggleState (lit, juce::dontSendNotification);
            UiBench::picture (*view, name);
        }
        for (const auto strip : skin::takeRequests())
            shownBy.emplace (strip, name);
    }

    std::map<std::string_view, std::string> waitsFor;
    for (const auto& [panel, strips] : waiting)
        for (const auto& strip : strips)
            waitsFor.emplace (strip, panel);
    for (const auto& row : skin::table)
    {
        const auto isShown = shownBy.contains (row.name()), isWaiting = waitsFor.contains (row.name());
        EXPECT_NE (isShown, isWaiting)
            << row.name() << (isShown ? " is shown by " + shownBy[row.name()] : " is shown by nothing")
            << (isWaiting ? ", waits for " + waitsFor[row.name()] : "");
        waitsFor.erase (row.name());
    }
    for (const auto& [strip, panel] : waitsFor)
        ADD_FAILURE() << strip << " is not in the skin";
}
