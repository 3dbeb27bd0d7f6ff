#include "scanner/ScannerLoop.h"

#include "plugins/catalogue/PluginListFile.h"
#include "plugins/formats/PluginProbe.h"
#include "plugins/ipc/ScannerProtocol.h"
#include "plugins/ipc/SimpleInterprocessConnection.h"

#include <atomic>
#include <thread>

#include <csignal>
#include <unistd.h>

namespace
{
constexpr int lookMs = 5, pingMs = 200, sendMs = 5000;

/** Ends this process at once, with everything that plug-ins have started if the group is its own. */
void endGroup()
{
    if (::getpgrp() == ::getpid())
        ::kill (0, SIGKILL);
    ::_exit (1);
}

/** Keeps an eye on the master while a plug-in may hold the main thread, and tells it that this process is alive. */
class Heart
{
public:
    Heart (SimpleInterprocessConnection& m, pid_t parent)
        : mailbox (m),
          thread ([this, parent] (const std::stop_token& stop) { beat (stop, parent); })
    {
    }

    /** True while an order is carried out. */
    std::atomic<bool> isBusy { false };

private:
    void beat (const std::stop_token& stop, pid_t parent)
    {
        while (!stop.stop_requested())
        {
            std::this_thread::sleep_for (std::chrono::milliseconds (pingMs));
            if (::getppid() != parent)
                endGroup(); // whatever the plug-in is doing: nobody waits for it any more
            if (isBusy)
                mailbox.send (ScannerProtocol::ping,
                              1); // a full mailbox holds a word that nobody has read yet
        }
    }

    SimpleInterprocessConnection& mailbox;
    std::jthread thread;
};

std::string resultOf (PluginFormats& formats, const ScannerProtocol::ScanOrder& order)
{
    const juce::File file (juce::String::fromUTF8 (order.path.c_str()));
    if (order.width != static_cast<int> (8 * sizeof (void*)))
        return PluginListFile::write ({ PluginProbe::unusable (
            file, VerifiedState::failed, "It is made for " + juce::String (order.width) + " bits.") });
    auto text = PluginListFile::write (PluginProbe::examine (formats, file));
    if (text.size() >= SimpleInterprocessConnection::messageBytes)
        text = PluginListFile::write (
            { PluginProbe::unusable (file, VerifiedState::failed, "It describes more plug-ins than fit.") });
    return text;
}
std::string resultOf (PluginFormats& formats, const ScannerProtocol::TrialOrder& order)
{
    const auto list = PluginListFile::read (order.list);
    if (!list || list->size() != 1)
        return "The order can't be read.";
    juce::MemoryBlock state;
    if (!order.stateFile.empty()
        && !juce::File (juce::String::fromUTF8 (order.stateFile.c_str())).loadFileAsData (state))
        return "Its state can't be read.";
    const auto reason =
        PluginProbe::tryOut (formats, list->front(), order.sampleRate, order.blockSize, state).toStdString();
    return reason.empty() ? std::string (ScannerProtocol::trialPassed) : reason;
}
}

int runScanner (const std::string& mailboxName)
{
    // The maker of the mailbox is the parent, unless it has died before this line.
    const auto parent = SimpleInterprocessConnection::makerOf (mailboxName);
    if (parent != ::getppid())
        return 2;
    const auto mailbox =
        SimpleInterprocessConnection::open (mailboxName, SimpleInterprocessConnection::Side::scanner);
    if (mailbox == nullptr || !mailbox->send (ScannerProtocol::processIdMessage (::getpid()), sendMs))
        return 2;
    Heart heart (*mailbox, parent);
    PluginFormats formats;
    for (;;)
    {
        const auto message = mailbox->receive();
        if (message == ScannerProtocol::close)
            return 0;
        std::string result;
        heart.isBusy = true;
        if (const auto scan = ScannerProtocol::scanOrderIn (message))
            result = resultOf (formats, *scan);
        else if (const auto trial = ScannerProtocol::trialOrderIn (message))
            result = resultOf (formats, *trial);
        heart.isBusy = false;
        if (!result.empty())
            // Each waits for the one before to be taken; without a master the heart ends all this.
            juce::ignoreUnused (mailbox->send (ScannerProtocol::finished, sendMs)
                                && mailbox->send (result, sendMs));
        juce::MessageManager::getInstance()->runDispatchLoopUntil (lookMs);
    }
}
