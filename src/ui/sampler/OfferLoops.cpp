#include "ui/sampler/OfferLoops.h"

void offerRecordedLoops (CPlatterdex& engine, std::function<void()> then)
{
    constexpr auto title = "Recorded loops";
    const auto loops = engine.sampler.unsavedLoops();
    if (loops == 0 || engine.environment.prompts == nullptr)
        return then();
    const auto question =
        loops == 1 ? juce::String (
            "1 recorded loop is in no file of yours. Do you want to save it to the samples folder?")
                   : juce::String (loops)
                         + " recorded loops are in no file of yours. Do you want to save them to the samples "
                           "folder?";
    engine.environment.prompts->askYesNo (title, question,
                                          [&engine, then = std::move (then)] (bool yes)
                                          {
                                              if (yes && !engine.sampler.keepUnsavedLoops())
                                                  return engine.environment.prompts->notify (
                                                      title, "They can't be written to the samples folder.");
                                              then();
                                          });
}
