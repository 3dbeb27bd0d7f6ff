#pragma once

#include "support/Worker.h"
#include "support/language/Translate.h"
#include "ui/widgets/PXTextButton.h"
#include "ui/window/RestorablePage.h"
#include "ui/window/ToolWindows.h"

#include <atomic>
#include <mutex>

class CPlatterdex;

/** The page that writes the system's control disc as a WAV file, with its progress. Cancel leaves a shorter, valid file. */
class CDControlGeneratorPreferencesPage : public juce::Component, public RestorablePage, private juce::Timer
{
public:
    explicit CDControlGeneratorPreferencesPage (CPlatterdex&);

    static void open (ToolWindows&, juce::Component& opener, CPlatterdex&);

    void start();
    void cancel();
    bool isWriting() const { return worker.isBusy(); }

    void restoreDefaults() override;
    void paint (juce::Graphics&) override;

private:
    void browse();
    void timerCallback() override;
    void keepFile();

    CPlatterdex& engine;
    juce::Label _cdControlFileLabel;
    juce::TextEditor _cdControlTextEditor;
    PXTextButton _cdControlBrowseButton { tr ("Browse...") }, startButton { tr ("Start") },
        cancelButton { tr ("Cancel") };
    double progress = 0;
    juce::ProgressBar bar { progress };
    juce::Label status;

    std::atomic<int> framesDone { 0 };
    std::atomic<bool> cancelled { false };
    std::mutex faultLock;
    juce::String fault;
    Worker worker { "control cd" };
};
