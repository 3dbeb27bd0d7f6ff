#include "plugins/slot/PluginTrial.h"

#include "plugins/catalogue/PluginListFile.h"
#include "plugins/ipc/ScannerProtocol.h"
#include "support/files/PrivateFolder.h"
#include "support/language/Translate.h"

namespace
{
/** Nobody is asked meanwhile: a plug-in that takes longer is given up. */
constexpr int longestTrialMs = 60000;

ScannerExchange::Patience patience()
{
    ScannerExchange::Patience times;
    times.skipMs = longestTrialMs;
    return times;
}

juce::String sentenceOf (const ScannerExchange::Answer& answer)
{
    using End = ScannerExchange::End;
    switch (answer.end)
    {
    case End::answered:
        return answer.text == ScannerProtocol::trialPassed ? juce::String() : tr (juce::String (answer.text));
    case End::notStarted:
        return tr ("The scanner could not be started to try it.");
    case End::notTaken:
        return tr ("The scanner did not answer.");
    case End::died:
        return tr ("It crashed when it was tried.");
    case End::skipped:
        return tr ("It did not respond when it was tried.");
    case End::cancelled:
        break;
    }
    return tr ("It was not tried to the end.");
}
}

PluginTrial::PluginTrial (ScannerProcess::Options options) : exchange (std::move (options), patience()) {}

juce::String PluginTrial::keyOf (const Request& request)
{
    return request.entry.description.createIdentifierString() + " " + juce::String (request.rate) + " "
           + juce::String (request.block);
}

juce::String PluginTrial::run (const Request& request, const std::function<bool()>& shouldExit)
{
    if (passed.contains (keyOf (request)))
        return {};
    const PrivateFolder place;
    const auto state = place.file ("state");
    ScannerProtocol::TrialOrder order {
        request.rate, request.block, PluginListFile::write ({ request.entry }), {}
    };
    if (!request.state.isEmpty())
    {
        if (!state.replaceWithData (request.state.getData(), request.state.getSize()))
            return tr ("Its state could not be written to try it.");
        order.stateFile = state.getFullPathName().toStdString();
    }
    ScannerExchange::Watcher watcher;
    watcher.shouldExit = shouldExit;
    auto reason = sentenceOf (exchange.carryOut (ScannerProtocol::messageOf (order), watcher));
    exchange.shutdown();
    if (reason.isEmpty())
        passed.insert (keyOf (request));
    return reason;
}
