#include "settings/SettingNames.h"

#include <cmath>

namespace
{
template <typename Value>
void store (Relaxed<Value>& field, double value)
{
    field = static_cast<Value> (std::is_integral_v<Value> ? std::round (value) : value);
}

template <auto field>
constexpr SettingName number (std::string_view name, std::string_view meaning, double lowest = 0.0,
                              double highest = 1.0)
{
    return { .name = name,
             .meaning = meaning,
             .lowest = lowest,
             .highest = highest,
             .read = [] (const EngineSettings& s, int) { return static_cast<double> ((s.*field).get()); },
             .write = [] (EngineSettings& s, int, double value) { store (s.*field, value); } };
}

template <auto field>
constexpr SettingName ofDeck (std::string_view name, std::string_view meaning, double lowest = 0.0,
                              double highest = 1.0)
{
    return { .name = name,
             .meaning = meaning,
             .lowest = lowest,
             .highest = highest,
             .read = [] (const EngineSettings& s, int deck)
             { return static_cast<double> ((s.deckSetup[static_cast<size_t> (deck)].*field).get()); },
             .write = [] (EngineSettings& s, int deck, double value)
             { store (s.deckSetup[static_cast<size_t> (deck)].*field, value); },
             .isOfDeck = true };
}

template <EditorPreference which>
constexpr SettingName ofEditor (std::string_view name, std::string_view meaning, double lowest = 0.0,
                                double highest = 1.0)
{
    return { .name = name,
             .meaning = meaning,
             .lowest = lowest,
             .highest = highest,
             .read = [] (const EngineSettings& s, int)
             { return static_cast<double> (s.editor[which].get()); },
             .write = [] (EngineSettings& s, int, double value) { store (s.editor[which], value); } };
}

template <auto field>
constexpr SettingName text (std::string_view name, std::string_view meaning)
{
    return { .name = name, .meaning = meaning, .text = [] (const EngineSettings& s) -> const SettingsText& {
                return s.*field;
            } };
}

using S = EngineSettings;
using D = DeckSetup;
using E = EditorPreference;

// clang-format off
constexpr SettingName rows[] {
    text<&S::audioFolder> ("audioFolder", "folder of the audio files, where dialogs begin"),
    text<&S::samplesFolder> ("samplesFolder", "folder of the sampler's files"),
    text<&S::midiFolder> ("midiFolder", "folder of MIDI mappings"),
    text<&S::vstFolder> ("vstFolder", "folder that is searched for plug-ins"),
    text<&S::playlistFolder> ("playlistFolder", "folder of exported playlists"),
    text<&S::searchText> ("searchText", "text in the browser's empty search field"),
    text<&S::recordFile> ("recordFile", "file of the disk recorder"),
    text<&S::slicegateFolder> ("slicegateFolder", "folder of your Slicegate presets"),
    text<&S::smartknobFolder> ("smartknobFolder", "folder of your SmartKnob presets"),
    text<&S::itunesLibrary> ("itunesLibrary", "file of the iTunes library"),
    text<&S::controlCdFile> ("controlCdFile", "file that the control disc is written to"),
    number<&S::masterVolume> ("masterVolume", "master volume, linear", 0.001),
    number<&S::masterDeck> ("masterDeck", "deck that the others follow: 0 to 3 for A to D", 0, 3),
    number<&S::crossfader> ("crossfader", "crossfader: 0 left, 1 right"),
    number<&S::crossfaderCurve> ("crossfaderCurve", "steepness of the curved crossfader"),
    number<&S::monitorMix> ("monitorMix", "headphones: 0 cue, 1 master"),
    number<&S::monitorVolume> ("monitorVolume", "headphones' volume, linear"),
    number<&S::automixFadeSeconds> ("automixFadeSeconds", "seconds of an automix fade, and of a track's end zone", 0, 120),
    number<&S::crossfaderMode> ("crossfaderMode", "0 curved crossfader, 1 straight"),
    number<&S::crossfaderReverse> ("crossfaderReverse", "1 turns the crossfader round"),
    number<&S::automixSync> ("automixSync", "1 lets automix mix beat on beat"),
    number<&S::automixBassSwap> ("automixBassSwap", "1 lets the crossfader that moves by itself swap the basses"),
    number<&S::monitorSplit> ("monitorSplit", "1 puts the cue on the left ear, the master on the right"),
    number<&S::monitorOverdrive> ("monitorOverdrive", "1 makes the headphones louder, softly limited"),
    ofEditor<E::spectralWaveform> ("spectralWaveform", "1 colours the waveform by its spectrum"),
    ofEditor<E::listFontSize> ("listFontSize", "size of the lists' text in pixels", 12, 22),
    ofEditor<E::showTooltips> ("showTooltips", "1 shows tooltips"),
    ofEditor<E::showCoverArt> ("showCoverArt", "1 shows the cover of the selected song"),
    ofEditor<E::showItunes> ("showItunes", "1 shows the iTunes library in the browser"),
    ofEditor<E::fourDeckMode> ("fourDeckMode", "1 shows four decks, 0 two"),
    ofEditor<E::deckPanelsLeft> ("deckPanelsLeft", "panels left of a deck's waveform", 0, 4),
    ofEditor<E::deckPanelsRight> ("deckPanelsRight", "panels right of a deck's waveform", 0, 4),
    ofEditor<E::showGhostMixer> ("showGhostMixer", "1 shows the small mixer while the large one is hidden"),
    ofEditor<E::mixerOrderABCD> ("mixerOrderABCD", "order of the channels: 1 A B C D, 0 C A B D"),
    number<&S::tempoRangeIndex> ("tempoRangeIndex", "slowest tempo that the tracker leaves: 60 + 20 times this in BPM", 0, 10),
    number<&S::pitchRangeIndex> ("pitchRangeIndex", "reach of the pitch fader: 0 to 9 for 2 to 20 %, 10 for 25, 11 for 35, 12 for 50 %", 0, 12),
    number<&S::controllerPreset> ("controllerPreset", "model of the controller, by its place in the list", 0, 49),
    number<&S::lowPriorityAnalysis> ("lowPriorityAnalysis", "1 decodes and analyses slowly, for machines with sound glitches"),
    number<&S::lockLoadedDecks> ("lockLoadedDecks", "1 refuses to load onto a deck that plays"),
    number<&S::bypassStretcher> ("bypassStretcher", "1 turns key lock off everywhere"),
    ofDeck<&D::sync> ("sync", "1 follows the master deck"),
    ofDeck<&D::snap> ("snap", "1 sets cues and loops on the nearest beat"),
    ofDeck<&D::quantise> ("quantise", "1 keeps the beat in jumps"),
    ofDeck<&D::timecodeOn> ("timecodeOn", "1 follows the control record"),
    ofDeck<&D::timecodeGain> ("timecodeGain", "gain on the control record's input in dB", -24, 48),
    ofDeck<&D::timecodeCalibration> ("timecodeCalibration", "factor on the control record's nominal speed", 0, 4),
    ofDeck<&D::lineGain> ("lineGain", "gain of the input that is played through, linear", 0, 4),
    ofDeck<&D::timecodeThreshold> ("timecodeThreshold", "level below which the control record rests: times -100 it is dB"),
    ofDeck<&D::timecodeLeadIn> ("timecodeLeadIn", "seconds of the control record before the track begins", 0, 3600),
    ofDeck<&D::timecodeType> ("timecodeType", "brand of the control record, by its place in the list", 0, 17),
    ofDeck<&D::timecodeAbsolute> ("timecodeAbsolute", "1 follows the needle's place, 0 its movement alone"),
    ofDeck<&D::timecodeInvert> ("timecodeInvert", "1 inverts the phase of the control record's input"),
    ofDeck<&D::inputPair> ("inputPair", "stereo input: 0 to 3 for A to D", 0, 3),
    ofDeck<&D::lineThrough> ("lineThrough", "1 plays the input through the deck"),
    ofDeck<&D::pfl> ("pfl", "1 sends the deck to the headphones"),
    ofDeck<&D::crossfaderSide> ("crossfaderSide", "side of the crossfader: 0 left, 1 right"),
    ofDeck<&D::vstOnMaster> ("vstOnMaster", "1 puts the deck's plug-in on the master output"),
};
// clang-format on
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

juce::String NamedSetting::valueIn (const EngineSettings& settings) const
{
    if (row->isText())
        return row->text (settings).get();
    return juce::String (std::round (1e6 * row->read (settings, deck)) / 1e6);
}

juce::String NamedSetting::fullName() const
{
    const juce::String name (row->name.data(), row->name.size());
    return row->isOfDeck
               ? name + "_" + juce::String::charToString (static_cast<juce::juce_wchar> ('A' + deck))
               : name;
}
