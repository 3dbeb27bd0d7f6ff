#pragma once

#include "ui/browser/model/Source.h"

#include <juce_gui_basics/juce_gui_basics.h>

#include <functional>
#include <optional>

class SourcesTree;

/** A row of the tree, as it is told from the others. */
struct TreeNode
{
    enum class Role
    {
        root, ///< never shown
        library,
        albums,
        album,
        artists,
        artist,
        genres,
        genre,
        playlists,
        createPlaylist,
        playlist,
        smartPlaylists,
        createSmartPlaylist,
        smartPlaylist,
        automix,
        recommendations,
        foreign,
        foreignPlaylist,
        history,
        session
    };

    Role role = Role::root;
    juce::String text;
    int32_t id = -1;

    /** The songs that it stands for; nothing for a heading or an action. */
    std::optional<Source> source() const;

    /** The list that takes songs which are dropped here. */
    std::optional<ListRef> droppable() const;

    /** The name by which drop targets know a drag that begins here; empty where none does. */
    const char* dragName() const;

    /** Tells it from all other rows, also when the tree is built anew. */
    juce::String uniqueName() const;

    bool isHeading() const;
    bool isAction() const { return role == Role::createPlaylist || role == Role::createSmartPlaylist; }
};

/** The text of a row, which can be edited in place where a list has a name of its own. */
class SourcesTreeItemLabel : public juce::Label
{
public:
    /** @param renamed   called with a new name that is not empty */
    SourcesTreeItemLabel (const juce::String& text, const juce::Font&,
                          std::function<void (const juce::String&)> renamed);
};

/** A row of the tree. */
class SourcesTreeItem : public juce::TreeViewItem
{
public:
    SourcesTreeItem (SourcesTree&, TreeNode);

    const TreeNode node;

    bool mightContainSubItems() override;
    juce::String getUniqueName() const override { return node.uniqueName(); }
    int getItemHeight() const override;
    void paintItem (juce::Graphics&, int width, int height) override;
    void paintOpenCloseButton (juce::Graphics&, const juce::Rectangle<float>&, juce::Colour,
                               bool over) override;
    bool canBeSelected() const override { return !node.isAction(); }
    void itemSelectionChanged (bool isNowSelected) override;
    void itemOpennessChanged (bool isNowOpen) override;
    void itemClicked (const juce::MouseEvent&) override;
    void itemDoubleClicked (const juce::MouseEvent&) override;
    juce::String getAccessibilityName() override { return node.text; }

    juce::var getDragSourceDescription() override { return juce::String (node.dragName()); }
    bool isInterestedInDragSource (const juce::DragAndDropTarget::SourceDetails&) override;
    void itemDropped (const juce::DragAndDropTarget::SourceDetails&, int insertIndex) override;
    bool isInterestedInFileDrag (const juce::StringArray&) override;
    void filesDropped (const juce::StringArray&, int insertIndex) override;

private:
    SourcesTree& tree;
};
