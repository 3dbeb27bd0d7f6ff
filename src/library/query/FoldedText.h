#pragma once

#include <string>
#include <string_view>

/** Texts as a search compares them: in upper case and without accents, in UTF-8. Any thread. */
namespace FoldedText
{
/** Upper case with accents, by which lists are sorted: "DÉJÀ VU". @param result   replaced */
void upper (std::string_view text, std::string& result);

/** "Déjà vu" and its decomposed form give "DEJA VU", "Straße" gives "STRASSE". */
std::string of (std::string_view text);

/** The same from a text in upper case. @param result   replaced */
void strip (std::string_view upperCase, std::string& result);
}
