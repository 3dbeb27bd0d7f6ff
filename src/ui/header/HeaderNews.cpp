#include "ui/header/HeaderNews.h"

#include "engine/CPlatterdex.h"
#include "engine/CommandTable.h"
#include "mixer/AutoCrossfader.h"
#include "skin/Palette.h"
#include "support/language/Translate.h"
#include "ui/look/TimeText.h"
#include "ui/panel/PanelPaint.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace
{
constexpr int lampSize = 7, gap = 4, clockWidth = 36;
constexpr juce::uint32 tellMs = 5000, offerMs = 12000;

/** Minutes and whole seconds. */
juce::String timeOf (double seconds)
{
    return timeText (seconds).upToLastOccurrenceOf (".", false, false);
}

constexpr double offBeat = 0.03;                    ///< of a beat: 14 ms at 128 BPM, which is heard
constexpr juce::int64 leastFreeBytes = 200'000'000; ///< 20 minutes of a recording in 16 bits
}

HeaderNews::HeaderNews (CPlatterdex& e)
    : PollingView (Pace::calm),
      engine (e),
      automixStops (e.automix.timesWithoutTrack)
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

void HeaderNews::tell (const juce::String& sentence, std::function<void()> offer)
{
    told = sentence;
    toldUntil = engine.environment.clock() + (offer != nullptr ? offerMs : tellMs);
    offered = std::move (offer);
    setInterceptsMouseClicks (offered != nullptr, false);
    setMouseCursor (offered != nullptr ? juce::MouseCursor::PointingHandCursor
                                       : juce::MouseCursor::NormalCursor);
    pollCalm();
}

void HeaderNews::mouseUp (const juce::MouseEvent& event)
{
    if (offered == nullptr || !getLocalBounds().contains (event.getPosition()))
        return;
    const auto act = std::exchange (offered, nullptr);
    tell ({});
    act();
}

/** True for a loop that begins beside the beats of a known grid. */
bool HeaderNews::missesTheBeat (const DeckWatch& deck)
{
    const auto& grid = deck->grid;
    if (!deck->places.loop.has_value() || !grid.isKnown() || !(grid.bpm > 0.0))
        return false;
    const auto in = deck->places.loop->in, beat = grid.sampleRate * 60.0 / grid.bpm;
    deck.readBeats (in - beat, in + beat, beats);
    return !beats.empty()
           && std::none_of (beats.begin(), beats.end(),
                            [&] (const auto& each) { return std::abs (each.frame - in) <= offBeat * beat; });
}

/** Offers snap once, when a first loop misses the beat. */
void HeaderNews::followLoops()
{
    for (size_t i = 0; i < loops.size(); ++i)
    {
        const auto& loop = decks[i]->places.loop;
        const auto running = loop.has_value() && loop->running ? loop : std::nullopt;
        if (std::exchange (loops[i], running) == running || !running.has_value() || hasOfferedSnap
            || engine.settings.deckSetup[i].snap != 0 || !missesTheBeat (decks[i]))
            continue;
        hasOfferedSnap = true;
        tell (tr ("THE LOOP IS BESIDE THE BEAT. CLICK: SNAP ON"),
              [this] { engine.setParameter (CommandTable::numberOf ("SNAP"), 1.0f); });
    }
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

/** The next step of automix. */
juce::String HeaderNews::readAutomix() const
{
    const auto letter = [] (const DeckWatch& deck) { return PanelPaint::letterOf (deck.deck()); };
    const int onAir = engine.automix.automixDeck;
    const auto &now = decks[static_cast<size_t> (onAir)], &next = decks[static_cast<size_t> (1 - onAir)];
    if (now->loading)
        return tr ("AUTO: LOADS A TRACK");
    if (now->loadedFrames == 0 && next->loadedFrames == 0 && !next->loading)
        return tr ("AUTO: THE LIST HOLDS NO TRACK");
    if (now->loadedFrames == 0)
        return tr ("AUTO: LOADS A TRACK");
    if (next->loading)
        return tr ("AUTO: LOADS THE NEXT TRACK");
    if (next->playing && engine.settings.autoFadeState != AutoCrossfader::idle)
        return tr ("AUTO: MIXES INTO DECK %1", letter (now));
    if (next->loadedFrames == 0 || next->position >= next->loadedFrames)
        return tr ("AUTO: NO TRACK FOLLOWS");
    const auto speed = std::max (0.01, now->tempo);
    const auto left = (now->loadedFrames - now->position) / (now->grid.sampleRate * speed)
                      - engine.settings.automixFadeSeconds;
    return tr ("AUTO: TO DECK %1 IN %2", letter (next), timeOf (std::max (0.0, left)));
}

juce::String HeaderNews::readWork() const
{
    if (status.isNotEmpty())
        return status;
    if (engine.settings.automixOn != 0)
        return readAutomix();
    if (engine.recorder.isRecording())
        return tr ("RECORDS %1",
                   timeOf (static_cast<double> (engine.recorder.recordedFrames) / engine.decks.engineRate)
                       + "  " + engine.recorder.file().getFileName());
    return engine.batchAnalysis.progress().text();
}

HeaderNews::News HeaderNews::read()
{
    News next;
    next.clock = engine.environment.wallClock().formatted ("%H:%M");
    if (toldUntil.has_value() && engine.environment.clock() >= *toldUntil)
    {
        toldUntil.reset();
        offered = nullptr;
        setInterceptsMouseClicks (false, false);
    }
    next.sentence = readDanger();
    next.weight = Weight::danger;
    if (next.sentence.isEmpty())
    {
        next.sentence = toldUntil.has_value() ? told : readWork();
        next.weight = next.sentence.isEmpty() ? Weight::none : Weight::quiet;
    }
    return next;
}

void HeaderNews::followRecorder()
{
    const auto& recorder = engine.recorder;
    const auto was = std::exchange (isRecording, recorder.isRecording());
    if (was && !isRecording && onRecorded != nullptr)
        onRecorded (recorder.file(), static_cast<double> (recorder.recordedFrames) / engine.decks.engineRate);
}

void HeaderNews::followAutomix()
{
    const auto times = engine.automix.timesWithoutTrack;
    if (std::exchange (automixStops, times) != times)
        tell (tr ("AUTO IS OFF: THE LIST HOLDS NO TRACK"));
}

void HeaderNews::pollCalm()
{
    followRecorder();
    followAutomix();
    followLoops();
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
