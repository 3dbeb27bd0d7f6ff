#include "ui/plugins/PluginScannerComponent.h"

#include "engine/CPlatterdex.h"
#include "skin/Palette.h"
#include "support/language/Translate.h"
#include "ui/look/FolderQuestion.h"
#include "ui/look/SMLookAndFeel.h"
#include "ui/panel/PanelPaint.h"

namespace
{
constexpr const char* hangingText =
    N_ ("Some plugin appears to be not responding.. Press Skip Button to skip this plugin!");
constexpr int margin = 8, row = 24, gap = 4, panelHeight = 96, panelWidth = 520;

/** The folders in which Linux keeps plug-ins, as far as they are there. */
juce::FileSearchPath systemFolders()
{
    juce::FileSearchPath path;
    for (const auto* folder : { "~/.", "/usr/lib/", "/usr/local/lib/" })
        for (const auto* name : { "vst", "lxvst", "vst3", "lv2" })
            if (const juce::File file (juce::String (folder) + name); file.isDirectory())
                path.addIfNotAlreadyThere (file);
    return path;
}
}

HangingPluginComponent::HangingPluginComponent()
{
    skipButton.setComponentID ("_skipButton");
    skipButton.setTooltip (tr ("Gives this plug-in up and goes on with the next."));
    skipButton.onClick = [this] { onSkip(); };
    addAndMakeVisible (skipButton);
}

void HangingPluginComponent::paint (juce::Graphics& g)
{
    g.fillAll (palette::line);
    g.setColour (palette::selected);
    g.drawRect (getLocalBounds());
    PanelPaint::value (g, tr (hangingText), getLocalBounds().withTrimmedBottom (row + 2 * margin));
}

void HangingPluginComponent::resized()
{
    skipButton.setBounds (
        getLocalBounds().removeFromBottom (row + margin).removeFromTop (row).withSizeKeepingCentre (96, row));
}

PluginScannerComponent::PluginScannerComponent (VstSlots& s) : slots (s), table (s.known)
{
    scanButton.setComponentID ("_scanButton");
    scanButton.setTooltip (tr ("Loads every plug-in once in a process of its own and lists what it is."));
    scanButton.onClick = [this] { startOrCancel(); };
    folderButton.setTooltip (tr ("Chooses the folder of your plug-ins."));
    folderButton.onClick = [this] { chooseFolder (false); };
    popupsButton.setTooltip (tr ("Keeps plug-ins from showing windows while they are scanned."));
    popupsButton.setToggleState (true, juce::dontSendNotification);
    systemButton.setTooltip (
        tr ("Scans ~/.vst, ~/.lxvst, ~/.vst3, ~/.lv2 and the folders of the same names below /usr."));
    systemButton.setToggleState (true, juce::dontSendNotification);
    folderLabel.setText (slots.engine.settings.vstFolder.get(), juce::dontSendNotification);
    folderLabel.setMinimumHorizontalScale (0.5f);
    hangingPanel.onSkip = [this]
    {
        if (scan != nullptr)
            scan->skip();
    };
    for (auto* each : std::initializer_list<juce::Component*> {
             &scanButton, &folderButton, &folderLabel, &popupsButton, &systemButton, &bar, &message, &table })
        addAndMakeVisible (*each);
    addChildComponent (hangingPanel);
    bar.setVisible (false);
}

PluginScannerComponent::~PluginScannerComponent() = default;

void PluginScannerComponent::startOrCancel()
{
    if (scan != nullptr)
        return scan->cancel();
    if (slots.known->entries().empty())
        chooseFolder (true);
    else
        start();
}

void PluginScannerComponent::chooseFolder (bool thenStart)
{
    auto& engine = slots.engine;
    if (engine.environment.prompts == nullptr)
        return thenStart ? start() : void();
    const auto home =
        juce::File::getSpecialLocation (juce::File::userHomeDirectory).getChildFile ("vstplugins");
    const juce::File chosen (engine.settings.vstFolder.get());
    engine.environment.prompts->askFile (
        FolderQuestion::make (tr ("Choose plugin dir!"), chosen.isDirectory() && !thenStart ? chosen : home),
        [here = SafePointer (this), thenStart] (const juce::File& folder)
        {
            auto* const self = here.getComponent();
            if (self == nullptr || folder == juce::File())
                return;
            {
                const CallbackLock lock (self->slots.engine.getCallbackLock(), "plug-in folder");
                self->slots.engine.settings.vstFolder.set (folder.getFullPathName());
            }
            self->folderLabel.setText (folder.getFullPathName(), juce::dontSendNotification);
            if (thenStart)
                self->start();
        });
}

void PluginScannerComponent::start()
{
    const auto& folders = slots.engine.environment.folders;
    ScanThread::Options options;
    for (const auto& folder : { juce::File (slots.engine.settings.vstFolder.get()), folders.vstPlugins() })
        if (folder.isDirectory())
            options.searchPaths.addIfNotAlreadyThere (folder);
    if (systemButton.getToggleState())
        options.searchPaths.addPath (systemFolders());
    options.searchPaths.removeRedundantPaths();
    options.scanner.process.disablePopups = popupsButton.getToggleState();
    options.scanner.log = folders.setup().getChildFile ("plugin_scan.log");
    progress = 0.0;
    bar.setVisible (true);
    scanButton.setButtonText (tr ("Cancel"));
    scan = std::make_unique<ScanThread> (slots.known, options,
                                         [here = SafePointer (this)] (const ScanMessage& news)
                                         {
                                             juce::MessageManager::callAsync (
                                                 [here, news]
                                                 {
                                                     if (auto* const self = here.getComponent())
                                                         self->show (news);
                                                 });
                                         });
}

void PluginScannerComponent::show (const ScanMessage& news)
{
    using Kind = ScanMessage::Kind;
    progress = news.progress;
    switch (news.kind)
    {
    case Kind::started:
        message.setText (tr ("scanning %1", news.file.getFileName()), juce::dontSendNotification);
        break;
    case Kind::hanging:
        hangingPanel.setVisible (news.flag);
        hangingPanel.toFront (false);
        break;
    case Kind::allDone:
        message.setText (!news.isKept ? tr ("The list of plug-ins could not be written.")
                         : news.flag  ? tr ("canceled")
                                      : juce::String(),
                         juce::dontSendNotification);
        end();
        break;
    case Kind::ended:
        break;
    }
    table.refresh();
}

void PluginScannerComponent::end()
{
    scan.reset();
    hangingPanel.setVisible (false);
    bar.setVisible (false);
    scanButton.setButtonText (tr ("Scan & Verify"));
}

void PluginScannerComponent::paint (juce::Graphics& g)
{
    g.fillAll (palette::panel);
}

void PluginScannerComponent::resized()
{
    auto area = getLocalBounds();
    auto top = area.removeFromTop (row);
    scanButton.setBounds (top.removeFromLeft (112));
    top.removeFromLeft (margin);
    popupsButton.setBounds (top.removeFromLeft (172));
    systemButton.setBounds (top.removeFromLeft (180));
    area.removeFromTop (gap);
    auto folder = area.removeFromTop (row);
    folderButton.setBounds (folder.removeFromLeft (112));
    folder.removeFromLeft (margin);
    folderLabel.setBounds (folder);
    area.removeFromTop (gap);
    auto line = area.removeFromTop (row);
    bar.setBounds (line.removeFromLeft (200));
    line.removeFromLeft (margin);
    message.setBounds (line);
    area.removeFromTop (gap);
    table.setBounds (area);
    hangingPanel.setBounds (
        area.withSizeKeepingCentre (juce::jmin (panelWidth, area.getWidth()), panelHeight));
}
