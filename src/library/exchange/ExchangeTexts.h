#pragma once

/** Texts of the windows and choosers of the exchange with other programs. */
namespace ExchangeTexts
{
inline constexpr const char* itunesWindow = "Reading Itunes Music Files";
inline constexpr const char* importWindow = "Import Playlist";
inline constexpr const char* exportWindow = "Exporting Playlist";
inline constexpr const char* exportStatus = "Exporting to: ";

inline constexpr const char* playlistPattern = "*.m3u;*.m3u8;*.xml";
inline constexpr const char* playlistChooser = "Select a playlist file";
inline constexpr const char* playlistNameTitle = "Enter Playlist Name";
inline constexpr const char* playlistName = "Playlist";
}
