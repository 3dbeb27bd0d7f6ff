#pragma once

#include "midi/ports/MidiPort.h"
#include "midi/ports/SequencerAnnouncements.h"

#include <atomic>

/** The ports of the ALSA sequencer, opened through JUCE; the sequencer itself tells of changes. Without one there are no ports. */
class AlsaBackend : public MidiBackend
{
public:
    /** @param r   asks for real time for the thread that reads all inputs; may be null */
    explicit AlsaBackend (RealTimeRequest r) : askForRealTime (std::move (r)) {}
    ~AlsaBackend() override;

    std::vector<MidiPortInfo> ports (MidiDirection) override;
    std::unique_ptr<OpenMidiInput> openInput (const MidiPortInfo&, MidiReceiver&) override;
    std::unique_ptr<OpenMidiOutput> openOutput (const MidiPortInfo&) override;
    void watch (std::function<void()> changed) override;

private:
    void tellOfChange();

    const RealTimeRequest askForRealTime;
    std::atomic<pid_t> reader { 0 }; ///< JUCE's thread, once it has brought a message
    pid_t askedFor = 0;
    std::mutex watcherLock; ///< taken by the thread of the announcements
    std::function<void()> watcher;
    std::mutex announcementsLock;
    std::unique_ptr<SequencerAnnouncements> announcements;
};
