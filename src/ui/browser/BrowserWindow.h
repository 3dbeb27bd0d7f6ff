#pragma once

#include "ui/browser/SongManager.h"
#include "ui/window/ToolWindows.h"

#include <functional>

/** Holds the browser while it stands in a window of its own. Drags begin and keys end there as in the editor. Message thread. */
class BrowserWindow : public juce::Component, public juce::DragAndDropContainer, public ToolWindowOwner
{
public:
    /** The editor that lends its browser. Both functions may be left out. */
    struct Owner
    {
        ToolWindows& tools;
        std::function<bool (const juce::KeyPress&)>
            onKey;                     ///< a key that the browser leaves; true if it was used
        std::function<void()> onClose; ///< when the browser has left the window
    };

    /** @param browser   outlives the window */
    BrowserWindow (SongManager& browser, Owner);
    ~BrowserWindow() override;

    ToolWindows& toolWindows() override { return owner.tools; }
    void resized() override { browser.setBounds (getLocalBounds()); }
    bool keyPressed (const juce::KeyPress& key) override
    {
        return owner.onKey != nullptr && owner.onKey (key);
    }

private:
    SongManager& browser;
    const Owner owner;
};
