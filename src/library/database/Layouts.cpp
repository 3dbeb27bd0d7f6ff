#include "library/database/SongDatabase.h"
#include "library/sql/StoredText.h"

#include <optional>

namespace
{
/** The place of the layout of a kind of list: a table of playlists, or two rows of the settings. */
struct LayoutPlace
{
    const char* table = nullptr;
    const char* settingsName = nullptr;
    int settingsRow = 0;
};

std::optional<LayoutPlace> placeOf (SongListKind kind)
{
    switch (kind)
    {
    case SongListKind::root:
    case SongListKind::library:
    case SongListKind::album:
    case SongListKind::albums:
    case SongListKind::artist:
    case SongListKind::artists:
    case SongListKind::genre:
    case SongListKind::searchLibrary:
        return LayoutPlace { nullptr, "library", 2 };
    case SongListKind::playlist:
    case SongListKind::searchPlaylist:
        return LayoutPlace { "playlists", nullptr, 0 };
    case SongListKind::smartPlaylist:
    case SongListKind::searchSmartPlaylist:
        return LayoutPlace { "smart_playlists", nullptr, 0 };
    case SongListKind::foreignPlaylist:
    case SongListKind::searchForeignPlaylist:
        return LayoutPlace { "itunes_playlists", nullptr, 0 };
    case SongListKind::automix:
        return LayoutPlace { nullptr, "automix", 4 };
    case SongListKind::recommendation:
        return LayoutPlace { nullptr, "recommendation", 6 };
    default:
        return {};
    }
}

std::string settingOf (const LayoutPlace& place, const char* what)
{
    return std::string (place.settingsName) + "_" + what;
}

std::string storeSetting (int row, const std::string& name, const juce::String& value)
{
    return " INSERT OR REPLACE INTO settings VALUES (" + std::to_string (row) + ", '" + name + "', "
           + StoredText::quoted (value) + ")";
}

std::string storeInTable (const LayoutPlace& place, const char* column, const juce::String& value, int32_t id)
{
    return std::string (" UPDATE ") + place.table + " SET " + column + " = " + StoredText::quoted (value)
           + " WHERE id = " + std::to_string (id);
}

/** @param what   the column's name, which ends the setting's name too */
std::string selectLayout (const LayoutPlace& place, const char* what, int32_t id)
{
    if (place.table != nullptr)
        return std::string (" SELECT ") + what + " FROM " + place.table
               + " WHERE id = " + std::to_string (id);
    return " SELECT the_value FROM settings WHERE keyname = '" + settingOf (place, what) + "';";
}
}

int SongDatabase::saveLayout (const SongList* list, const juce::String& layoutXml,
                              const juce::String& selectionXml)
{
    if (list == nullptr)
        return LibraryCode::badArgument;
    const auto place = placeOf (list->kind);
    if (!place)
        return LibraryCode::ok;

    if (place->table != nullptr)
        return runTogether (
            std::array { storeInTable (*place, "table_layout", layoutXml, list->playlistId),
                         storeInTable (*place, "last_row_selected", selectionXml, list->playlistId) });
    return runTogether (std::array {
        storeSetting (place->settingsRow, settingOf (*place, "table_layout"), layoutXml),
        storeSetting (place->settingsRow + 1, settingOf (*place, "last_row_selected"), selectionXml) });
}

int SongDatabase::readLayout (const SongList* list, const char* what, juce::String& xml)
{
    xml.clear();
    if (list == nullptr)
        return LibraryCode::badArgument;
    const auto place = placeOf (list->kind);
    if (!place)
        return LibraryCode::ok;
    const auto loan = isForeign (list->kind) ? ReadConnections::Loan (connection) : reading();
    return readText (*loan, selectLayout (*place, what, list->playlistId), xml);
}

int SongDatabase::loadLayout (const SongList* list, juce::String& layoutXml)
{
    return readLayout (list, "table_layout", layoutXml);
}

int SongDatabase::loadSelection (const SongList* list, juce::String& selectionXml)
{
    return readLayout (list, "last_row_selected", selectionXml);
}
