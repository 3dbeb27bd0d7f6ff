#pragma once

#include "ui/browser/model/BrowserWorld.h"
#include "ui/poll/PollingView.h"
#include "ui/widgets/PXTextButton.h"

#include <optional>

/** One line on the library's long tasks: what is in hand, how much is done, how long it will take, with a button that ends it;
    afterwards its outcome, and a list of what failed. Message thread. */
class JobLine : public PollingView, public juce::SettableTooltipClient
{
public:
    explicit JobLine (BrowserWorld&);

    /** The sentence as it stands. */
    juce::String text() const { return shownText; }

    /** The sentence on a job: "Importing Music Files [120/900] : song.mp3   about 2 min". */
    static juce::String textOf (const LibraryJob&);

    void paint (juce::Graphics&) override;
    void resized() override;

private:
    void pollCalm() override;
    void press();
    void showFailures (const LibraryJob&);

    BrowserWorld& world;
    PXTextButton button;
    std::optional<LibraryJob> job;
    juce::String shownText;
    double shownPart = -1.0;
    uint64_t seenChanges = 0;
};
