#include "settings/SettingNames.h"

#include <cmath>

namespace
{
template <auto field>
constexpr SettingName number (std::string_view name, double lowest = 0.0, double highest = 1.0)
{
    return { name, lowest, highest,
             [] (EngineSettings& s, int, double value)
             {
                 using Value = decltype ((s.*field).get());
                 s.*field = static_cast<Value> (std::is_integral_v<Value> ? std::round (value) : value);
             } };
}

template <auto field>
constexpr SettingName ofDeck (std::string_view name, double lowest = 0.0, double highest = 1.0)
{
    return { .name = name,
             .lowest = lowest,
             .highest = highest,
             .write =
                 [] (EngineSettings& s, int deck, double value)
             {
                 auto& setup = s.deckSetup[static_cast<size_t> (deck)];
                 using Value = decltype ((setup.*field).get());
                 setup.*field = static_cast<Value> (std::is_integral_v<Value> ? std::round (value) : value);
             },
             .isOfDeck = true };
}

template <EditorPreference which>
constexpr SettingName ofEditor (std::string_view name, double lowest = 0.0, double highest = 1.0)
{
    return { name, lowest, highest, [] (EngineSettings& s, int, double value) {
                s.editor[which] = static_cast<int8_t> (std::round (value));
            } };
}

template <auto field>
constexpr SettingName text (std::string_view name)
{
    return { .name = name,
             .writeText = [] (EngineSettings& s, const juce::String& value) { (s.*field).set (value); } };
}

using S = EngineSettings;
using D = DeckSetup;
using E = EditorPreference;

constexpr SettingName rows[] {
    text<&S::audioFolder> ("audioFolder"),
    text<&S::samplesFolder> ("samplesFolder"),
    text<&S::midiFolder> ("midiFolder"),
    text<&S::vstFolder> ("vstFolder"),
    text<&S::playlistFolder> ("playlistFolder"),
    text<&S::searchText> ("searchText"),
    text<&S::recordFile> ("recordFile"),
    text<&S::slicegateFolder> ("slicegateFolder"),
    text<&S::smartknobFolder> ("smartknobFolder"),
    text<&S::itunesLibrary> ("itunesLibrary"),
    text<&S::controlCdFile> ("controlCdFile"),
    number<&S::masterVolume> ("masterVolume", 0.001),
    number<&S::masterDeck> ("masterDeck", 0, 3),
    number<&S::crossfader> ("crossfader"),
    number<&S::crossfaderCurve> ("crossfaderCurve"),
    number<&S::monitorMix> ("monitorMix"),
    number<&S::monitorVolume> ("monitorVolume"),
    number<&S::automixFadeSeconds> ("automixFadeSeconds", 0, 120),
    number<&S::crossfaderMode> ("crossfaderMode"),
    number<&S::crossfaderReverse> ("crossfaderReverse"),
    number<&S::automixSync> ("automixSync"),
    number<&S::automixBassSwap> ("automixBassSwap"),
    number<&S::monitorSplit> ("monitorSplit"),
    number<&S::monitorOverdrive> ("monitorOverdrive"),
    ofEditor<E::spectralWaveform> ("spectralWaveform"),
    ofEditor<E::listFontSize> ("listFontSize", 12, 22),
    ofEditor<E::showTooltips> ("showTooltips"),
    ofEditor<E::showCoverArt> ("showCoverArt"),
    ofEditor<E::showItunes> ("showItunes"),
    ofEditor<E::fourDeckMode> ("fourDeckMode"),
    ofEditor<E::deckPanelsLeft> ("deckPanelsLeft", 0, 4),
    ofEditor<E::deckPanelsRight> ("deckPanelsRight", 0, 4),
    ofEditor<E::showGhostMixer> ("showGhostMixer"),
    ofEditor<E::mixerOrderABCD> ("mixerOrderABCD"),
    number<&S::tempoRangeIndex> ("tempoRangeIndex", 0, 10),
    number<&S::pitchRangeIndex> ("pitchRangeIndex", 0, 12),
    number<&S::controllerPreset> ("controllerPreset", 0, 49),
    number<&S::lowPriorityAnalysis> ("lowPriorityAnalysis"),
    number<&S::lockLoadedDecks> ("lockLoadedDecks"),
    number<&S::bypassStretcher> ("bypassStretcher"),
    ofDeck<&D::sync> ("sync"),
    ofDeck<&D::snap> ("snap"),
    ofDeck<&D::quantise> ("quantise"),
    ofDeck<&D::timecodeOn> ("timecodeOn"),
    ofDeck<&D::timecodeGain> ("timecodeGain", -24, 48),
    ofDeck<&D::timecodeCalibration> ("timecodeCalibration", 0, 4),
    ofDeck<&D::lineGain> ("lineGain", 0, 4),
    ofDeck<&D::timecodeThreshold> ("timecodeThreshold"),
    ofDeck<&D::timecodeLeadIn> ("timecodeLeadIn", 0, 3600),
    ofDeck<&D::timecodeType> ("timecodeType", 0, 17),
    ofDeck<&D::timecodeAbsolute> ("timecodeAbsolute"),
    ofDeck<&D::timecodeInvert> ("timecodeInvert"),
    ofDeck<&D::inputPair> ("inputPair", 0, 3),
    ofDeck<&D::lineThrough> ("lineThrough"),
    ofDeck<&D::pfl> ("pfl"),
    ofDeck<&D::crossfaderSide> ("crossfaderSide"),
    ofDeck<&D::vstOnMaster> ("vstOnMaster"),
};
}

std::span<const SettingName> SettingName::all() noexcept
{
    return rows;
}

NamedSetting NamedSetting::find (std::string_view name) noexcept
{
    constexpr std::string_view decks = "ABCD";
    for (const auto& row : rows)
    {
        if (!row.isOfDeck && row.name == name)
            return { &row };
        const auto isDecks = row.isOfDeck && name.size() == row.name.size() + 2 && name.starts_with (row.name)
                             && name[row.name.size()] == '_';
        if (const auto deck = decks.find (name.back()); isDecks && deck != std::string_view::npos)
            return { &row, static_cast<int> (deck) };
    }
    return {};
}
