#pragma once

#include "plugins/scan/ScanThread.h"
#include "plugins/slot/VstSlots.h"
#include "ui/plugins/PluginsTable.h"
#include "ui/widgets/PXTextButton.h"

/** Tells that a plug-in does not respond, and offers to skip it. */
class HangingPluginComponent : public juce::Component
{
public:
    HangingPluginComponent();

    std::function<void()> onSkip;

    void paint (juce::Graphics&) override;
    void resized() override;

private:
    PXTextButton skipButton { "Skip" };
};

/** The dialog of scans: folders, start and end, progress, the list of what is known. Closing it breaks a scan off. */
class PluginScannerComponent : public juce::Component
{
public:
    explicit PluginScannerComponent (VstSlots&);
    ~PluginScannerComponent() override;

    /** Takes news of the scan; message thread. */
    void show (const ScanMessage&);

    void paint (juce::Graphics&) override;
    void resized() override;

private:
    void startOrCancel();
    void chooseFolder (bool thenStart);
    void start();
    void end();

    VstSlots& slots;
    PXTextButton scanButton { "Scan & Verify" }, folderButton { "Folder..." };
    juce::ToggleButton popupsButton { "Disable plugin popups" }, systemButton { "The system's folders too" };
    double progress = 0.0;
    juce::ProgressBar bar { progress };
    juce::Label message, folderLabel;
    PluginsTable table;
    HangingPluginComponent hangingPanel;
    std::unique_ptr<ScanThread> scan;
};
