#define JUCE_GUI_BASICS_INCLUDE_XHEADERS 1
#include "ui/KeyRepeat.h"

#include <juce_gui_basics/juce_gui_basics.h>

void askForOneKeyRelease()
{
    auto* display = juce::XWindowSystem::getInstance()->getDisplay();
    if (display == nullptr)
        return;
    // JUCE has loaded the library, but does not look this function up.
    juce::DynamicLibrary x11 ("libX11.so.6");
    if (auto* function = x11.getFunction ("XkbSetDetectableAutoRepeat"))
        reinterpret_cast<decltype (&XkbSetDetectableAutoRepeat)> (function) (display, 1, nullptr);
}
