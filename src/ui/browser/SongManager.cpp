#include "ui/browser/SongManager.h"

#include "library/exchange/ListSummary.h"
#include "skin/Palette.h"
#include "support/language/Translate.h"
#include "ui/browser/actions/EditAnswers.h"
#include "ui/browser/search/SearchFields.h"
#include "ui/panel/PanelPaint.h"

#include <array>
#include <cmath>

namespace
{
constexpr int searchHeight = 28, lineHeight = 24, barWidth = 4, margin = 8, gap = 4;
constexpr int leastTree = 120, leastTable = 400, leastFiles = 0;
constexpr int leastCover = 80, mostCover = 240;
constexpr int windowButtonWidth = 24, previewWidth = 420;
constexpr int libraryRetryTurns = 10, fileTurns = 10; ///< calm ones, of 200 ms
constexpr double tempoStep = 0.005; ///< a smaller change of the master's tempo asks for no other rows
constexpr const char *panesName = "browser panes", *fieldsName = "browser search fields",
                     *treeName = "browser tree", *sourceName = "browser source",
                     *folderName = "browser folder";
enum Pane
{
    treePane,
    leftBarPane,
    tablePane,
    rightBarPane,
    filesPane
};

juce::String textOf (const Source& source)
{
    return juce::String (static_cast<int> (source.kind)) + ":" + juce::String (source.id) + ":" + source.name;
}

Source sourceOf (const juce::String& text)
{
    const auto rest = text.fromFirstOccurrenceOf (":", false, false);
    Source source { static_cast<SongListKind> (text.getIntValue()), rest.getIntValue(),
                    rest.fromFirstOccurrenceOf (":", false, false) };
    return text.containsChar (':') ? source : Source { SongListKind::library, -1, "Library" };
}
}

SongManager::SongManager (CPlatterdex& e, Session* session)
    : PollingView (Pace::moving),
      world { e, session },
      status (e, [this] (const juce::String& path)
              { return world.room != nullptr && world.room->history.isPlayed (path); }),
      songActions (world, status, *this),
      sourceActions (world, *this),
      tree (world, sourceActions),
      cover (world),
      table (world, songActions, status),
      files (world, songActions),
      jobLine (world),
      preview (e.preview, songActions.player),
      windowButton (juce::String::charToString (0x2197)),
      leftBar (*this, &panes, leftBarPane),
      rightBar (*this, &panes, rightBarPane)
{
    setOpaque (true);
    setTitle (tr ("Browser"));
    setFocusContainerType (FocusContainerType::keyboardFocusContainer);

    search.setFields (SearchFields::fromText (world.preference (fieldsName, SearchFields::byDefault)));
    search.onSearch = [this]
    {
        table.setSearch (search.text(), search.fields());
        table.setGridsToCheck (search.wantsGridsToCheck());
        followMaster();
    };
    search.onFields = [this] { world.setPreference (fieldsName, SearchFields::toText (search.fields())); };
    search.onLeave = [this] { takeKeyboard(); };
    tree.onSource = [this] (const Source& source)
    {
        table.setSource (source);
        world.setPreference (sourceName, textOf (source).removeCharacters ("\r\n"));
    };
    tree.onEnter = [this] { takeKeyboard(); };
    table.onSelection = [this] { songSelected(); };
    table.onRows = [this] { pollCalm(); };
    files.onImport = [this] (const juce::StringArray& paths) { sourceActions.importFiles (paths, {}); };
    tree.onEscape = table.onEscape = files.onEscape = [this]
    {
        if (onEscape != nullptr)
            onEscape();
    };
    songActions.showRecommendations = [this]
    {
        if (const auto list = tree.named ("Recommendation List"))
            showSource (*list);
    };
    songActions.playlists = [this] { return tree.playlists(); };
    songActions.createPlaylist = [this] (std::vector<int32_t> songIds)
    { sourceActions.createPlaylist (std::move (songIds)); };
    sourceActions.showSource = [this] (const Source& source) { showSource (source); };
    sourceActions.copyToPlayOrder = [this] (const Source& source)
    {
        if (world.room != nullptr && table.rowsSource() == source)
            world.room->edits.reorder (source.list(), table.entryIds(), {});
    };

    windowButton.setComponentID ("_openInNewWindowButton");
    windowButton.setTooltip (tr ("Opens song manager in a new window."));
    windowButton.onClick = [this]
    {
        if (onOpenInWindow != nullptr)
            onOpenInWindow();
    };

    for (auto* part : std::initializer_list<juce::Component*> {
             &search, &windowButton, &tree, &leftBar, &table, &rightBar, &files, &jobLine, &preview })
        addAndMakeVisible (part);
    addChildComponent (cover);
    table.setExplicitFocusOrder (1); // the keyboard comes back to the songs when a question is answered
    table.setSearch ({}, search.fields());
    restorePanes();
    tree.restoreOpenness (world.preference (treeName));
    files.showFolder (juce::File (world.preference (folderName, e.settings.audioFolder.get())));
    juce::Desktop::getInstance().addFocusChangeListener (this);
    BrowserRequests::ofProcess().add (e, *this);
}

SongManager::~SongManager()
{
    BrowserRequests::ofProcess().remove (*this);
    juce::Desktop::getInstance().removeFocusChangeListener (this);
    table.store();
    world.setPreference (treeName, tree.openness());
    world.setPreference (folderName, files.folder().getFullPathName());
}

/** Takes the library as soon as there is one. @returns whether there is */
bool SongManager::openLibrary (LibraryRoom* room)
{
    if (world.room != nullptr)
        return true;
    world.room = room;
    if (room == nullptr)
        return table.repaint(), false;
    tree.openLibrary();
    table.openLibrary();
    table.repaint();
    showSource (sourceOf (world.preference (sourceName)));
    followForeign();
    return true;
}

void SongManager::refresh()
{
    PollingView::refresh();
    tree.rebuild();
    table.refresh();
}

void SongManager::showSource (const Source& source)
{
    tree.select (source);
    table.setSource (source);
}

bool SongManager::showSourceNamed (const juce::String& name)
{
    settle();
    auto source = tree.named (name);
    if (!source)
    {
        tree.openValues();
        settle();
        source = tree.named (name);
    }
    if (!source)
        return false;
    showSource (*source);
    settle();
    return true;
}

void SongManager::settle()
{
    files.settle();
    if (!openLibrary (world.session != nullptr ? world.session->browser() : nullptr))
        return;
    tree.settle();
    table.settle();
    tree.settle();
    pollCalm();
}

void SongManager::takeKeyboard()
{
    table.selectSomething();
    table.grabKeyboardFocus();
}

void SongManager::songSelected()
{
    cover.show (cover.isVisible() ? table.selectedPath() : juce::String());
}

void SongManager::pollMoving()
{
    BrowserRequests::ofProcess().deliver();
}

void SongManager::pollCalm()
{
    followLibrary();
    tree.catchUp();
    if (++turns % fileTurns == 0)
        table.lookForFiles();
    if (status.look())
        table.repaint();
    followSettings();
    followMaster();
    const auto next = world.room == nullptr ? table.emptyText()
                      : table.isOpening()   ? tr ("Searching...")
                                            : listSummary (table.list());
    if (next == summary)
        return;
    summary = next;
    repaint (summaryArea);
}

/** Asks for the library until it is open; after a fault now and then. */
void SongManager::followLibrary()
{
    if (world.room != nullptr || world.session == nullptr)
        return;
    if (!world.session->isOpeningLibrary() && --turnsUntilLibrary >= 0)
        return;
    turnsUntilLibrary = libraryRetryTurns;
    openLibrary (world.session->browserWhenOpen());
}

void SongManager::followSettings()
{
    const auto& settings = world.engine.settings.editor;
    if (const int size = settings[EditorPreference::listFontSize]; size != fontSize)
    {
        fontSize = size;
        table.setFontSize (size);
        tree.setFontSize (size);
        files.setFontSize (size);
    }
    if (const int isShown = settings[EditorPreference::showCoverArt]; isShown != shownCover)
    {
        shownCover = isShown;
        resized();
    }
    if (const auto hint = tr (world.engine.settings.searchText.get()); hint != shownHint)
    {
        shownHint = hint;
        search.setHint (hint);
    }
    followForeign();
}

/** Reads the foreign library once it is to be shown, and again when another one is named. */
void SongManager::followForeign()
{
    if (world.room == nullptr)
        return;
    const int isShown = world.engine.settings.editor[EditorPreference::showItunes];
    const auto named = world.engine.settings.itunesLibrary.get();
    if (isShown == shownForeign && named == namedForeign)
        return;
    if (std::exchange (shownForeign, isShown) >= 0)
        tree.rebuild();
    namedForeign = named;
    const auto file = juce::File::isAbsolutePath (named) && juce::File (named).existsAsFile()
                          ? juce::File (named)
                          : juce::File::getSpecialLocation (juce::File::userMusicDirectory)
                                .getChildFile ("iTunes/iTunes Music Library.xml");
    if (isShown != 0 && file.existsAsFile())
        world.room->jobs.importForeign (file);
}

/** Keeps the filter of tempos at the master's. */
void SongManager::followMaster()
{
    const int master = world.engine.settings.masterDeck;
    const auto percent = search.fitPercent();
    if (!percent || master < 0 || master >= world.decks())
        return table.setFit (0.0, 0.0);
    const auto& deck = status.decks()[static_cast<size_t> (master)].now();
    const auto bpm = deck.loadedFrames > 0 && deck.grid.isKnown() ? deck.bpm() : 0.0;
    const auto [usedBpm, usedPercent] = table.fit();
    if (std::abs (usedPercent - *percent) > 0.0 || std::abs (bpm - usedBpm) > tempoStep * bpm)
        table.setFit (bpm, *percent);
}

void SongManager::carryOut (BrowserRequest request, int deck)
{
    using R = BrowserRequest;
    const auto file = [this]
    {
        const auto selected = files.selectedFile();
        return selected != juce::File() ? selected.getFullPathName() : juce::String();
    };
    switch (request)
    {
    case R::listUp:
        return table.step (-1);
    case R::listDown:
        return table.step (1);
    case R::listPageUp:
        return table.stepPage (-1);
    case R::listPageDown:
        return table.stepPage (1);
    case R::listLoad:
        return songActions.load (table.selectedPath(), deck);
    case R::listPreview:
        return songActions.preview (table.selectedPath());
    case R::previewPause:
        return songActions.player.playOrPause();
    case R::sourceUp:
        return tree.step (-1);
    case R::sourceDown:
        return tree.step (1);
    case R::sourceEnter:
        return tree.enter();
    case R::sourceExit:
        return tree.leave();
    case R::fileUp:
        return files.step (-1);
    case R::fileDown:
        return files.step (1);
    case R::fileEnter:
        return files.enter();
    case R::fileExit:
        return files.leave();
    case R::fileLoad:
        return songActions.load (file(), deck);
    case R::filePreview:
        return songActions.preview (file());
    }
}

juce::Component* SongManager::focusedPane() const
{
    for (auto* pane : std::initializer_list<const juce::Component*> { &search, &table, &tree, &files })
        if (pane->hasKeyboardFocus (true))
            return const_cast<juce::Component*> (pane);
    return nullptr;
}

void SongManager::globalFocusChanged (juce::Component*)
{
    if (auto* pane = focusedPane(); pane != lit)
    {
        lit = pane;
        repaint();
    }
}

/** Moves the keyboard on among search, songs, sources and files. */
void SongManager::turnKeyboard (int by)
{
    constexpr int count = 4;
    const std::array<juce::Component*, count> order { &search, &table, &tree, &files };
    const auto* now = focusedPane();
    auto at = static_cast<int> (std::find (order.begin(), order.end(), now) - order.begin());
    do
        at = (at + by + count) % count;
    while (order[static_cast<size_t> (at)]->getWidth() < leastTree / 2);
    auto* next = order[static_cast<size_t> (at)];
    if (next == &search)
        search.takeKeyboard();
    else if (next == &files)
        files.takeKeyboard();
    else if (next == &table)
        takeKeyboard();
    else
        next->grabKeyboardFocus();
}

bool SongManager::keyPressed (const juce::KeyPress& key)
{
    const auto code = key.getKeyCode();
    const auto mods = key.getModifiers();
    if (focusedPane() == nullptr)
        return false;
    if (code == juce::KeyPress::tabKey)
        return turnKeyboard (mods.isShiftDown() ? -1 : 1), true;
    if (mods.isCtrlDown() && !mods.isShiftDown() && (code == 'z' || code == 'Z') && !search.hasKeyboard())
        return EditAnswers::undo (world, *this), true;
    return false;
}

void SongManager::PaneBar::hasBeenMoved()
{
    StretchableLayoutResizerBar::hasBeenMoved();
    manager.resized();
    manager.storePanes();
}

void SongManager::PaneBar::paint (juce::Graphics& g)
{
    g.fillAll (palette::panel);
    g.setColour (isMouseOverOrDragging() ? palette::accent : palette::line);
    g.fillRect (getLocalBounds().withSizeKeepingCentre (1, getHeight()));
}

void SongManager::restorePanes()
{
    const auto kept = juce::StringArray::fromTokens (world.preference (panesName), " ", {});
    const auto share = [&kept] (int index, double byDefault)
    {
        const auto value = index < kept.size() ? kept[index].getDoubleValue() : 0.0;
        return -juce::jlimit (0.01, 0.9, value > 0.0 ? value : byDefault);
    };
    panes.setItemLayout (treePane, leastTree, -0.6, share (0, 0.17));
    panes.setItemLayout (leftBarPane, barWidth, barWidth, barWidth);
    panes.setItemLayout (tablePane, leastTable, -1.0, share (1, 0.60));
    panes.setItemLayout (rightBarPane, barWidth, barWidth, barWidth);
    panes.setItemLayout (filesPane, leastFiles, -0.6, share (2, 0.23));
}

void SongManager::storePanes()
{
    juce::StringArray shares;
    const auto room = static_cast<double> (std::max (1, getWidth()));
    for (const auto pane : { treePane, tablePane, filesPane })
        shares.add (juce::String (panes.getItemCurrentAbsoluteSize (pane) / room, 4));
    world.setPreference (panesName, shares.joinIntoString (" "));
}

void SongManager::resized()
{
    auto area = getLocalBounds();
    auto line = area.removeFromBottom (std::min (lineHeight, area.getHeight())).reduced (margin, 2);
    // The rounding corner of the window lies in the lower right.
    line.removeFromRight (margin);
    preview.setBounds (line.removeFromRight (std::min (previewWidth, line.getWidth() / 2)));
    line.removeFromRight (gap);
    summaryArea = line.removeFromLeft (line.getWidth() * 2 / 5);
    line.removeFromLeft (gap);
    jobLine.setBounds (line);

    juce::Component* parts[] { nullptr, &leftBar, nullptr, &rightBar, nullptr };
    panes.layOutComponents (parts, juce::numElementsInArray (parts), area.getX(), area.getY(),
                            area.getWidth(), area.getHeight(), false, true);
    auto left = area.withRight (leftBar.getX()), right = area.withLeft (rightBar.getRight());
    auto middle = area.withLeft (leftBar.getRight()).withRight (rightBar.getX());

    const auto side = std::min ({ left.getWidth(), mostCover, left.getHeight() / 3 });
    const auto hasCover = shownCover > 0 && side >= leastCover;
    cover.setVisible (hasCover);
    if (hasCover)
        cover.setBounds (left.removeFromBottom (side));
    tree.setBounds (left);
    auto top = middle.removeFromTop (std::min (searchHeight, middle.getHeight()));
    windowButton.setBounds (top.removeFromRight (windowButtonWidth + gap)
                                .withTrimmedRight (gap)
                                .withSizeKeepingCentre (windowButtonWidth, windowButtonWidth));
    top.removeFromRight (gap);
    search.setBounds (top);
    table.setBounds (middle);
    files.setBounds (right);
    songSelected();
}

void SongManager::paint (juce::Graphics& g)
{
    g.fillAll (palette::panel);
    PanelPaint::label (g, summary, summaryArea, juce::Justification::centredLeft);
}

void SongManager::paintOverChildren (juce::Graphics& g)
{
    // The search field has a frame of its own.
    if (lit == nullptr || lit == &search)
        return;
    g.setColour (palette::accent);
    g.drawRect (lit->getBounds(), 1);
}
