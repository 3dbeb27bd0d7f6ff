#include "UiBench.h"
#include "library/exchange/ListSummary.h"
#include "library/songs/SongList.h"
#include "skin/Skin.h"
#include "support/language/Language.h"
#include "ui/decks/UtilityPanels.h"
#include "ui/preferences/Preferences.h"
#include "ui/preferences/SettingRow.h"
#include "ui/widgets/PXFxSlider.h"
#include "ui/widgets/PXTabBarButton.h"

#include <gtest/gtest.h>

#include <typeindex>

namespace
{
/** Puts English back in use after a test. */
struct English
{
    ~English() { LanguageInUse::set (Language::all ({})[0]); }
};

std::string nameOf (const juce::Component& c)
{
    return (juce::String (typeid (c).name()) + " " + c.getComponentID() + c.getName()).toStdString();
}

/** True for views that lie over others by intent: the block between the decks reaches into the header's middle, where that is empty, and
    the ghost mixer covers the block's last three rows. */
bool mayOverlap (const juce::Component& one, const juce::Component& other)
{
    const auto is = [&] (auto* type)
    {
        using Type = std::remove_pointer_t<decltype (type)>;
        return dynamic_cast<const Type*> (&one) != nullptr || dynamic_cast<const Type*> (&other) != nullptr;
    };
    return is (static_cast<juce::ResizableCornerComponent*> (nullptr))
           || is (static_cast<PXTooltipComponent*> (nullptr))
           || (is (static_cast<GlobalComponent*> (nullptr))
               && (is (static_cast<HeaderComponent*> (nullptr))
                   || is (static_cast<GhostMixerComponent*> (nullptr))));
}

/** Every tab stands beside the others; JUCE's own line behind the front one does not count. */
void expectTabsTidy (juce::Component& bar)
{
    int right = 0;
    auto& tabs = dynamic_cast<juce::TabbedButtonBar&> (bar);
    for (int i = 0; i < tabs.getNumTabs(); ++i)
    {
        const auto* tab = tabs.getTabButton (i);
        EXPECT_TRUE (tab->isVisible() && tab->getX() >= right && tab->getRight() <= bar.getWidth())
            << nameOf (*tab);
        right = tab->getRight();
    }
}

/** No visible child lies outside its parent or over one of its siblings, and a hand can hit every control. */
void expectTidy (juce::Component& parent)
{
    if (dynamic_cast<juce::TabbedButtonBar*> (&parent) != nullptr)
        return expectTabsTidy (parent);
    // A scrolled view is larger than its window.
    if (dynamic_cast<juce::Viewport*> (&parent) != nullptr
        || dynamic_cast<juce::ListBox*> (&parent) != nullptr)
        return;
    for (auto* child : parent.getChildren())
    {
        if (!child->isVisible())
            continue;
        EXPECT_TRUE (parent.getLocalBounds().contains (child->getBounds()))
            << nameOf (*child) << child->getBounds().toString() << " in " << nameOf (parent)
            << parent.getLocalBounds().toString();
        if (dynamic_cast<CommandWidget*> (child) != nullptr)
        {
            EXPECT_GE (juce::jmin (child->getWidth(), child->getHeight()), 20) << nameOf (*child);
            EXPECT_GE (juce::jmax (child->getWidth(), child->getHeight()), CommandWidget::smallestHit)
                << nameOf (*child);
        }
        for (auto* other : parent.getChildren())
        {
            if (other == child || !other->isVisible() || mayOverlap (*child, *other))
                continue;
            EXPECT_FALSE (child->getBounds().intersects (other->getBounds()))
                << nameOf (*child) << " over " << nameOf (*other) << " in " << nameOf (parent);
        }
        expectTidy (*child);
    }
}

/** Limits of squeezing a text where it is painted, so that it can still be read. */
struct Squeeze
{
    float label = 1.0f, button = 1.0f;
};

void expectFits (const juce::String& text, const juce::Font& font, int room, const juce::Component& where,
                 float squeeze = 1.0f)
{
    EXPECT_LE (font.getStringWidthFloat (text) * squeeze, static_cast<float> (room))
        << text << " in " << nameOf (where) << " " << LanguageInUse::code();
}

/** Every word on a panel, button, tab, label or row of the preferences has the room it needs. */
void expectWordsFit (juce::Component& root, const Squeeze& squeeze = {})
{
    for (auto* component : descendants (root))
    {
        if (!component->isVisible())
            continue;
        if (auto* panel = dynamic_cast<ControlPanel*> (component))
            for (const auto& label : panel->words())
            {
                expectFits (label.text, SMLookAndFeel::labelFont(), label.area.getWidth(), *panel,
                            squeeze.label);
                EXPECT_GE (label.area.getHeight(), 11) << label.text;
            }
        if (auto* button = dynamic_cast<PXTextButton*> (component))
            expectFits (button->getButtonText(), SMLookAndFeel::buttonFont (button->getHeight()),
                        button->textArea().getWidth(), *button, squeeze.button);
        if (auto* tab = dynamic_cast<PXTabBarButton*> (component))
            expectFits (tab->getButtonText(), SMLookAndFeel::labelFont(), tab->getWidth(), *tab,
                        squeeze.button);
        if (auto* toggle = dynamic_cast<juce::ToggleButton*> (component))
            expectFits (toggle->getButtonText(), SMLookAndFeel::font (SMLookAndFeel::valueSize),
                        toggle->getWidth() - 28, *toggle, squeeze.button);
        if (auto* box = dynamic_cast<juce::ComboBox*> (component))
            for (int item = 0; item < box->getNumItems(); ++item)
                expectFits (box->getItemText (item), SMLookAndFeel::buttonFont (box->getHeight()),
                            box->getWidth() - 26, *box, squeeze.button);
        if (auto* label = dynamic_cast<juce::Label*> (component);
            label != nullptr && dynamic_cast<juce::ComboBox*> (label->getParentComponent()) == nullptr)
            expectFits (label->getText(), label->getFont(),
                        label->getWidth()
                            * std::max (1, static_cast<int> (static_cast<float> (label->getHeight())
                                                             / label->getFont().getHeight())),
                        *label, squeeze.button);
        if (auto* row = dynamic_cast<SettingRow*> (component); row != nullptr && row->caption().isNotEmpty())
            expectFits (row->caption(), SMLookAndFeel::font (SMLookAndFeel::valueSize),
                        SettingRow::captionWidth - 8, *row, squeeze.button);
    }
}
}

TEST (Tidy, NothingOverlapsIsCutOffOrTooSmallForItsWordsAtAnySize)
{
    UiBench bench;
    for (const auto fourDecks : { false, true })
        for (const auto& [width, height] :
             { std::pair { 1024, 728 }, { 1280, 800 }, { 1920, 1080 }, { 2560, 1440 } })
            for (int tab = 0; tab < GlobalComponent::tabs; ++tab)
            {
                SCOPED_TRACE (testing::Message()
                              << (fourDecks ? "four " : "two ") << width << " tab " << tab);
                bench.engine.settings.editor[EditorPreference::fourDeckMode] = fourDecks ? 1 : 0;
                bench.editor->globalBlock().setCurrentTabIndex (tab);
                bench.editor->setSize (width, height);
                bench.refresh();
                expectTidy (*bench.editor);
                expectWordsFit (*bench.editor);
            }
}

TEST (Tidy, EveryUtilityPanelAndEveryEffectFitsItsPlace)
{
    UiBench bench;
    bench.editor->setSize (1024, 728);
    bench.editor->globalBlock().setCurrentTabIndex (GlobalComponent::fx);
    for (int panel = 0; panel < 8; ++panel)
    {
        SCOPED_TRACE (panel);
        bench.engine.settings.deckSetup[0].panelsLeft[0] = static_cast<int8_t> (panel);
        bench.engine.setParameter (CommandTable::numberOf ("EFFECT_SELECT_1_GROUP_A"),
                                   (static_cast<float> (panel) + 0.5f) / 10.0f);
        bench.engine.setParameter (CommandTable::numberOf ("EFFECT_SELECT_2_GROUP_A"),
                                   (static_cast<float> (panel) + 2.5f) / 10.0f);
        bench.refresh();
        expectTidy (*bench.editor);
        expectWordsFit (*bench.editor);
    }
}

TEST (Tidy, EveryControlHasATooltipAndACommandThatWorks)
{
    UiBench bench;
    bench.engine.settings.editor[EditorPreference::fourDeckMode] = 1;
    for (int tab = 0; tab < GlobalComponent::tabs; ++tab)
    {
        bench.editor->globalBlock().setCurrentTabIndex (tab);
        bench.refresh();
        for (auto* component : descendants (*bench.editor))
        {
            auto* widget = dynamic_cast<CommandWidget*> (component);
            if (widget == nullptr)
                continue;
            auto* tip = dynamic_cast<juce::TooltipClient*> (component);
            ASSERT_NE (tip, nullptr) << nameOf (*component);
            EXPECT_FALSE (component->getWantsKeyboardFocus()) << nameOf (*component);
            EXPECT_TRUE (tip->getTooltip().isNotEmpty()) << nameOf (*component);
            if (widget->command().isBound())
                EXPECT_FALSE (CommandTable::isUnbuilt (widget->commandNumber())) << nameOf (*component);
            else
                EXPECT_TRUE (hasOwnAction (*component)) << nameOf (*component);
        }
    }
}

TEST (Tidy, SongsAreCountedInTheLanguageInUseAndInFilesInEnglish)
{
    const English afterwards;
    const SongList none;
    EXPECT_EQ (listSummary (none), "0 songs, 0:00, 0.00 B");
    for (const auto& language : Language::all ({ juce::File (PX_LANGUAGES_DIR) }))
    {
        ASSERT_TRUE (LanguageInUse::set (language)) << language.code;
        EXPECT_EQ (listSummaryOfFile (none), "0 songs, 0:00, 0.00 B") << language.code;
        EXPECT_EQ (listSummary (none).upToFirstOccurrenceOf (",", false, false),
                   trPlural ("%1 song", "%1 songs", 0))
            << language.code;
        if (language.code == "fr")
        {
            EXPECT_EQ (listSummary (none), "0 morceau, 0:00, 0.00 B");
        }
    }
}

TEST (Tidy, EveryTextFitsItsPlaceInEveryLanguage)
{
    const English afterwards;
    // Squeezed by a fifth a word is still read with ease; below that it is cut off.
    constexpr Squeeze byAFifth { 0.75f, 0.8f };
    const auto languages = Language::all ({ juce::File (PX_LANGUAGES_DIR) });
    ASSERT_EQ (languages.size(), 6u);
    UiBench bench;
    for (const auto& language : languages)
    {
        ASSERT_TRUE (LanguageInUse::set (language)) << language.code;
        for (const auto scale : { 100, 200 })
        {
            SCOPED_TRACE (testing::Message() << language.code << " at " << scale << " %");
            bench.engine.settings.editor[EditorPreference::fourDeckMode] = 1;
            bench.reopen();
            bench.editor->setScale (scale);
            bench.editor->setSize (1024 * scale / 100, 728 * scale / 100);
            for (int tab = 0; tab < GlobalComponent::tabs; ++tab)
            {
                bench.editor->globalBlock().setCurrentTabIndex (tab);
                bench.refresh();
                expectWordsFit (*bench.editor, byAFifth);
            }
            for (int panel = 0; panel < UtilityPanels::count; ++panel)
            {
                bench.engine.settings.deckSetup[0].panelsLeft[0] = static_cast<int8_t> (panel);
                bench.refresh();
                expectWordsFit (bench.editor->deck (0), byAFifth);
            }
        }
        HeaderActions actions;
        actions.session = bench.session.get();
        actions.manual = [] {};
        actions.layoutChanged = [] {};
        actions.setScale = [] (int) {};
        actions.scale = [] { return 100; };
        Preferences preferences (bench.engine, actions, [] {});
        for (int page = 0; page < preferences.pageTexts().size(); ++page)
        {
            SCOPED_TRACE (preferences.pageTexts()[page]);
            preferences.showPage (page);
            if (auto* view = dynamic_cast<PollingView*> (&preferences.pageAt (page)))
                view->refresh();
            expectWordsFit (preferences, byAFifth);
            UiBench::picture (preferences, "preferences-" + language.code + "-" + juce::String (page));
        }
    }
}
