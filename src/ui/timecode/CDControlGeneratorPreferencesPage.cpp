#include "ui/timecode/CDControlGeneratorPreferencesPage.h"

#include "engine/CPlatterdex.h"
#include "skin/Palette.h"
#include "support/language/Translate.h"
#include "timecode/ControlDisc.h"
#include "timecode/ControlDiscFile.h"
#include "ui/look/SMLookAndFeel.h"
#include "ui/look/TimeText.h"

namespace
{
constexpr const char* title = N_ ("CD Control Generator");
constexpr const char* hint =
    N_ ("Click [Start] to generate the Control Cd File (26 min.). Press [Cancel] if you want to generate a "
        "shorter file. After generation just burn the file to CDR.");
constexpr int width = 560, height = 196, margin = 12, row = 24, periodMs = 40;
const juce::Rectangle<int> hintArea { margin, 40 + row + 8, width - 2 * margin, 32 };

double secondsOf (int frames)
{
    return frames * controlDisc::cyclesPerFrame / controlDisc::carrierHz;
}
}

CDControlGeneratorPreferencesPage::CDControlGeneratorPreferencesPage (CPlatterdex& e) : engine (e)
{
    _cdControlFileLabel.setText (tr ("Control CD file:"), juce::dontSendNotification);
    _cdControlFileLabel.setBounds (margin, 12, 200, row);
    _cdControlTextEditor.setText (engine.settings.controlCdFile.get(), false);
    _cdControlTextEditor.setTooltip (tr ("The file that is written, 282 MB for the whole disc."));
    _cdControlTextEditor.setTitle (_cdControlTextEditor.getTooltip());
    _cdControlTextEditor.setBounds (margin, 40, width - 2 * margin - 92, row);
    _cdControlTextEditor.onFocusLost = _cdControlTextEditor.onReturnKey = [this] { keepFile(); };
    _cdControlBrowseButton.setTooltip (tr ("Chooses the place of the file."));
    _cdControlBrowseButton.setBounds (width - margin - 84, 40, 84, row);
    _cdControlBrowseButton.onClick = [this] { browse(); };
    startButton.setTooltip (tr ("Writes the control disc into the file."));
    startButton.setBounds (margin, height - margin - row, 84, row);
    startButton.onClick = [this] { start(); };
    cancelButton.setTooltip (tr ("Ends the file here: it stays, shorter and whole."));
    cancelButton.setBounds (margin + 92, height - margin - row, 84, row);
    cancelButton.onClick = [this] { cancel(); };
    cancelButton.setEnabled (false);
    bar.setBounds (margin + 184, height - margin - row, width - 2 * margin - 184, row);
    status.setBounds (margin, height - margin - 2 * row - 8, width - 2 * margin, row);
    for (auto* each : std::initializer_list<juce::Component*> { &_cdControlFileLabel, &_cdControlTextEditor,
                                                                &_cdControlBrowseButton, &startButton,
                                                                &cancelButton, &bar, &status })
        addAndMakeVisible (*each);
    setSize (width, height);
}

void CDControlGeneratorPreferencesPage::open (ToolWindows& windows, juce::Component& opener,
                                              CPlatterdex& engine)
{
    windows.open (tr (title), opener,
                  [&engine] (const auto&)
                  { return std::make_unique<CDControlGeneratorPreferencesPage> (engine); });
}

void CDControlGeneratorPreferencesPage::keepFile()
{
    const CallbackLock lock (engine.getCallbackLock(), "control cd file");
    engine.settings.controlCdFile.set (_cdControlTextEditor.getText());
}

void CDControlGeneratorPreferencesPage::restoreDefaults()
{
    _cdControlTextEditor.setText (defaultSettings (engine.environment.folders).controlCdFile.get(), false);
    keepFile();
}

void CDControlGeneratorPreferencesPage::browse()
{
    if (engine.environment.prompts == nullptr)
        return;
    engine.environment.prompts->askFile ({ .title = tr ("Save the control cd as..."),
                                           .start = juce::File (engine.settings.controlCdFile.get()),
                                           .pattern = "*.wav",
                                           .isForWriting = true },
                                         [here = SafePointer (this)] (const juce::File& file)
                                         {
                                             if (here == nullptr || file == juce::File())
                                                 return;
                                             here->_cdControlTextEditor.setText (file.getFullPathName(),
                                                                                 false);
                                             here->keepFile();
                                         });
}

void CDControlGeneratorPreferencesPage::start()
{
    keepFile();
    const auto path = _cdControlTextEditor.getText();
    if (!juce::File::isAbsolutePath (path))
        return status.setText (tr ("The file needs a whole path."), juce::dontSendNotification);
    cancelled = false;
    framesDone = 0;
    fault = {};
    worker.post ({ .run = [this, file = juce::File (path)] (const std::stop_token& stop)
                   {
                       const auto sentence =
                           writeControlDisc (file, controlDisc::frameCount,
                                             [&] (int done)
                                             {
                                                 framesDone = done;
                                                 return !cancelled && !stop.stop_requested();
                                             });
                       const std::scoped_lock lock (faultLock);
                       fault = sentence;
                   } });
    startButton.setEnabled (false);
    cancelButton.setEnabled (true);
    startTimer (periodMs);
}

void CDControlGeneratorPreferencesPage::cancel()
{
    cancelled = true;
}

void CDControlGeneratorPreferencesPage::timerCallback()
{
    const auto isBusy = isWriting();
    progress = static_cast<double> (framesDone) / controlDisc::frameCount;
    const auto time = timeText (secondsOf (framesDone));
    auto text = tr ("Generating: %1 Time -> %2", _cdControlTextEditor.getText(), time);
    if (!isBusy)
    {
        stopTimer();
        const std::scoped_lock lock (faultLock);
        text = fault.isNotEmpty() ? fault : tr ("Wrote %1 of the control disc.", time);
        startButton.setEnabled (true);
        cancelButton.setEnabled (false);
    }
    status.setText (text, juce::dontSendNotification);
}

void CDControlGeneratorPreferencesPage::paint (juce::Graphics& g)
{
    g.fillAll (palette::panel);
    g.setColour (palette::label);
    g.setFont (SMLookAndFeel::font (SMLookAndFeel::valueSize));
    g.drawFittedText (tr (hint), hintArea, juce::Justification::topLeft, 2, 1.0f);
}
