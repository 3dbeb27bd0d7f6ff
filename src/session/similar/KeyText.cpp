#include "session/similar/KeyText.h"

#include "support/language/Translate.h"
#include "support/music/KeyName.h"

#include <array>
#include <cstdlib>

namespace KeyText
{
Notation notationOf (const juce::String& value)
{
    return value == wheelValue ? Notation::wheel : Notation::letters;
}

juce::String of (int key, Notation notation)
{
    if (!Fit::isKey (key))
        return {};
    const auto isMajor = key < 12;
    if (notation == Notation::wheel)
        return juce::String (KeyName::wheelHour (key)) + (isMajor ? "B" : "A");
    static constexpr std::array majors { "C", "Db", "D", "Eb", "E", "F", "F#", "G", "Ab", "A", "Bb", "B" };
    static constexpr std::array minors { "Cm",  "C#m", "Dm",  "Ebm", "Em",  "Fm",
                                         "F#m", "Gm",  "G#m", "Am",  "Bbm", "Bm" };
    return isMajor ? majors[static_cast<size_t> (key)] : minors[static_cast<size_t> (key - 12)];
}

juce::String relation (int key, int other)
{
    if (!Fit::isKey (key) || !Fit::isKey (other))
        return {};
    const auto steps = Fit::fifthsBetween (key, other);
    const auto isSameMode = (key < 12) == (other < 12);
    if (steps == 0)
        return isSameMode ? tr ("same key") : tr ("relative key");
    const auto count = std::abs (steps);
    if (isSameMode)
        return steps > 0 ? trPlural ("a fifth up", "%1 fifths up", count)
                         : trPlural ("a fifth down", "%1 fifths down", count);
    return steps > 0 ? trPlural ("a fifth up, other mode", "%1 fifths up, other mode", count)
                     : trPlural ("a fifth down, other mode", "%1 fifths down, other mode", count);
}
}
