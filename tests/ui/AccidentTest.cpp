#include "UiBench.h"

#include "ui/deckviews/DeckWaveformThumbnail.h"

#include <gtest/gtest.h>

namespace
{
/** Four decks that play, and the master's blocks of them. */
struct PlayingDesk : UiBench
{
    PlayingDesk()
    {
        engine.settings.editor[EditorPreference::fourDeckMode] = 1;
        refresh();
        for (int deck = 0; deck < deckCount; ++deck)
        {
            load (halfLoudTrack (20.0), deck);
            engine.transport.playPause (deck);
        }
    }

    juce::AudioBuffer<float> block()
    {
        juce::AudioBuffer<float> made (CPlatterdex::outputChannels, 512);
        made.clear();
        juce::MidiBuffer midi;
        const juce::ScopedLock lock (engine.getCallbackLock());
        engine.processBlock (made, midi);
        return made;
    }
};

/** A hand that slips on the desk while it plays. */
struct Slip
{
    const char* name;
    void (*act) (PlayingDesk&, int deck);
};

constexpr int leftButton = juce::ModifierKeys::leftButtonModifier;

const Slip slips[] {
    { "a file let go over a deck", [] (PlayingDesk& desk, int deck)
      { desk.editor->deck (deck).filesDropped ({ desk.halfLoudTrack (20.0).getFullPathName() }, 9, 9); } },
    { "another deck's track let go over a deck",
      [] (PlayingDesk& desk, int deck)
      {
          auto& wave = desk.find<DeckWaveform> (desk.editor->deck ((deck + 1) % deckCount));
          desk.editor->deck (deck).itemDropped ({ DeckWaveform::dragDescription, &wave, {} });
      } },
    { "a drag over the whole track",
      [] (PlayingDesk& desk, int deck)
      {
          auto& thumbnail = desk.find<DeckWaveformThumbnail> (desk.editor->deck (deck));
          for (const auto x : { 10.0f, 60.0f, 110.0f })
          {
              const auto event = mouseAt (thumbnail, { x, 5.0f }, leftButton);
              const auto moved = event.withNewPosition (juce::Point (x + 50.0f, 5.0f));
              thumbnail.mouseDown (event);
              thumbnail.mouseDrag (moved);
          }
      } },
    { "a click on the deck's lamp",
      [] (PlayingDesk& desk, int deck)
      {
          auto& strip = desk.editor->deck (deck);
          const auto lamp = desk.find<DeckBadge> (strip).getBounds().getCentre();
          auto* under = strip.getComponentAt (lamp);
          ASSERT_EQ (under, &strip) << "the mouse goes through the lamp";
          under->mouseDown (mouseAt (strip, lamp.toFloat()));
          under->mouseUp (mouseAt (strip, lamp.toFloat()));
      } },
    { "the key that loads onto a free deck",
      [] (PlayingDesk& desk, int) { desk.editor->keyPressed (juce::KeyPress ('n')); } },
    { "undo with nothing to undo", [] (PlayingDesk& desk, int)
      { desk.editor->keyPressed (juce::KeyPress ('z', juce::ModifierKeys::ctrlModifier, 0)); } },
};
}

TEST (Accident, NoSlipOfAHandChangesABlockOfFourPlayingDecks)
{
    PlayingDesk touched, left;
    for (const auto locks : { 0, 1 })
        for (const auto& slip : slips)
            for (int deck = 0; deck < deckCount; ++deck)
            {
                SCOPED_TRACE (testing::Message() << slip.name << ", deck " << deck);
                touched.engine.settings.lockLoadedDecks = static_cast<int8_t> (locks);
                slip.act (touched, deck);
                touched.refresh();
                for (int i = 0; i < 4; ++i)
                {
                    const auto one = touched.block(), other = left.block();
                    for (int channel = 0; channel < one.getNumChannels(); ++channel)
                        ASSERT_EQ (0, std::memcmp (one.getReadPointer (channel),
                                                   other.getReadPointer (channel), 512 * sizeof (float)));
                }
            }
    EXPECT_GT (left.block().getMagnitude (0, 512), 0.1f) << "they are heard all the time";
}

TEST (Accident, ADeckSaysBeforeTheHandLetsGoWhatItWillDo)
{
    UiBench bench;
    bench.load (bench.halfLoudTrack(), 0);
    auto& strip = bench.editor->deck (0);
    const juce::StringArray files { bench.halfLoudTrack().getFullPathName() };
    using Consent = TrackLoad::Consent;
    const auto said = [&]
    {
        strip.fileDragMove (files, 9, 9);
        return strip.dropConsent();
    };
    EXPECT_EQ (said(), Consent::given);
    bench.engine.transport.playPause (0);
    EXPECT_EQ (said(), Consent::refused) << "nobody can be asked";
    EXPECT_EQ (TrackLoad::consentOf (bench.engine, DeckWatch (bench.engine, 0), true), Consent::given)
        << "Shift";
    bench.engine.settings.lockLoadedDecks = 1;
    EXPECT_EQ (TrackLoad::consentOf (bench.engine, DeckWatch (bench.engine, 0), true), Consent::refused);
    strip.fileDragExit (files);
    EXPECT_EQ (strip.dropConsent(), std::nullopt);
}

TEST (Accident, UndoMeansTheDeckOfTheLastHandOrKey)
{
    UiBench bench;
    for (const auto deck : { 0, 1 })
        bench.load (bench.halfLoudTrack(), deck);
    const auto cue = [&] (int deck) { return bench.engine.decks.deck (deck)->marks.cues[0].get(); };
    press (bench.find<DeckWaveform> (bench.editor->deck (0)));
    release (bench.find<DeckWaveform> (bench.editor->deck (0)));
    bench.editor->keyPressed (juce::KeyPress ('7')); // hot cue 1 of deck B
    ASSERT_GE (cue (1), 0.0);
    bench.editor->keyPressed (juce::KeyPress ('z', juce::ModifierKeys::ctrlModifier, 0));
    EXPECT_LT (cue (1), 0.0);
    EXPECT_TRUE (bench.editor->headerStrip().newsLine().shown().sentence.endsWith ("deck B"));
}
