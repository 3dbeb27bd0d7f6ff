#include "session/similar/KeyText.h"

#include "support/music/KeyName.h"

#include <array>
#include <cstdlib>

namespace KeyText
{
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
        return isSameMode ? "same key" : "relative key";
    const auto count = std::abs (steps);
    return (count == 1 ? juce::String ("a fifth") : juce::String (count) + " fifths")
           + (steps > 0 ? " up" : " down") + (isSameMode ? "" : ", other mode");
}
}
