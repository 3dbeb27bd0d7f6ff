// Turns the description of the SmartKnobs' presets into constant data while building:
//
//     px_preset_maker PRESETS.txt FACTORY.cpp      writes the table of SmartKnobLibrary's factory presets
//     px_preset_maker PRESETS.txt --table          prints them as a table for the documentation

#include "CurveText.h"
#include "KnobText.h"

#include <fstream>
#include <iostream>
#include <iterator>
#include <sstream>

namespace
{
std::string identifierOf (const KnobText::Preset& preset)
{
    return "text" + std::to_string (preset.id);
}

/** The names are the table's; a text keeps none. */
std::string textOf (KnobText::Preset preset)
{
    preset.content.name.clear();
    return writeSmartKnobPreset (preset.content);
}

void writeSource (const std::vector<KnobText::Group>& groups, std::ostream& out)
{
    out << "// Made by tools/presets from resources/smartknob/presets.txt.\n\n"
           "#include \"instruments/presets/SmartKnobLibrary.h\"\n\nnamespace\n{\n";
    for (const auto& group : groups)
        for (const auto& preset : group.presets)
            out << "constexpr std::string_view " << identifierOf (preset) << " = R\"xml(" << textOf (preset)
                << ")xml\";\n";
    for (size_t g = 0; g < groups.size(); ++g)
    {
        out << "\nconstexpr SmartKnobLibrary::Entry group" << g << "[] {\n";
        for (const auto& preset : groups[g].presets)
            out << "    { " << preset.id << ", \"" << preset.name << "\", " << identifierOf (preset)
                << " },\n";
        out << "};\n";
    }
    out << "\nconstexpr SmartKnobLibrary::Group all[] {\n";
    for (size_t g = 0; g < groups.size(); ++g)
        out << "    { \"" << groups[g].name << "\", group" << g << " },\n";
    out << "};\n}\n\nstd::span<const SmartKnobLibrary::Group> SmartKnobLibrary::groups()\n{\n    return "
           "all;\n}\n";
}

void printTable (const std::vector<KnobText::Group>& groups)
{
    std::cout << "| id | preset | does |\n|---|---|---|\n";
    for (const auto& group : groups)
        for (const auto& preset : group.presets)
            std::cout << "| " << preset.id << " | " << preset.name << " | " << preset.words << " |\n";
}
}

int main (int argumentCount, char** arguments)
{
    if (argumentCount != 3)
    {
        std::cerr << "usage: px_preset_maker PRESETS.txt FACTORY.cpp|--table\n";
        return 1;
    }
    try
    {
        std::ifstream in (arguments[1]);
        const std::string text { std::istreambuf_iterator<char> (in), {} };
        const auto groups = KnobText::read (text);
        if (std::string (arguments[2]) == "--table")
        {
            printTable (groups);
            return 0;
        }
        std::ofstream out (arguments[2]);
        writeSource (groups, out);
        out.close();
        return out ? 0 : 1;
    }
    catch (const CurveText::Fault& fault)
    {
        std::cerr << arguments[1] << ": " << fault.what() << "\n";
        return 1;
    }
}
