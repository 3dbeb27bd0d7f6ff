#include "midi/ports/MidiPortService.h"

#include "midi/ports/AlsaBackend.h"
#include "midi/ports/JackBackend.h"
#include "midi/ports/MergePorts.h"

#include <algorithm>
#include <utility>

namespace
{
constexpr size_t indexOf (MidiDirection direction)
{
    return direction == MidiDirection::input ? 0 : 1;
}
}

MidiPortService::MidiPortService (Backends b, Pace p) : backends (std::move (b)), pace (p)
{
    for (const auto& backend : backends)
        backend->watch (
            [this]
            {
                const std::scoped_lock sl (lock);
                mayHaveChanged = true;
                wake.notify_all();
            });
}

MidiPortService::~MidiPortService()
{
    for (const auto& backend : backends)
        backend->watch ({});
    thread = {};
}

MidiPortService::Backends MidiPortService::systemBackends (const RealTimeRequest& realTime)
{
    Backends made;
    made.push_back (std::make_unique<AlsaBackend> (realTime));
    made.push_back (std::make_unique<JackBackend> (realTime));
    return made;
}

void MidiPortService::watch (bool on)
{
    const std::scoped_lock sl (lock);
    isOn = on;
    isReconsidering = true;
    wake.notify_all();
    if (on && !thread.joinable())
        thread = std::jthread ([this] (const std::stop_token& stop) { run (stop); });
}

bool MidiPortService::isWatching() const
{
    const std::scoped_lock sl (lock);
    return isOn;
}

std::vector<MidiPortInfo> MidiPortService::ports (MidiDirection direction) const
{
    const std::scoped_lock sl (lock);
    std::vector<MidiPortInfo> list;
    for (const auto& each : found[indexOf (direction)])
        list.push_back (each.port);
    return list;
}

uint32_t MidiPortService::generation() const
{
    const std::scoped_lock sl (lock);
    return changes;
}

void MidiPortService::reconsider()
{
    const std::scoped_lock sl (lock);
    isReconsidering = true;
    wake.notify_all();
}

void MidiPortService::lookNow()
{
    watch();
    std::unique_lock sl (lock);
    awaitLook (sl);
}

void MidiPortService::waitForPorts()
{
    if (std::unique_lock sl (lock); isOn)
        awaitLook (sl);
}

void MidiPortService::awaitLook (std::unique_lock<std::mutex>& sl)
{
    const auto wanted = ++looksWanted;
    wake.notify_all();
    told.wait (sl, [&] { return looksDone >= wanted; });
}

void MidiPortService::add (MidiPortListener& listener)
{
    const std::scoped_lock sl (listenersLock);
    listeners.push_back (&listener);
}

void MidiPortService::remove (MidiPortListener& listener)
{
    const std::scoped_lock sl (listenersLock);
    std::erase (listeners, &listener);
}

void MidiPortService::run (const std::stop_token& stop)
{
    juce::Thread::setCurrentThreadName ("MIDI ports");
    while (!stop.stop_requested())
    {
        uint64_t wanted = 0;
        {
            const std::scoped_lock sl (lock);
            wanted = looksWanted;
            mayHaveChanged = isReconsidering = false;
        }
        look();
        {
            const std::scoped_lock sl (listenersLock);
            for (auto* listener : listeners)
                listener->portsChanged();
        }
        {
            const std::scoped_lock sl (lock);
            looksDone = wanted;
            told.notify_all();
        }
        awaitReason (stop);
    }
}

void MidiPortService::awaitReason (const std::stop_token& stop)
{
    std::unique_lock sl (lock);
    const auto isUrgent = [this] { return isReconsidering || looksWanted > looksDone; };
    wake.wait_for (sl, stop, pace.look, [&] { return mayHaveChanged || isUrgent(); });
    // Half a look's time is the longest that ports which come and go without end are waited for.
    const auto latest = std::chrono::steady_clock::now() + pace.look / 2;
    while (mayHaveChanged && !isUrgent() && !stop.stop_requested()
           && std::chrono::steady_clock::now() < latest)
    {
        mayHaveChanged = false;
        if (!wake.wait_for (sl, stop, pace.quiet, [&] { return mayHaveChanged || isUrgent(); }))
            break;
    }
}

void MidiPortService::look()
{
    for (const auto direction : { MidiDirection::input, MidiDirection::output })
    {
        std::vector<MidiPortInfo> merged;
        std::vector<std::pair<juce::String, MidiBackend*>> owners;
        for (const auto& backend : backends)
        {
            if (!isWatching())
                break;
            const auto ports = backend->ports (direction);
            for (const auto& port : ports)
                owners.emplace_back (port.handle, backend.get());
            merged = mergePorts (std::move (merged), ports);
        }
        places[indexOf (direction)].assign (merged);

        std::vector<Found> now;
        for (auto& port : merged)
            for (const auto& [handle, backend] : owners)
                if (handle == port.handle)
                {
                    now.push_back ({ port, backend });
                    break;
                }
        const std::scoped_lock sl (lock);
        auto& before = found[indexOf (direction)];
        if (!std::equal (before.begin(), before.end(), now.begin(), now.end(),
                         [] (const Found& a, const Found& b) { return a.port == b.port; }))
        {
            before = std::move (now);
            ++changes;
        }
    }
}

MidiBackend* MidiPortService::backendOf (MidiDirection direction, const MidiPortInfo& port) const
{
    const std::scoped_lock sl (lock);
    for (const auto& each : found[indexOf (direction)])
        if (each.port == port)
            return each.backend;
    return nullptr;
}

std::unique_ptr<OpenMidiInput> MidiPortService::openInput (const MidiPortInfo& port, MidiReceiver& receiver)
{
    auto* const backend = backendOf (MidiDirection::input, port);
    return backend != nullptr ? backend->openInput (port, receiver) : nullptr;
}

std::unique_ptr<OpenMidiOutput> MidiPortService::openOutput (const MidiPortInfo& port)
{
    auto* const backend = backendOf (MidiDirection::output, port);
    return backend != nullptr ? backend->openOutput (port) : nullptr;
}
