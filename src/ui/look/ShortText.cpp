#include "ui/look/ShortText.h"

juce::String shortText (const juce::String& text, const juce::Font& font, int width)
{
    const auto room = static_cast<float> (width);
    if (font.getStringWidthFloat (text) <= room)
        return text;
    const auto dots = juce::String::charToString (0x2026);
    for (auto length = text.length() - 1; length > 0; --length)
        if (const auto begin = text.substring (0, length).trimEnd() + dots;
            font.getStringWidthFloat (begin) <= room)
            return begin;
    return {};
}
