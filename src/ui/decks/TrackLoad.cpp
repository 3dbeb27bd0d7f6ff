#include "ui/decks/TrackLoad.h"

#include "engine/CPlatterdex.h"
#include "support/files/AudioFileTypes.h"
#include "support/language/Translate.h"
#include "ui/panel/PanelPaint.h"

TrackLoad::Consent TrackLoad::consentOf (const CPlatterdex& engine, const DeckWatch& watch, bool isHeld)
{
    const auto& now = watch.look();
    if (!now.playing || now.position >= now.loadedFrames)
        return Consent::given;
    if (engine.settings.lockLoadedDecks != 0)
        return Consent::refused;
    if (isHeld)
        return Consent::given;
    return engine.environment.prompts != nullptr ? Consent::asked : Consent::refused;
}

void TrackLoad::onto (CPlatterdex& engine, const DeckWatch& watch, const juce::File& file,
                      juce::Component& asker, bool isHeld)
{
    const auto deck = watch.deck();
    const auto consent = consentOf (engine, watch, isHeld);
    // A locked deck says so itself.
    if (consent == Consent::given || engine.settings.lockLoadedDecks != 0)
        return engine.loadTrack (file, deck);
    if (consent == Consent::refused)
        return;
    const auto& prompts = engine.environment.prompts;
    prompts->askYesNo (
        tr ("Deck %1 is playing", PanelPaint::letterOf (deck)),
        tr ("Load %1 in place of the track that plays on deck %2?", file.getFileName(),
            PanelPaint::letterOf (deck)),
        [&engine, file, deck, alive = juce::Component::SafePointer<juce::Component> (&asker)] (bool yes)
        {
            if (yes && alive != nullptr)
                engine.loadTrack (file, deck);
        });
}

int TrackLoad::inOrder (CPlatterdex& engine, std::span<const DeckWatch> decks,
                        const juce::Array<juce::File>& files, int first, juce::Component& asker, bool isHeld)
{
    auto next = 0, left = 0;
    const auto count = static_cast<int> (decks.size());
    for (const auto& file : files)
    {
        if (!AudioFileTypes::matches (file))
            continue;
        const auto isFirst = next == 0;
        const auto at = [&]() -> const DeckWatch&
        { return decks[static_cast<size_t> ((first + next) % count)]; };
        while (next > 0 && next < count && (at().look().playing || at().now().loading))
            ++next;
        if (next >= count)
        {
            ++left;
            continue;
        }
        onto (engine, at(), file, asker, isFirst && isHeld);
        ++next;
    }
    return left;
}

int TrackLoad::freeDeck (std::span<const DeckWatch> decks)
{
    for (const auto& watch : decks)
        if (const auto& deck = watch.look(); deck.loadedFrames == 0 && !deck.loading)
            return watch.deck();
    for (const auto& watch : decks)
        if (const auto& deck = watch.look(); !deck.playing && !deck.loading)
            return watch.deck();
    return -1;
}
