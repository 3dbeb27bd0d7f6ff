#pragma once

#include "support/Prompts.h"
#include "ui/look/DefaultLook.h"
#include "ui/look/FileDialog.h"

#include <juce_gui_basics/juce_gui_basics.h>

#include <memory>
#include <optional>
#include <vector>

/** Asks in windows that don't stop the engine. Those that are open when this goes are closed without an answer.

    In a question of yes or no, Return and Escape answer no: a key that strays changes nothing. */
class WindowPrompts : public Prompts
{
public:
    /** Makes nothing of JUCE's yet, so that any thread may construct one. */
    WindowPrompts() = default;
    ~WindowPrompts() override;

    void askYesNo (const juce::String& title, const juce::String& question,
                   std::function<void (bool yes)> answer) override;

    /** A notice that is open already comes to the front. */
    void notify (const juce::String& title, const juce::String& sentence) override;
    void askText (const juce::String& title, const juce::String& question, const juce::String& initial,
                  std::function<void (std::optional<juce::String>)> answer) override;
    void askFile (const FileQuestion&, std::function<void (const juce::File&)> answer) override;

private:
    using Closed = std::function<void (juce::AlertWindow&, int result)>;

    std::unique_ptr<juce::AlertWindow> make (const juce::String& title, const juce::String& text,
                                             juce::MessageBoxIconType);
    void open (std::unique_ptr<juce::AlertWindow>, Closed);
    void drop (const juce::AlertWindow*);

    std::optional<juce::SharedResourcePointer<DefaultLook>> look; ///< from the first window on
    std::vector<std::unique_ptr<juce::AlertWindow>> windows;
    std::unique_ptr<FileDialog> chooser;
    std::shared_ptr<const int> lifetime = std::make_shared<const int> (0);
};
