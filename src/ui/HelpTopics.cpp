#include "ui/HelpTopics.h"

#include "engine/CommandTable.h"
#include "ui/KeyCard.h"
#include "ui/ParameterList.h"
#include "ui/browser/SongManager.h"
#include "ui/browser/files/ColumnFileBrowser.h"
#include "ui/browser/preview/PreviewPlayerComponent.h"
#include "ui/browser/search/SearchEditor.h"
#include "ui/browser/tree/SourcesTree.h"
#include "ui/command/CommandWidget.h"
#include "ui/decks/DeckComponent.h"
#include "ui/decks/DeckPanels.h"
#include "ui/decks/DeckTempoPanel.h"
#include "ui/deckviews/DeckWaveform.h"
#include "ui/deckviews/DeckWaveformThumbnail.h"
#include "ui/deckviews/StackedWave.h"
#include "ui/deckviews/scope/DeckPeakScope.h"
#include "ui/envelope/EnvEditor.h"
#include "ui/global/DeckStackPage.h"
#include "ui/global/GhostMixerComponent.h"
#include "ui/global/MixerPages.h"
#include "ui/header/HeaderPanels.h"
#include "ui/plugins/VstPluginsPreferencesPage.h"
#include "ui/plugins/VstSlotComponent.h"
#include "ui/preferences/Preferences.h"
#include "ui/sampler/SamplerPages.h"
#include "ui/slicegate/SlicegateComponent.h"
#include "ui/slicegate/SlicegateEditorComponent.h"
#include "ui/smartknob/DeckSmartKnobPanel.h"
#include "ui/smartknob/SmartKnobEditorComponent.h"
#include "ui/timecode/CDControlGeneratorPreferencesPage.h"
#include "ui/timecode/DeckDVSPanel.h"
#include "ui/timecode/TimecodePreferencesPage.h"

namespace
{
struct CommandTopic
{
    std::string_view constant; ///< the beginning of it
    HelpTopic topic;
};

/** The first row that fits counts. */
constexpr CommandTopic commandTopics[] {
    { "PLAY_", { "first-mix", "start-the-first-track" } },
    { "MASTER_VOLUME", { "headphones", "set-the-levels" } },
    { "MASTER_LEVEL", { "headphones", "set-the-levels" } },
    { "MASTER", { "beat-matching", "by-sync" } },
    { "SYNC", { "beat-matching", "by-sync" } },
    { "PITCH", { "beat-matching", "by-hand" } },
    { "KEY_", { "beat-matching", "keep-the-key" } },
    { "DOWNBEAT", { "beat-matching", "put-the-grid-right" } },
    { "CUE", { "cues-and-loops", "the-cue-point" } },
    { "REWIND", { "cues-and-loops", "the-cue-point" } },
    { "START_POINT", { "cues-and-loops", "the-cue-point" } },
    { "HOT_CUE", { "cues-and-loops", "hot-cues" } },
    { "DELETE_HOT_CUE", { "cues-and-loops", "hot-cues" } },
    { "SNAP", { "cues-and-loops", "keep-to-the-beat" } },
    { "LOOP", { "cues-and-loops", "loops" } },
    { "RELOOP", { "cues-and-loops", "loops" } },
    { "LEAP", { "cues-and-loops", "loops" } },
    { "GAIN", { "headphones", "set-the-levels" } },
    { "VOLUME", { "headphones", "set-the-levels" } },
    { "BALANCE", { "headphones", "set-the-levels" } },
    { "EQ_", { "headphones", "highs-mids-and-lows" } },
    { "PFL", { "headphones", "listen-ahead" } },
    { "MONITOR", { "headphones", "listen-ahead" } },
    { "CROSSFADER", { "headphones", "the-crossfader" } },
    { "AUTO_CROSSFADER", { "headphones", "the-crossfader" } },
    { "PUNCH", { "headphones", "the-crossfader" } },
    { "CUT", { "headphones", "the-crossfader" } },
    { "AUTOMIX", { "library", "let-a-list-mix-itself" } },
    { "FILTER", { "effects", "the-filter" } },
    { "FX_", { "effects", "the-three-slots" } },
    { "EFFECT_", { "effects", "the-three-slots" } },
    { "SMARTKNOB", { "effects", "smartknobs" } },
    { "SLICEGATE", { "pads", "play-a-pad" } },
    { "SAMPLER_RECORD", { "sampler", "catch-a-loop" } },
    { "SAMPLER_PREVIEW", { "sampler", "catch-a-loop" } },
    { "SAMPLER", { "sampler", "play-a-sample" } },
    { "VST", { "plug-ins", "put-a-plug-in-on-a-deck" } },
    { "DVS", { "timecode", "follow-a-record" } },
    { "DISK_RECORDER", { "recording" } },
};

struct KindTopic
{
    bool (*is) (const juce::Component&);
    HelpTopic topic;
};

template <typename Kind>
bool isKind (const juce::Component& component)
{
    return dynamic_cast<const Kind*> (&component) != nullptr;
}

/** The walk goes from the inside to the outside, so what lies in another may have a topic of its own. */
const KindTopic kindTopics[] {
    { isKind<DeckWaveform>, { "cues-and-loops", "move-through-the-track" } },
    { isKind<DeckWaveformThumbnail>, { "cues-and-loops", "move-through-the-track" } },
    { isKind<StackedWave>, { "beat-matching", "by-hand" } },
    { isKind<DeckPeakScope>, { "beat-matching", "by-hand" } },
    { isKind<DeckTempoPanel>, { "beat-matching", "by-hand" } },
    { isKind<DeckGridPanel>, { "beat-matching", "put-the-grid-right" } },
    { isKind<DeckKeyPanel>, { "beat-matching", "keep-the-key" } },
    { isKind<DeckLoopPanel>, { "cues-and-loops", "loops" } },
    { isKind<DeckCuePanel>, { "cues-and-loops", "hot-cues" } },
    { isKind<DeckDVSPanel>, { "timecode", "follow-a-record" } },
    { isKind<DeckSmartKnobPanel>, { "effects", "smartknobs" } },
    { isKind<DeckComponent>, { "first-mix", "load-two-tracks" } },
    { isKind<MixerPage>, { "headphones", "set-the-levels" } },
    { isKind<GhostMixerComponent>, { "headphones", "set-the-levels" } },
    { isKind<SamplerPage>, { "sampler", "play-a-sample" } },
    { isKind<VstSlotComponent>, { "plug-ins", "put-a-plug-in-on-a-deck" } },
    { isKind<SlicegateComponent>, { "pads", "play-a-pad" } },
    { isKind<SlicegateEditorComponent>, { "pads", "draw-a-pad" } },
    { isKind<SmartKnobEditorComponent>, { "effects", "smartknobs" } },
    { isKind<Fx2DecksComponent>, { "effects", "the-three-slots" } },
    { isKind<Fx4DecksComponent>, { "effects", "the-three-slots" } },
    { isKind<HeaderLevels>, { "headphones", "listen-ahead" } },
    { isKind<HeaderButtons>, { "preferences" } },
    { isKind<SearchEditor>, { "library", "find-songs" } },
    { isKind<SourcesTree>, { "library", "playlists" } },
    { isKind<ColumnFileBrowser>, { "library", "bring-your-music-in" } },
    { isKind<PreviewPlayerComponent>, { "library", "find-songs" } },
    { isKind<SongManager>, { "library" } },
    { isKind<CDControlGeneratorPreferencesPage>, { "timecode", "the-control-disc" } },
    { isKind<TimecodePreferencesPage>, { "timecode" } },
    { isKind<VstPluginsPreferencesPage>, { "plug-ins", "find-your-plug-ins" } },
    { isKind<Preferences>, { "preferences" } },
    { isKind<ParameterList>, { "preferences", "all-parameters" } },
    { isKind<KeyCard>, { "keyboard" } },
};

HelpTopic ofCommand (int number)
{
    const auto constant = CommandTable::constant (number);
    for (const auto& [beginning, topic] : commandTopics)
        if (std::string_view (constant).starts_with (beginning))
            return topic;
    return {};
}

/** The topic of the component itself, whatever is around it; the index if it has none. */
HelpTopic ownTopic (const juce::Component& component)
{
    const auto* const widget = dynamic_cast<const CommandWidget*> (&component);
    if (widget != nullptr && widget->command().isBound())
        return ofCommand (widget->commandNumber());
    for (const auto& [is, topic] : kindTopics)
        if (is (component))
            return topic;
    const auto* const owner = dynamic_cast<const HelpTopicOwner*> (&component);
    return owner != nullptr ? owner->helpTopic() : HelpTopic {};
}
}

namespace HelpTopics
{
HelpTopic of (const juce::Component* component)
{
    for (; component != nullptr; component = component->getParentComponent())
        if (const auto topic = ownTopic (*component); topic.page != HelpTopic().page)
            return topic;
    return {};
}
}
