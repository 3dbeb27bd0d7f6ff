#include "app/DemoTrackWriter.h"

#include "demo/DemoFiles.h"
#include "support/language/Translate.h"

#include <juce_events/juce_events.h>

DemoTrackWriter::DemoTrackWriter (const juce::File& f, std::function<void (const juce::String&)> done)
    : folder (f),
      finished (std::make_shared<std::function<void (const juce::String&)>> (std::move (done)))
{
    worker.post ({ [this] (const std::stop_token& stop) { write (stop); } });
}

bool DemoTrackWriter::isWanted (const juce::File& folder)
{
    return folder.getNumberOfChildFiles (juce::File::findFilesAndDirectories) == 0;
}

void DemoTrackWriter::write (const std::stop_token& stop)
{
    const auto result = writeDemoTracks (folder, [&stop] { return stop.stop_requested(); });
    if (stop.stop_requested())
        return;
    const auto sentence = result.error.isNotEmpty()
                              ? result.error
                              : tr ("%1 demo tracks are in the audio folder.", result.written);
    juce::MessageManager::callAsync (
        [sentence, weak = std::weak_ptr (finished)]
        {
            if (const auto call = weak.lock())
                (*call) (sentence);
        });
}
