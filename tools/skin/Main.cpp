#include "Materials.h"
#include "Writer.h"

#include <juce_gui_basics/juce_gui_basics.h>

#include <iostream>

namespace
{
constexpr const char* usage =
    "px_skin_maker FOLDER --font=FILE         draws the skin's pictures\n"
    "px_skin_maker --sheet=FILE.png --font=FILE [--scale=S]   paints them on one sheet\n";

int run (const juce::ArgumentList& arguments)
{
    const auto fontFile = arguments.getFileForOption ("--font");
    juce::MemoryBlock font;
    if (!fontFile.loadFileAsData (font))
    {
        std::cerr << usage << "Can't read the font " << fontFile.getFullPathName() << ".\n";
        return 1;
    }
    setTypeface (juce::Typeface::createSystemTypefaceFor (font.getData(), font.getSize()));

    juce::String error;
    if (arguments.containsOption ("--sheet"))
    {
        const auto scale =
            arguments.containsOption ("--scale") ? arguments.getValueForOption ("--scale") : "1";
        error = writeSheet (arguments.getFileForOption ("--sheet"),
                            juce::jlimit (0.5f, 8.0f, scale.getFloatValue()));
    }
    else
        error = writeSkin (arguments[0].resolveAsFile(), fontFile);

    if (error.isNotEmpty())
        std::cerr << error << "\n";
    setTypeface (nullptr);
    return error.isEmpty() ? 0 : 1;
}
}

int main (int count, char** texts)
{
    if (count < 3)
    {
        std::cerr << usage;
        return 1;
    }
    juce::ScopedJuceInitialiser_GUI juce;
    return juce::ConsoleApplication::invokeCatchingFailures ([&] { return run ({ count, texts }); });
}
