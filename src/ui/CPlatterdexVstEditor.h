#pragma once

#include "deck/state/DeckNumbers.h"
#include "support/EngineListener.h"
#include "support/language/Language.h"
#include "ui/EditorScale.h"
#include "ui/NoticeBar.h"
#include "ui/browser/SongManager.h"
#include "ui/command/KeyboardCommands.h"
#include "ui/decks/DeckComponent.h"
#include "ui/deckviews/StackedWaves.h"
#include "ui/deckviews/WaveformZoom.h"
#include "ui/global/GhostMixerComponent.h"
#include "ui/global/GlobalComponent.h"
#include "ui/header/HeaderComponent.h"
#include "ui/layout/EditorLayout.h"
#include "ui/look/DefaultLook.h"
#include "ui/walk/ControlWalk.h"
#include "ui/widgets/PXTooltipComponent.h"
#include "ui/window/RemadePart.h"
#include "ui/window/ToolWindows.h"
#include "ui/window/ToolkitTexts.h"

#include <juce_audio_processors/juce_audio_processors.h>

#include <array>
#include <functional>
#include <memory>

class BrowserWindow;
class CPlatterdex;
class Session;

/** The window's content, in plug-in and application alike: header, decks, the block between them, browser. It polls the
    engine, which doesn't know it. Message thread. */
class CPlatterdexVstEditor : public juce::AudioProcessorEditor,
                             public juce::DragAndDropContainer,
                             public juce::FileDragAndDropTarget,
                             public juce::TextDragAndDropTarget,
                             public ToolWindowOwner,
                             private EngineListener,
                             private LanguageListener
{
public:
    /** @param session         keeps the preferences; outlives the editor. Without one they end with the editor
        @param audioSettings   opens the page of the audio device; empty inside a host, which has its own
        @param pages           further windows for the menu of the preferences */
    explicit CPlatterdexVstEditor (CPlatterdex&, Session* session = nullptr,
                                   std::function<void()> audioSettings = {},
                                   std::vector<EditorPage> pages = {});
    ~CPlatterdexVstEditor() override;

    /** One sentence in the header on what goes on in the background; empty for nothing. */
    void setStatus (const juce::String& sentence) { header->newsLine().setStatus (sentence); }

    /** A sentence that stays in sight until an empty one takes it away. @param help   called by a click on it */
    void setNotice (const juce::String& sentence, std::function<void()> help = {});

    /** Opens the list of all commands in a window of its own. */
    void showParameters();

    /** Shows or hides the browser. Without one the window snaps to the height of what is left. */
    void showBrowser (bool);

    /** Shows the stacked waves on top of a window that has room for them. The preferences keep it. */
    void showWaves (bool);
    StackedWaves& stackedWaves() noexcept { return *waves; }

    /** Moves the browser into a window of its own, or back. */
    void showBrowserInWindow (bool);
    bool isBrowserInWindow() const { return browserWindow != nullptr; }

    /** Opens the preferences at a page. @param title   in English */
    void showPreferences (const char* title);

    /** Opens the manual at the page of a component, or at its first page. @param component   may be null */
    void showHelp (const juce::Component*);

    /** @param percent   100 to 200; the window grows or shrinks with it as far as the screen has room */
    void setScale (int percent);

    /** Makes the window that holds the editor fill the screen, if it is one of ours. */
    void setFullScreen (bool);
    bool isFullScreen() const;

    /** Asks the decks to read the engine again. */
    void refreshDecks();

    /** Asks the browser to show what has changed. */
    void updateBrowser() { browser->refresh(); }

    DeckComponent& deck (int index) { return *decks[static_cast<size_t> (index)]; }
    HeaderComponent& headerStrip() noexcept { return *header; }
    GlobalComponent& globalBlock() noexcept { return *global; }
    GhostMixerComponent& ghostStrip() noexcept { return *ghostMixer; }
    SongManager& browserView() noexcept { return *browser; }
    ToolWindows& toolWindows() override { return tools; }
    ControlWalk& controlWalk() noexcept { return walk; }
    LoadDialog& loadDialog() noexcept { return loader; }

    // Answers a drag that is let go over nothing that takes it.
    bool isInterestedInFileDrag (const juce::StringArray&) override { return true; }
    void filesDropped (const juce::StringArray&, int, int) override;
    bool isInterestedInTextDrag (const juce::String&) override { return true; }
    void textDropped (const juce::String&, int, int) override;

    void paint (juce::Graphics&) override {} // the content covers all of it
    void resized() override;
    bool keyPressed (const juce::KeyPress&) override;
    bool keyStateChanged (bool isKeyDown) override;
    void parentHierarchyChanged() override;
    void focusOfChildComponentChanged (FocusChangeType) override;
    void mouseDown (const juce::MouseEvent&) override;
    void mouseUp (const juce::MouseEvent&) override { clock->hurry(); }

private:
    /** The layout depends on this besides the size. */
    struct Arrangement
    {
        EditorLayout::Mode mode;
        bool orderABCD = true;
        bool operator== (const Arrangement&) const = default;
    };

    /** Holds the children at the interface's scale, and looks after the arrangement. */
    struct Content : PollingView
    {
        explicit Content (CPlatterdexVstEditor& e) : PollingView (Pace::calm), editor (e) {}
        void pollCalm() override
        {
            editor.followArrangement();
            editor.keepZoom();
            editor.expireNotice();
        }
        void paint (juce::Graphics&) override;
        CPlatterdexVstEditor& editor;
    };

    static constexpr const char* wavesName = "stacked_waves"; ///< in the preferences

    RemadePart<DeckComponent> makeDeck (int deck);
    void adopt();
    void buildAnew();
    void languageChanged() override;
    void browserWindowClosed();
    void engineEvent (EngineEvent, int index) override;
    void engineMessage (const juce::String&, int deck) override;
    HeaderActions actions (std::function<void()> audioSettings, std::vector<EditorPage>);
    Arrangement arrangement() const;
    void followArrangement();
    void arrange();
    void limitSize();
    int bareHeight() const;
    void keepHeight();
    void giveHeightBack();
    void snapHeight();
    juce::Array<juce::Rectangle<int>> runningWaves() const;
    void act (KeyAction, int deck);
    void helpWithWhatIsMeant();
    bool walkByKey (const juce::KeyPress&);
    void touch (int deck);
    void keepZoom();
    void expireNotice();
    void tellOfRecording (const juce::File&, double seconds);

    CPlatterdex& engine;
    Session* const session;
    const juce::SharedResourcePointer<PollClock> clock;
    const juce::SharedResourcePointer<DefaultLook> look; ///< before every control that draws with it
    const juce::SharedResourcePointer<ToolkitTexts> toolkitTexts;
    PreferencesFile passing { juce::File() }; ///< of an editor without a session
    PreferencesFile& preferences;
    EditorScale scale;
    const juce::SharedResourcePointer<WaveformZoom> zoom;
    int keptZoom = WaveformZoom::usualStep; ///< as it stands in the preferences
    LoadDialog loader;                      ///< before the decks, which load by it
    Content content { *this };
    const HeaderActions headerActions;
    Arrangement arranged;
    int touchedDeck = 0;            ///< by mouse or key, the last time
    juce::Point<double> wantedSize; ///< unscaled, as the hand or the host chose it
    bool isScaling = false, isArranged = false, browserShown = true, wavesShown = false;
    RemadePart<StackedWaves> waves; ///< it and those below have their texts in the language in use
    RemadePart<HeaderComponent> header;
    std::array<RemadePart<DeckComponent>, deckCount> decks;
    RemadePart<GlobalComponent> global;
    RemadePart<GhostMixerComponent> ghostMixer;
    RemadePart<SongManager> browser;
    NoticeBar noticeBar;
    juce::ResizableCornerComponent corner;
    PXTooltipComponent tooltip;
    ControlWalk walk { content }; ///< before the keyboard commands
    KeyboardCommands keyboard;
    BrowserWindow* browserWindow = nullptr; ///< the tool window's, while there is one
    double heightWithBrowser = 0.0;         ///< unscaled, before it went; 0 for none yet
    ToolWindows tools;
};
