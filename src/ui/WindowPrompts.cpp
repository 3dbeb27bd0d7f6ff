#include "ui/WindowPrompts.h"

#include "support/language/Translate.h"

#include <algorithm>
#include <utility>

namespace
{
constexpr const char* field = "inputText";
constexpr const char* noticeName = "notice"; ///< the property of a window that holds its sentence
const juce::KeyPress returnKey (juce::KeyPress::returnKey), escapeKey (juce::KeyPress::escapeKey);

juce::KeyPress letter (char key)
{
    return juce::KeyPress (key);
}
}

WindowPrompts::~WindowPrompts()
{
    lifetime.reset(); // the answers of what is closed now find nobody
}

std::unique_ptr<juce::AlertWindow> WindowPrompts::make (const juce::String& title, const juce::String& text,
                                                        juce::MessageBoxIconType icon)
{
    if (!look)
        look.emplace();
    return std::make_unique<juce::AlertWindow> (title, text, icon);
}

void WindowPrompts::open (std::unique_ptr<juce::AlertWindow> window, Closed closed)
{
    auto* shown = window.get();
    windows.push_back (std::move (window));
    const auto answered =
        [this, shown, closed = std::move (closed), here = std::weak_ptr (lifetime)] (int result)
    {
        if (here.expired())
            return;
        shown->setVisible (false);
        closed (*shown, result);
        if (!here.expired())
            drop (shown);
    };
    shown->enterModalState (true, juce::ModalCallbackFunction::create (answered));
}

void WindowPrompts::drop (const juce::AlertWindow* window)
{
    std::erase_if (windows, [window] (const auto& each) { return each.get() == window; });
}

void WindowPrompts::askYesNo (const juce::String& title, const juce::String& question,
                              std::function<void (bool yes)> answer)
{
    auto window = make (title, question, juce::MessageBoxIconType::QuestionIcon);
    const auto no = tr ("No");
    window->addButton (tr ("Yes"), 1, letter ('y'));
    window->addButton (no, 0, letter ('n'), returnKey);
    // JUCE gives all buttons the first place, and Return presses the one that has the keyboard.
    for (auto* child : window->getChildren())
        child->setExplicitFocusOrder (child->getName() == no ? 1 : 2);
    open (std::move (window),
          [answer = std::move (answer)] (juce::AlertWindow&, int result) { answer (result == 1); });
}

void WindowPrompts::notify (const juce::String& title, const juce::String& sentence)
{
    // A hand that tries again gets the same window, not one more.
    for (const auto& each : windows)
        if (each->getName() == title && each->getProperties()[noticeName] == sentence)
            return each->toFront (true);
    auto window = make (title, sentence, juce::MessageBoxIconType::InfoIcon);
    window->addButton (tr ("OK"), 0, returnKey, escapeKey);
    window->getProperties().set (noticeName, sentence);
    auto* shown = window.get();
    // Not modal: the decks go on taking keys while it is there.
    for (auto* child : window->getChildren())
        if (auto* button = dynamic_cast<juce::Button*> (child))
            button->onClick = [this, shown, here = std::weak_ptr (lifetime)]
            {
                juce::MessageManager::callAsync (
                    [this, shown, here]
                    {
                        if (!here.expired())
                            drop (shown);
                    });
            };
    windows.push_back (std::move (window));
    // In front of the program's window too, which may just be opening.
    juce::MessageManager::callAsync (
        [this, shown, here = std::weak_ptr (lifetime)]
        {
            const auto isThere = [shown] (const auto& each) { return each.get() == shown; };
            if (!here.expired() && std::any_of (windows.begin(), windows.end(), isThere))
                shown->setVisible (true);
        });
}

void WindowPrompts::askText (const juce::String& title, const juce::String& question,
                             const juce::String& initial,
                             std::function<void (std::optional<juce::String>)> answer)
{
    auto window = make (title, question, juce::MessageBoxIconType::NoIcon);
    window->addTextEditor (field, initial);
    window->getTextEditor (field)->setExplicitFocusOrder (1); // typing begins at once, over what is there
    window->addButton (tr ("OK"), 1, returnKey);
    window->addButton (tr ("Cancel"), 0, escapeKey);
    open (std::move (window), [answer = std::move (answer)] (juce::AlertWindow& closed, int result)
          { answer (result == 1 ? std::optional (closed.getTextEditorContents (field)) : std::nullopt); });
}

void WindowPrompts::askFile (const FileQuestion& question, std::function<void (const juce::File&)> answer)
{
    if (!look)
        look.emplace();
    chooser = std::make_unique<FileDialog> (
        question,
        [answer = std::move (answer), here = std::weak_ptr (lifetime)] (const juce::File& file)
        {
            if (!here.expired())
                answer (file);
        });
}
