#include "standalone/ApplicationDisplay.h"

#include <juce_core/juce_core.h>

bool isDisplayReachable()
{
    juce::DynamicLibrary x11;
    if (!x11.open ("libX11.so.6"))
        return false;
    const auto open = reinterpret_cast<void* (*)(const char*)> (x11.getFunction ("XOpenDisplay"));
    const auto close = reinterpret_cast<int (*) (void*)> (x11.getFunction ("XCloseDisplay"));
    if (open == nullptr || close == nullptr)
        return false;
    auto* display = open (nullptr);
    if (display == nullptr)
        return false;
    close (display);
    return true;
}
