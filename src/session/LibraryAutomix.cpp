#include "session/LibraryAutomix.h"

#include <algorithm>
#include <utility>

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

std::optional<juce::File> LibraryAutomix::nextTrack()
{
    auto* database = library();
    SongList list (SongListKind::automix);
    juce::String path;
    auto place = 0;
    auto code = database != nullptr ? database->fillAutomix (&list, SongField::listOrder, true)
                                    : LibraryCode::notOpen;
    if (code == LibraryCode::ok)
    {
        place = placeOfNext (list);
        if (place >= list.size() && mayBeginAgain)
            place = 0;
        if (place < list.size())
            code = database->readField (SongField::filename, list[place].songId, path);
    }
    // A list that another program keeps locked just now is not one that has come to its end.
    atEnd = code != LibraryCode::busy && !juce::File::isAbsolutePath (path);
    if (code == LibraryCode::busy)
        return {};
    if (atEnd)
        return juce::File();
    mayBeginAgain = false;
    last = list[place];
    lastPlace = place;
    return juce::File (path);
}

bool LibraryAutomix::isEmpty() const
{
    auto* database = library();
    return database != nullptr && database->countAutomix() == 0;
}

namespace
{
/** Key of the worker's job that reads: one question at a time, behind a begin() that is still being carried out. */
constexpr Worker::Key question = 0;
}

AutomixReader::AutomixReader (std::function<SongDatabase*()> l, std::function<void()> onEmpty)
    : library (std::move (l)),
      foundEmpty (std::move (onEmpty)),
      list ([this] { return open.load(); })
{
}

void AutomixReader::begin()
{
    open = library();
    worker.post ({ [this] (const std::stop_token&)
                   {
                       list.begin();
                       // The end is no answer any more; a song that nobody has fetched yet still comes next.
                       const std::scoped_lock scope (lock);
                       if (answer == juce::File())
                           answer.reset();
                   } });
    worker.post ({ [this] (const std::stop_token&)
                   {
                       if (list.isEmpty())
                           foundEmpty();
                   } });
}

std::optional<juce::File> AutomixReader::nextTrack()
{
    {
        const std::scoped_lock scope (lock);
        if (auto known = std::exchange (answer, std::nullopt))
            return known;
    }
    open = library();
    if (open.load() == nullptr)
        return juce::File();
    if (!worker.isBusy (question))
        worker.post (question, { [this] (const std::stop_token&)
                                 {
                                     auto next = list.nextTrack();
                                     const std::scoped_lock scope (lock);
                                     answer = std::move (next);
                                 } });
    return {};
}
