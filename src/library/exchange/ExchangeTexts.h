#pragma once

#include "support/language/Translate.h"

/** Texts of the windows and choosers of the exchange with other programs. */
namespace ExchangeTexts
{
inline constexpr const char* itunesWindow = N_ ("Reading Itunes Music Files");
inline constexpr const char* importWindow = N_ ("Import Playlist");
inline constexpr const char* exportWindow = N_ ("Exporting Playlist");

inline constexpr const char* playlistPattern = "*.m3u;*.m3u8;*.xml";
inline constexpr const char* playlistChooser = N_ ("Select a playlist file");
inline constexpr const char* playlistNameTitle = N_ ("Enter Playlist Name");
inline constexpr const char* playlistName = N_ ("Playlist");
}
