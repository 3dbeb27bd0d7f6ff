#include "ui/midi/MidiWindows.h"

#include "skin/Palette.h"
#include "support/language/Translate.h"
#include "ui/midi/MidiMappingComponent.h"
#include "ui/midi/MidiPortsPage.h"
#include "ui/midi/MidiScriptingPage.h"

#include <utility>

namespace
{
constexpr int newsPeriodMs = 200;
}

/** A window that ends when it is closed. */
class MidiWindows::Window : public juce::DocumentWindow
{
public:
    Window (const juce::String& title, std::unique_ptr<juce::Component> content, std::function<void()> c)
        : DocumentWindow (title, palette::panel, closeButton),
          close (std::move (c))
    {
        setUsingNativeTitleBar (true);
        setContentOwned (content.release(), true);
        setResizable (true, false);
        setAlwaysOnTop (true); // a click on the decks does not hide it
        setResizeLimits (360, 240, 4096, 4096);
        centreWithSize (getWidth(), getHeight());
        setVisible (true);
    }

    void closeButtonPressed() override
    {
        // Not from within the window's own call.
        juce::MessageManager::callAsync (
            [here = SafePointer (this)]
            {
                if (here != nullptr)
                    here->close();
            });
    }

private:
    const std::function<void()> close;
    juce::TooltipWindow tips { this };
};

MidiWindows::MidiWindows (MidiSystem& m) : midi (m)
{
    LanguageInUse::addListener (*this);
}

MidiWindows::~MidiWindows()
{
    LanguageInUse::removeListener (*this);
}

void MidiWindows::show (std::unique_ptr<Window>& window, const juce::String& title,
                        std::function<std::unique_ptr<juce::Component>()> make)
{
    if (!look)
        look.emplace();
    if (window == nullptr)
        window = std::make_unique<Window> (title, make(), [&window] { window.reset(); });
    window->toFront (true);
}

std::vector<EditorPage> MidiWindows::pages()
{
    startTimer (newsPeriodMs);
    return { { N_ ("Remote MIDI Control"), [this] { showPorts(); }, [this] { return makePorts(); } },
             { N_ ("MIDI mapping"), [this] { showMapping(); } },
             { N_ ("MIDI Scripting"), [this] { showScripts(); },
               [this] { return std::make_unique<MidiScriptingPage> (midi); } } };
}

std::unique_ptr<juce::Component> MidiWindows::makePorts()
{
    return std::make_unique<MidiPortsPage> (midi, [this] { showMapping(); });
}

void MidiWindows::showPorts()
{
    show (ports, tr ("MIDI Ports"), [this] { return makePorts(); });
}

void MidiWindows::showMapping()
{
    show (mapping, tr ("MIDI Mapping Editor"),
          [this]
          {
              auto made = std::make_unique<MidiMappingComponent> (midi);
              made->onClose = [this]
              {
                  if (mapping != nullptr)
                      mapping->closeButtonPressed();
              };
              made->onShowPorts = [this] { showPorts(); };
              return made;
          });
}

void MidiWindows::showScripts()
{
    show (scripts, tr ("MIDI Scripting"), [this] { return std::make_unique<MidiScriptingPage> (midi); });
}

void MidiWindows::timerCallback()
{
    using Shown = ScriptMessagesView::Shown;
    const auto newest = midi.scripts.journal().newest();
    if (newest == toldNumber)
        return;
    tellNews (scriptMessages, Shown::messages);
    // The page shows the log anyhow.
    if (scripts == nullptr)
        tellNews (scriptLog, Shown::log);
    toldNumber = newest;
}

/** Opens the window of new messages; one that is open shows them by itself. */
void MidiWindows::tellNews (std::unique_ptr<Window>& window, ScriptMessagesView::Shown shown)
{
    if (window == nullptr && ScriptMessagesView::hasNews (midi.scripts.journal(), shown, toldNumber))
        showMessages (window, shown, toldNumber);
}

void MidiWindows::showMessages (std::unique_ptr<Window>& window, ScriptMessagesView::Shown shown,
                                uint64_t since)
{
    show (window,
          shown == ScriptMessagesView::Shown::messages ? tr ("Midi Scripting Message")
                                                       : tr ("Midi Scripting Log Message"),
          [&] { return std::make_unique<ScriptMessagesView> (midi.scripts.journal(), shown, since); });
}

void MidiWindows::languageChanged()
{
    const auto openAnew = [] (std::unique_ptr<Window>& window, const std::function<void()>& show)
    {
        if (std::exchange (window, nullptr) != nullptr)
            show();
    };
    using Shown = ScriptMessagesView::Shown;
    openAnew (ports, [this] { showPorts(); });
    openAnew (mapping, [this] { showMapping(); });
    openAnew (scripts, [this] { showScripts(); });
    openAnew (scriptMessages, [this] { showMessages (scriptMessages, Shown::messages, 0); });
    openAnew (scriptLog, [this] { showMessages (scriptLog, Shown::log, 0); });
}
