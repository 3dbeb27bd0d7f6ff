#include "ui/CPlatterdexVstEditor.h"

#include "engine/CPlatterdex.h"
#include "engine/CommandTitle.h"
#include "session/Session.h"
#include "skin/Palette.h"
#include "support/language/Translate.h"
#include "text/FallbackFonts.h"
#include "ui/HelpTopics.h"
#include "ui/KeyCard.h"
#include "ui/KeyRepeat.h"
#include "ui/ParameterList.h"
#include "ui/header/TooltipOffer.h"
#include "ui/look/TimeText.h"
#include "ui/manual/ManualReader.h"
#include "ui/panel/PanelPaint.h"
#include "ui/plugins/VstPluginsPreferencesPage.h"
#include "ui/preferences/Preferences.h"
#include "ui/timecode/CDControlGeneratorPreferencesPage.h"
#include "ui/timecode/TimecodePreferencesPage.h"
#include "ui/window/FullScreen.h"

namespace
{
constexpr int startWidth = 1280, startHeight = 800, browserHeight = 332; ///< of a browser that comes back
constexpr const char *browserTitle = N_ ("Song Manager"), *keysTitle = N_ ("Keys"),
                     *parametersTitle = N_ ("All parameters");
constexpr juce::uint32 newsMs = 15000;
constexpr const char *zoomName = "waveform_zoom", *wavesName = "stacked_waves";

int scaled (int length, int percent)
{
    return juce::roundToInt (length * percent / 100.0);
}
}

/** Holds the browser while it stands in a window of its own. Drags begin and keys end there as in the editor. */
class CPlatterdexVstEditor::BrowserWindowContent : public juce::Component,
                                                   public juce::DragAndDropContainer,
                                                   public ToolWindowOwner
{
public:
    explicit BrowserWindowContent (CPlatterdexVstEditor& e) : editor (e)
    {
        setSize (std::max (800, editor.browser->getWidth()), std::max (500, editor.browser->getHeight()));
        addAndMakeVisible (*editor.browser);
    }

    ~BrowserWindowContent() override
    {
        removeChildComponent (&*editor.browser);
        editor.browserWindowClosed();
    }

    ToolWindows& toolWindows() override { return editor.tools; }
    void resized() override { editor.browser->setBounds (getLocalBounds()); }
    bool keyPressed (const juce::KeyPress& key) override { return editor.keyPressed (key); }

private:
    CPlatterdexVstEditor& editor;
};

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
    build();
    addAndMakeVisible (content); // which looks at its parts at once
    content.addChildComponent (noticeBar);
    addAndMakeVisible (corner); // not scaled, so that it keeps to the hand

    engine.listeners.add (*this);
    LanguageInUse::addListener (*this);
    setResizable (true, false);
    limitSize();
    setSize (scaled (startWidth, scale.percent()), scaled (startHeight, scale.percent()));
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

/** Makes the parts, with their texts in the language in use; those that are there go. */
void CPlatterdexVstEditor::build()
{
    content.addChildComponent (waves.emplace (engine));
    content.addAndMakeVisible (header.emplace (engine, headerActions));
    header->newsLine().onRecorded = [this] (const juce::File& file, double seconds)
    { tellOfRecording (file, seconds); };
    for (int deck = 0; deck < deckCount; ++deck)
    {
        auto& strip = decks[static_cast<size_t> (deck)];
        strip = std::make_unique<DeckComponent> (engine, deck, loader, preferences);
        content.addAndMakeVisible (*strip);
    }
    content.addAndMakeVisible (global.emplace (engine));
    global->onTabChange = [this] { followArrangement(); };
    content.addAndMakeVisible (ghostMixer.emplace (engine));
    content.addAndMakeVisible (browser.emplace (engine, session));
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
    build();
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

void CPlatterdexVstEditor::showBrowser (bool shown)
{
    if (shown == browserShown)
        return;
    if (!shown)
        keepHeight();
    browserShown = shown;
    arrange();
    shown ? giveHeightBack() : snapHeight();
}

void CPlatterdexVstEditor::showWaves (bool shown)
{
    if (std::exchange (wavesShown, shown) == shown)
        return;
    preferences.set (wavesName, shown ? "1" : "0");
    arrange();
    if (!browserShown || isBrowserInWindow())
        snapHeight();
    if (shown && !waves->isVisible())
        header->newsLine().tell (tr ("THE WAVES NEED A TALLER WINDOW"));
}

void CPlatterdexVstEditor::showBrowserInWindow (bool inWindow)
{
    if (inWindow == isBrowserInWindow())
        return;
    if (!inWindow)
        return tools.find (tr (browserTitle))->closeButtonPressed();
    tools.open (tr (browserTitle), content,
                [this] (const std::function<void()>&)
                {
                    auto made = std::make_unique<BrowserWindowContent> (*this);
                    browserWindow = made.get();
                    return made;
                });
    keepHeight();
    arrange();
    snapHeight();
}

void CPlatterdexVstEditor::browserWindowClosed()
{
    browserWindow = nullptr;
    if (!isArranged)
        return;
    content.addChildComponent (*browser);
    giveHeightBack();
    arrange();
}

/** The height of a window without a browser, unscaled. */
int CPlatterdexVstEditor::bareHeight() const
{
    const auto four = arranged.mode.fourDecks;
    const auto bare = EditorLayout::heightWithoutBrowser (four);
    return wavesShown ? std::max (bare, EditorLayout::heightWithWaves (four)) : bare;
}

/** Remembers the height that the browser will get back. */
void CPlatterdexVstEditor::keepHeight()
{
    if (!isFullScreen())
        heightWithBrowser = getHeight() * 100.0 / scale.percent();
}

/** Makes room for a browser that comes back, unless a hand has made some. */
void CPlatterdexVstEditor::giveHeightBack()
{
    if (isFullScreen() || getHeight() > scaled (bareHeight(), scale.percent()))
        return;
    const auto height =
        heightWithBrowser > 0.0 ? juce::roundToInt (heightWithBrowser) : bareHeight() + browserHeight;
    setSize (getWidth(), scaled (height, scale.percent()));
}

void CPlatterdexVstEditor::snapHeight()
{
    if (!isFullScreen())
        setSize (getWidth(), scaled (bareHeight(), scale.percent()));
}

/** The room for the editor on its screen, less the frame of its window; empty without a screen. */
juce::Rectangle<int> CPlatterdexVstEditor::screenRoom() const
{
    if (!isShowing())
        return {};
    const auto* display = juce::Desktop::getInstance().getDisplays().getDisplayForRect (getScreenBounds());
    auto* window = getTopLevelComponent();
    if (display == nullptr || window->getPeer() == nullptr)
        return {};
    juce::BorderSize<int> frame;
    if (const auto known = window->getPeer()->getFrameSizeIfPresent())
        frame = *known;
    const auto inside = getScreenBounds(), outside = window->getScreenBounds();
    frame.setTop (frame.getTop() + inside.getY() - outside.getY());
    frame.setLeft (frame.getLeft() + inside.getX() - outside.getX());
    frame.setBottom (frame.getBottom() + outside.getBottom() - inside.getBottom());
    frame.setRight (frame.getRight() + outside.getRight() - inside.getRight());
    return frame.subtractedFrom (display->userArea);
}

void CPlatterdexVstEditor::limitSize()
{
    const auto percent = scale.percent();
    auto least = juce::Point<int> (scaled (EditorLayout::minimumWidth, percent),
                                   scaled (EditorLayout::minimumHeight, percent));
    if (const auto room = screenRoom(); !room.isEmpty())
        least = { std::min (least.x, room.getWidth()), std::min (least.y, room.getHeight()) };
    setResizeLimits (least.x, least.y, scaled (EditorLayout::maximum, percent),
                     scaled (EditorLayout::maximum, percent));
}

void CPlatterdexVstEditor::setScale (int percent)
{
    scale.set (percent);
    const juce::ScopedValueSetter<bool> own (isScaling, true);
    limitSize();
    auto size = (wantedSize * (scale.percent() / 100.0)).roundToInt();
    const auto room = screenRoom();
    if (!room.isEmpty())
        size = { std::min (size.x, room.getWidth()), std::min (size.y, room.getHeight()) };
    if (isFullScreen() || (size.x == getWidth() && size.y == getHeight()))
        return resized();
    setSize (size.x, size.y);
    // A window of ours that has grown over an edge of the screen moves in.
    if (auto* window = findParentComponentOfClass<juce::ResizableWindow>();
        window != nullptr && !room.isEmpty())
        window->setTopLeftPosition (window->getPosition()
                                    + getScreenBounds().constrainedWithin (room).getPosition()
                                    - getScreenBounds().getPosition());
}

void CPlatterdexVstEditor::setFullScreen (bool full)
{
    if (auto* window = findParentComponentOfClass<juce::ResizableWindow>())
        if (!FullScreen::ask (*window, full))
            window->setFullScreen (full);
}

bool CPlatterdexVstEditor::isFullScreen() const
{
    const auto* window = findParentComponentOfClass<juce::ResizableWindow>();
    return window != nullptr && (window->isFullScreen() || FullScreen::covers (*window));
}

void CPlatterdexVstEditor::refreshDecks()
{
    for (auto& strip : decks)
        strip->refresh();
}

void CPlatterdexVstEditor::act (KeyAction action, int deck)
{
    switch (action)
    {
    case KeyAction::load:
        if (deck >= 0 && deck < deckCount)
            loader.open (deck, *decks[static_cast<size_t> (deck)]);
        break;
    case KeyAction::spectralWaveform:
    {
        auto& flag = engine.settings.editor[EditorPreference::spectralWaveform];
        flag = flag == 0 ? 1 : 0;
        break;
    }
    case KeyAction::undo:
        engine.grids.undo (touchedDeck);
        header->newsLine().tell (tr ("Undo on deck %1", PanelPaint::letterOf (touchedDeck)));
        break;
    case KeyAction::redo:
        engine.grids.redo (touchedDeck);
        header->newsLine().tell (tr ("Redo on deck %1", PanelPaint::letterOf (touchedDeck)));
        break;
    case KeyAction::loadFree:
        browser->loadToFreeDeck();
        break;
    case KeyAction::songs:
        browser->takeKeyboard();
        break;
    case KeyAction::help:
        helpWithWhatIsMeant();
        break;
    case KeyAction::search:
        browser->takeKeyboardToSearch();
        break;
    case KeyAction::none:
        break;
    }
}

void CPlatterdexVstEditor::showHelp (const juce::Component* component)
{
    ManualReader::open (tools, content, HelpTopics::of (component));
}

/** A control that the keyboard was taken to is meant, else what the mouse is over, in whichever window. */
void CPlatterdexVstEditor::helpWithWhatIsMeant()
{
    const auto* const walked = walk.current();
    showHelp (walked != nullptr ? walked
                                : juce::Desktop::getInstance().getMainMouseSource().getComponentUnderMouse());
}

void CPlatterdexVstEditor::mouseDown (const juce::MouseEvent& event)
{
    auto* strip = dynamic_cast<DeckComponent*> (event.eventComponent);
    if (strip == nullptr && event.eventComponent != nullptr)
        strip = event.eventComponent->findParentComponentOfClass<DeckComponent>();
    if (strip != nullptr)
        touch (strip->deck());
    // A click on the decks takes the keyboard back to them.
    if (walk.current() != nullptr)
    {
        walk.leave();
        grabKeyboardFocus();
    }
    if (browser->hasKeyboardFocus (true) && event.eventComponent != &*browser
        && !browser->isParentOf (event.eventComponent))
        grabKeyboardFocus();
    clock->hurry();
}

void CPlatterdexVstEditor::keepZoom()
{
    if (std::exchange (keptZoom, zoom->step) != zoom->step)
        preferences.set (zoomName, juce::String (keptZoom));
}

void CPlatterdexVstEditor::filesDropped (const juce::StringArray& files, int, int)
{
    const auto isFolder = files.size() == 1 && juce::File (files[0]).isDirectory();
    header->newsLine().tell (isFolder ? tr ("LET A FOLDER GO OVER THE BROWSER")
                                      : tr ("LET A TRACK GO OVER A DECK OR THE BROWSER"));
}

void CPlatterdexVstEditor::textDropped (const juce::String&, int, int)
{
    header->newsLine().tell (tr ("A TEXT IS NO TRACK: DRAG ITS FILE"));
}

void CPlatterdexVstEditor::touch (int index)
{
    touchedDeck = index;
    for (const auto& strip : decks)
        strip->setTouched (strip->deck() == index);
}

/** Shift+Tab takes the keyboard from the decks to the controls, as Tab alone takes it to the songs; there both keys go on and back,
    and Escape gives it back to the decks. */
bool CPlatterdexVstEditor::walkByKey (const juce::KeyPress& key)
{
    using Key = juce::KeyPress;
    const auto isWalking = walk.current() != nullptr;
    const auto isBack = key == Key (Key::tabKey, juce::ModifierKeys::shiftModifier, 0);
    if (isBack || (isWalking && key == Key (Key::tabKey)))
    {
        walk.go (isBack && isWalking ? -1 : 1);
        return true;
    }
    if (!isWalking || key != Key (Key::escapeKey))
        return false;
    walk.leave();
    grabKeyboardFocus();
    return true;
}

bool CPlatterdexVstEditor::keyPressed (const juce::KeyPress& key)
{
    if (walkByKey (key))
        return true;
    if (key == juce::KeyPress (juce::KeyPress::escapeKey) && isFullScreen())
    {
        setFullScreen (false);
        return true;
    }
    const auto isOurs = keyboard.keyPressed (key);
    if (isOurs)
        clock->hurry(); // the lamps follow the hand
    return isOurs;
}

bool CPlatterdexVstEditor::keyStateChanged (bool)
{
    if (keyboard.keyStateChanged())
        clock->hurry();
    return false;
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

void CPlatterdexVstEditor::focusOfChildComponentChanged (FocusChangeType)
{
    if (!hasKeyboardFocus (true))
        keyboard.releaseAll();
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
