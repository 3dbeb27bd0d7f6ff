#include "engine/HandLog.h"

#include <chrono>
#include <memory>

namespace
{
std::atomic<HandLog*> ofProcess { nullptr };
}

HandLog::HandLog()
{
    ofProcess = this;
}

HandLog::~HandLog()
{
    ofProcess = nullptr;
    while (next())
        ;
}

void HandLog::follow (const CPlatterdex& engine) noexcept
{
    followed = &engine;
}

HandLog* HandLog::of (const CPlatterdex& engine) noexcept
{
    auto* const log = ofProcess.load();
    return log != nullptr && log->followed.load() == &engine ? log : nullptr;
}

int64_t HandLog::now() noexcept
{
    return std::chrono::duration_cast<std::chrono::nanoseconds> (
               std::chrono::steady_clock::now().time_since_epoch())
        .count();
}

void HandLog::command (int number, float value, float arg1, float arg2) noexcept
{
    if (!queue.push ({ now(), number, value, arg1, arg2, 0, nullptr }))
        lostCount.fetch_add (1, std::memory_order_relaxed);
}

void HandLog::load (const juce::String& path, int deck)
{
    auto kept = std::make_unique<const juce::String> (path);
    if (queue.push ({ now(), 0, 0.0f, 1.0f, 1.0f, deck, kept.get() }))
        kept.release(); // next() takes it
    else
        lostCount.fetch_add (1, std::memory_order_relaxed);
}

std::optional<HandLog::Action> HandLog::next()
{
    Entry entry;
    if (!queue.pop (entry))
        return {};
    Action action { entry.at, entry.number, entry.value, entry.arg1, entry.arg2, entry.deck, {} };
    if (const std::unique_ptr<const juce::String> path (entry.path); path != nullptr)
        action.path = *path;
    return action;
}
