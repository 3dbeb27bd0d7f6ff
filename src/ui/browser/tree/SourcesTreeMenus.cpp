// The menus of the tree's rows.

#include "session/similar/SimilarSongs.h"
#include "support/language/Translate.h"
#include "ui/browser/model/PointerMenu.h"
#include "ui/browser/tree/SourcesTree.h"
#include "ui/look/OpenMenu.h"

namespace
{
/** The choice of what counts most for recommendations. */
void addPriorityItems (juce::PopupMenu& menu, SourceActions& actions)
{
    menu.addSeparator();
    for (const auto& priority : SimilarSongs::priorities)
        menu.addItem (tr (priority.text), true, actions.similarPriority() == priority.value,
                      [&actions, value = priority.value] { actions.setSimilarPriority (value); });
}

using Role = TreeNode::Role;
using Format = SourceActions::Format;

juce::PopupMenu exportMenu (SourceActions& actions, const Source& source)
{
    juce::PopupMenu menu;
    menu.addItem (tr ("To M3U"), [&actions, source] { actions.exportTo (source, Format::m3u); });
    menu.addItem (tr ("To HTML"), [&actions, source] { actions.exportTo (source, Format::html); });
    return menu;
}

void addLibraryItems (juce::PopupMenu& menu, SourceActions& actions)
{
    menu.addItem (tr ("Import Music Folders"), [&actions] { actions.importFolder(); });
    menu.addItem (tr ("Create Backup"), [&actions] { actions.backUp(); });
    menu.addItem (tr ("Clear Collection"), [&actions] { actions.clearLibrary(); });
    menu.addSeparator();
    menu.addItem (tr ("Show Missing Files"), [&actions] { actions.showMissing(); });
    menu.addItem (tr ("Look For New Files"), [&actions] { actions.lookAtFolders(); });
    menu.addItem (tr ("Relocate Missing Files"), [&actions] { actions.relocate(); });
    menu.addSeparator();
    menu.addItem (tr ("Write Keys as 8A"), true, actions.writesKeysByWheel(),
                  [&actions] { actions.setWritesKeysByWheel (!actions.writesKeysByWheel()); });
}

void addPlaylistItems (juce::PopupMenu& menu, SourceActions& actions, const Source& source,
                       const std::function<void()>& rename)
{
    const auto isSmart = source.kind == SongListKind::smartPlaylist;
    if (isSmart)
        menu.addItem (tr ("Edit Smart Playlist"), [&actions, source] { actions.editRules (source); });
    menu.addItem (tr ("Delete"), [&actions, source] { actions.remove (source); });
    menu.addItem (tr ("Rename"), rename);
    menu.addItem (tr ("Move Up"), [&actions, source] { actions.move (source, -1); });
    menu.addItem (tr ("Move Down"), [&actions, source] { actions.move (source, 1); });
    menu.addItem (tr ("Append to Automix List"), [&actions, source] { actions.appendToAutomix (source); });
    menu.addSubMenu (tr ("Export"), exportMenu (actions, source));
    if (!isSmart)
        menu.addItem (tr ("Copy To Play Order"), actions.copyToPlayOrder != nullptr, false,
                      [&actions, source] { actions.copyToPlayOrder (source); });
}
}

void SourcesTree::openMenu (SourcesTreeItem& item, bool isByKey)
{
    auto menu = menuOf (item.node);
    if (world.room == nullptr || menu.getNumItems() == 0)
        return;
    ::openMenu (menu, *this,
                isByKey ? juce::PopupMenu::Options().withTargetScreenArea (
                    localAreaToGlobal (item.getItemPosition (true)))
                        : PointerMenu::options());
}

juce::PopupMenu SourcesTree::menuOf (const TreeNode& node)
{
    juce::PopupMenu menu;
    const auto source = node.source().value_or (Source {});
    switch (node.role)
    {
    case Role::library:
        addLibraryItems (menu, actions);
        break;
    case Role::playlists:
        menu.addItem (tr ("Create Playlist"), [this] { actions.createPlaylist(); });
        menu.addItem (tr ("Import Playlist"), [this] { actions.importPlaylist(); });
        break;
    case Role::smartPlaylists:
        menu.addItem (tr ("Create Smart Playlist"), [this] { actions.createSmartPlaylist(); });
        break;
    case Role::playlist:
    case Role::smartPlaylist:
        addPlaylistItems (
            menu, actions, source,
            [this, name = node.uniqueName()]
            {
                // The tree may have been built anew while the menu was open.
                if (auto* there = find ([&name] (const TreeNode& each) { return each.uniqueName() == name; }))
                    rename (*there);
            });
        break;
    case Role::recommendations:
    case Role::automix:
        menu.addItem (tr ("Clear List"), [this, source] { actions.clear (source); });
        menu.addSubMenu (tr ("Export"), exportMenu (actions, source));
        if (node.role == Role::recommendations)
            addPriorityItems (menu, actions);
        else
            menu.addItem (tr ("Continue with Similar Songs"), true, actions.continuesAutomix(),
                          [this] { actions.setContinuesAutomix (!actions.continuesAutomix()); });
        break;
    case Role::foreignPlaylist:
        menu.addSubMenu (tr ("Export"), exportMenu (actions, source));
        break;
    case Role::session:
    {
        auto exports = exportMenu (actions, source);
        exports.addItem (tr ("To Text"), [this, source] { actions.exportTo (source, Format::text); });
        menu.addSubMenu (tr ("Export"), exports);
        menu.addItem (tr ("Delete"), [this, source] { actions.remove (source); });
        break;
    }
    default:
        break;
    }
    if (source.isEditable() || source.kind == SongListKind::smartPlaylist || node.role == Role::playlists
        || node.role == Role::smartPlaylists)
        actions.addUndo (menu);
    return menu;
}
