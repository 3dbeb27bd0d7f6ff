#include "ui/browser/actions/SourceActions.h"

#include "session/SimilarRoom.h"
#include "session/browse/LibraryFaults.h"
#include "settings/SettingsFolder.h"
#include "support/language/Translate.h"
#include "ui/browser/actions/EditAnswers.h"
#include "ui/browser/smart/SmartPlaylistEditor.h"
#include "ui/look/FolderQuestion.h"
#include "ui/window/ToolWindows.h"

namespace
{
/** A new smart playlist begins with the songs of four and five stars. */
constexpr const char* firstRuleSql = " (rating > 3); ";
constexpr const char* firstRuleXml =
    "<?xml version=\"1.0\" encoding=\"UTF-8\"?> <smartplaylist><match>all</match><rule field=\"rating\" "
    "operator=\"is greater than\" value1=\"3\" value2=\"5\"/><order apply=\"no\" "
    "direction=\"ascending\">RANDOM()</order></smartplaylist>";
constexpr const char* backupTime = "%Y-%m-%d_(%Hh%Mm%Ss)";

juce::File musicFolder (const BrowserWorld& world)
{
    const juce::File kept (world.engine.settings.audioFolder.get());
    return kept.isDirectory() ? kept : juce::File::getSpecialLocation (juce::File::userMusicDirectory);
}

juce::File documentsFolder()
{
    const auto documents = juce::File::getSpecialLocation (juce::File::userDocumentsDirectory);
    return documents.isDirectory() ? documents
                                   : juce::File::getSpecialLocation (juce::File::userHomeDirectory);
}

juce::File playlistFolder (const BrowserWorld& world)
{
    return folderOf (world.engine.settings.playlistFolder, documentsFolder());
}
}

SourceActions::SourceActions (BrowserWorld& w, juce::Component& a) : world (w), asker (a) {}

juce::String SourceActions::similarPriority() const
{
    return world.session != nullptr ? SimilarRoom::of (*world.session).priority() : juce::String();
}

bool SourceActions::continuesAutomix() const
{
    return world.session != nullptr && SimilarRoom::of (*world.session).continuesAutomix();
}

void SourceActions::setContinuesAutomix (bool continues)
{
    if (world.session != nullptr)
        SimilarRoom::of (*world.session).setContinuesAutomix (continues);
}

bool SourceActions::writesKeysByWheel() const
{
    return world.session != nullptr
           && SimilarRoom::of (*world.session).keyNotation() == KeyText::Notation::wheel;
}

void SourceActions::setWritesKeysByWheel (bool byWheel)
{
    if (world.session != nullptr)
        SimilarRoom::of (*world.session)
            .setKeyNotation (byWheel ? KeyText::Notation::wheel : KeyText::Notation::letters);
}

void SourceActions::setSimilarPriority (const juce::String& value)
{
    if (world.session != nullptr)
        SimilarRoom::of (*world.session).setPriority (value);
}

LibraryEdits::Done SourceActions::done()
{
    return EditAnswers::say (world, asker);
}

LibraryEdits::Placed SourceActions::placed()
{
    return [said = done()] (int code, const std::vector<int32_t>&) { said (code); };
}

void SourceActions::ask (const juce::String& title, const juce::String& question, std::function<void()> yes)
{
    if (world.room == nullptr || world.prompts() == nullptr)
        return;
    world.prompts()->askYesNo (
        title, question,
        [yes = std::move (yes), alive = juce::Component::SafePointer<juce::Component> (&asker)] (bool answer)
        {
            if (answer && alive != nullptr)
                yes();
        });
}

void SourceActions::askFile (const Prompts::FileQuestion& question,
                             std::function<void (const juce::File&)> take)
{
    if (world.room == nullptr || world.prompts() == nullptr)
        return;
    world.prompts()->askFile (
        question,
        [take = std::move (take),
         alive = juce::Component::SafePointer<juce::Component> (&asker)] (const juce::File& file)
        {
            if (file != juce::File() && alive != nullptr)
                take (file);
        });
}

void SourceActions::importFolder()
{
    askFile (FolderQuestion::make (tr (ImportTexts::folderChooserTitle), musicFolder (world)),
             [this] (const juce::File& folder)
             { world.room->jobs.importPaths ({ folder.getFullPathName() }); });
}

void SourceActions::backUp()
{
    const auto name = "px_music_library_" + juce::Time::getCurrentTime().formatted (backupTime) + ".sqlite";
    askFile (
        { tr ("Save Backup Collection File As"), documentsFolder().getChildFile (name), "*.sqlite", true },
        [this] (const juce::File& file) { world.room->jobs.backup (file.withFileExtension ("sqlite")); });
}

void SourceActions::clearLibrary()
{
    ask (tr ("Confirm delete"), tr ("Are you sure you want to clear the Library?"),
         [this] { world.room->edits.clearLibrary (done()); });
}

void SourceActions::lookAtFolders()
{
    if (world.room != nullptr)
        world.room->jobs.lookAtFolders();
}

void SourceActions::relocate()
{
    askFile (FolderQuestion::make (tr ("Please select the folder that holds the missing files..."),
                                   musicFolder (world)),
             [this] (const juce::File& folder) { world.room->jobs.relocate (folder); });
}

void SourceActions::createPlaylist (std::vector<int32_t> songIds)
{
    if (world.room == nullptr || world.prompts() == nullptr)
        return;
    world.prompts()->askText (
        tr ("Enter Playlist Name"), tr ("Please enter name of new playlist."), tr ("Playlist"),
        [this, songIds = std::move (songIds),
         alive = juce::Component::SafePointer<juce::Component> (&asker)] (std::optional<juce::String> name)
        {
            if (alive != nullptr && name && name->trim().isNotEmpty())
                world.room->edits.create (name->trim(), songIds,
                                          [said = done()] (int code, int32_t) { said (code); });
        });
}

void SourceActions::importPlaylist()
{
    askFile ({ tr ("Select a playlist file"), playlistFolder (world), "*.m3u;*.xml" },
             [this] (const juce::File& file)
             {
                 world.prompts()->askText (
                     tr ("Enter Playlist Name"), tr ("Please enter name of new playlist."),
                     file.getFileNameWithoutExtension(),
                     [this, file, alive = juce::Component::SafePointer<juce::Component> (&asker)] (
                         std::optional<juce::String> name)
                     {
                         if (alive != nullptr && name && name->trim().isNotEmpty())
                             world.room->jobs.importPlaylist (file, name->trim());
                     });
             });
}

void SourceActions::createSmartPlaylist()
{
    if (world.room == nullptr || world.prompts() == nullptr)
        return;
    world.prompts()->askText (
        tr ("Enter smart playlist name"), tr ("Please enter name of new smart playlist."),
        tr ("Smart Playlist"),
        [this,
         alive = juce::Component::SafePointer<juce::Component> (&asker)] (std::optional<juce::String> given)
        {
            const auto name = given.value_or (juce::String()).trim();
            if (alive == nullptr || name.isEmpty())
                return;
            world.room->edits.createSmart (name, firstRuleSql, firstRuleXml,
                                           [this, name, alive] (int code, int32_t id)
                                           {
                                               if (alive == nullptr)
                                                   return;
                                               world.say (LibraryFaults::sentence (code));
                                               if (code == 0)
                                                   editRules ({ SongListKind::smartPlaylist, id, name });
                                           });
        });
}

void SourceActions::editRules (const Source& source)
{
    if (world.room == nullptr)
        return;
    world.room->edits.loadSmart (
        source.id,
        [this, source,
         alive = juce::Component::SafePointer<juce::Component> (&asker)] (int code, const juce::String& rules)
        {
            if (alive == nullptr)
                return;
            world.say (LibraryFaults::sentence (code));
            auto* windows = ToolWindows::of (asker);
            if (code != 0 || windows == nullptr)
                return;
            SmartPlaylist playlist;
            juce::ignoreUnused (parseXml (rules, playlist)); // an odd document is a list without rules
            const auto save = [this, alive, id = source.id] (const juce::String& sql, const juce::String& xml)
            {
                if (alive != nullptr && world.room != nullptr)
                    world.room->edits.setSmart (id, sql, xml, done());
            };
            windows->open (
                tr ("Edit Smart Playlist: %1", source.name), asker,
                [playlist, save] (std::function<void()> close)
                { return std::make_unique<SmartPlaylistEditor> (playlist, save, std::move (close)); });
        });
}

void SourceActions::addUndo (juce::PopupMenu& menu)
{
    EditAnswers::addUndo (menu, world, asker);
}

void SourceActions::showMissing()
{
    if (showSource != nullptr)
        showSource ({ SongListKind::missing, -1, tr ("Missing Files") });
}

void SourceActions::remove (const Source& source)
{
    const auto question = source.kind == SongListKind::history
                              ? tr ("Are you sure you want to delete the history '%1'?", source.name)
                              : tr ("Are you sure you want to delete the playlist '%1'?", source.name);
    ask (tr ("Confirm delete"), question,
         [this, source]
         {
             if (source.kind != SongListKind::history)
                 return world.room->edits.deleteList ({ source.kind, source.id }, done());
             if (!world.room->history.remove (source.id))
                 world.say (tr ("The history of this session can't be deleted."));
         });
}

void SourceActions::rename (const Source& source, const juce::String& name)
{
    if (world.room != nullptr)
        world.room->edits.rename ({ source.kind, source.id }, name, done());
}

void SourceActions::move (const Source& source, int by)
{
    if (world.room != nullptr)
        world.room->edits.moveInTree ({ source.kind, source.id }, by, done());
}

void SourceActions::clear (const Source& source)
{
    const auto isAutomix = source.kind == SongListKind::automix;
    ask (tr ("Confirm clear"),
         isAutomix ? tr ("Are you sure you want to clear the automix playlist?")
                   : tr ("Are you sure you want to clear the recommendation list?"),
         [this, source] { world.room->edits.clear (source.list(), done()); });
}

void SourceActions::append (std::vector<int32_t> songIds, ListRef list)
{
    if (world.room != nullptr && !songIds.empty())
        world.room->edits.append (list, std::move (songIds), placed());
}

void SourceActions::append (const Source& source, ListRef list)
{
    if (world.room != nullptr && !isForeign (source.kind))
        world.room->edits.append (list, source.query(), placed());
}

void SourceActions::appendToAutomix (const Source& source)
{
    append (source, { SongListKind::automix, -1 });
}

void SourceActions::importFiles (const juce::StringArray& files, ListRef list)
{
    if (world.room != nullptr)
        world.room->jobs.importPaths (files, list);
}

void SourceActions::exportTo (const Source& source, Format format)
{
    const auto isM3u = format == Format::m3u;
    const juce::String extension (isM3u ? "m3u" : format == Format::html ? "html" : "txt");
    const auto start =
        playlistFolder (world).getChildFile (juce::File::createLegalFileName (source.name) + "." + extension);
    const auto title = isM3u                    ? tr ("Save the playlist...")
                       : format == Format::html ? tr ("Save the webpage...")
                                                : tr ("Save the text...");
    askFile ({ title, start, "*." + extension, true },
             [this, source, extension] (const juce::File& chosen)
             {
                 const auto file = chosen.withFileExtension (extension);
                 world.room->jobs.exportList (source.query(), source.name, file);
             });
}
