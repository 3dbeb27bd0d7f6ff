#include "midi/detect/ControllerWatch.h"

#include "midi/detect/ControllerDetection.h"

ControllerWatch::ControllerWatch (MidiSystem& m) : midi (m)
{
    midi.ports.add (*this);
}

ControllerWatch::~ControllerWatch()
{
    midi.ports.remove (*this);
    cancelPendingUpdate();
}

void ControllerWatch::handleAsyncUpdate()
{
    std::vector<juce::String> fresh;
    for (const auto& row : midi.control.ports.rows (MidiDirection::input))
        if (row.index >= 0 && known.insert (row.name).second && !row.isWanted)
            fresh.push_back (row.name);
    const auto isFirstLook = !std::exchange (hasLooked, true);
    if (isFirstLook && midi.engine.isFirstRun)
    {
        autoDetectControllers (midi);
        midi.engine.isFirstRun = false;
    }
    else if (!isFirstLook)
        for (const auto& port : fresh)
            offerControllers (midi, port);
}
