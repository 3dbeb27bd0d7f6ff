#include "ui/look/FileDialog.h"

#include "skin/Palette.h"
#include "ui/look/FolderQuestion.h"

namespace
{
int flagsOf (const Prompts::FileQuestion& question)
{
    using Flags = juce::FileBrowserComponent;
    if (FolderQuestion::isOne (question))
        return Flags::openMode | Flags::canSelectDirectories;
    return Flags::canSelectFiles | (question.isForWriting ? Flags::saveMode : Flags::openMode);
}

/** The field in which a name is typed. */
juce::TextEditor* fieldOf (juce::FileBrowserComponent& browser)
{
    for (auto* child : browser.getChildren())
        if (auto* field = dynamic_cast<juce::TextEditor*> (child))
            return field;
    return nullptr;
}
}

FileDialog::FileDialog (const Prompts::FileQuestion& question,
                        std::function<void (const juce::File&)> answered)
    : filter (question.pattern, {}, {}),
      browser (flagsOf (question), question.start, &filter, nullptr),
      box (question.title, {}, browser, question.isForWriting, palette::panel, nullptr)
{
    if (auto* field = fieldOf (browser))
    {
        field->setExplicitFocusOrder (1);
        field->onEscapeKey = [this] { box.exitModalState (0); }; // the field would keep the key to itself
        // JUCE's browser only goes to the place of a path, and wants a second Return to take it.
        field->onReturnKey =
            [this, field, goes = field->onReturnKey, isFolder = FolderQuestion::isOne (question)]
        {
            if (isFolder)
            {
                // One Return takes the folder that is typed, or the one in sight.
                const auto typed = browser.getRoot().getChildFile (field->getText());
                if (typed.isDirectory())
                {
                    browser.setRoot (typed);
                    return box.exitModalState (1);
                }
            }
            const auto isPath = field->getText().containsChar (juce::File::getSeparatorChar());
            goes();
            if (isPath && field->getText().isNotEmpty())
                browser.fileDoubleClicked (browser.getSelectedFile (0));
        };
    }
    box.setWantsKeyboardFocus (false); // it goes on to the field
    box.centreWithDefaultSize();
    box.enterModalState (true, juce::ModalCallbackFunction::create (
                                   [this, answered = std::move (answered)] (int result)
                                   {
                                       const auto file =
                                           result != 0 ? browser.getSelectedFile (0) : juce::File();
                                       box.setVisible (false);
                                       answered (file);
                                   }));
}
