#pragma once

#include "plugins/scan/ScanThread.h"
#include "plugins/slot/VstSlots.h"
#include "support/language/Translate.h"
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
    PXTextButton skipButton { tr ("Skip") };
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
    PXTextButton scanButton { tr ("Scan & Verify") }, folderButton { tr ("Folder...") };
    juce::ToggleButton popupsButton { tr ("Disable plugin popups") },
        systemButton { tr ("The system's folders too") };
    double progress = 0.0;
    juce::ProgressBar bar { progress };
    juce::Label message, folderLabel;
    PluginsTable table;
    HangingPluginComponent hangingPanel;
    std::unique_ptr<ScanThread> scan;
};
