#pragma once

struct sqlite3;

namespace SqlFunctions
{
/** Puts UPPER, LOWER and LIKE that know all scripts in the place of SQLite's own, which know A to Z. A LIKE with ESCAPE
    stays SQLite's. KEY_ORDER gives KeyName::sortText(). */
void add (sqlite3*);
}
