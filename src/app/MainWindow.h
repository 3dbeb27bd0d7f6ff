#pragma once

#include "session/PreferencesFile.h"

#include <juce_gui_basics/juce_gui_basics.h>

#include <functional>
#include <memory>

/** The application's window. Its place and size are kept in the preferences; it grows and shrinks with its content. */
class MainWindow : public juce::DocumentWindow
{
public:
    /** @param content   becomes the window's
        @param close     called when the user wants the window closed */
    MainWindow (std::unique_ptr<juce::Component> content, PreferencesFile&, std::function<void()> close);
    ~MainWindow() override;

private:
    void closeButtonPressed() override { close(); }
    void restorePlace();

    PreferencesFile& preferences;
    const std::function<void()> close;
};
