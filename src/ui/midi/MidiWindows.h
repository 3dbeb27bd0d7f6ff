#pragma once

#include "midi/system/MidiSystem.h"
#include "support/language/Language.h"
#include "ui/header/HeaderActions.h"
#include "ui/look/DefaultLook.h"
#include "ui/midi/ScriptMessagesView.h"

#include <optional>

/** The windows of MIDI beside the editor's: the ports, the mapping editor, the scripts, and what these have to say, which
    opens by itself. Each is open once; closing it ends it. In another language they open anew. Message thread. */
class MidiWindows : private juce::Timer, private LanguageListener
{
public:
    explicit MidiWindows (MidiSystem&);
    ~MidiWindows() override;

    /** Opens a window, or brings it to the front. */
    void showPorts();

    void showMapping();
    void showScripts();

    /** The ways to the windows, for the menu of an editor; they hold as long as this. From now on messages of scripts open
        windows. */
    std::vector<EditorPage> pages();

private:
    class Window;

    void show (std::unique_ptr<Window>&, const juce::String& title,
               std::function<std::unique_ptr<juce::Component>()> make);

    std::unique_ptr<juce::Component> makePorts();
    void timerCallback() override;
    void languageChanged() override;
    void showMessages (std::unique_ptr<Window>&, ScriptMessagesView::Shown, uint64_t since);
    void tellNews (std::unique_ptr<Window>&, ScriptMessagesView::Shown);

    MidiSystem& midi;
    uint64_t toldNumber = 0;                                      ///< of the scripts' journal
    std::optional<juce::SharedResourcePointer<DefaultLook>> look; ///< from the first window on
    std::unique_ptr<Window> ports, mapping, scripts, scriptMessages, scriptLog;
};
