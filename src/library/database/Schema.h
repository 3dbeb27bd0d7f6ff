#pragma once

#include <span>
#include <string>
#include <vector>

/** The statements that make the library's tables. The schema is fixed: other programs read the file. */
namespace Schema
{
/** A table, and what is written when it was made and did not exist before. */
struct Table
{
    std::string create;
    std::vector<std::string> whenNew;

    /** Run at every open; they fail where they exist. */
    std::vector<std::string> indexes;
};

/** The settings of a connection, in this order, each at best effort. */
const std::vector<std::string>& pragmas();

/** All tables, in the order in which they are made. */
const std::vector<Table>& tables();

/** The rows of the four smart playlists that a new library has. */
const std::vector<std::string>& defaultSmartPlaylists();

/** The names of those, in English as the file has them. */
std::span<const char* const> defaultSmartNames();
}
