#include "session/report/NoticeLog.h"

#include <utility>

void NoticeLog::add (const juce::String& text)
{
    if (text.isEmpty())
        return;
    auto line = juce::Time::getCurrentTime().formatted ("%H:%M:%S ") + text.replaceCharacters ("\r\n", "  ");
    const std::scoped_lock lock (mutex);
    notices.push_back (std::move (line));
    if (notices.size() > kept)
        notices.pop_front();
    ++added;
}

juce::StringArray NoticeLog::lines() const
{
    const std::scoped_lock lock (mutex);
    juce::StringArray all;
    for (const auto& notice : notices)
        all.add (notice);
    return all;
}

uint64_t NoticeLog::count() const
{
    const std::scoped_lock lock (mutex);
    return added;
}

void NoticeLog::engineMessage (const juce::String& text, int deck)
{
    add (juce::String::charToString (static_cast<juce::juce_wchar> ('A' + deck)) + ": " + text);
}

LoggedPrompts::LoggedPrompts (std::shared_ptr<Prompts> s, std::shared_ptr<NoticeLog> l)
    : shown (std::move (s)),
      log (std::move (l))
{
}

void LoggedPrompts::askYesNo (const juce::String& title, const juce::String& question,
                              std::function<void (bool yes)> answer)
{
    log->add (title + ": " + question);
    shown->askYesNo (title, question, std::move (answer));
}

void LoggedPrompts::notify (const juce::String& title, const juce::String& sentence)
{
    log->add (title + ": " + sentence);
    shown->notify (title, sentence);
}

void LoggedPrompts::askText (const juce::String& title, const juce::String& question,
                             const juce::String& initial,
                             std::function<void (std::optional<juce::String>)> answer)
{
    shown->askText (title, question, initial, std::move (answer));
}

void LoggedPrompts::askFile (const FileQuestion& question, std::function<void (const juce::File&)> answer)
{
    shown->askFile (question, std::move (answer));
}
