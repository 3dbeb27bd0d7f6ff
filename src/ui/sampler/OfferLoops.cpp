#include "ui/sampler/OfferLoops.h"

#include "support/language/Translate.h"

void offerRecordedLoops (CPlatterdex& engine, std::function<void()> then)
{
    const auto title = tr ("Recorded loops");
    const auto loops = engine.sampler.unsavedLoops();
    if (loops == 0 || engine.environment.prompts == nullptr)
        return then();
    const auto question = trPlural (
        "%1 recorded loop is in no file of yours. Do you want to save it to the samples folder?",
        "%1 recorded loops are in no file of yours. Do you want to save them to the samples folder?", loops);
    engine.environment.prompts->askYesNo (title, question,
                                          [&engine, title, then = std::move (then)] (bool yes)
                                          {
                                              if (yes && !engine.sampler.keepUnsavedLoops())
                                                  return engine.environment.prompts->notify (
                                                      title,
                                                      tr ("They can't be written to the samples folder."));
                                              then();
                                          });
}
