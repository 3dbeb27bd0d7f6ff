#pragma once

#include <juce_gui_basics/juce_gui_basics.h>

/** A view from which files are dragged. A view that takes drags asks the component where a drag began. */
class FileDragSource
{
public:
    virtual ~FileDragSource() = default;

    /** The files that are on their way, the first one first; of many songs those that are known. Message thread. */
    virtual juce::StringArray draggedFiles() const = 0;
};

/** The names by which views tell where a drag began. */
namespace DragSourceName
{
inline constexpr const char *table = "PlaylistTableDragSource", *files = "ColumnFileBrowserDragSource",
                            *library = "SourcesItemLibraryDragSource",
                            *playlist = "SourcesItemPlaylistDragSource",
                            *smartPlaylist = "SourcesItemSmartPlaylistDragSource",
                            *foreignPlaylist = "SourcesItemItunesPlaylistDragSource";

/** The name, or nothing while the right button is down, which opens a menu and drags nothing. Message thread. */
juce::var ofPress (const char* name);

/** The files of a drag from the table of songs or from the file browser; none of any other. */
juce::StringArray filesOf (const juce::DragAndDropTarget::SourceDetails&);
}
