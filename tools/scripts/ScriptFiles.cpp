#include "engine/CommandTable.h"

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

namespace
{
constexpr const char* delimiter = "px_script";

/** One constant a command, in the order of the numbers. */
std::string commandsHeader()
{
    std::ostringstream text;
    text << "// The commands of Platterdex as constants, for set() and get(). The program writes this file "
            "anew when it\n"
            "// starts: changes are lost. What each command does stands in \"platterdex commands\".\n\n";
    for (const int number : CommandTable::numbers())
    {
        if (number == CommandTable::firstMeter)
            text << "\n// Levels, 0 to 1, which can only be read\n";
        text << "const int " << CommandTable::constant (number) << " = " << number << "; // "
             << CommandTable::name (number) << "\n";
    }
    return text.str();
}

struct Shipped
{
    std::string name, text;
};

/** The source of ShippedScripts::all(). */
std::string sourceOf (const std::vector<Shipped>& files)
{
    std::ostringstream source;
    source << "#include \"midi/script/ShippedScripts.h\"\n\nnamespace\n{\n"
              "constexpr ShippedScripts::File files[] {\n";
    for (const auto& file : files)
        source << "{ \"" << file.name << "\", R\"" << delimiter << "(" << file.text << ")" << delimiter
               << "\" },\n";
    source
        << "};\n}\n\nstd::span<const ShippedScripts::File> ShippedScripts::all()\n{\n    return files;\n}\n";
    return source.str();
}

bool write (const std::filesystem::path& path, const std::string& text)
{
    std::ofstream file (path, std::ios::binary);
    file << text;
    return file.flush().good();
}
}

/** usage: px_script_files SOURCE.cpp COMMANDS.h EXAMPLE.c... */
int main (int count, char** arguments)
{
    if (count < 3)
        return std::fputs ("usage: px_script_files SOURCE.cpp COMMANDS.h EXAMPLE.c...\n", stderr), 2;

    const std::filesystem::path header (arguments[2]);
    std::vector<Shipped> files { { header.filename(), commandsHeader() } };
    for (int i = 3; i < count; ++i)
    {
        const std::filesystem::path path (arguments[i]);
        std::ifstream stream (path, std::ios::binary);
        std::ostringstream text;
        text << stream.rdbuf();
        if (!stream || text.str().empty())
            return std::fprintf (stderr, "px_script_files: %s can't be read\n", arguments[i]), 2;
        files.push_back ({ path.filename(), text.str() });
    }
    if (write (header, files.front().text) && write (arguments[1], sourceOf (files)))
        return 0;
    return std::fputs ("px_script_files: the files can't be written\n", stderr), 2;
}
