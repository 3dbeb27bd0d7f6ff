#include "ui/header/HeaderNews.h"

#include "engine/CPlatterdex.h"
#include "skin/Palette.h"
#include "support/language/Translate.h"
#include "ui/panel/PanelPaint.h"

namespace
{
constexpr int lampSize = 7, gap = 4, clockWidth = 36;
constexpr juce::uint32 tellMs = 5000;
constexpr juce::int64 leastFreeBytes = 200'000'000; ///< 20 minutes of a recording in 16 bits
}

HeaderNews::HeaderNews (CPlatterdex& e) : PollingView (Pace::calm), engine (e)
{
    setInterceptsMouseClicks (false, false);
    for (int deck = 0; deck < deckCount; ++deck)
        decks.emplace_back (e, deck);
}

void HeaderNews::setStatus (const juce::String& sentence)
{
    status = sentence;
    pollCalm();
}

void HeaderNews::tell (const juce::String& sentence)
{
    told = sentence;
    toldUntil = engine.environment.clock() + tellMs;
    pollCalm();
}

juce::String HeaderNews::readDanger() const
{
    const auto& recorder = engine.recorder;
    if (recorder.hasFailed())
        return tr ("THE RECORDING CAN'T BE WRITTEN: DISK FULL OR FOLDER LOCKED");
    if (recorder.isRecording())
    {
        if (recorder.droppedFrames > 0)
            return tr ("RECORDING HAS GAPS: THE DISK IS TOO SLOW");
        if (const juce::File place (engine.settings.recordFile.get());
            place.getParentDirectory().getBytesFreeOnVolume() < leastFreeBytes)
            return tr ("THE DISK OF THE RECORDING IS NEARLY FULL");
    }
    for (const auto& deck : decks)
        if (deck->playing && deck->beatRatio == 0.0)
            return tr ("DECK %1 CAN'T SYNC: TEMPO OUT OF RANGE", PanelPaint::letterOf (deck.deck()));
    return {};
}

juce::String HeaderNews::readWork() const
{
    if (status.isNotEmpty())
        return status;
    return engine.batchAnalysis.progress().text();
}

HeaderNews::News HeaderNews::read()
{
    News next;
    next.clock = engine.environment.wallClock().formatted ("%H:%M");
    if (toldUntil.has_value() && engine.environment.clock() >= *toldUntil)
        toldUntil.reset();
    next.sentence = readDanger();
    next.weight = Weight::danger;
    if (next.sentence.isEmpty())
    {
        next.sentence = toldUntil.has_value() ? told : readWork();
        next.weight = next.sentence.isEmpty() ? Weight::none : Weight::quiet;
    }
    return next;
}

void HeaderNews::pollCalm()
{
    auto next = read();
    if (next == news)
        return;
    news = std::move (next);
    repaint();
}

void HeaderNews::paint (juce::Graphics& g)
{
    auto area = getLocalBounds();
    PanelPaint::value (g, news.clock, area.removeFromRight (clockWidth), juce::Justification::centredRight);
    const auto lamp = area.removeFromLeft (lampSize).withSizeKeepingCentre (lampSize, lampSize);
    g.setColour (news.weight == Weight::danger  ? palette::danger
                 : news.weight == Weight::quiet ? palette::quiet
                                                : palette::well);
    g.fillEllipse (lamp.toFloat());
    g.setFont (SMLookAndFeel::labelFont());
    g.setColour (news.weight == Weight::danger ? palette::value : palette::label);
    g.drawFittedText (news.sentence, area.reduced (gap, 0), juce::Justification::centredLeft, 1, 0.7f);
}
