#include "offline/SetControllers.h"

#include <array>
#include <cmath>

namespace
{
MidiSystem::Options steppedOptions()
{
    MidiSystem::Options options;
    options.backends.clear();
    options.hasThreads = false;
    return options;
}
}

SetControllers::SetControllers (OfflineHost& h) : host (h), midi (h.engine(), steppedOptions())
{
    midi.control.sender.onSend = midi.scripts.onSend = [this] (std::span<const uint8_t> message) {
        sent.add (
            juce::String::toHexString (message.data(), static_cast<int> (message.size())).toUpperCase());
    };
}

void SetControllers::play (const SetScript::Midi& line)
{
    midi.control.handle (line.status, line.data, line.value);
    const std::array message { static_cast<uint8_t> (line.status), static_cast<uint8_t> (line.data),
                               static_cast<uint8_t> (line.value) };
    midi.scripts.midiArrived (juce::String (line.port), message);
    host.engine().deliverMessages();
}

bool SetControllers::loadScript (const juce::File& file)
{
    midi.scripts.addScript (file);
    if (ticks == 0)
        while (frameOfTick (ticks) <= host.position())
            ++ticks;
    host.engine().deliverMessages();
    const auto rows = midi.scripts.rows();
    return std::any_of (rows.begin(), rows.end(),
                        [&file] (const auto& row)
                        { return row.file == file && row.state == MidiScript::State::running; });
}

int64_t SetControllers::frameOfTick (int64_t number) const
{
    const auto seconds = std::chrono::duration<double> (ScriptTimes().timer).count();
    return std::llround (static_cast<double> (number) * seconds * host.engine().getSampleRate());
}

std::optional<int64_t> SetControllers::nextTick() const
{
    return ticks > 0 ? std::optional (frameOfTick (ticks)) : std::nullopt;
}

void SetControllers::tick()
{
    ++ticks;
    midi.scripts.tick();
    host.engine().deliverMessages();
}

juce::StringArray SetControllers::takeSent()
{
    midi.control.tick();
    return std::exchange (sent, {});
}

std::vector<ScriptEntry> SetControllers::takeTold()
{
    auto entries = midi.scripts.journal().after (told);
    told = midi.scripts.journal().newest();
    return entries;
}
