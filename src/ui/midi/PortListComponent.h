#pragma once

#include "midi/ports/MidiPortSet.h"
#include "ui/poll/PollingView.h"

#include <memory>

/** The ports of one direction, each a toggle that opens it. A port that comes while the list is seen shows up by itself; one that
    is wanted and not there stays in the list, dimmed. */
class PortListComponent : public PollingView
{
public:
    static constexpr int rowHeight = 24;

    PortListComponent (MidiPortSet&, MidiDirection);
    ~PortListComponent() override;

    std::function<void()> onChange; ///< after a hand has opened or closed a port

    const std::vector<MidiPortSet::Row>& shownRows() const noexcept { return rows; }

    void paint (juce::Graphics&) override;
    void resized() override;

private:
    void pollCalm() override;
    void makeToggles();

    MidiPortSet& ports;
    const MidiDirection direction;
    std::vector<MidiPortSet::Row> rows;
    juce::Viewport viewport;
    juce::Component list;
    std::vector<std::unique_ptr<juce::ToggleButton>> toggles;
};
