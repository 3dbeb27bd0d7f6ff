#include "ui/look/TimeText.h"

#include <cmath>

juce::String timeText (double seconds)
{
    if (!std::isfinite (seconds))
        return "--:--.-";
    // A thousandth of a tenth makes up for positions that are stored as fractions of two.
    const auto tenths = static_cast<juce::int64> (std::abs (seconds) * 10.0 + 0.001);
    return juce::String (seconds < 0.0 && tenths > 0 ? "-" : "")
           + juce::String::formatted ("%02d:%02d.%d", static_cast<int> (tenths / 600),
                                      static_cast<int> (tenths / 10 % 60), static_cast<int> (tenths % 10));
}

juce::String percentText (double speed)
{
    const auto percent = std::round ((speed - 1.0) * 10'000.0) / 100.0;
    return juce::String::formatted ("%+.2f %%", percent == 0.0 ? 0.0 : percent);
}
