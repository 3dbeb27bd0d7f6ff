#pragma once

#include "midi/script/MidiScript.h"
#include "shared/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <map>
#include <mutex>
#include <thread>
#include <vector>

/** The lamps of a controller that is not there: keeps what scripts send. */
class FakeSurface
{
public:
    using Bytes = std::vector<uint8_t>;

    void receive (std::span<const uint8_t> bytes)
    {
        const std::lock_guard guard (lock);
        messages.emplace_back (bytes.begin(), bytes.end());
        if (bytes.size() == 3)
            lamps[{ bytes[0], bytes[1] }] = bytes[2];
    }

    /** The last value of a lamp, -1 if it was never told one. */
    int lamp (int status, int data) const
    {
        const std::lock_guard guard (lock);
        const auto found = lamps.find ({ status, data });
        return found != lamps.end() ? found->second : -1;
    }

    std::vector<Bytes> sent() const
    {
        const std::lock_guard guard (lock);
        return messages;
    }

private:
    mutable std::mutex lock;
    std::vector<Bytes> messages;
    std::map<std::pair<int, int>, int> lamps;
};

/** A script with a fake surface, and short times so that a hung one is soon told. */
struct ScriptFixture
{
    static constexpr ScriptTimes shortTimes { .callback = std::chrono::milliseconds (200),
                                              .ending = std::chrono::milliseconds (200),
                                              .timer = std::chrono::milliseconds (2) };

    explicit ScriptFixture (CPlatterdex* engine = nullptr, ScriptTimes times = shortTimes)
        : script (ScriptWorld { .owner = engine,
                                .send = [this] (std::span<const uint8_t> bytes) { surface.receive (bytes); },
                                .journal = journal,
                                .scriptFolder = folder.file ("script_files"),
                                .times = times })
    {
    }

    /** The four callbacks with some of their bodies. */
    static juce::String withBodies (const juce::String& onMessage, const juce::String& onTimer = {},
                                    const juce::String& onStart = {}, const juce::String& onStop = {},
                                    const juce::String& before = {})
    {
        return before
               + "\nvoid OnMidiMessageReceived(const string &in name, int status, int data, int value) { "
               + onMessage + " }\nvoid OnTimerCallback() { " + onTimer + " }\nvoid OnStart() { " + onStart
               + " }\nvoid OnStop() { " + onStop + " }\n";
    }

    juce::File write (const juce::String& text, const char* name = "script.c") const
    {
        const auto file = folder.file (name);
        file.replaceWithText (text, false, false, nullptr);
        return file;
    }

    bool load (const juce::String& text) { return script.loadScript (write (text)); }

    void post (int status, int data, int value, const char* port = "Surface")
    {
        script.post ({ status, data, value, port });
    }

    /** The texts of the journal, each with its place. */
    std::vector<juce::String> told() const
    {
        std::vector<juce::String> texts;
        for (const auto& entry : journal.after (0))
            texts.push_back (textOf (entry));
        return texts;
    }

    /** Waits until something holds, ten seconds at most. */
    template <typename Condition>
    static bool comes (Condition&& holds)
    {
        const auto end = std::chrono::steady_clock::now() + std::chrono::seconds (10);
        while (!holds())
        {
            if (std::chrono::steady_clock::now() > end)
                return false;
            std::this_thread::yield();
        }
        return true;
    }

    const TemporaryFolder folder;
    FakeSurface surface;
    ScriptJournal journal;
    MidiScript script; ///< last: its threads use the rest
};
