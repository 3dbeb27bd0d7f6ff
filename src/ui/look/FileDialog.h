#pragma once

#include "support/Prompts.h"

#include <juce_gui_basics/juce_gui_basics.h>

#include <functional>
#include <optional>

/** The list of a dialog under the keyboard: arrows go through it, letters to the next name that begins with them, Backspace to
    the folder above, and a path that is typed goes to the field. Several rows can be chosen. Message thread. */
class FileListKeys : private juce::KeyListener, private juce::FileBrowserListener
{
public:
    /** @param list    of the browser @param field   of the name */
    FileListKeys (juce::FileBrowserComponent& browser, juce::FileListComponent& list, juce::TextEditor& field,
                  std::function<void()> take);
    ~FileListKeys() override;

    /** The first row whose name begins with a text in whatever case, from a row on and round.
        @returns -1 if there is none */
    static int rowOf (const juce::StringArray& names, const juce::String& beginning, int from);

private:
    bool keyPressed (const juce::KeyPress&, juce::Component*) override;
    void selectionChanged() override;
    void fileClicked (const juce::File&, const juce::MouseEvent&) override {}
    void fileDoubleClicked (const juce::File&) override {}
    void browserRootChanged (const juce::File&) override {}
    bool goTo (juce::juce_wchar letter);

    juce::FileBrowserComponent& browser;
    juce::FileListComponent& list;
    juce::TextEditor& field;
    const std::function<void()> take; ///< of what is chosen
    juce::String typed;
    juce::int64 typedAt = 0; ///< milliseconds
};

/** Asks for a file in a window that stops nothing. Where one is opened the keyboard goes to the list, else to the field of the
    name; one Return takes the row or the path that stands there, a whole one too. A file that would be replaced is asked about.
    Message thread. */
class FileDialog
{
public:
    /** Opens the window, which goes with this object.
        @param answered   called once; File() if the user breaks it off. It may end this object */
    FileDialog (const Prompts::FileQuestion&, std::function<void (const juce::File&)> answered);

    /** The same for several files. @param answered   called once; an empty list if the user breaks it off */
    FileDialog (const Prompts::FileQuestion&, std::function<void (const juce::Array<juce::File>&)> answered);

private:
    FileDialog (const Prompts::FileQuestion&, bool several,
                std::function<void (const juce::Array<juce::File>&)> answered);

    juce::WildcardFileFilter filter;
    juce::FileBrowserComponent browser;
    juce::FileChooserDialogBox box;
    std::optional<FileListKeys> keys;
};
