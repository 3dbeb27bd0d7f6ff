#include "ui/CPlatterdexVstEditor.h"

#include "engine/CPlatterdex.h"
#include "engine/CommandTitle.h"
#include "session/Session.h"
#include "skin/Palette.h"
#include "support/language/Translate.h"
#include "text/FallbackFonts.h"
#include "ui/KeyCard.h"
#include "ui/KeyRepeat.h"
#include "ui/ParameterList.h"
#include "ui/header/TooltipOffer.h"
#include "ui/look/TimeText.h"
#include "ui/plugins/VstPluginsPreferencesPage.h"
#include "ui/preferences/Preferences.h"
#include "ui/timecode/CDControlGeneratorPreferencesPage.h"
#include "ui/timecode/TimecodePreferencesPage.h"

// The editor's parts and their places; its size is in CPlatterdexVstEditorSize.cpp, keys and mouse in CPlatterdexVstEditorHand.cpp.

namespace
{
constexpr int startWidth = 1280, startHeight = 800;
constexpr const char *keysTitle = N_ ("Keys"), *parametersTitle = N_ ("All parameters");
constexpr juce::uint32 newsMs = 15000;
constexpr const char* zoomName = "waveform_zoom";
}

CPlatterdexVstEditor::CPlatterdexVstEditor (CPlatterdex& e, Session* shared,
                                            std::function<void()> audioSettings,
                                            std::vector<EditorPage> pages)
    : AudioProcessorEditor (e),
      engine (e),
      session (shared),
      preferences (session != nullptr ? session->preferences() : passing),
      scale (preferences),
      loader (e, preferences),
      headerActions (actions (std::move (audioSettings), std::move (pages))),
      waves ([&e] { return std::make_unique<StackedWaves> (e); }),
      header ([this] { return std::make_unique<HeaderComponent> (engine, headerActions); }),
      decks { makeDeck (0), makeDeck (1), makeDeck (2), makeDeck (3) },
      global ([&e] { return std::make_unique<GlobalComponent> (e); }),
      ghostMixer ([&e] { return std::make_unique<GhostMixerComponent> (e); }),
      browser ([this] { return std::make_unique<SongManager> (engine, session); }),
      corner (this, getConstrainer()),
      tooltip (content, [&e] { return e.settings.editor[EditorPreference::showTooltips] != 0; }),
      keyboard (e)
{
    setOpaque (true);
    setWantsKeyboardFocus (true);
    keyboard.onAction = [this] (KeyAction action, int deck) { act (action, deck); };
    keyboard.onDeck = [this] (int deck) { touch (deck); };
    walk.onStop = [this] (juce::Component* control) { tooltip.showOf (control); };
    loader.onLeft = [this] (int count)
    {
        header->newsLine().tell (
            trPlural ("%1 TRACK FOUND NO STOPPED DECK", "%1 TRACKS FOUND NO STOPPED DECK", count));
    };
    tooltip.keptFree = [this] { return runningWaves(); };
    tooltip.wordsOf = [] (int command)
    {
        const auto key = keyOfCommand (command);
        return commandTitle (command) + (key.isEmpty() ? key : "  [" + key + "]");
    };
    tools.onHelp = [this] { helpWithWhatIsMeant(); };
    wavesShown = preferences.get (wavesName) == "1";
    content.setOpaque (true);
    content.addMouseListener (this, true);
    adopt();
    addAndMakeVisible (content); // which looks at its parts at once
    content.addChildComponent (noticeBar);
    addAndMakeVisible (corner); // not scaled, so that it keeps to the hand

    engine.listeners.add (*this);
    LanguageInUse::addListener (*this);
    setResizable (true, false);
    limitSize();
    setSize (scale.scaled (startWidth), scale.scaled (startHeight));
    followArrangement();
    touch (0);
    if (const auto kept = preferences.get (zoomName); kept.isNotEmpty())
        zoom->set (kept.getIntValue());
    keptZoom = zoom->step;
    TooltipOffer::make (engine, preferences, header->newsLine());
}

CPlatterdexVstEditor::~CPlatterdexVstEditor()
{
    LanguageInUse::removeListener (*this);
    engine.listeners.remove (*this);
    isArranged = false; // what closes now arranges nothing
    engine.editorBeingDeleted (this);
}

RemadePart<DeckComponent> CPlatterdexVstEditor::makeDeck (int deck)
{
    return RemadePart<DeckComponent> (
        [this, deck] { return std::make_unique<DeckComponent> (engine, deck, loader, preferences); });
}

/** Puts the parts that have been made into the window. */
void CPlatterdexVstEditor::adopt()
{
    content.addChildComponent (*waves);
    content.addAndMakeVisible (*header);
    header->newsLine().onRecorded = [this] (const juce::File& file, double seconds)
    { tellOfRecording (file, seconds); };
    for (const auto& strip : decks)
        content.addAndMakeVisible (*strip);
    content.addAndMakeVisible (*global);
    global->onTabChange = [this] { followArrangement(); };
    content.addAndMakeVisible (*ghostMixer);
    content.addAndMakeVisible (*browser);
    browser->onEscape = [this] { grabKeyboardFocus(); };
    browser->onOpenInWindow = [this] { showBrowserInWindow (!isBrowserInWindow()); };
}

void CPlatterdexVstEditor::buildAnew()
{
    const auto* const dialog = tools.tool<Preferences>();
    const auto page = dialog != nullptr ? dialog->shownPage() : -1;
    const auto tab = global->getCurrentTabIndex();
    tools.closeAll();
    walk.leave();
    waves.remake();
    header.remake();
    for (auto& strip : decks)
        strip.remake();
    global.remake();
    ghostMixer.remake();
    browser.remake();
    adopt();
    global->setCurrentTabIndex (tab);
    noticeBar.toFront (false);
    isArranged = false; // by the new parts
    followArrangement();
    touch (touchedDeck);
    if (page < 0)
        return;
    headerActions.preferences();
    if (auto* const opened = tools.tool<Preferences>())
        opened->showPage (page);
}

void CPlatterdexVstEditor::showPreferences (const char* title)
{
    headerActions.preferences();
    if (auto* const opened = tools.tool<Preferences>())
        opened->showPageNamed (title);
}

void CPlatterdexVstEditor::languageChanged()
{
    // The choice comes from a control of a part that goes.
    juce::MessageManager::callAsync (
        [here = SafePointer (this)]
        {
            if (here != nullptr)
                here->buildAnew();
        });
}

HeaderActions CPlatterdexVstEditor::actions (std::function<void()> audioSettings,
                                             std::vector<EditorPage> pages)
{
    HeaderActions made;
    made.preferences = [this] { Preferences::open (tools, content, engine, headerActions); };
    made.pages = std::move (pages);
    made.pages.push_back (
        { N_ ("Timecode"), [this] { TimecodePreferencesPage::open (toolWindows(), content, engine); } });
    made.pages.push_back ({ N_ ("Control CD generator"), [this]
                            { CDControlGeneratorPreferencesPage::open (toolWindows(), content, engine); } });
    if (auto* const slots = VstSlots::of (engine))
        made.pages.push_back ({ N_ ("VST Plugins"), [this, slots]
                                { VstPluginsPreferencesPage::open (toolWindows(), content, *slots); } });
    made.manual = [this] { showHelp (nullptr); };
    made.pages.push_back ({ N_ ("Manual"), made.manual });
    made.pages.push_back ({ keysTitle, [this]
                            {
                                tools.open (tr (keysTitle), content,
                                            [] (const std::function<void()>&)
                                            { return std::make_unique<KeyCard>(); });
                            } });
    made.session = session;
    // The window is ours where the audio device is.
    if (audioSettings != nullptr)
    {
        made.setFullScreen = [this] (bool full) { setFullScreen (full); };
        made.isFullScreen = [this] { return isFullScreen(); };
    }
    made.audioSettings = std::move (audioSettings);
    made.showParameters = [this] { showParameters(); };
    made.setScale = [this] (int percent) { setScale (percent); };
    made.scale = [this] { return scale.percent(); };
    made.showBrowser = [this] (bool shown) { showBrowser (shown); };
    made.showsBrowser = [this] { return browserShown; };
    made.showWaves = [this] (bool shown) { showWaves (shown); };
    made.showsWaves = [this] { return wavesShown; };
    made.layoutChanged = [this]
    {
        followArrangement();
        refreshDecks();
        if (decks[0]->lacksRoomForPanels())
            header->newsLine().tell (tr ("NO ROOM FOR ALL PANELS: A WIDER WINDOW SHOWS THEM"));
    };
    return made;
}

void CPlatterdexVstEditor::Content::paint (juce::Graphics& g)
{
    g.fillAll (palette::ground);
}

void CPlatterdexVstEditor::resized()
{
    if (!isScaling)
        wantedSize = getLocalBounds().getBottomRight().toDouble() / (scale.percent() / 100.0);
    const auto factor = scale.factorFor (getWidth(), getHeight());
    content.setTransform (juce::AffineTransform::scale (factor));
    content.setBounds (0, 0, juce::roundToInt (std::ceil (static_cast<float> (getWidth()) / factor - 0.01f)),
                       juce::roundToInt (std::ceil (static_cast<float> (getHeight()) / factor - 0.01f)));
    arrange();
}

CPlatterdexVstEditor::Arrangement CPlatterdexVstEditor::arrangement() const
{
    const auto& preferences = engine.settings.editor;
    Arrangement made;
    made.mode.fourDecks = preferences[EditorPreference::fourDeckMode] != 0;
    made.mode.ghostMixer = preferences[EditorPreference::showGhostMixer] != 0 && !global->showsMixer();
    made.mode.waves = wavesShown;
    made.mode.browser = browserShown && !isBrowserInWindow();
    made.orderABCD = preferences[EditorPreference::mixerOrderABCD] != 0;
    return made;
}

void CPlatterdexVstEditor::followArrangement()
{
    const auto next = arrangement();
    if (isArranged && next == arranged)
        return;
    const auto modeChanged = isArranged && next.mode.fourDecks != arranged.mode.fourDecks;
    arranged = next;
    isArranged = true;
    global->setMode ({ arranged.mode.fourDecks, arranged.orderABCD });
    ghostMixer->setFourDecks (arranged.mode.fourDecks);
    arrange();
    if (modeChanged && (!browserShown || isBrowserInWindow()))
        snapHeight();
}

void CPlatterdexVstEditor::arrange()
{
    if (!isArranged)
        return;
    arranged.mode.waves = wavesShown;
    arranged.mode.browser = browserShown && !isBrowserInWindow();
    EditorLayout layout (content.getWidth(), content.getHeight(), arranged.mode);
    const auto place = [] (juce::Component& view, juce::Rectangle<int> area, bool shown)
    {
        view.setBounds (area);
        view.setVisible (shown && !area.isEmpty());
    };
    place (*waves, layout.waves, true);
    place (*header, layout.header, true);
    if (layout.decks[0].getWidth() >= 1)
        for (size_t deck = 0; deck < decks.size(); ++deck)
            place (*decks[deck], layout.decks[deck], true);
    for (const auto& strip : decks)
        strip->waveformView().setHalfPace (waves->isVisible());
    place (*global, layout.global, true);
    place (*ghostMixer, layout.ghostMixer, true);
    // The notice takes the browser's first row; without a browser it lies over the last one of what is left.
    const auto hasBrowser = browserShown && !isBrowserInWindow();
    auto notice = juce::Rectangle<int> (content.getWidth(), NoticeBar::height);
    if (hasBrowser && layout.browser.getHeight() > NoticeBar::height)
        notice.setY (layout.browser.getY());
    else
        notice.setY (content.getHeight() - NoticeBar::height);
    if (noticeBar.sentence().isNotEmpty())
        layout.browser.setTop (
            std::min (layout.browser.getBottom(), layout.browser.getY() + NoticeBar::height));
    place (noticeBar, notice, noticeBar.sentence().isNotEmpty());
    if (!isBrowserInWindow())
        place (*browser, layout.browser, hasBrowser);
    corner.setBounds (layout.resizer.withPosition (getWidth() - layout.resizer.getWidth(),
                                                   getHeight() - layout.resizer.getHeight()));
}

void CPlatterdexVstEditor::setNotice (const juce::String& sentence, std::function<void()> help)
{
    noticeBar.show (sentence, std::move (help));
    arrange();
}

/** The waveforms of decks that play, which nothing may cover. */
juce::Array<juce::Rectangle<int>> CPlatterdexVstEditor::runningWaves() const
{
    juce::Array<juce::Rectangle<int>> areas;
    const auto add = [&] (const juce::Component& view)
    {
        if (view.isShowing())
            areas.add (content.getLocalArea (&view, view.getLocalBounds()));
    };
    for (int deck = 0; deck < deckCount; ++deck)
        if (decks[static_cast<size_t> (deck)]->isPlaying())
        {
            add (decks[static_cast<size_t> (deck)]->waveformView());
            add (waves->row (deck));
        }
    return areas;
}

void CPlatterdexVstEditor::expireNotice()
{
    if (noticeBar.expire (engine.environment.clock()))
        arrange();
}

void CPlatterdexVstEditor::tellOfRecording (const juce::File& file, double seconds)
{
    noticeBar.tell (tr ("Recorded %1 to %2", timeText (seconds), file.getFullPathName()),
                    engine.environment.clock() + newsMs, [file] { file.revealToUser(); });
    arrange();
}

void CPlatterdexVstEditor::showParameters()
{
    tools.open (tr (parametersTitle), *this,
                [this] (const std::function<void()>& close)
                { return std::make_unique<ParameterList> (engine, close); });
}

void CPlatterdexVstEditor::refreshDecks()
{
    for (auto& strip : decks)
        strip->refresh();
}

void CPlatterdexVstEditor::keepZoom()
{
    if (std::exchange (keptZoom, zoom->step) != zoom->step)
        preferences.set (zoomName, juce::String (keptZoom));
}

void CPlatterdexVstEditor::parentHierarchyChanged()
{
    if (getPeer() == nullptr)
        return;
    askForOneKeyRelease();
    // A window on a screen does not wait for the machine's fonts; it is painted again when one has been found.
    FallbackFonts::getInstance().searchInBackground (
        []
        {
            juce::MessageManager::callAsync (
                []
                {
                    auto& desktop = juce::Desktop::getInstance();
                    for (int i = 0; i < desktop.getNumComponents(); ++i)
                        desktop.getComponent (i)->repaint();
                });
        });
}

void CPlatterdexVstEditor::engineEvent (EngineEvent event, int index)
{
    if (event == EngineEvent::loadBegan && index >= 0 && index < deckCount)
        deck (index).clearMessage();
}

void CPlatterdexVstEditor::engineMessage (const juce::String& text, int index)
{
    if (index >= 0 && index < deckCount)
        deck (index).showMessage (text);
}
