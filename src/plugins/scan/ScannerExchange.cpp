#include "plugins/scan/ScannerExchange.h"

#include "plugins/ipc/ScannerProtocol.h"

#include <utility>

ScannerExchange::ScannerExchange (ScannerProcess::Options o, Patience p)
    : options (std::move (o)),
      patience (p)
{
}

ScannerExchange::Answer ScannerExchange::carryOut (const std::string& order, const Watcher& watcher)
{
    skipRequested = false;
    if (process != nullptr && !process->isAlive())
        process = nullptr;
    const auto wasUsed = process != nullptr;
    const auto attempt = [&]() -> Answer
    {
        if (process == nullptr)
            process = ScannerProcess::start (options, watcher.shouldExit);
        if (process == nullptr)
            return { End::notStarted, {}, false };
        auto answer = process->mailbox().send (order, patience.sendMs) ? watch (watcher)
                                                                       : Answer { End::notTaken, {}, false };
        if (answer.end == End::answered)
            process->mailbox().clear();
        else
            process = nullptr;
        return answer;
    };
    auto answer = attempt();
    // An earlier plug-in may have left the process ill: a new one tells.
    if (wasUsed && (answer.end == End::died || (answer.end == End::skipped && !skipRequested)))
        if (auto again = attempt(); again.end != End::notStarted)
            answer = std::move (again);
    return answer;
}

ScannerExchange::Answer ScannerExchange::watch (const Watcher& watcher)
{
    const auto begin = juce::Time::getMillisecondCounter();
    auto isHanging = false;
    auto end = End::cancelled;
    auto wasSilent = false;
    for (int silent = 0; !watcher.shouldExit();)
    {
        const auto message = process->mailbox().receive();
        if (message == ScannerProtocol::finished)
        {
            auto text = result (watcher);
            end = text.empty() ? End::died : End::answered;
            if (isHanging)
                watcher.hanging (false);
            return { end, std::move (text), false };
        }
        if (message == ScannerProtocol::ping)
            watcher.ping();
        silent = message.empty() ? silent + 1 : 0;
        if (message.empty() && (!process->isAlive() || silent >= patience.silentLooks))
        {
            wasSilent = process->kill();
            end = End::died;
            break;
        }
        const auto gone = static_cast<int> (juce::Time::getMillisecondCounter() - begin);
        if (!isHanging && gone >= patience.hangingMs)
        {
            isHanging = true;
            watcher.hanging (true);
        }
        if (skipRequested || (patience.skipMs > 0 && gone >= patience.skipMs))
        {
            end = End::skipped;
            break;
        }
        if (message.empty())
            juce::Thread::sleep (patience.lookMs);
    }
    if (isHanging)
        watcher.hanging (false);
    return { end, {}, wasSilent };
}

std::string ScannerExchange::result (const Watcher& watcher)
{
    for (int looks = 0; looks < patience.silentLooks && !watcher.shouldExit(); ++looks)
    {
        if (auto text = process->mailbox().receive(); !text.empty() && text != ScannerProtocol::ping)
            return text;
        if (!process->isAlive())
            return process->mailbox().receive();
        juce::Thread::sleep (patience.lookMs);
    }
    return {};
}

void ScannerExchange::shutdown()
{
    if (process != nullptr)
        process->shutdown();
    process = nullptr;
}
