#include "ui/timecode/TimecodeWords.h"

#include "support/language/Translate.h"
#include "timecode/deckmode/TimecodeBrand.h"
#include "ui/look/TimeText.h"
#include "ui/panel/PanelPaint.h"

juce::String TimecodeWords::quality (const TimecodeDeck::Status& status, const InputDiagnosis::Report& input)
{
    if (!status.hasSignal)
        return PanelPaint::dash();
    return juce::String (juce::roundToInt (100.0f * input.quality)) + " %";
}

juce::String TimecodeWords::diagnosis (const TimecodeDeck::Status& status,
                                       const InputDiagnosis::Report& input)
{
    return status.isInControlZone ? tr ("end of the record: the deck plays by itself") : inputWords (input);
}

juce::String TimecodeWords::found (int brand)
{
    return tr ("found: %1", juce::String (timecodeBrand (brand).name));
}

juce::String TimecodeWords::latency (const LatencyProbe::Result& result, int inputPair)
{
    using State = LatencyProbe::State;
    if (result.inputPair != inputPair || result.state == State::idle)
        return {};
    if (result.state == State::running)
        return tr ("listening...");
    return result.state == State::measured ? juce::String (result.milliseconds, 1) + " ms"
                                           : tr ("no click came back");
}

juce::String TimecodeWords::motion (const TimecodeDeck::Status& status)
{
    const auto speed =
        status.hasSignal ? juce::String::formatted ("%+.3f x", status.speed) : PanelPaint::dash() + " x";
    return speed + "   " + (status.isPlaceKnown ? timeText (status.seconds) : PanelPaint::dash());
}
