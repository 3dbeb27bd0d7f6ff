#pragma once

#include "ui/walk/ControlWalk.h"

#include <juce_gui_basics/juce_gui_basics.h>

#include <functional>
#include <memory>
#include <utility>
#include <vector>

/** A window of its own for one tool, at the interface's scale. */
class ToolWindow : public juce::DocumentWindow
{
public:
    /** @param content   has its size, at scale 1
        @param scale     of the interface, 1 to 2 */
    ToolWindow (const juce::String& title, std::unique_ptr<juce::Component> content, float scale);

    juce::Component& tool() noexcept { return *content; }

    std::function<void()> onClose, onHelp;

    void closeButtonPressed() override;
    bool keyPressed (const juce::KeyPress&) override;
    void focusGained (FocusChangeType) override; ///< passed on to a tool that wants the keyboard

private:
    /** Holds the tool and draws it larger. */
    struct Scaled : juce::Component
    {
        void resized() override;

        juce::Component* content = nullptr;
        float scale = 1.0f;
    };

    const std::unique_ptr<juce::Component> content;
    Scaled scaled;
    ControlWalk walk { *content };
};

/** The open tool windows of an editor, one for each title. They close with the editor. Message thread. */
class ToolWindows
{
public:
    using Make = std::function<std::unique_ptr<juce::Component> (std::function<void()> close)>;

    /** Opens a window in the middle of its opener's window, or brings it to the front if it is open.
        @param make   the content, which may call `close` */
    void open (const juce::String& title, juce::Component& opener, const Make& make);

    /** Called by F1 in any of the windows. */
    std::function<void()> onHelp;

    /** The window of a title, or null. */
    ToolWindow* find (const juce::String& title) const;

    /** The tool of a class that is open, or null. */
    template <typename Tool>
    Tool* tool() const
    {
        for (const auto& window : windows)
            if (auto* const found = dynamic_cast<Tool*> (&window->tool()))
                return found;
        return nullptr;
    }

    /** Closes all of them; not from within one. */
    void closeAll() { std::exchange (windows, {}).clear(); }

    /** The windows of the editor that a component belongs to; null outside of one. */
    static ToolWindows* of (juce::Component&);

private:
    void close (const juce::String& title);

    std::vector<std::unique_ptr<ToolWindow>> windows;
    std::shared_ptr<int> lifetime = std::make_shared<int> (0); ///< ends before the windows do
};

/** The editor, as its parts look for it. */
struct ToolWindowOwner
{
    virtual ~ToolWindowOwner() = default;
    virtual ToolWindows& toolWindows() = 0;
};
