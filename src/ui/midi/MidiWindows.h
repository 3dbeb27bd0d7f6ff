#pragma once

#include "midi/system/MidiSystem.h"
#include "ui/header/HeaderActions.h"
#include "ui/look/DefaultLook.h"

#include <optional>

/** The windows of MIDI beside the editor's: the ports, and the mapping editor. Each is open once; closing it ends it. Message
    thread. */
class MidiWindows
{
public:
    explicit MidiWindows (MidiSystem&);
    ~MidiWindows();

    /** Opens a window, or brings it to the front. */
    void showPorts();

    /** The ways to the windows, for the editor's menu; they hold as long as this. */
    std::vector<EditorPage> pages();
    void showMapping();

private:
    class Window;

    void show (std::unique_ptr<Window>&, const char* title,
               std::function<std::unique_ptr<juce::Component>()> make);

    MidiSystem& midi;
    std::optional<juce::SharedResourcePointer<DefaultLook>> look; ///< from the first window on
    std::unique_ptr<Window> ports, mapping;
};
