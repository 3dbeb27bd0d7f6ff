#include "ui/midi/MidiWindows.h"

#include "skin/Palette.h"
#include "support/language/Translate.h"
#include "ui/midi/MidiMappingComponent.h"
#include "ui/midi/MidiPortsPage.h"
#include "ui/midi/MidiScriptingPage.h"

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

MidiWindows::MidiWindows (MidiSystem& m) : midi (m) {}

MidiWindows::~MidiWindows() = default;

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
    tellNews (scriptMessages, tr ("Midi Scripting Message"), Shown::messages);
    // The page shows the log anyhow.
    if (scripts == nullptr)
        tellNews (scriptLog, tr ("Midi Scripting Log Message"), Shown::log);
    toldNumber = newest;
}

/** Opens the window of new messages; one that is open shows them by itself. */
void MidiWindows::tellNews (std::unique_ptr<Window>& window, const juce::String& title,
                            ScriptMessagesView::Shown shown)
{
    const auto& journal = midi.scripts.journal();
    if (window == nullptr && ScriptMessagesView::hasNews (journal, shown, toldNumber))
        show (window, title,
              [&] { return std::make_unique<ScriptMessagesView> (journal, shown, toldNumber); });
}
