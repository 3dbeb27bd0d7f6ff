#include "ui/browser/model/TypeAhead.h"

namespace
{
constexpr juce::uint32 wordMs = 900;
}

bool TypeAhead::take (const juce::KeyPress& key)
{
    const auto mods = key.getModifiers();
    if (key.getTextCharacter() <= ' ' || mods.isCtrlDown() || mods.isAltDown() || mods.isCommandDown())
        return false;
    const auto now = juce::Time::getMillisecondCounter();
    if (now - typedAt > wordMs)
        letters.clear();
    typedAt = now;
    letters += juce::String::charToString (key.getTextCharacter());
    return true;
}

int TypeAhead::find (int selected, int rows, const std::function<juce::String (int)>& nameOf) const
{
    for (int i = 0; i < rows; ++i)
        if (const auto row = (from (selected) + i) % rows; nameOf (row).startsWithIgnoreCase (letters))
            return row;
    return -1;
}
