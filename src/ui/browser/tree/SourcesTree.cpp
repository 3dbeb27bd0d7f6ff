#include "ui/browser/tree/SourcesTree.h"

#include "library/database/Schema.h"
#include "support/language/Translate.h"
#include "ui/browser/model/MenuKey.h"
#include "ui/browser/table/PlaylistTable.h"
#include "ui/drag/FileDragSource.h"
#include "ui/look/SMLookAndFeel.h"

#include <algorithm>

namespace
{
using Role = TreeNode::Role;

constexpr int indent = 14, airAboveText = 8;

Role valueRole (Role node)
{
    return node == Role::albums ? Role::album : node == Role::artists ? Role::artist : Role::genre;
}

/** Lists that come with the program are called in the language in use, until a hand gives them another name. */
juce::String shownSmartName (const juce::String& name)
{
    const auto own = Schema::defaultSmartNames();
    return std::find (own.begin(), own.end(), name) != own.end() ? tr (name) : name;
}
}

SourcesTree::SourcesTree (BrowserWorld& w, SourceActions& a) : world (w), actions (a)
{
    setTitle (tr ("Sources"));
    setRootItemVisible (false);
    setDefaultOpenness (false);
    setIndentSize (indent);
    getViewport()->setScrollBarsShown (true, false);
    setFontSize (world.engine.settings.editor[EditorPreference::listFontSize]);
    root = std::make_unique<SourcesTreeItem> (*this, TreeNode {});
    root->setOpen (true);
    setRootItem (root.get());
    fill();
    for (int i = 0; i < root->getNumSubItems(); ++i)
        root->getSubItem (i)->setOpen (true);
}

SourcesTree::~SourcesTree()
{
    setRootItem (nullptr);
}

void SourcesTree::openLibrary()
{
    if (world.room == nullptr || sources != nullptr)
        return;
    sources = std::make_unique<LibrarySources> (*world.room);
    sources->onChanged = [this] { fill(); };
    wantValues();
}

void SourcesTree::rebuild()
{
    fill(); // settings say what is shown, too
    if (sources != nullptr)
        sources->refresh();
}

void SourcesTree::settle()
{
    if (sources != nullptr)
        sources->settle();
    // JUCE lays rows out later, but those of a new root at once.
    setRootItem (nullptr);
    setRootItem (root.get());
}

SourcesTreeItem& SourcesTree::add (juce::TreeViewItem& parent, Role role, const juce::String& text,
                                   int32_t id)
{
    auto* item = new SourcesTreeItem (*this, TreeNode { role, text, id });
    parent.addSubItem (item);
    return *item;
}

void SourcesTree::addAll (juce::TreeViewItem& parent, Role role, const std::vector<SourceItem>& items)
{
    for (const auto& item : items)
        add (parent, role, role == Role::smartPlaylist ? shownSmartName (item.name) : item.name, item.id);
}

/** Builds all rows anew; what is open stays open, and what is selected stays selected. */
void SourcesTree::fill()
{
    owesFill = isHeld();
    if (owesFill)
        return;
    const juce::ScopedValueSetter<bool> filling (isFilling, true);
    const auto open = getOpennessState (true);
    root->clearSubItems();

    static const SourceTree nothing;
    const auto& lists = sources != nullptr ? sources->tree() : nothing;
    auto& library = add (*root, Role::library, tr ("Library"));
    const auto addValues = [&] (Role role, const juce::String& text, const juce::StringArray& values)
    {
        auto& node = add (library, role, text);
        for (const auto& value : values)
            if (value.isNotEmpty())
                add (node, valueRole (role), value);
    };
    addValues (Role::albums, tr ("Albums"), lists.albums);
    addValues (Role::artists, tr ("Artists"), lists.artists);
    addValues (Role::genres, tr ("Genres"), lists.genres);

    auto& playlists = add (*root, Role::playlists, tr ("Playlists"));
    add (playlists, Role::createPlaylist, tr ("Create Playlist"));
    addAll (playlists, Role::playlist, lists.playlists);
    auto& smart = add (*root, Role::smartPlaylists, tr ("Smart Playlists"));
    add (smart, Role::createSmartPlaylist, tr ("Create Smart Playlist"));
    addAll (smart, Role::smartPlaylist, lists.smartPlaylists);
    add (*root, Role::automix, tr ("Automix List"));
    add (*root, Role::recommendations, tr ("Recommendation List"));
    if (!lists.history.empty())
        addAll (add (*root, Role::history, tr ("History")), Role::session, lists.history);
    if (!lists.foreignPlaylists.empty() && world.engine.settings.editor[EditorPreference::showItunes] != 0)
        addAll (add (*root, Role::foreign, "iTunes"), Role::foreignPlaylist, lists.foreignPlaylists);

    if (open != nullptr)
        restoreOpennessState (*open, false);
    select (selected);
    if (sources != nullptr && selected.id >= 0 && getNumSelectedItems() == 0)
        leaveGone();
}

/** True while a hand drags, or renames. */
bool SourcesTree::isHeld() const
{
    const auto* drags =
        juce::DragAndDropContainer::findParentDragContainerFor (const_cast<SourcesTree*> (this));
    return label != nullptr || isMouseButtonDown (true) || (drags != nullptr && drags->isDragAndDropActive());
}

void SourcesTree::catchUp()
{
    if (owesFill)
        fill();
}

/** The list in view is no more: goes to the library. */
void SourcesTree::leaveGone()
{
    const Source whole { SongListKind::library, -1, "Library" };
    select (whole);
    if (onSource != nullptr)
        onSource (whole);
}

juce::String SourcesTree::openness() const
{
    const auto state = getOpennessState (false);
    return state != nullptr ? state->toString (juce::XmlElement::TextFormat().singleLine()) : juce::String();
}

void SourcesTree::restoreOpenness (const juce::String& text)
{
    if (const auto state = juce::parseXML (text))
        restoreOpennessState (*state, false);
}

void SourcesTree::setFontSize (int size)
{
    size = juce::jlimit (12, 22, size);
    if (height == size + airAboveText && textFont.getHeight() > 0.0f)
        return;
    textFont = SMLookAndFeel::font (static_cast<float> (size));
    height = size + airAboveText;
    if (root != nullptr)
        root->treeHasChanged();
}

void SourcesTree::resized()
{
    TreeView::resized();
    label.reset();
}

SourcesTreeItem* SourcesTree::find (const std::function<bool (const TreeNode&)>& wanted) const
{
    std::function<SourcesTreeItem*(juce::TreeViewItem&)> below = [&] (juce::TreeViewItem& item)
    {
        for (int i = 0; i < item.getNumSubItems(); ++i)
        {
            auto* child = static_cast<SourcesTreeItem*> (item.getSubItem (i));
            if (wanted (child->node))
                return child;
            if (auto* found = below (*child))
                return found;
        }
        return static_cast<SourcesTreeItem*> (nullptr);
    };
    return below (*root);
}

void SourcesTree::select (const Source& source)
{
    auto* item = find (
        [&source] (const TreeNode& node)
        {
            const auto there = node.source();
            return there && there->kind == source.kind && there->id == source.id
                   && (source.id >= 0 || hasOwnOrder (source.kind) || there->name == source.name
                       || source.kind == SongListKind::library);
        });
    if (item != nullptr)
    {
        item->setSelected (true, true, juce::dontSendNotification);
        if (!(selected == source))
            scrollToKeepItemVisible (item);
    }
    else
        clearSelectedItems();
    selected = source;
}

std::optional<Source> SourcesTree::selectedSource() const
{
    const auto* item = static_cast<const SourcesTreeItem*> (getSelectedItem (0));
    return item != nullptr ? item->node.source() : std::nullopt;
}

std::optional<Source> SourcesTree::named (const juce::String& name) const
{
    // Sets name the rows of the program in English.
    const auto* item = find (
        [&name, own = tr (name)] (const TreeNode& node)
        { return node.source() && (node.text.equalsIgnoreCase (name) || node.text.equalsIgnoreCase (own)); });
    return item != nullptr ? item->node.source() : std::nullopt;
}

std::vector<SourceItem> SourcesTree::playlists() const
{
    return sources != nullptr ? sources->tree().playlists : std::vector<SourceItem>();
}

void SourcesTree::openValues()
{
    for (const auto role : { Role::albums, Role::artists, Role::genres })
        if (auto* item = find ([role] (const TreeNode& node) { return node.role == role; }))
            item->setOpen (true);
}

void SourcesTree::itemSelected (SourcesTreeItem& item)
{
    const auto source = item.node.source();
    if (isFilling || !source || *source == selected)
        return;
    selected = *source;
    if (onSource != nullptr)
        onSource (selected);
}

/** Albums, artists and genres are read once they are to be seen. */
void SourcesTree::itemOpened (SourcesTreeItem& item, bool isOpen)
{
    if (!isFilling && isOpen
        && (item.node.role == Role::albums || item.node.role == Role::artists
            || item.node.role == Role::genres))
        wantValues();
}

void SourcesTree::wantValues()
{
    if (sources == nullptr)
        return;
    const auto isOpen = [this] (Role role)
    {
        const auto* item = find ([role] (const TreeNode& node) { return node.role == role; });
        return item != nullptr && item->isOpen();
    };
    sources->wantValues (isOpen (Role::albums), isOpen (Role::artists), isOpen (Role::genres));
}

void SourcesTree::step (int by)
{
    const auto last = getNumRowsInTree() - 1;
    if (last < 0)
        return;
    auto* now = getSelectedItem (0);
    auto row = now == nullptr ? 0 : now->getRowNumberInTree() + by;
    for (; row >= 0 && row <= last; row += by < 0 ? -1 : 1)
        if (auto* item = getItemOnRow (row); item->canBeSelected())
        {
            item->setSelected (true, true);
            return scrollToKeepItemVisible (item);
        }
}

void SourcesTree::enter()
{
    auto* item = getSelectedItem (0);
    if (item != nullptr && item->mightContainSubItems() && !item->isOpen())
        item->setOpen (true);
    else if (onEnter != nullptr)
        onEnter();
}

void SourcesTree::leave()
{
    auto* item = getSelectedItem (0);
    if (item == nullptr)
        return;
    if (item->mightContainSubItems() && item->isOpen())
        return item->setOpen (false);
    if (auto* parent = item->getParentItem(); parent != nullptr && parent != root.get())
    {
        parent->setSelected (true, true);
        scrollToKeepItemVisible (parent);
    }
}

bool SourcesTree::keyPressed (const juce::KeyPress& key)
{
    auto* item = static_cast<SourcesTreeItem*> (getSelectedItem (0));
    const auto code = key.getKeyCode();
    if (code == juce::KeyPress::escapeKey && onEscape != nullptr)
        return onEscape(), true;
    if (code == juce::KeyPress::returnKey)
        return enter(), true;
    if (item != nullptr && MenuKey::opensMenu (key))
        return openMenu (*item, true), true;
    if (item != nullptr && code == juce::KeyPress::F2Key)
        return rename (*item), true;
    if (item != nullptr && code == juce::KeyPress::deleteKey
        && (item->node.role == Role::playlist || item->node.role == Role::smartPlaylist))
        return actions.remove (*item->node.source()), true;
    // JUCE's keys would select rows that only act.
    if (code == juce::KeyPress::upKey || code == juce::KeyPress::downKey)
        return step (code == juce::KeyPress::upKey ? -1 : 1), true;
    if (TreeView::keyPressed (key))
        return true;
    if (!typed.take (key))
        return false;
    const auto nameOf = [this] (int row)
    {
        const auto* there = static_cast<SourcesTreeItem*> (getItemOnRow (row));
        return there->canBeSelected() ? there->node.text : juce::String();
    };
    const auto row =
        typed.find (item != nullptr ? item->getRowNumberInTree() : -1, getNumRowsInTree(), nameOf);
    if (auto* found = row >= 0 ? getItemOnRow (row) : nullptr)
    {
        found->setSelected (true, true);
        scrollToKeepItemVisible (found);
    }
    return true;
}

void SourcesTree::actOn (SourcesTreeItem& item)
{
    if (item.node.role == Role::createPlaylist)
        actions.createPlaylist();
    else if (item.node.role == Role::createSmartPlaylist)
        actions.createSmartPlaylist();
}

/** Puts a field over the row's text. */
void SourcesTree::rename (SourcesTreeItem& item)
{
    if (item.node.role != Role::playlist && item.node.role != Role::smartPlaylist)
        return;
    label = std::make_unique<SourcesTreeItemLabel> (
        item.node.text, textFont,
        [this, source = *item.node.source()] (const juce::String& name) { actions.rename (source, name); });
    addAndMakeVisible (*label);
    const auto area = item.getItemPosition (true);
    label->setBounds (area.withRight (getWidth()));
    label->onEditorHide = [this]
    {
        // It is still in a call of the label.
        juce::MessageManager::callAsync (
            [alive = SafePointer<SourcesTree> (this)]
            {
                if (alive == nullptr)
                    return;
                alive->label.reset();
                alive->grabKeyboardFocus();
            });
    };
    label->showEditor();
}

bool SourcesTree::takes (const SourcesTreeItem& item,
                         const juce::DragAndDropTarget::SourceDetails& details) const
{
    const auto name = details.description.toString();
    const auto list = item.node.droppable();
    if (name == DragSourceName::files)
        return list.has_value() || item.node.role == Role::library;
    if (!list || name == DragSourceName::foreignPlaylist)
        return false;
    if (name == DragSourceName::table)
    {
        const auto* table = dynamic_cast<const PlaylistTable*> (details.sourceComponent.get());
        return table != nullptr && !isForeign (table->rowsSource().kind);
    }
    return details.sourceComponent == this && name.startsWith ("SourcesItem");
}

void SourcesTree::drop (const SourcesTreeItem& item, const juce::DragAndDropTarget::SourceDetails& details)
{
    const auto files = DragSourceName::filesOf (details);
    const auto list = item.node.droppable();
    if (const auto* table = dynamic_cast<const PlaylistTable*> (details.sourceComponent.get()))
    {
        if (list)
            actions.append (table->selection().songIds, *list);
    }
    else if (!files.isEmpty())
        drop (item, files);
    else if (const auto source = selectedSource(); source && list)
        actions.append (*source, *list);
}

bool SourcesTree::takes (const SourcesTreeItem& item, const juce::StringArray&) const
{
    return world.room != nullptr && (item.node.droppable().has_value() || item.node.role == Role::library);
}

void SourcesTree::drop (const SourcesTreeItem& item, const juce::StringArray& files)
{
    actions.importFiles (files, item.node.droppable().value_or (ListRef {}));
}
