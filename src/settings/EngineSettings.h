#pragma once

#include "settings/SettingsText.h"
#include "support/Relaxed.h"

#include <array>
#include <cstddef>
#include <cstdint>

struct Folders;

// The structures of this file are the bytes of the settings file: each field stands at its offset, and every byte that
// has no name yet is kept as it was found, so that a file goes through an older or newer program unharmed.
// A flag is 0 or 1, any other value counts as 1. What stands as a Relaxed may be read by any thread without the
// callback lock.
#pragma GCC diagnostic push
#pragma GCC diagnostic error "-Wpadded"

/** The settings of one deck that outlive a session. */
struct DeckSetup
{
    /** @param deck   0 to 3, gives the defaults of the input pair and the crossfader side */
    explicit DeckSetup (int deck = 0) noexcept;

    Relaxed<int8_t> sync { 0 };
    Relaxed<int8_t> snap { 0 };
    Relaxed<int8_t> quantise { 0 };
    Relaxed<int8_t> timecodeOn { 0 };
    Relaxed<float> timecodeGain { 0.0f }; ///< dB, -24 to 48, on the control signal's input
    Relaxed<double> timecodeCalibration {
        1.0
    };                                          ///< 0 to 4, factor on the nominal speed of the control signal
    Relaxed<double> lineGain { 1.0 };           ///< 0 to 4, linear, of the line-through input
    Relaxed<float> timecodeThreshold { 0.32f }; ///< 0 to 1; times -100 it is the tracker's level in dB
    Relaxed<float> timecodeLeadIn { 2.0f };     ///< seconds
    Relaxed<int8_t> timecodeType { 0 };         ///< 0 to 17, index of the record among the brands
    Relaxed<int8_t> timecodeAbsolute { 0 };
    Relaxed<int8_t> timecodeInvert { 0 };
    Relaxed<int8_t> inputPair { 0 }; ///< 0 to 3
    Relaxed<int8_t> lineThrough { 0 };
    Relaxed<int8_t> pfl { 0 };
    uint8_t reserved38 = 1;
    Relaxed<int8_t> crossfaderSide { 0 }; ///< 0 left, 1 right
    std::array<Relaxed<int8_t>, 4> panelsLeft { 0, 7, 7,
                                                7 }; ///< utility panel of each seat: DeckPanel in the editor
    std::array<Relaxed<int8_t>, 4> panelsRight { 6, 7, 7, 7 };
    Relaxed<int8_t> vstOnMaster { 0 };
    std::array<uint8_t, 7> reserved49 {};
};

/** The named ones of the editor's preference bytes, by their index. */
enum class EditorPreference : size_t
{
    spectralWaveform = 8,
    listFontSize = 9, ///< 12 to 22
    showTooltips = 11,
    showCoverArt = 13,
    showItunes = 14,
    fourDeckMode = 15,
    deckPanelsLeft = 17,  ///< 0 to 4
    deckPanelsRight = 18, ///< 0 to 4
    showGhostMixer = 19,
    mixerOrderABCD = 20
};

/** The preference bytes of the editor; most have a name in EditorPreference. */
struct EditorPreferences
{
    Relaxed<int8_t>& operator[] (EditorPreference which) noexcept
    {
        return bytes[static_cast<size_t> (which)];
    }
    const Relaxed<int8_t>& operator[] (EditorPreference which) const noexcept
    {
        return bytes[static_cast<size_t> (which)];
    }

    std::array<Relaxed<int8_t>, 21> bytes { 0, 0, 0, 0, 0, 7, 0, 0, 1, 16, 0, 1, 0, 1, 1, 0, 0, 1, 1, 1, 1 };
};

/** All preferences of the application, and at the same time live state of the engine.

    A fresh one holds the default of every number; defaultSettings() adds the texts. */
struct EngineSettings
{
    SettingsText audioFolder;
    SettingsText samplesFolder;
    SettingsText midiFolder;
    SettingsText vstFolder;
    SettingsText playlistFolder;
    SettingsText searchText;
    SettingsText recordFile;
    SettingsText slicegateFolder;
    SettingsText smartknobFolder;
    SettingsText itunesLibrary;
    SettingsText controlCdFile;

    Relaxed<double> masterVolume { 1.0 }; ///< above 0, to 1
    Relaxed<int8_t> masterDeck { 0 };     ///< 0 to 3; anything else means that no deck is master
    std::array<uint8_t, 7> reserved2c09 {};
    Relaxed<double> crossfader { 0.5 };      ///< 0 left, 1 right
    Relaxed<double> crossfaderCurve { 0.5 }; ///< 0 to 1
    Relaxed<double> monitorMix { 0.0 };      ///< 0 PFL, 1 master
    Relaxed<double> monitorVolume { 1.0 };   ///< 0 to 1
    Relaxed<int8_t> automixFadeSeconds { 15 };
    Relaxed<int8_t> crossfaderMode { 1 }; ///< 0 smooth, 1 linear
    Relaxed<int8_t> crossfaderReverse { 0 };
    Relaxed<int8_t> automixOn { 0 };
    uint8_t reserved2c34 = 0;
    Relaxed<int8_t> automixSync { 0 };
    Relaxed<int8_t> automixBassSwap { 0 };
    Relaxed<int8_t> autoFadeState { 2 }; ///< 0 fading to left, 1 to right, 2 idle
    std::array<uint8_t, 2> flags2c38 {};
    Relaxed<int8_t> monitorSplit { 0 };
    Relaxed<int8_t> monitorOverdrive { 0 };
    EditorPreferences editor;
    Relaxed<int8_t> tempoRangeIndex { 0 }; ///< a tracked tempo below 60 + 20 * index BPM is doubled
    uint8_t reserved2c52 = 0;
    Relaxed<int8_t> pitchRangeIndex { 7 };
    Relaxed<int8_t> controllerPreset { 0 }; ///< 0 to 49, the model of the controller
    std::array<uint8_t, 2> flags2c55 {};
    Relaxed<int8_t> lowPriorityAnalysis { 0 };
    Relaxed<int8_t> lockLoadedDecks { 0 };
    Relaxed<int8_t> bypassStretcher { 0 };
    std::array<uint8_t, 6> reserved2c5a {};
    std::array<Relaxed<double>, 17> samplerLevels {
        1.0, 1.0, 1.0, 1.0, 1.0, 1.0, 1.0, 1.0, 1.0, 1.0, 1.0, 1.0, 1.0, 1.0, 1.0, 1.0, 1.0
    }; ///< 16 pads, preview
    std::array<uint8_t, 32> reserved2ce8 {};
    std::array<DeckSetup, 4> deckSetup { DeckSetup (0), DeckSetup (1), DeckSetup (2), DeckSetup (3) };
};

#pragma GCC diagnostic pop

/** The settings of a first run: numbers, and texts that lie below the folders' root. */
EngineSettings defaultSettings (const Folders&);

static_assert (sizeof (DeckSetup) == 56 && sizeof (EngineSettings) == 11752);
static_assert (offsetof (DeckSetup, sync) == 0);
static_assert (offsetof (DeckSetup, snap) == 1);
static_assert (offsetof (DeckSetup, quantise) == 2);
static_assert (offsetof (DeckSetup, timecodeOn) == 3);
static_assert (offsetof (DeckSetup, timecodeGain) == 4);
static_assert (offsetof (DeckSetup, timecodeCalibration) == 8);
static_assert (offsetof (DeckSetup, lineGain) == 16);
static_assert (offsetof (DeckSetup, timecodeThreshold) == 24);
static_assert (offsetof (DeckSetup, timecodeLeadIn) == 28);
static_assert (offsetof (DeckSetup, timecodeType) == 32);
static_assert (offsetof (DeckSetup, timecodeAbsolute) == 33);
static_assert (offsetof (DeckSetup, timecodeInvert) == 34);
static_assert (offsetof (DeckSetup, inputPair) == 35);
static_assert (offsetof (DeckSetup, lineThrough) == 36);
static_assert (offsetof (DeckSetup, pfl) == 37);
static_assert (offsetof (DeckSetup, reserved38) == 38);
static_assert (offsetof (DeckSetup, crossfaderSide) == 39);
static_assert (offsetof (DeckSetup, panelsLeft) == 40);
static_assert (offsetof (DeckSetup, panelsRight) == 44);
static_assert (offsetof (DeckSetup, vstOnMaster) == 48);
static_assert (offsetof (DeckSetup, reserved49) == 49);
static_assert (offsetof (EngineSettings, audioFolder) == 0x0000);
static_assert (offsetof (EngineSettings, samplesFolder) == 0x0400);
static_assert (offsetof (EngineSettings, midiFolder) == 0x0800);
static_assert (offsetof (EngineSettings, vstFolder) == 0x0c00);
static_assert (offsetof (EngineSettings, playlistFolder) == 0x1000);
static_assert (offsetof (EngineSettings, searchText) == 0x1400);
static_assert (offsetof (EngineSettings, recordFile) == 0x1800);
static_assert (offsetof (EngineSettings, slicegateFolder) == 0x1c00);
static_assert (offsetof (EngineSettings, smartknobFolder) == 0x2000);
static_assert (offsetof (EngineSettings, itunesLibrary) == 0x2400);
static_assert (offsetof (EngineSettings, controlCdFile) == 0x2800);
static_assert (offsetof (EngineSettings, masterVolume) == 0x2c00);
static_assert (offsetof (EngineSettings, masterDeck) == 0x2c08);
static_assert (offsetof (EngineSettings, crossfader) == 0x2c10);
static_assert (offsetof (EngineSettings, crossfaderCurve) == 0x2c18);
static_assert (offsetof (EngineSettings, monitorMix) == 0x2c20);
static_assert (offsetof (EngineSettings, monitorVolume) == 0x2c28);
static_assert (offsetof (EngineSettings, automixFadeSeconds) == 0x2c30);
static_assert (offsetof (EngineSettings, crossfaderMode) == 0x2c31);
static_assert (offsetof (EngineSettings, crossfaderReverse) == 0x2c32);
static_assert (offsetof (EngineSettings, automixOn) == 0x2c33);
static_assert (offsetof (EngineSettings, reserved2c34) == 0x2c34);
static_assert (offsetof (EngineSettings, automixSync) == 0x2c35);
static_assert (offsetof (EngineSettings, automixBassSwap) == 0x2c36);
static_assert (offsetof (EngineSettings, autoFadeState) == 0x2c37);
static_assert (offsetof (EngineSettings, flags2c38) == 0x2c38);
static_assert (offsetof (EngineSettings, monitorSplit) == 0x2c3a);
static_assert (offsetof (EngineSettings, monitorOverdrive) == 0x2c3b);
static_assert (offsetof (EngineSettings, editor) == 0x2c3c);
static_assert (offsetof (EngineSettings, editor) + static_cast<size_t> (EditorPreference::listFontSize)
               == 0x2c45);
static_assert (offsetof (EngineSettings, tempoRangeIndex) == 0x2c51);
static_assert (offsetof (EngineSettings, reserved2c52) == 0x2c52);
static_assert (offsetof (EngineSettings, pitchRangeIndex) == 0x2c53);
static_assert (offsetof (EngineSettings, controllerPreset) == 0x2c54);
static_assert (offsetof (EngineSettings, flags2c55) == 0x2c55);
static_assert (offsetof (EngineSettings, lowPriorityAnalysis) == 0x2c57);
static_assert (offsetof (EngineSettings, lockLoadedDecks) == 0x2c58);
static_assert (offsetof (EngineSettings, bypassStretcher) == 0x2c59);
static_assert (offsetof (EngineSettings, samplerLevels) == 0x2c60);
static_assert (offsetof (EngineSettings, reserved2ce8) == 0x2ce8);
static_assert (offsetof (EngineSettings, deckSetup) == 0x2d08);
