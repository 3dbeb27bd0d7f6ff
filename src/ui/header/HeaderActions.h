#pragma once

#include <juce_gui_basics/juce_gui_basics.h>

#include <functional>
#include <memory>
#include <vector>

class Session;

/** A window of its own that the menu of the preferences opens. */
struct EditorPage
{
    juce::String title;         ///< in English, translated where it is shown
    std::function<void()> open; ///< empty for a page of the preferences alone
    std::function<std::unique_ptr<juce::Component>()> make =
        nullptr; ///< as a page of the preferences; empty for none
};

/** The header's requests to the editor. An empty function means that there is no such thing here, and nothing is offered
    for it. */
struct HeaderActions
{
    std::function<void()> preferences;
    std::function<void()> audioSettings;
    std::function<void()> manual; ///< opens it at its first page
    std::vector<EditorPage> pages;
    std::function<void (bool)> setFullScreen;
    std::function<bool()> isFullScreen;
    std::function<void()> showParameters;
    std::function<void (int percent)> setScale;
    std::function<int()> scale;
    std::function<void (bool)> showBrowser;
    std::function<bool()> showsBrowser;
    std::function<void (bool)> showWaves; ///< the stacked ones
    std::function<bool()> showsWaves;     ///< or would, in a taller window
    Session* session = nullptr;           ///< of preferences that are no settings of the engine; may be null
    std::function<void()> layoutChanged;  ///< a preference that the layout depends on has another value
};
