#include "ui/look/FileDialog.h"

#include "skin/Palette.h"
#include "ui/look/FolderQuestion.h"

#include <algorithm>
#include <utility>

namespace
{
constexpr juce::int64 typingMs = 1000; ///< between two letters of a word

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

FileListKeys::FileListKeys (juce::FileBrowserComponent& b, juce::FileListComponent& l, juce::TextEditor& f,
                            std::function<void()> t)
    : browser (b),
      list (l),
      field (f),
      take (std::move (t))
{
    list.addKeyListener (this);
    list.addListener (this);
}

FileListKeys::~FileListKeys()
{
    list.removeListener (this);
    list.removeKeyListener (this);
}

int FileListKeys::rowOf (const juce::StringArray& names, const juce::String& beginning, int from)
{
    const auto count = names.size();
    for (int i = 0; i < count; ++i)
        if (const auto row = (std::max (0, from) + i) % count; names[row].startsWithIgnoreCase (beginning))
            return row;
    return -1;
}

bool FileListKeys::goTo (juce::juce_wchar letter)
{
    juce::StringArray names;
    auto* const rows = list.getModel();
    for (int row = 0; row < rows->getNumRows(); ++row)
        names.add (rows->getNameForRow (row));
    const auto now = juce::Time::currentTimeMillis();
    const auto goesOn = now - std::exchange (typedAt, now) < typingMs && typed.isNotEmpty();
    typed = (goesOn ? typed : juce::String()) + juce::String::charToString (letter);
    // A word that grows may stay where it is; a first letter looks for the next row.
    const auto row = rowOf (names, typed, list.getSelectedRow() + (goesOn ? 0 : 1));
    if (row >= 0)
        list.selectRow (row);
    return true;
}

bool FileListKeys::keyPressed (const juce::KeyPress& key, juce::Component*)
{
    if (key.isKeyCode (juce::KeyPress::backspaceKey))
    {
        browser.goUp();
        return true;
    }
    if (key.isKeyCode (juce::KeyPress::returnKey) && list.getNumSelectedFiles() > 1)
    {
        take();
        return true;
    }
    const auto letter = key.getTextCharacter();
    if (letter < ' ' || letter == 127 || key.getModifiers().isCtrlDown() || key.getModifiers().isAltDown())
        return false;
    if (letter != juce::File::getSeparatorChar() && letter != '~')
        return goTo (letter);
    list.deselectAllRows();
    field.setReadOnly (false);
    field.grabKeyboardFocus();
    field.setText (juce::String::charToString (letter));
    field.moveCaretToEnd();
    return true;
}

/** JUCE's field takes what is typed for one name; while there are several it shows them only. */
void FileListKeys::selectionChanged()
{
    const auto several = list.getNumSelectedFiles() > 1;
    if (field.isReadOnly() == several)
        return;
    field.setReadOnly (several);
    browser.selectionChanged();
}

FileDialog::FileDialog (const Prompts::FileQuestion& question,
                        std::function<void (const juce::File&)> answered)
    : FileDialog (question, false,
                  [answered = std::move (answered)] (const juce::Array<juce::File>& files)
                  { answered (files.isEmpty() ? juce::File() : files.getFirst()); })
{
}

FileDialog::FileDialog (const Prompts::FileQuestion& question,
                        std::function<void (const juce::Array<juce::File>&)> answered)
    : FileDialog (question, true, std::move (answered))
{
}

FileDialog::FileDialog (const Prompts::FileQuestion& question, bool several,
                        std::function<void (const juce::Array<juce::File>&)> answered)
    : filter (question.pattern, {}, {}),
      browser (flagsOf (question), question.start, &filter, nullptr),
      box (question.title, {}, browser, question.isForWriting, palette::panel, nullptr)
{
    if (auto* field = fieldOf (browser))
    {
        auto* const list = dynamic_cast<juce::FileListComponent*> (browser.getDisplayComponent());
        if (list != nullptr && !question.isForWriting && !FolderQuestion::isOne (question))
        {
            list->setMultipleSelectionEnabled (several);
            list->setExplicitFocusOrder (1);
            keys.emplace (browser, *list, *field, [this] { box.exitModalState (1); });
        }
        field->setExplicitFocusOrder (keys.has_value() ? 2 : 1);
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
    box.setWantsKeyboardFocus (false); // it goes on to the list or the field
    box.centreWithDefaultSize();
    box.enterModalState (true, juce::ModalCallbackFunction::create (
                                   [this, answered = std::move (answered)] (int result)
                                   {
                                       juce::Array<juce::File> files;
                                       const auto* const shown = browser.getDisplayComponent();
                                       if (result != 0 && shown->getNumSelectedFiles() > 1)
                                       {
                                           for (int i = 0; i < shown->getNumSelectedFiles(); ++i)
                                               if (const auto file = shown->getSelectedFile (i);
                                                   !file.isDirectory())
                                                   files.add (file);
                                       }
                                       else if (result != 0)
                                           files.add (browser.getSelectedFile (0));
                                       box.setVisible (false);
                                       answered (files);
                                   }));
}
