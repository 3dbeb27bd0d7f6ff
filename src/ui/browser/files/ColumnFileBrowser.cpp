#include "ui/browser/files/ColumnFileBrowser.h"

#include "skin/Palette.h"
#include "support/files/AudioFileTypes.h"
#include "support/language/Translate.h"
#include "ui/browser/model/MenuKey.h"
#include "ui/browser/model/PointerMenu.h"
#include "ui/look/OpenMenu.h"

#include <algorithm>

namespace
{
constexpr int leastColumnWidth = 140, airAboveText = 8;
}

void ColumnFileBrowserContents::paint (juce::Graphics& g)
{
    g.fillAll (palette::ground);
    g.setColour (palette::line);
    for (const auto& column : columns)
        g.fillRect (column->getRight() - 1, 0, 1, getHeight());
}

ColumnFileBrowser::ColumnFileBrowser (BrowserWorld& w, SongActions& a) : world (w), actions (a)
{
    setLookAndFeel (&look);
    setTitle (tr ("Files"));
    viewport.setViewedComponent (&contents, false);
    viewport.setScrollBarsShown (false, true);
    viewport.setWantsKeyboardFocus (false);
    addAndMakeVisible (viewport);
    rowHeight = world.engine.settings.editor[EditorPreference::listFontSize] + airAboveText;
}

ColumnFileBrowser::~ColumnFileBrowser()
{
    setLookAndFeel (nullptr);
}

void ColumnFileBrowser::showFolder (const juce::File& wanted)
{
    const juce::ScopedValueSetter<bool> making (isMaking, true);
    juce::Array<juce::File> chain;
    for (auto each = wanted.isDirectory() ? wanted
                                          : juce::File::getSpecialLocation (juce::File::userHomeDirectory);
         ; each = each.getParentDirectory())
    {
        chain.insert (0, each);
        if (each.isRoot() || each == each.getParentDirectory())
            break;
    }
    contents.columns.clear();
    for (int i = 0; i < chain.size(); ++i)
    {
        add (chain[i]);
        if (i > 0)
            contents.columns[static_cast<size_t> (i - 1)]->list().setSelectedFile (chain[i]);
    }
    at = contents.columns.size() - 1;
    arrange();
}

juce::File ColumnFileBrowser::folder() const
{
    return contents.columns.empty() ? juce::File() : contents.columns.back()->folder;
}

BrowserColumn& ColumnFileBrowser::current() const
{
    return *contents.columns[std::min (at, contents.columns.size() - 1)];
}

juce::File ColumnFileBrowser::selectedFile() const
{
    if (contents.columns.empty())
        return {};
    const auto file = current().list().getSelectedFile();
    return file.isDirectory() ? juce::File() : file;
}

void ColumnFileBrowser::add (const juce::File& wanted)
{
    auto& column = *contents.columns.emplace_back (std::make_unique<BrowserColumn> (files, wanted));
    contents.addAndMakeVisible (column);
    auto& list = column.list();
    list.setRowHeight (rowHeight);
    list.onSelection = [this, &column] { selectionChanged (column); };
    list.onOpen = [this] (const juce::File& file) { open (file); };
    list.onMenu = [this] (const juce::File& file) { openMenu (file, PointerMenu::options()); };
    list.onKey = [this] (const juce::KeyPress& key) { return handleKey (key); };
}

void ColumnFileBrowser::cut (size_t columns)
{
    if (contents.columns.size() > columns)
        contents.columns.resize (columns);
}

/** Opens the chosen folder on the right, and drops what stood there. */
void ColumnFileBrowser::selectionChanged (BrowserColumn& column)
{
    if (isMaking)
        return;
    const auto found = std::find_if (contents.columns.begin(), contents.columns.end(),
                                     [&column] (const auto& each) { return each.get() == &column; });
    const auto index = static_cast<size_t> (found - contents.columns.begin());
    const auto chosen = column.selectedFolder();
    at = index;
    if (index + 1 < contents.columns.size() && contents.columns[index + 1]->folder == chosen)
        return;
    cut (index + 1);
    if (chosen != juce::File())
        add (chosen);
    arrange();
}

void ColumnFileBrowser::open (const juce::File& file)
{
    if (file.isDirectory())
        return enter();
    actions.loadToFreeDeck (file.getFullPathName());
}

void ColumnFileBrowser::step (int by)
{
    if (contents.columns.empty())
        return;
    auto& list = current().list();
    const auto count = list.count();
    if (count > 0)
        list.selectRow (list.getSelectedRow() < 0 ? 0
                                                  : juce::jlimit (0, count - 1, list.getSelectedRow() + by));
}

void ColumnFileBrowser::enter()
{
    if (contents.columns.empty() || current().selectedFolder() == juce::File()
        || at + 1 >= contents.columns.size())
        return;
    const auto hadKeyboard = hasKeyboardFocus (true);
    ++at;
    if (current().list().getSelectedRow() < 0)
        step (0);
    if (hadKeyboard)
        takeKeyboard();
    arrange();
}

void ColumnFileBrowser::leave()
{
    if (contents.columns.empty() || at == 0)
        return;
    const auto hadKeyboard = hasKeyboardFocus (true);
    --at;
    cut (at + 2);
    if (hadKeyboard)
        takeKeyboard();
    arrange();
}

void ColumnFileBrowser::takeKeyboard()
{
    if (!contents.columns.empty())
        current().list().grabKeyboardFocus();
}

bool ColumnFileBrowser::handleKey (const juce::KeyPress& key)
{
    const auto code = key.getKeyCode();
    if (code == juce::KeyPress::rightKey)
        return enter(), true;
    if (code == juce::KeyPress::leftKey)
        return leave(), true;
    if (code == juce::KeyPress::escapeKey && onEscape != nullptr)
        return onEscape(), true;
    auto& list = current().list();
    if (const auto row = list.getSelectedRow(); row >= 0 && MenuKey::opensMenu (key))
    {
        const auto area = list.localAreaToGlobal (list.getRowPosition (row, true));
        openMenu (list.getSelectedFile(), juce::PopupMenu::Options().withTargetScreenArea (area));
        return true;
    }
    if (!key.getModifiers().isCtrlDown() || code < '1' || code > '4')
        return false;
    actions.load (selectedFile().getFullPathName(), code - '1');
    return true;
}

void ColumnFileBrowser::openMenu (const juce::File& file, juce::PopupMenu::Options options)
{
    juce::PopupMenu menu;
    const auto path = file.getFullPathName();
    if (!file.isDirectory())
    {
        for (int deck = 0; deck < world.decks(); ++deck)
            menu.addItem (tr ("Load to Deck %1", deck + 1),
                          [this, path, deck] { actions.load (path, deck); });
        menu.addItem (tr ("Preview"), [this, path] { actions.preview (path); });
    }
    menu.addItem (tr ("Import into the Library"), onImport != nullptr && world.room != nullptr, false,
                  [this, paths = current().list().draggedFiles()] { onImport (paths); });
    menu.addItem (tr ("Show in Explorer"), [this, path] { actions.showInFolder (path); });
    ::openMenu (menu, *this, options);
}

void ColumnFileBrowser::setFontSize (int size)
{
    rowHeight = juce::jlimit (12, 22, size) + airAboveText;
    for (const auto& column : contents.columns)
        column->list().setRowHeight (rowHeight);
}

void ColumnFileBrowser::settle()
{
    for (const auto& column : contents.columns)
        column->settle();
}

void ColumnFileBrowser::resized()
{
    viewport.setBounds (getLocalBounds());
    arrange();
}

void ColumnFileBrowser::arrange()
{
    const auto count = static_cast<int> (contents.columns.size());
    const auto room = viewport.getMaximumVisibleWidth();
    const auto columnWidth = room / std::max (1, room / leastColumnWidth); // whole columns
    contents.setSize (std::max (viewport.getWidth(), count * columnWidth),
                      viewport.getMaximumVisibleHeight());
    contents.setSize (contents.getWidth(),
                      viewport.getMaximumVisibleHeight()); // once the bar is there, or not
    int x = 0;
    for (const auto& column : contents.columns)
    {
        column->setBounds (x, 0, columnWidth, contents.getHeight());
        x += columnWidth;
    }
    contents.repaint();
    // The column at hand is in sight, and what it has opened.
    const auto right = std::min (count, static_cast<int> (at) + 2) * columnWidth;
    viewport.setViewPosition (std::max (0, right - viewport.getMaximumVisibleWidth()), 0);
}
