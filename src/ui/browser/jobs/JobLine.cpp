#include "ui/browser/jobs/JobLine.h"

#include "skin/Palette.h"
#include "support/language/Translate.h"
#include "ui/panel/PanelPaint.h"
#include "ui/window/ToolWindows.h"

namespace
{
constexpr double smallestStep = 0.002; ///< of the bar, that is seen
constexpr int buttonWidth = 64, gap = 4, margin = 8, barHeight = 2;

juce::String timeLeft (int seconds)
{
    if (seconds < 60)
        return tr ("about %1 s", std::max (1, seconds));
    return tr ("about %1 min", (seconds + 30) / 60);
}

/** Lists what failed. */
class FailureList : public juce::Component
{
public:
    explicit FailureList (const juce::StringArray& failures)
    {
        text.setMultiLine (true);
        text.setReadOnly (true);
        text.setScrollbarsShown (true);
        text.setFont (SMLookAndFeel::font (SMLookAndFeel::valueSize));
        text.setText (failures.joinIntoString ("\n"), false);
        addAndMakeVisible (text);
        setSize (640, 320);
    }

    void resized() override { text.setBounds (getLocalBounds().reduced (margin)); }

private:
    juce::TextEditor text;
};
}

JobLine::JobLine (BrowserWorld& w) : PollingView (Pace::calm), world (w)
{
    button.setComponentID ("_jobButton");
    button.setTooltip (tr ("Ends the task, or shows what failed in one that has ended."));
    button.onClick = [this] { press(); };
    addChildComponent (button);
}

juce::String JobLine::textOf (const LibraryJob& job)
{
    if (job.state == LibraryJob::State::cancelled)
        return tr ("%1: cancelled. %2", job.title, job.summary).trim();
    if (!job.isActive())
        return job.summary;
    auto text = job.title;
    if (job.total > 0)
        text << " [" << job.done << "/" << job.total << "]";
    else if (job.done > 0)
        text << " [" << job.done << "]";
    if (job.item.isNotEmpty())
        text << " : " << juce::File::createFileWithoutCheckingPath (job.item).getFileName();
    if (job.secondsLeft)
        text << "   " << timeLeft (*job.secondsLeft);
    return text;
}

void JobLine::pollCalm()
{
    if (world.room != nullptr && world.room->jobs.changes() != seenChanges)
    {
        seenChanges = world.room->jobs.changes();
        // The first one at work, else the last one that has ended.
        job.reset();
        for (const auto& each : world.room->jobs.jobs())
            if (!job || (!job->isActive() && (each.isActive() || each.id > job->id)))
                job = each;
    }
    const auto analysis = world.engine.batchAnalysis.progress();
    const auto isBusy = job && job->isActive();
    const auto text = isBusy               ? textOf (*job)
                      : analysis.isRunning ? analysis.text()
                      : job                ? textOf (*job)
                                           : juce::String();
    const auto part = isBusy ? job->part
                      : analysis.isRunning && analysis.total > 0
                          ? static_cast<double> (analysis.done) / analysis.total
                          : -1.0;
    if (text == shownText && std::abs (part - shownPart) < smallestStep)
        return;
    shownText = text;
    setTooltip (isBusy ? juce::String() : text); // which may be longer than the line
    shownPart = part;
    button.setButtonText (part >= 0.0                       ? tr ("CANCEL")
                          : job && !job->failures.isEmpty() ? tr ("DETAILS")
                                                            : tr ("OK"));
    button.setVisible (text.isNotEmpty());
    repaint();
}

void JobLine::press()
{
    if (job && job->isActive())
        world.room->jobs.cancel (job->id);
    else if (world.engine.batchAnalysis.progress().isRunning)
        world.engine.batchAnalysis.stop();
    else if (job && world.room != nullptr)
    {
        const auto ended = *job;
        if (!ended.failures.isEmpty())
            showFailures (ended);
        // Those that ended well before it have nothing to say any more.
        for (const auto& each : world.room->jobs.jobs())
            if (each.id == ended.id || (each.state == LibraryJob::State::ended && each.failures.isEmpty()))
                world.room->jobs.dismiss (each.id);
    }
    refresh();
}

void JobLine::showFailures (const LibraryJob& ended)
{
    if (auto* windows = ToolWindows::of (*this))
        windows->open (ended.title, *this,
                       [failures = ended.failures] (const std::function<void()>&)
                       { return std::make_unique<FailureList> (failures); });
}

void JobLine::resized()
{
    button.setBounds (getLocalBounds().removeFromRight (buttonWidth).withSizeKeepingCentre (buttonWidth, 20));
}

void JobLine::paint (juce::Graphics& g)
{
    if (shownText.isEmpty())
        return;
    const auto area = getLocalBounds().withTrimmedRight (buttonWidth + gap);
    PanelPaint::label (g, shownText, area, juce::Justification::centredLeft);
    if (shownPart < 0.0)
        return;
    const auto bar = area.withTop (area.getBottom() - barHeight);
    g.setColour (palette::well);
    g.fillRect (bar);
    g.setColour (palette::accent);
    g.fillRect (bar.withWidth (juce::roundToInt (bar.getWidth() * juce::jlimit (0.0, 1.0, shownPart))));
}
