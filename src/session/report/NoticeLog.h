#pragma once

#include "support/EngineListener.h"
#include "support/Prompts.h"

#include <cstdint>
#include <deque>
#include <memory>
#include <mutex>

/** The last notices that a user was shown, each with its time, for a report. Any thread that may block. */
class NoticeLog : public EngineListener
{
public:
    static constexpr size_t kept = 200;

    /** @param text   in any number of lines; an empty one is nothing */
    void add (const juce::String& text);

    /** A line a notice, the oldest first. */
    juce::StringArray lines() const;

    /** The number of notices so far, also of those that are no longer kept. */
    uint64_t count() const;

    // The decks' messages.
    void engineEvent (EngineEvent, int) override {}
    void engineMessage (const juce::String& text, int deck) override;

private:
    mutable std::mutex mutex;
    std::deque<juce::String> notices;
    uint64_t added = 0;
};

/** Prompts that note what they show. */
class LoggedPrompts : public Prompts
{
public:
    LoggedPrompts (std::shared_ptr<Prompts> shown, std::shared_ptr<NoticeLog>);

    void askYesNo (const juce::String& title, const juce::String& question,
                   std::function<void (bool yes)> answer) override;
    void notify (const juce::String& title, const juce::String& sentence) override;
    void askText (const juce::String& title, const juce::String& question, const juce::String& initial,
                  std::function<void (std::optional<juce::String>)> answer) override;
    void askFile (const FileQuestion&, std::function<void (const juce::File&)> answer) override;

private:
    const std::shared_ptr<Prompts> shown;
    const std::shared_ptr<NoticeLog> log;
};
