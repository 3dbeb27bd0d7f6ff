#pragma once

#include "support/AudioThread.h"

#include <array>
#include <atomic>
#include <cstdint>

/** The engine's tasks for itself. */
enum class EngineRequest
{
    saveAnalysis,     ///< a hand has changed the deck's cues or grid: its file is to be written
    loadNextTrack,    ///< automix wants a track on the deck, 0 or 1
    askToStopAutomix, ///< Play was pressed on the deck while automix runs
    toggleAutomix,
    toggleRecorder,
    recordLoop,          ///< the sampler has noted a loop of a deck: its frames are to be copied
    makeTimecodeDecoder, ///< the deck's control record, or the rate, is another
    keepPads,            ///< other samples lie on the pads: that outlasts the session
    count
};

/** Requests of the engine to itself, from any thread to the one that serves them. Each is a bit that stays until it is
    served, so none is ever lost. */
class EngineRequests
{
public:
    /** Asks once more for the same counts as asking once. Any thread. @param deck   0 to 3 */
    PX_AUDIO_THREAD void ask (EngineRequest request, int deck) noexcept
    {
        bitsOf (request).fetch_or (1u << deck, std::memory_order_release);
    }

    /** Asks for a change from on to off or back; two of them cancel each other. Any thread. */
    PX_AUDIO_THREAD void toggle (EngineRequest request) noexcept
    {
        bitsOf (request).fetch_xor (1u, std::memory_order_release);
    }

    /** Takes a kind of request away, to serve it. @returns a bit per deck, deck A the lowest; 1 for a change */
    uint32_t take (EngineRequest request) noexcept
    {
        return bitsOf (request).exchange (0, std::memory_order_acquire);
    }

private:
    std::atomic<uint32_t>& bitsOf (EngineRequest request) noexcept
    {
        return bits[static_cast<size_t> (request)];
    }

    std::array<std::atomic<uint32_t>, static_cast<size_t> (EngineRequest::count)> bits {};
};
