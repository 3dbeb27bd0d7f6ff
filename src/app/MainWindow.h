#pragma once

#include <juce_gui_basics/juce_gui_basics.h>

#include <functional>
#include <memory>

/** The application's window. Its place and size are kept in a file; it grows and shrinks with its content. */
class MainWindow : public juce::DocumentWindow
{
public:
    /** @param content     becomes the window's
        @param placeFile   where the window's place and size are kept
        @param close       called when the user wants the window closed */
    MainWindow (std::unique_ptr<juce::Component> content, const juce::File& placeFile,
                std::function<void()> close);
    ~MainWindow() override;

private:
    void closeButtonPressed() override { close(); }
    void restorePlace();

    const juce::File placeFile;
    const std::function<void()> close;
};
