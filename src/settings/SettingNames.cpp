#include "settings/SettingNames.h"

#include "support/language/Translate.h"

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

/** The utility panel of one seat of a deck. */
template <auto seats, size_t index>
constexpr SettingName ofSeat (std::string_view name, std::string_view meaning)
{
    return { .name = name,
             .meaning = meaning,
             .highest = 7,
             .read = [] (const EngineSettings& s, int deck)
             { return static_cast<double> ((s.deckSetup[static_cast<size_t> (deck)].*seats)[index].get()); },
             .write = [] (EngineSettings& s, int deck, double value)
             { store ((s.deckSetup[static_cast<size_t> (deck)].*seats)[index], value); },
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

constexpr std::string_view panelMeaning =
    N_ ("panel in this seat: 0 loop, 1 cue, 2 grid, 3 DVS, 4 key, 5 SmartKnob, 6 tempo, 7 none");

// clang-format off
constexpr SettingName rows[] {
    text<&S::audioFolder> ("audioFolder", N_ ("folder of the audio files, where dialogs begin")),
    text<&S::samplesFolder> ("samplesFolder", N_ ("folder of the sampler's files")),
    text<&S::midiFolder> ("midiFolder", N_ ("folder of MIDI mappings")),
    text<&S::vstFolder> ("vstFolder", N_ ("folder that is searched for plug-ins")),
    text<&S::playlistFolder> ("playlistFolder", N_ ("folder of exported playlists")),
    text<&S::searchText> ("searchText", N_ ("text in the browser's empty search field")),
    text<&S::recordFile> ("recordFile", N_ ("file of the disk recorder")),
    text<&S::slicegateFolder> ("slicegateFolder", N_ ("folder of your Slicegate presets")),
    text<&S::smartknobFolder> ("smartknobFolder", N_ ("folder of your SmartKnob presets")),
    text<&S::itunesLibrary> ("itunesLibrary", N_ ("file of the iTunes library")),
    text<&S::controlCdFile> ("controlCdFile", N_ ("file that the control disc is written to")),
    number<&S::masterVolume> ("masterVolume", N_ ("master volume, linear"), 0.001),
    number<&S::masterDeck> ("masterDeck", N_ ("deck that the others follow: 0 to 3 for A to D"), 0, 3),
    number<&S::crossfader> ("crossfader", N_ ("crossfader: 0 left, 1 right")),
    number<&S::crossfaderCurve> ("crossfaderCurve", N_ ("steepness of the curved crossfader")),
    number<&S::monitorMix> ("monitorMix", N_ ("headphones: 0 cue, 1 master")),
    number<&S::monitorVolume> ("monitorVolume", N_ ("headphones' volume, linear")),
    number<&S::automixFadeSeconds> ("automixFadeSeconds", N_ ("seconds of an automix fade, and of a track's end zone"), 0, 120),
    number<&S::crossfaderMode> ("crossfaderMode", N_ ("0 curved crossfader, 1 straight")),
    number<&S::crossfaderReverse> ("crossfaderReverse", N_ ("1 turns the crossfader round")),
    number<&S::automixSync> ("automixSync", N_ ("1 lets automix mix beat on beat")),
    number<&S::automixBassSwap> ("automixBassSwap", N_ ("1 lets the crossfader that moves by itself swap the basses")),
    number<&S::monitorSplit> ("monitorSplit", N_ ("1 puts the cue on the left ear, the master on the right")),
    number<&S::monitorOverdrive> ("monitorOverdrive", N_ ("1 makes the headphones louder, softly limited")),
    ofEditor<E::spectralWaveform> ("spectralWaveform", N_ ("1 colours the waveform by its spectrum")),
    ofEditor<E::listFontSize> ("listFontSize", N_ ("size of the lists' text in pixels"), 12, 22),
    ofEditor<E::showTooltips> ("showTooltips", N_ ("1 shows tooltips")),
    ofEditor<E::showCoverArt> ("showCoverArt", N_ ("1 shows the cover of the selected song")),
    ofEditor<E::showItunes> ("showItunes", N_ ("1 shows the iTunes library in the browser")),
    ofEditor<E::fourDeckMode> ("fourDeckMode", N_ ("1 shows four decks, 0 two")),
    ofEditor<E::deckPanelsLeft> ("deckPanelsLeft", N_ ("panels left of a deck's waveform"), 0, 4),
    ofEditor<E::deckPanelsRight> ("deckPanelsRight", N_ ("panels right of a deck's waveform"), 0, 4),
    ofEditor<E::showGhostMixer> ("showGhostMixer", N_ ("1 shows the small mixer while the large one is hidden")),
    ofEditor<E::mixerOrderABCD> ("mixerOrderABCD", N_ ("order of the channels: 1 A B C D, 0 C A B D")),
    number<&S::tempoRangeIndex> ("tempoRangeIndex", N_ ("slowest tempo that the tracker leaves: 60 + 20 times this in BPM"), 0, 10),
    number<&S::pitchRangeIndex> ("pitchRangeIndex", N_ ("reach of the pitch fader: 0 to 9 for 2 to 20 %, 10 for 25, 11 for 35, 12 for 50 %"), 0, 12),
    number<&S::controllerPreset> ("controllerPreset", N_ ("model of the controller, by its place in the list"), 0, 49),
    number<&S::lowPriorityAnalysis> ("lowPriorityAnalysis", N_ ("1 decodes and analyses slowly, for machines with sound glitches")),
    number<&S::lockLoadedDecks> ("lockLoadedDecks", N_ ("1 refuses to load onto a deck that plays")),
    number<&S::bypassStretcher> ("bypassStretcher", N_ ("1 turns key lock off everywhere")),
    ofDeck<&D::sync> ("sync", N_ ("1 follows the master deck")),
    ofDeck<&D::snap> ("snap", N_ ("1 sets cues and loops on the nearest beat")),
    ofDeck<&D::quantise> ("quantise", N_ ("1 keeps the beat in jumps")),
    ofDeck<&D::timecodeOn> ("timecodeOn", N_ ("1 follows the control record")),
    ofDeck<&D::timecodeGain> ("timecodeGain", N_ ("gain on the control record's input in dB"), -24, 48),
    ofDeck<&D::timecodeCalibration> ("timecodeCalibration", N_ ("factor on the control record's nominal speed"), 0, 4),
    ofDeck<&D::lineGain> ("lineGain", N_ ("gain of the input that is played through, linear"), 0, 4),
    ofDeck<&D::timecodeThreshold> ("timecodeThreshold", N_ ("level below which the control record rests: times -100 it is dB")),
    ofDeck<&D::timecodeLeadIn> ("timecodeLeadIn", N_ ("seconds of the control record before the track begins"), 0, 3600),
    ofDeck<&D::timecodeType> ("timecodeType", N_ ("brand of the control record, by its place in the list"), 0, 17),
    ofDeck<&D::timecodeAbsolute> ("timecodeAbsolute", N_ ("1 follows the needle's place, 0 its movement alone")),
    ofDeck<&D::timecodeInvert> ("timecodeInvert", N_ ("1 inverts the phase of the control record's input")),
    ofDeck<&D::inputPair> ("inputPair", N_ ("stereo input: 0 to 3 for A to D"), 0, 3),
    ofDeck<&D::lineThrough> ("lineThrough", N_ ("1 plays the input through the deck")),
    ofDeck<&D::pfl> ("pfl", N_ ("1 sends the deck to the headphones")),
    ofDeck<&D::crossfaderSide> ("crossfaderSide", N_ ("side of the crossfader: 0 left, 1 right")),
    ofDeck<&D::vstOnMaster> ("vstOnMaster", N_ ("1 puts the deck's plug-in on the master output")),
    ofSeat<&D::panelsLeft, 0> ("panelLeft1", panelMeaning),
    ofSeat<&D::panelsLeft, 1> ("panelLeft2", panelMeaning),
    ofSeat<&D::panelsLeft, 2> ("panelLeft3", panelMeaning),
    ofSeat<&D::panelsLeft, 3> ("panelLeft4", panelMeaning),
    ofSeat<&D::panelsRight, 0> ("panelRight1", panelMeaning),
    ofSeat<&D::panelsRight, 1> ("panelRight2", panelMeaning),
    ofSeat<&D::panelsRight, 2> ("panelRight3", panelMeaning),
    ofSeat<&D::panelsRight, 3> ("panelRight4", panelMeaning),
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
