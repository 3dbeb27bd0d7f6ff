#include "cli/library/LibraryAutomix.h"

#include <algorithm>

LibraryAutomix::LibraryAutomix (std::function<SongDatabase*()> l) : library (std::move (l)) {}

int LibraryAutomix::placeOfNext (const SongList& list) const
{
    if (lastPlace < 0)
        return 0;
    const auto entries = list.entries();
    const auto placeOf = [&] (auto&& isIt)
    { return static_cast<int> (std::find_if (entries.begin(), entries.end(), isIt) - entries.begin()); };

    // A list that was put in another order has new entry ids; one from which the song was taken has moved up.
    auto place = placeOf ([this] (const SongListEntry& entry)
                          { return entry.entryId == last.entryId && entry.songId == last.songId; });
    if (place == list.size())
        place = placeOf ([this] (const SongListEntry& entry) { return entry.songId == last.songId; });
    return place < list.size() ? place + 1 : lastPlace;
}

juce::File LibraryAutomix::nextTrack()
{
    atEnd = true;
    auto* database = library();
    SongList list (SongListKind::automix);
    if (database == nullptr || database->fillAutomix (&list, SongField::listOrder, true) < 0)
        return {};
    const auto place = placeOfNext (list);
    juce::String path;
    if (place >= list.size() || database->readField (SongField::filename, list[place].songId, path) != 0
        || !juce::File::isAbsolutePath (path))
        return {};
    atEnd = false;
    last = list[place];
    lastPlace = place;
    return juce::File (path);
}
