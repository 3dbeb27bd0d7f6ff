#include "ui/browser/tree/SourcesTreeItem.h"

#include "skin/Palette.h"
#include "ui/browser/tree/SourcesTree.h"
#include "ui/drag/FileDragSource.h"
#include "ui/look/SMLookAndFeel.h"

namespace
{
using Role = TreeNode::Role;

constexpr int margin = 4;

SongListKind kindOf (Role role)
{
    switch (role)
    {
    case Role::library:
        return SongListKind::library;
    case Role::albums:
        return SongListKind::albums;
    case Role::album:
        return SongListKind::album;
    case Role::artists:
    case Role::genres:
        return SongListKind::artists;
    case Role::artist:
        return SongListKind::artist;
    case Role::genre:
        return SongListKind::genre;
    case Role::playlist:
        return SongListKind::playlist;
    case Role::smartPlaylist:
        return SongListKind::smartPlaylist;
    case Role::automix:
        return SongListKind::automix;
    case Role::recommendations:
        return SongListKind::recommendation;
    case Role::foreignPlaylist:
        return SongListKind::foreignPlaylist;
    case Role::session:
        return SongListKind::history;
    default:
        return SongListKind::none;
    }
}
}

std::optional<Source> TreeNode::source() const
{
    const auto kind = kindOf (role);
    if (kind == SongListKind::none)
        return {};
    return Source { kind, id, text };
}

std::optional<ListRef> TreeNode::droppable() const
{
    if (role == Role::playlist)
        return ListRef { SongListKind::playlist, id };
    if (role == Role::automix)
        return ListRef { SongListKind::automix, -1 };
    return {};
}

const char* TreeNode::dragName() const
{
    switch (role)
    {
    case Role::library:
    case Role::album:
    case Role::artist:
    case Role::genre:
        return DragSourceName::library;
    case Role::playlist:
        return DragSourceName::playlist;
    case Role::smartPlaylist:
        return DragSourceName::smartPlaylist;
    case Role::foreignPlaylist:
        return DragSourceName::foreignPlaylist;
    default:
        return "";
    }
}

juce::String TreeNode::uniqueName() const
{
    const auto number = juce::String (static_cast<int> (role));
    if (id >= 0)
        return number + ":" + juce::String (id);
    // The other rows are there once, under a name in the language in use.
    const auto isValue = role == Role::album || role == Role::artist || role == Role::genre;
    return isValue ? number + ":" + text : number;
}

bool TreeNode::isHeading() const
{
    switch (role)
    {
    case Role::library:
    case Role::playlists:
    case Role::smartPlaylists:
    case Role::automix:
    case Role::recommendations:
    case Role::foreign:
    case Role::history:
        return true;
    default:
        return false;
    }
}

SourcesTreeItemLabel::SourcesTreeItemLabel (const juce::String& text, const juce::Font& font,
                                            std::function<void (const juce::String&)> renamed)
{
    setFont (font);
    setText (text, juce::dontSendNotification);
    setColour (backgroundWhenEditingColourId, palette::well);
    onTextChange = [this, before = text, renamed = std::move (renamed)]
    {
        const auto name = getText().trim();
        if (name.isNotEmpty() && name != before)
            renamed (name);
    };
}

SourcesTreeItem::SourcesTreeItem (SourcesTree& t, TreeNode n) : node (std::move (n)), tree (t)
{
    setLinesDrawnForSubItems (false);
}

bool SourcesTreeItem::mightContainSubItems()
{
    switch (node.role)
    {
    case Role::root:
    case Role::library:
    case Role::albums:
    case Role::artists:
    case Role::genres:
    case Role::playlists:
    case Role::smartPlaylists:
    case Role::foreign:
    case Role::history:
        return true;
    default:
        return false;
    }
}

int SourcesTreeItem::getItemHeight() const
{
    return tree.rowHeight();
}

void SourcesTreeItem::paintItem (juce::Graphics& g, int width, int height)
{
    g.setFont (tree.font());
    g.setColour (isSelected() || node.isHeading() ? palette::value : palette::tableText);
    g.drawText (node.text, juce::Rectangle<int> (width, height).reduced (margin, 0),
                juce::Justification::centredLeft, true);
}

void SourcesTreeItem::paintOpenCloseButton (juce::Graphics& g, const juce::Rectangle<float>& area,
                                            juce::Colour, bool over)
{
    if (getNumSubItems() == 0 && isOpen())
        return;
    SMLookAndFeel::drawArrow (g, area.getSmallestIntegerContainer(), over ? palette::value : palette::label,
                              isOpen() ? 0.0f : -0.5f * juce::MathConstants<float>::pi);
}

void SourcesTreeItem::itemSelectionChanged (bool isNowSelected)
{
    if (isNowSelected)
        tree.itemSelected (*this);
}

void SourcesTreeItem::itemOpennessChanged (bool isNowOpen)
{
    tree.itemOpened (*this, isNowOpen);
}

void SourcesTreeItem::itemClicked (const juce::MouseEvent& event)
{
    if (event.mods.isPopupMenu())
        tree.openMenu (*this, false);
    else if (node.isAction())
        tree.actOn (*this);
}

void SourcesTreeItem::itemDoubleClicked (const juce::MouseEvent& event)
{
    if (node.role == Role::playlist || node.role == Role::smartPlaylist)
        tree.rename (*this);
    else
        TreeViewItem::itemDoubleClicked (event);
}

bool SourcesTreeItem::isInterestedInDragSource (const juce::DragAndDropTarget::SourceDetails& details)
{
    return tree.takes (*this, details);
}

void SourcesTreeItem::itemDropped (const juce::DragAndDropTarget::SourceDetails& details, int)
{
    tree.drop (*this, details);
}

bool SourcesTreeItem::isInterestedInFileDrag (const juce::StringArray& files)
{
    return tree.takes (*this, files);
}

void SourcesTreeItem::filesDropped (const juce::StringArray& files, int)
{
    tree.drop (*this, files);
}
