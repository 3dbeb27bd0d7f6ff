#pragma once

#include <juce_events/juce_events.h>

#include <functional>
#include <mutex>
#include <vector>

/** Carries calls from workers to the message thread, in their order. What has not been called when this goes is dropped. */
class MessageCalls : private juce::AsyncUpdater
{
public:
    MessageCalls() = default;
    ~MessageCalls() override { cancelPendingUpdate(); }

    /** Any thread that may block. Without a message loop the calls wait for deliver(). */
    void post (std::function<void()> call)
    {
        {
            const std::scoped_lock scope (lock);
            calls.push_back (std::move (call));
        }
        if (juce::MessageManager::getInstanceWithoutCreating() != nullptr)
            triggerAsyncUpdate();
    }

    /** Makes the calls that were posted so far. Message thread; a program without a loop calls it by itself. */
    void deliver()
    {
        std::vector<std::function<void()>> due;
        {
            const std::scoped_lock scope (lock);
            due.swap (calls);
        }
        for (const auto& call : due)
            call();
    }

private:
    void handleAsyncUpdate() override { deliver(); }

    std::mutex lock;
    std::vector<std::function<void()>> calls;
};
