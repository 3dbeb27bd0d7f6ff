// Mouse, keys and drags of the table.

#include "session/browse/LibraryFaults.h"
#include "skin/Palette.h"
#include "support/files/AudioFileTypes.h"
#include "support/language/Translate.h"
#include "ui/browser/model/MenuKey.h"
#include "ui/browser/model/PointerMenu.h"
#include "ui/browser/table/CellEditor.h"
#include "ui/browser/table/PlaylistTable.h"
#include "ui/browser/table/TableColumn.h"
#include "ui/drag/DragImage.h"
#include "ui/look/OpenMenu.h"

bool PlaylistTable::keyPressed (const juce::KeyPress& key)
{
    const auto code = key.getKeyCode();
    if (key.getModifiers().isCtrlDown() && code >= '1' && code <= '4')
    {
        actions.load (selectedPath(), code - '1');
        return true;
    }
    if (code == juce::KeyPress::escapeKey && onEscape != nullptr)
        return onEscape(), true;
    if (code == juce::KeyPress::F2Key && getSelectedRow() >= 0)
        return editCell (getSelectedRow(), TableColumn::of (SongField::title)), true;
    const auto row = getSelectedRow();
    if (row >= 0 && MenuKey::opensMenu (key))
        return openMenuAtRow (rowMenu (row, TableColumn::of (SongField::title)), row), true;
    if (row >= 0 && MenuKey::opensPlaylists (key) && !isForeign (inPlace.kind))
        return openMenuAtRow (actions.playlistMenu (selection()), row), true;
    if (TableListBox::keyPressed (key))
        return true;
    if (!typed.take (key))
        return false;
    findTyped();
    return true;
}

/** Goes to the next song that begins with what is typed, in the column by which the rows are sorted, else in the title. */
void PlaylistTable::findTyped()
{
    if (rows == nullptr)
        return;
    const auto isText = query.sort == SongField::artist || query.sort == SongField::album
                        || query.sort == SongField::genre || query.sort == SongField::filename;
    rows->findFirst (isText ? query.sort : SongField::title, typed.word(), typed.from (getSelectedRow()),
                     [this] (int row)
                     {
                         if (row >= 0)
                             selectRow (row);
                     });
}

void PlaylistTable::returnKeyPressed (int row)
{
    handRow = row;
    actions.loadToFreeDeck (pathOf (row));
}

void PlaylistTable::cellClicked (int row, int, const juce::MouseEvent&)
{
    handRow = row;
}

void PlaylistTable::openRowMenu (int row, juce::Point<int> place)
{
    handRow = row;
    const auto contents = getViewport()->getViewedComponent()->getPosition() + getViewport()->getPosition();
    auto menu = rowMenu (row, getHeader().getColumnIdAtX (place.x - contents.x));
    openMenu (menu, *this, PointerMenu::options());
}

void PlaylistTable::cellDoubleClicked (int row, int, const juce::MouseEvent& event)
{
    handRow = row;
    if (!event.mods.isPopupMenu())
        actions.loadToFreeDeck (pathOf (row));
}

juce::PopupMenu PlaylistTable::rowMenu (int row, int column)
{
    const auto songs = selection();
    const auto path = pathOf (row);
    const auto isForeignList = isForeign (inPlace.kind);
    const auto isRemovable = !isForeignList && inPlace.kind != SongListKind::history; // which is what was
    juce::PopupMenu menu;
    menu.addItem (tr ("Edit"), !isForeignList, false, [this, row, column] { editCell (row, column); });
    for (int deck = 0; deck < world.decks(); ++deck)
        menu.addItem (tr ("Load to Deck %1", deck + 1), path.isNotEmpty(), false,
                      [this, path, deck] { actions.load (path, deck); });
    menu.addItem (tr ("Append To Automix List"), !isForeignList, false,
                  [this, songs] { actions.appendToAutomix (songs); });
    menu.addItem (tr ("Preview"), path.isNotEmpty(), false, [this, path] { actions.preview (path); });
    menu.addItem (tr ("Reset Played Status"), [this, songs] { actions.resetPlayedStatus (songs); });
    menu.addItem (tr ("Reset Played Statistics"), !isForeignList, false,
                  [this, songs] { actions.resetPlayedStatistics (songs); });
    menu.addItem (tr ("Reload Tags"), !isForeignList, false, [this, songs] { actions.reloadTags (songs); });
    menu.addItem (tr ("Show in Explorer"), path.isNotEmpty(), false,
                  [this, path] { actions.showInFolder (path); });
    menu.addItem (tr ("Analyze"), path.isNotEmpty(), false, [this, songs] { actions.analyse (songs); });
    menu.addItem (tr ("Find Similar Songs"), path.isNotEmpty(), false,
                  [this, path] { actions.recommend (path); });
    menu.addItem (tr ("Remove"), isRemovable, false, [this, songs] { actions.remove (songs); });
    menu.addSeparator();
    menu.addSubMenu (tr ("Add To Playlist"), actions.playlistMenu (songs), !isForeignList);
    actions.addUndo (menu);
    return menu;
}

/** Opens a menu that a key asks for, below its row. */
void PlaylistTable::openMenuAtRow (juce::PopupMenu menu, int row)
{
    scrollToEnsureRowIsOnscreen (row);
    openMenu (menu, *this,
              juce::PopupMenu::Options().withTargetScreenArea (
                  localAreaToGlobal (getRowPosition (row, true).removeFromLeft (getRowHeight()))));
}

void PlaylistTable::editCell (int row, int column)
{
    const auto* song = rows != nullptr ? rows->row (row) : nullptr;
    if (song == nullptr || song->id < 0 || isForeign (inPlace.kind))
        return;
    if (!TableColumn::isEditable (column) || !getHeader().isColumnVisible (column))
        column = TableColumn::of (SongField::title);
    const auto shownField = TableColumn::fieldOf (column);
    if (!shownField || !getHeader().isColumnVisible (column))
        return;
    const auto field = *shownField;
    scrollToEnsureRowIsOnscreen (row);
    scrollToEnsureColumnIsOnscreen (column);
    editor =
        std::make_unique<CellEditor> (SongDatabase::fieldText (*song, field), painter.font(), field,
                                      [this, id = song->id, field] (std::optional<juce::String> text)
                                      {
                                          if (text)
                                              actions.edit (id, field, *text);
                                          // It is still in a call of the editor.
                                          juce::MessageManager::callAsync (
                                              [alive = juce::Component::SafePointer<PlaylistTable> (this)]
                                              {
                                                  if (alive == nullptr || alive->editor == nullptr)
                                                      return;
                                                  alive->editor.reset();
                                                  alive->grabKeyboardFocus();
                                              });
                                      });
    editedSong = song->id;
    editedColumn = column;
    addAndMakeVisible (*editor);
    placeEditor();
    editor->grabKeyboardFocus();
}

/** Keeps the field over its song's cell when other rows have come; it goes with the song. */
void PlaylistTable::placeEditor()
{
    if (editor == nullptr)
        return;
    const auto row = rows->indexOfSong (editedSong);
    if (row < 0 || !getHeader().isColumnVisible (editedColumn))
        return editor.reset();
    editor->setBounds (getCellPosition (editedColumn, row, true));
}

juce::String PlaylistTable::getCellTooltip (int row, int column)
{
    const auto shownRow = rowAt (row, false);
    if (column != TableColumn::status || shownRow.song == nullptr)
        return {};
    if (shownRow.isMissing)
        return tr ("The file is not there: %1", (*shownRow.song)[SongColumn::filename]);
    if (const auto deck = shownRow.status.deck())
        return tr ("On deck %1", juce::String::charToString (static_cast<juce::juce_wchar> ('A' + *deck)));
    return shownRow.status.wasPlayed ? tr ("Played in this session") : juce::String();
}

juce::var PlaylistTable::getDragSourceDescription (const juce::SparseSet<int>&)
{
    return DragSourceName::ofPress (DragSourceName::table);
}

juce::ScaledImage PlaylistTable::createSnapshotOfRows (const juce::SparseSet<int>& dragged, int& x, int& y)
{
    const auto* song = dragged.size() == 1 && rows != nullptr ? rows->row (dragged[0]) : nullptr;
    const auto text =
        song != nullptr ? (*song)[SongColumn::title] : trPlural ("%1 song", "%1 songs", dragged.size());
    return DragImage::make (*this, text, x, y);
}

int PlaylistTable::placeAt (juce::Point<int> position) const
{
    if (!isInOwnOrder())
        return list().size();
    const auto place = getInsertionIndexForPosition (position.x, position.y);
    return place < 0 ? list().size() : place;
}

void PlaylistTable::markPlace (int place)
{
    if (place == dropPlace)
        return;
    dropPlace = place;
    repaint();
}

void PlaylistTable::paintOverChildren (juce::Graphics& g)
{
    TableListBox::paintOverChildren (g);
    paintEmptyText (g);
    if (dropPlace < 0)
        return;
    g.setColour (palette::accent);
    const auto room = getLocalBounds().withTrimmedTop (getHeaderHeight());
    if (!isInOwnOrder())
        return g.drawRect (room, 2);
    const auto y = getRowPosition (dropPlace, true).getY();
    g.fillRect (room.withY (juce::jlimit (room.getY(), room.getBottom() - 2, y - 1)).withHeight (2));
}

bool PlaylistTable::isInterestedInDragSource (const SourceDetails& details)
{
    const auto name = details.description.toString();
    if (name == DragSourceName::table)
        return details.sourceComponent == this ? isInOwnOrder() : shown.isEditable();
    return name == DragSourceName::files && world.room != nullptr
           && (shown.isEditable() || shown.kind == SongListKind::library);
}

void PlaylistTable::itemDragMove (const SourceDetails& details)
{
    markPlace (placeAt (details.localPosition));
}

void PlaylistTable::itemDropped (const SourceDetails& details)
{
    markPlace (-1);
    if (world.room == nullptr)
        return;
    const auto place = placeAt (details.localPosition);
    const auto placed = [this, alive = juce::Component::SafePointer<juce::Component> (this)] (
                            int code, const std::vector<int32_t>& entryIds)
    {
        if (alive == nullptr)
            return;
        if (code == 0)
            selectEntries (entryIds);
        else
            world.say (LibraryFaults::sentence (code));
    };
    if (const auto* table = dynamic_cast<PlaylistTable*> (details.sourceComponent.get()))
    {
        const auto songs = table->selection();
        if (table == this)
            world.room->edits.move (shown.list(), songs.entryIds, place, placed);
        else
            world.room->edits.insert (shown.list(), place, songs.songIds, placed);
        return;
    }
    dropFiles (DragSourceName::filesOf (details), place);
}

bool PlaylistTable::isInterestedInFileDrag (const juce::StringArray&)
{
    return world.room != nullptr && (shown.isEditable() || shown.kind == SongListKind::library);
}

void PlaylistTable::filesDropped (const juce::StringArray& files, int x, int y)
{
    markPlace (-1);
    dropFiles (files, placeAt ({ x, y }));
}

void PlaylistTable::dropFiles (const juce::StringArray& files, int place)
{
    if (world.room == nullptr || files.isEmpty())
        return;
    world.room->jobs.importPaths (files, shown.isEditable() ? shown.list() : ListRef {},
                                  isInOwnOrder() ? place : -1);
}
