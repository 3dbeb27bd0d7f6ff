#include "ui/walk/ControlWalk.h"
#include "UiBench.h"
#include "shared/ScriptedPrompts.h"
#include "skin/Palette.h"
#include "ui/decks/BeatStepField.h"
#include "ui/preferences/Preferences.h"
#include "ui/sampler/SamplerPad.h"
#include "ui/widgets/PXImageButton.h"
#include "ui/widgets/PXSlider.h"
#include "ui/widgets/PXTabBarButton.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <set>

namespace
{
using Key = juce::KeyPress;
const Key tab (Key::tabKey), back (Key::tabKey, juce::ModifierKeys::shiftModifier, 0),
    escape (Key::escapeKey), space (Key::spaceKey), enter (Key::returnKey);

juce::String nameOf (const juce::Component& component)
{
    return juce::String (typeid (component).name()) + " " + component.getName() + component.getComponentID();
}

/** A hand with a mouse could use it. */
bool isControl (juce::Component& component)
{
    if (dynamic_cast<juce::ScrollBar*> (&component) != nullptr
        || dynamic_cast<juce::Slider*> (component.getParentComponent()) != nullptr)
        return false;
    return dynamic_cast<CommandWidget*> (&component) != nullptr
           || dynamic_cast<juce::Button*> (&component) != nullptr
           || dynamic_cast<juce::Slider*> (&component) != nullptr
           || dynamic_cast<juce::ComboBox*> (&component) != nullptr
           || dynamic_cast<juce::TextEditor*> (&component) != nullptr
           || dynamic_cast<SamplerPad*> (&component) != nullptr;
}

bool isSeen (const juce::Component& component, const juce::Component& root)
{
    for (auto* each = &component; each != &root; each = each->getParentComponent())
        if (each == nullptr || !each->isVisible() || !each->isEnabled() || each->getBounds().isEmpty())
            return false;
    return true;
}

bool isInRing (const juce::Component& component, const juce::Component& root)
{
    for (auto* each = component.getParentComponent(); each != nullptr && each != &root;
         each = each->getParentComponent())
        if (each->isKeyboardFocusContainer())
            return true;
    return false;
}

/** The words of a screen reader for it: its title, else a button's text or, on a button of pictures, its tooltip. */
juce::String spokenName (juce::Component& component)
{
    if (const auto* button = dynamic_cast<juce::Button*> (&component);
        button != nullptr && component.getTitle().isEmpty())
        return button->getButtonText();
    if (auto* button = dynamic_cast<PXImageButton*> (&component);
        button != nullptr && component.getTitle().isEmpty())
        return button->getTooltip();
    return component.getTitle();
}

/** Walks once round and expects to meet every control that is seen, each once, each with a name. */
size_t expectWholeRound (ControlWalk& walk, juce::Component& root)
{
    std::set<juce::Component*> met;
    for (size_t i = 0; i < walk.stops().size(); ++i)
    {
        walk.go (1);
        if (walk.current() == nullptr || !met.insert (walk.current()).second)
        {
            ADD_FAILURE() << "the round comes back too early";
            break;
        }
        EXPECT_TRUE (spokenName (*walk.current()).isNotEmpty()) << nameOf (*walk.current());
    }
    for (auto* component : descendants (root))
    {
        const auto isMissing = isControl (*component) && isSeen (*component, root)
                               && !isInRing (*component, root) && !met.contains (component);
        EXPECT_FALSE (isMissing) << nameOf (*component) << " can't be reached";
    }
    walk.leave();
    return met.size();
}
}

TEST (ControlWalk, ReachesEveryControlOfTheWindowByItsName)
{
    UiBench bench;
    bench.engine.settings.editor[EditorPreference::fourDeckMode] = 1;
    auto& walk = bench.editor->controlWalk();
    for (int page = 0; page < GlobalComponent::tabs; ++page)
        for (int panel = 0; panel < 8; ++panel)
        {
            SCOPED_TRACE (testing::Message() << "page " << page << " panel " << panel);
            bench.editor->globalBlock().setCurrentTabIndex (page);
            bench.engine.settings.deckSetup[0].panelsLeft[0] = static_cast<int8_t> (panel);
            bench.refresh();
            EXPECT_GT (expectWholeRound (walk, *bench.editor->headerStrip().getParentComponent()), 60u);
        }
}

TEST (ControlWalk, ReachesEveryControlOfThePreferencesByItsName)
{
    UiBench bench (std::make_shared<ScriptedPrompts>());
    const HeaderActions actions;
    Preferences dialog (bench.engine, actions, [] {});
    ControlWalk walk (dialog);
    for (int page = 0; page < dialog.pageTexts().size(); ++page)
    {
        SCOPED_TRACE (dialog.pageTexts()[page]);
        dialog.showPage (page);
        EXPECT_GE (expectWholeRound (walk, dialog), 3u);
    }
}

TEST (ControlWalk, LeavesTheKeysToTheDecksUntilItIsAsked)
{
    UiBench bench;
    auto& editor = *bench.editor;
    auto& walk = editor.controlWalk();
    const auto expectNobodyWants = [&]
    {
        for (auto* component : descendants (editor))
        {
            const auto takesKeys =
                dynamic_cast<CommandWidget*> (component) != nullptr && component->getWantsKeyboardFocus();
            EXPECT_FALSE (takesKeys) << nameOf (*component);
        }
    };
    expectNobodyWants();
    EXPECT_TRUE (editor.keyPressed (tab)) << "goes to the songs";
    EXPECT_EQ (walk.current(), nullptr);

    EXPECT_TRUE (editor.keyPressed (back));
    auto* const first = walk.current();
    ASSERT_NE (first, nullptr);
    EXPECT_TRUE (first->getWantsKeyboardFocus());
    EXPECT_TRUE (editor.keyPressed (tab));
    auto* const second = walk.current();
    EXPECT_NE (second, first);
    EXPECT_FALSE (first->getWantsKeyboardFocus());
    EXPECT_TRUE (editor.keyPressed (back));
    EXPECT_EQ (walk.current(), first);
    // Keys that no control takes play on.
    EXPECT_FALSE (first->keyPressed (Key ('W')));
    EXPECT_TRUE (editor.keyPressed (Key ('W')));

    EXPECT_TRUE (editor.keyPressed (escape));
    EXPECT_EQ (walk.current(), nullptr);
    expectNobodyWants();
    EXPECT_TRUE (editor.keyPressed (back));
    EXPECT_EQ (walk.current(), first) << "goes on where it ended";
    press (bench.find<PXSlider> (editor, "_crossfaderSlider"));
    editor.mouseDown (mouseAt (bench.find<PXSlider> (editor, "_crossfaderSlider"), {}));
    EXPECT_EQ (walk.current(), nullptr) << "a click gives the keys back";
    expectNobodyWants();
}

TEST (ControlWalk, EndsWithItsControl)
{
    juce::Component root;
    auto one = std::make_unique<juce::TextButton> ("one");
    juce::TextButton two ("two"), off ("off");
    root.setSize (300, 100);
    for (auto* button : { one.get(), &two, &off })
        root.addAndMakeVisible (button);
    one->setBounds (0, 0, 100, 20);
    two.setBounds (100, 0, 100, 20);
    off.setBounds (200, 0, 100, 20);
    off.setEnabled (false);
    ControlWalk walk (root);
    std::vector<juce::Component*> told;
    walk.onStop = [&told] (juce::Component* stop) { told.push_back (stop); };
    walk.go (-1);
    EXPECT_EQ (walk.current(), &two) << "what is switched off is passed over";
    walk.go (1);
    EXPECT_EQ (walk.current(), one.get());
    one.reset();
    EXPECT_EQ (walk.current(), nullptr);
    walk.go (1);
    EXPECT_EQ (walk.current(), &two);
    two.setVisible (false);
    EXPECT_EQ (walk.current(), nullptr);
    walk.go (1);
    EXPECT_EQ (walk.current(), nullptr) << "there is nothing left";
    EXPECT_EQ (told.back(), nullptr);
}

TEST (ControlWalk, KeysActAsTheHandDoes)
{
    UiBench bench;
    bench.load (bench.halfLoudTrack(), 0);
    auto& editor = *bench.editor;
    auto& engine = bench.engine;
    auto& deck = editor.deck (0);

    // A held command acts as long as the key is down, and once.
    auto& cue = bench.find<PXImageButton> (deck, "_cueButton");
    EXPECT_TRUE (cue.keyPressed (space));
    EXPECT_TRUE (cue.isDown());
    EXPECT_TRUE (cue.keyPressed (space)) << "a repeat";
    cue.keyStateChanged (false);
    EXPECT_FALSE (cue.isDown());

    auto& play = bench.find<PXImageButton> (deck, "_playButton");
    EXPECT_TRUE (play.keyPressed (enter));
    play.keyPressed (enter); // repeats do not stop it again
    play.keyPressed (enter);
    play.keyStateChanged (false);
    bench.render();
    EXPECT_GT (engine.getParameter (CommandTable::numberOf ("PLAY_PAUSE_A")), 0.0f);

    auto& fader = bench.find<PXSlider> (editor, "_crossfaderSlider");
    const auto before = engine.getParameter (CommandTable::numberOf ("CROSSFADER"));
    EXPECT_TRUE (fader.keyPressed (Key (Key::rightKey)));
    const auto after = engine.getParameter (CommandTable::numberOf ("CROSSFADER"));
    EXPECT_NEAR (after - before, PXSlider::wheelStep, 1e-4);
    EXPECT_TRUE (fader.keyPressed (Key (Key::rightKey, juce::ModifierKeys::shiftModifier, 0)));
    EXPECT_NEAR (engine.getParameter (CommandTable::numberOf ("CROSSFADER")) - after,
                 PXSlider::wheelStep * PXSlider::fine, 1e-4);
    EXPECT_TRUE (fader.keyPressed (Key (Key::deleteKey)));
    EXPECT_NEAR (engine.getParameter (CommandTable::numberOf ("CROSSFADER")), 0.5f, 1e-4);
    EXPECT_FALSE (fader.keyPressed (space)) << "plays deck A";

    auto& size = bench.find<BeatStepField> (deck);
    const auto text = size.text();
    EXPECT_TRUE (size.keyPressed (Key (Key::upKey)));
    EXPECT_NE (size.text(), text);
    EXPECT_TRUE (size.keyPressed (Key (Key::downKey)));
    EXPECT_EQ (size.text(), text);

    auto& block = editor.globalBlock();
    block.setCurrentTabIndex (GlobalComponent::mixer);
    auto* const fx =
        dynamic_cast<PXTabBarButton*> (block.getTabbedButtonBar().getTabButton (GlobalComponent::fx));
    ASSERT_NE (fx, nullptr);
    EXPECT_TRUE (fx->keyPressed (space));
    EXPECT_EQ (block.getCurrentTabIndex(), GlobalComponent::fx);
}

TEST (ControlWalk, TicksABoxOnceAKey)
{
    juce::Component root;
    juce::ToggleButton box ("box");
    juce::TextEditor field;
    root.setSize (300, 100);
    root.addAndMakeVisible (box);
    root.addAndMakeVisible (field);
    box.setBounds (0, 0, 100, 20);
    field.setBounds (0, 30, 100, 20);
    auto clicks = 0;
    box.onClick = [&clicks] { ++clicks; };
    ControlWalk walk (root);
    EXPECT_FALSE (walk.press (space)) << "it is nowhere yet";
    EXPECT_TRUE (walk.go (1));
    ASSERT_EQ (walk.current(), &box);
    for (int repeat = 0; repeat < 3; ++repeat)
        EXPECT_TRUE (walk.press (space));
    EXPECT_FALSE (walk.press (Key ('W')));
    juce::MessageManager::getInstance()->runDispatchLoopUntil (50);
    EXPECT_EQ (clicks, 1);
    EXPECT_TRUE (box.getToggleState());
    EXPECT_TRUE (walk.go (1));
    EXPECT_FALSE (walk.press (space)) << "is typed";
}

TEST (ControlWalk, GoesIntoWhatScrollsAndShowsWhereItIs)
{
    juce::Component root, page;
    juce::Viewport viewport;
    juce::TextButton top ("top"), bottom ("bottom");
    root.setSize (300, 100);
    page.setSize (280, 1000);
    viewport.setViewedComponent (&page, false);
    root.addAndMakeVisible (viewport);
    viewport.setBounds (0, 0, 300, 100);
    ControlWalk walk (root);
    EXPECT_TRUE (walk.go (1));
    EXPECT_EQ (walk.current(), &viewport) << "a text is scrolled";
    walk.leave();
    for (auto* button : { &top, &bottom })
        page.addAndMakeVisible (button);
    top.setBounds (0, 0, 100, 20);
    bottom.setBounds (0, 900, 100, 20);
    EXPECT_TRUE (walk.go (1));
    EXPECT_EQ (walk.current(), &top);
    EXPECT_TRUE (walk.go (1));
    EXPECT_EQ (walk.current(), &bottom);
    EXPECT_TRUE (viewport.getViewArea().contains (bottom.getBounds()));
    // The ring goes with the page when it is scrolled, and away with its control.
    const auto* const ring = root.getChildren().getLast();
    EXPECT_TRUE (ring->getBounds().contains (root.getLocalArea (&bottom, bottom.getLocalBounds())));
    viewport.setViewPosition (0, 850);
    EXPECT_TRUE (ring->getBounds().contains (root.getLocalArea (&bottom, bottom.getLocalBounds())));
    EXPECT_TRUE (ring->isVisible());
    viewport.setViewPosition (0, 0);
    EXPECT_FALSE (ring->isVisible());
    EXPECT_TRUE (walk.go (1));
    EXPECT_EQ (walk.current(), &top);
    EXPECT_TRUE (viewport.getViewArea().contains (top.getBounds()));
    walk.leave();
    viewport.setViewedComponent (nullptr, false);
}

TEST (ControlWalk, TheRingIsSeenOnWhateverLiesBelow)
{
    // Its two lines, against each other and against every ground: one of them stands out by 3 to 1.
    EXPECT_GE (palette::contrast (palette::accent, palette::ink), 3.0);
    for (const auto ground : { palette::ground, palette::panel, palette::raised, palette::well, palette::line,
                               palette::quiet, palette::selected, palette::danger, palette::accent,
                               palette::decks[0], palette::decks[1], palette::decks[2], palette::decks[3] })
        EXPECT_GE (
            std::max (palette::contrast (palette::accent, ground), palette::contrast (palette::ink, ground)),
            3.0)
            << ground.toString();
    UiBench bench;
    bench.refresh();
    auto& walk = bench.editor->controlWalk();
    const auto plain = UiBench::picture (*bench.editor, "walk-before");
    walk.go (1);
    const auto ringed = UiBench::picture (*bench.editor, "walk-ring");
    const auto area =
        bench.editor->getLocalArea (walk.current(), walk.current()->getLocalBounds()).expanded (1);
    EXPECT_EQ (ringed.getPixelAt (area.getCentreX(), area.getY() - 1), palette::accent);
    EXPECT_NE (plain.getPixelAt (area.getCentreX(), area.getY() - 1), palette::accent);
}
