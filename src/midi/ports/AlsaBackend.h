#pragma once

#include "midi/ports/MidiPort.h"

/** The ports of the ALSA sequencer, through JUCE. It tells nothing of changes. Without a sequencer there are no ports. */
class AlsaBackend : public MidiBackend
{
public:
    std::vector<MidiPortInfo> ports (MidiDirection) override;
    std::unique_ptr<OpenMidiInput> openInput (const MidiPortInfo&, MidiReceiver&) override;
    std::unique_ptr<OpenMidiOutput> openOutput (const MidiPortInfo&) override;
    void watch (std::function<void()>) override {}
};
