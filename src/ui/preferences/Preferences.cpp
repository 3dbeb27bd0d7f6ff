#include "ui/preferences/Preferences.h"

#include "engine/CPlatterdex.h"
#include "skin/Palette.h"
#include "support/language/Translate.h"
#include "ui/plugins/VstPluginsPreferencesPage.h"
#include "ui/preferences/AboutPreferencesPage.h"
#include "ui/preferences/FileManagementPreferencesPage.h"
#include "ui/preferences/GlobalSettingsPreferencesPage.h"
#include "ui/preferences/HelpPreferencesPage.h"
#include "ui/preferences/LayoutPreferencesPage.h"
#include "ui/preferences/PageWords.h"
#include "ui/timecode/CDControlGeneratorPreferencesPage.h"
#include "ui/timecode/TimecodePreferencesPage.h"

namespace
{
constexpr const char* title = N_ ("Preferences");
constexpr int margin = 8, fieldHeight = 26, buttonHeight = 24, buttonWidth = 130;
constexpr float frameCorner = 3.0f, frameWidth = 2.0f;
}

Preferences::Preferences (CPlatterdex& e, const HeaderActions& actions, std::function<void()> close)
    : engine (e)
{
    const auto add = [this] (const juce::String& text, std::function<std::unique_ptr<juce::Component>()> make)
    {
        pages.push_back ({ text, std::move (make), nullptr });
    };
    add (tr ("- Global Settings"),
         [this, actions] { return std::make_unique<GlobalSettingsPreferencesPage> (engine, actions); });
    add (tr ("- Layout"),
         [this, actions] { return std::make_unique<LayoutPreferencesPage> (engine, actions); });
    add (tr ("- File Management"),
         [this] { return std::make_unique<FileManagementPreferencesPage> (engine); });
    add (tr ("- Timecode"), [this] { return std::make_unique<TimecodePreferencesPage> (engine, 1); });
    add (tr ("- Control CD Generator"),
         [this] { return std::make_unique<CDControlGeneratorPreferencesPage> (engine); });
    if (auto* const slots = VstSlots::of (engine))
        add (tr ("- VST Plugins"), [slots] { return std::make_unique<VstPluginsPreferencesPage> (*slots); });
    for (const auto& page : actions.pages)
        if (page.make != nullptr)
            pages.push_back ({ "- " + tr (page.title), page.make, nullptr });
    add (tr ("- About"), [] { return std::make_unique<AboutPreferencesPage>(); });
    add (tr ("- Help"), [actions] { return std::make_unique<HelpPreferencesPage> (actions.manual); });

    searchField.setComponentID ("_searchField");
    searchField.setTextToShowWhenEmpty (tr ("Search"), palette::label);
    searchField.setTitle (tr ("Search in the preferences"));
    searchField.setTooltip (tr ("Finds the pages and controls that have all of the words."));
    searchField.setIndents (6, 5);
    searchField.onTextChange = [this] { search (searchField.getText()); };
    searchField.onReturnKey = [this] { list.grabKeyboardFocus(); };
    list.onSelect = [this] (int page) { showPage (page); };
    defaults.setComponentID ("_defaultSettingsButton");
    defaults.setTooltip (tr ("Puts the settings of this page back as they were at first."));
    defaults.onClick = [this] { restoreDefaults(); };
    closeButton.setComponentID ("_closeButton");
    closeButton.setTooltip (tr ("Closes the preferences. Every change acts at once."));
    closeButton.onClick = std::move (close);
    viewport.setScrollBarsShown (true, false);
    for (auto* each :
         std::initializer_list<juce::Component*> { &searchField, &list, &viewport, &defaults, &closeButton })
        addAndMakeVisible (*each);
    // The keyboard goes from the list to the page that it shows.
    searchField.setExplicitFocusOrder (1);
    list.setExplicitFocusOrder (2);
    viewport.setExplicitFocusOrder (3);
    setOpaque (true);
    setWantsKeyboardFocus (true);
    setSize (width, height);
    search ({});
    list.select (0);
}

Preferences::~Preferences()
{
    viewport.setViewedComponent (nullptr, false);
}

void Preferences::open (ToolWindows& windows, juce::Component& opener, CPlatterdex& engine,
                        const HeaderActions& actions)
{
    windows.open (tr (title), opener,
                  [&engine, &actions] (const std::function<void()>& close)
                  { return std::make_unique<Preferences> (engine, actions, close); });
}

juce::StringArray Preferences::pageTexts() const
{
    juce::StringArray texts;
    for (const auto& page : pages)
        texts.add (page.text);
    return texts;
}

juce::Component& Preferences::pageAt (int page)
{
    auto& entry = pages[static_cast<size_t> (page)];
    if (entry.component == nullptr)
        entry.component = entry.make();
    return *entry.component;
}

void Preferences::showPage (int page)
{
    if (page == shown)
        return;
    auto& component = pageAt (page);
    shown = page;
    viewport.setViewedComponent (&component, false);
    component.setVisible (true);
    viewport.setViewPosition ({});
    viewport.setTitle (pages[static_cast<size_t> (page)].text);
    defaults.setEnabled (dynamic_cast<RestorablePage*> (&component) != nullptr);
    list.select (page);
    fitPage();
    repaint();
}

void Preferences::showPageNamed (const char* pageTitle)
{
    if (const auto page = pageTexts().indexOf ("- " + tr (pageTitle)); page >= 0)
    {
        searchField.clear();
        showPage (page);
    }
}

void Preferences::search (const juce::String& words)
{
    std::vector<int> found;
    for (int page = 0; page < static_cast<int> (pages.size()); ++page)
        if (words.trim().isEmpty() || PageWords::holds (pages[static_cast<size_t> (page)].text, words)
            || PageWords::holds (PageWords::of (pageAt (page)), words))
            found.push_back (page);
    list.show (pageTexts(), found);
    if (!found.empty())
    {
        const auto isShown = std::find (found.begin(), found.end(), shown) != found.end();
        const auto page = isShown ? shown : found.front();
        showPage (page);
        list.select (page);
        if (const auto places = PageWords::find (pageAt (page), words); !places.empty())
            viewport.setViewPosition (0, std::max (0, places.front().getY() - viewport.getHeight() / 3));
    }
    repaint();
}

void Preferences::restoreDefaults()
{
    if (engine.environment.prompts == nullptr)
        return;
    engine.environment.prompts->askYesNo (
        tr ("Confirm Restore"),
        tr ("Are you sure you want to restore default settings for the selected preferences page?"),
        [here = SafePointer (this), page = shown] (bool yes)
        {
            if (!yes || here == nullptr)
                return;
            if (auto* restorable = dynamic_cast<RestorablePage*> (&here->pageAt (page)))
                restorable->restoreDefaults();
        });
}

void Preferences::fitPage()
{
    if (shown < 0)
        return;
    // A page keeps the height it came with where the dialog is lower, and fills it where it is higher.
    auto& component = pageAt (shown);
    auto& properties = component.getProperties();
    if (!properties.contains ("height"))
        properties.set ("height", component.getHeight());
    const auto least = static_cast<int> (properties["height"]);
    const auto pageWidth =
        viewport.getWidth() - (least > viewport.getHeight() ? viewport.getScrollBarThickness() : 0);
    component.setSize (pageWidth, std::max (least, viewport.getHeight()));
}

void Preferences::paint (juce::Graphics& g)
{
    g.fillAll (palette::ground);
}

void Preferences::paintOverChildren (juce::Graphics& g)
{
    if (shown < 0)
        return;
    auto& page = pageAt (shown);
    const juce::Graphics::ScopedSaveState state (g);
    g.reduceClipRegion (viewport.getBounds());
    g.setColour (palette::accent);
    for (const auto& place : PageWords::find (page, searchField.getText()))
        g.drawRoundedRectangle (getLocalArea (&page, place).toFloat(), frameCorner, frameWidth);
}

void Preferences::resized()
{
    auto area = getLocalBounds().reduced (margin);
    auto foot = area.removeFromBottom (buttonHeight);
    defaults.setBounds (foot.removeFromLeft (buttonWidth));
    closeButton.setBounds (foot.removeFromRight (buttonWidth));
    area.removeFromBottom (margin);
    auto left = area.removeFromLeft (PreferencesList::width);
    area.removeFromLeft (margin);
    searchField.setBounds (left.removeFromTop (fieldHeight));
    left.removeFromTop (margin);
    list.setBounds (left);
    viewport.setBounds (area);
    fitPage();
}
