#include "PatternText.h"
#include "Sheet.h"

#include <juce_core/juce_core.h>

#include <algorithm>
#include <cstdio>
#include <iostream>
#include <map>

// Turns the patterns of resources/slicegate into constant data, or draws them all on a sheet.
// usage: px_pattern_maker --data FILE TEXT...
//        px_pattern_maker --sheet PNG TEXT...

namespace
{
std::string number (double value)
{
    // All digits: a curve must not end before its window does.
    char text[32];
    std::snprintf (text, sizeof (text), "%.17g", value);
    return std::string (text).find_first_of (".e") == std::string::npos ? std::string (text) + ".0" : text;
}

std::string quoted (const std::string& text)
{
    return '"' + juce::String (text).replace ("\"", "\\\"").toStdString() + '"';
}

/** The curves' points as arrays, each different curve once. */
class Arrays
{
public:
    std::string nameOf (const PatternCurve& curve)
    {
        std::string points;
        for (const auto& p : curve)
            points += "    { " + number (p.delta) + ", " + number (p.value) + "f, " + number (p.tension)
                      + "f, " + std::to_string (p.type) + " },\n";
        const auto [found, isNew] = names.try_emplace (points, "curve" + std::to_string (names.size()));
        if (isNew)
            text += "constexpr PatternPoint " + found->second + "[] {\n" + points + "};\n";
        return found->second;
    }

    std::string text;

private:
    std::map<std::string, std::string> names;
};

std::string dataOf (const std::vector<PatternGroup>& groups)
{
    Arrays arrays;
    std::string patterns, table;
    for (const auto& group : groups)
    {
        const auto name = "patterns" + std::to_string (group.patterns.front().id);
        patterns += "constexpr PatternRow " + name + "[] {\n";
        for (const auto& p : group.patterns)
            patterns += "    { { " + std::to_string (p.id) + ", " + quoted (p.name) + " }, "
                        + arrays.nameOf (p.time) + ", " + arrays.nameOf (p.volume) + " },\n";
        patterns += "};\n";
        table += "    { " + quoted (group.name) + ", " + std::to_string (group.menuPlace) + ", "
                 + (group.setsFlags ? "true" : "false") + ", " + name + " },\n";
    }
    return "// Written by px_pattern_maker.\n#include "
           "\"instruments/slicegate/FactoryPatterns.h\"\n\nnamespace\n{\n"
           + arrays.text + patterns + "constexpr PatternGroupRow groups[] {\n" + table
           + "};\n}\n\nstd::span<const PatternGroupRow> factoryPatterns()\n{\n    return groups;\n}\n";
}
}

int main (int argc, char** argv)
{
    std::vector<juce::File> files;
    for (int i = 3; i < argc; ++i)
        files.push_back (juce::File::getCurrentWorkingDirectory().getChildFile (argv[i]));
    if (files.empty())
        return std::cerr << "usage: px_pattern_maker --data|--sheet FILE TEXT...\n", 2;

    std::vector<PatternGroup> groups;
    for (const auto& file : files)
        try
        {
            groups.push_back (patternGroup (file.loadFileAsString().toStdString()));
        }
        catch (const PatternFault& fault)
        {
            return std::cerr << file.getFileName() << ": " << fault.sentence << '\n', 1;
        }
    std::sort (groups.begin(), groups.end(),
               [] (const auto& a, const auto& b) { return a.patterns.front().id < b.patterns.front().id; });

    const auto target = juce::File::getCurrentWorkingDirectory().getChildFile (argv[2]);
    const auto done = juce::String (argv[1]) == "--sheet"
                          ? drawSheet (groups, target)
                          : target.replaceWithText (dataOf (groups), false, false, "\n");
    return done ? 0 : (std::cerr << target.getFullPathName() << " can't be written\n", 1);
}
