#include "cli/library/LibrarySource.h"

#include "cli/TerminalOutput.h"
#include "cli/library/LibraryVerb.h"
#include "cli/library/SongTable.h"
#include "library/query/RunQuery.h"
#include "support/Suggestion.h"
#include "support/language/Translate.h"

#include <algorithm>
#include <array>

namespace
{
struct KindWord
{
    const char* word;
    SongListKind kind;
    bool isNamed;
};

constexpr std::array kinds {
    KindWord { "library", SongListKind::library, false },
    KindWord { "album", SongListKind::album, true },
    KindWord { "artist", SongListKind::artist, true },
    KindWord { "genre", SongListKind::genre, true },
    KindWord { "playlist", SongListKind::playlist, true },
    KindWord { "smart", SongListKind::smartPlaylist, true },
    KindWord { "automix", SongListKind::automix, false },
};
}

juce::String LibrarySource::kindWords()
{
    juce::StringArray words;
    for (const auto& kind : kinds)
        words.add (juce::String (kind.word) + (kind.isNamed ? " NAME" : ""));
    return words.joinIntoString (", ");
}

std::optional<LibrarySource> LibrarySource::find (SongDatabase& database, const juce::String& kindWord,
                                                  juce::StringArray& arguments)
{
    const auto kind = std::find_if (kinds.begin(), kinds.end(),
                                    [&kindWord] (const KindWord& k) { return kindWord == k.word; });
    if (kind == kinds.end())
    {
        juce::StringArray words;
        for (const auto& each : kinds)
            words.add (each.word);
        failWith (tr ("There is no kind %1; there are %2.%3", kindWord.quoted(), kindWords(),
                      didYouMean (kindWord, words)));
        return {};
    }
    LibrarySource source { kind->kind, {}, -1 };
    if (!kind->isNamed)
        return source;
    if (arguments.isEmpty())
    {
        failWith (tr ("The kind %1 needs a name.", kindWord));
        return {};
    }
    source.name = arguments[0];
    arguments.remove (0);

    if (const auto field = pickingField (source.kind))
    {
        const auto count = database.countWhere (*field, source.name);
        if (count > 0)
            return source;
        if (count < 0)
            SongTable::unreadable (LibraryCode::ofCount (count));
        else
            failWith (tr ("No song has the %1 %2.", kindWord, source.name.quoted()));
        return {};
    }
    const auto item = LibraryVerb::findPlaylist (database, source.kind, source.name);
    if (!item)
        return {};
    source.id = item->id;
    return source;
}

int LibrarySource::fill (SongDatabase& database, SongList& list, LibraryOrder order) const
{
    const auto hasOrder = kind == SongListKind::playlist || kind == SongListKind::automix;
    if (order.sort == SongField::listOrder && !hasOrder)
        order.sort = SongField::artist;

    const auto [sort, ascending, fields, term] = order;
    SongQuery query { .kind = kind,
                      .id = id,
                      .name = name,
                      .sort = sort,
                      .ascending = ascending,
                      .search = term,
                      .fields = fields };
    SongIndex index;
    if (query.isFiltered())
        if (const auto code = index.build (database); code != LibraryCode::ok)
            return code;
    return runQuery (query, database, index, list);
}
