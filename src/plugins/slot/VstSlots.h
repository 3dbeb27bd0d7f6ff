#pragma once

#include "engine/CPlatterdex.h"
#include "plugins/catalogue/KnownPlugins.h"
#include "plugins/formats/PluginFormats.h"
#include "plugins/formats/PluginState.h"
#include "plugins/slot/ChangeNote.h"
#include "plugins/slot/LoadingMarker.h"
#include "plugins/slot/PluginTrial.h"
#include "plugins/slot/SlotsKeeper.h"
#include "support/Worker.h"

#include <array>
#include <memory>
#include <vector>

/** Fills an engine's four slots with plug-ins, keeps what is in them for the next start within two seconds of a change, and
    owns the plug-ins.

    A plug-in is first tried in the scanner process, on a thread of this; then made and prepared on the message thread, handed
    to the slot, which fades it in, and deleted when the slot has let go of it. Made after the engine and gone before it.
    Message thread; without a message loop, the one thread that drives the engine. */
class VstSlots : private juce::Timer
{
public:
    static constexpr int paramsPerSlot = 2;

    /** The first entries of a menu of plug-ins, which mean an empty slot. */
    static constexpr int emptyMenuEntries = 2;

    struct Options
    {
        ScannerProcess::Options scanner {};

        /** Restores the slots at the start and keeps them. False for runs without a user. */
        bool keepsSlots = true;

        /** Loads with a timer and a thread; else everything happens in the calls. */
        bool hasMessageLoop = true;
    };

    VstSlots (CPlatterdex&, Options);
    ~VstSlots() override;

    /** The slots of an engine. @returns null for one that has none */
    static VstSlots* of (const CPlatterdex&);

    //==================================================================================================================
    // Loading

    /** Loads a plug-in of a menu, or empties the slot. @param menuIndex   0 and 1 empty it, 2 is the first plug-in
        @param menu   the plug-ins that the menu was made of: those that are known may have become others since */
    void loadVstPlugin (int deck, int menuIndex, const std::vector<KnownPluginEntry>& menu);
    void loadVstPlugin (int deck, const KnownPluginEntry&);
    void unload (int deck);

    /** Loads what a user has written: a path or a name; "Empty" empties the slot. An unknown file is scanned first. Returns when it is there or has failed, so
        it is for engines without a message loop.
        @returns one sentence on why it is not, or nothing */
    juce::String loadNow (int deck, const juce::String& pathOrName);

    const std::shared_ptr<KnownPlugins> known;

    //==================================================================================================================
    // Contents of a slot

    /** The plug-in's name; "Empty" without one. */
    juce::String name (int deck) const;
    bool isLoading (int deck) const { return at (deck).isLoading; }

    /** The plug-in; null without one. It is there until a listener hears that it leaves. */
    juce::AudioProcessor* plugin (int deck) const;

    /** The plug-in's latency in frames; `isCompensated` if the dry signal waits for it. */
    int latency (int deck) const;
    static bool isCompensated (int latency) { return latency <= VstSlot::maxCompensated; }

    /** The plug-in's parameter on one of the two values; -1 not assigned. @param which   0 or 1 */
    int paramIndex (int deck, int which) const;
    void setParamIndex (int deck, int which, int index);

    /** Has the plug-in take one of its presets, which is kept as every change is. @param index   of its programs */
    void choosePreset (int deck, int index);

    /** Grows whenever a slot's plug-in or its choices become others. */
    uint32_t revision (int deck) const { return at (deck).revision; }

    VstSlot& slot (int deck) const { return engine.vstSlots[static_cast<size_t> (deck)]; }

    /** Hears of plug-ins, on the message thread. */
    class Listener
    {
    public:
        virtual ~Listener() = default;

        /** Called before a slot's plug-in is taken out: whatever shows it must let go of it now. */
        virtual void pluginLeaves (int deck) = 0;
    };

    void addListener (Listener& listener) { listeners.add (&listener); }
    void removeListener (Listener& listener) { listeners.remove (&listener); }

    /** Has all slots written with their plug-ins' states of now, those too of which plug-ins have said nothing. */
    void save();

    /** Deletes plug-ins that slots have let go of, follows those that play and keeps what has changed; the timer's work. */
    void serve();

    CPlatterdex& engine;

private:
    struct Own
    {
        juce::String name;
        KnownPluginEntry entry; ///< of the plug-in
        std::unique_ptr<HostedPlugin> plugin;
        std::array<int, paramsPerSlot> paramIndices { -1, -1 };
        std::array<float, paramsPerSlot> seenValues {}; ///< of the parameters at the last look
        bool isLoading = false;
        std::shared_ptr<std::atomic<bool>> wish; ///< true once the load that runs is no longer wanted
        int looksUntilProved = 0;
        uint32_t revision = 0;
        ChangeNote changes; ///< of the plug-in
        bool isAwaited =
            false; ///< empty, since what was kept could not be loaded: it stays kept for the next start
    };

    /** A plug-in to be loaded, with what it will be given. */
    struct Load
    {
        KnownPluginEntry entry;
        PluginState state {};
        std::array<int, paramsPerSlot> paramIndices { -1, -1 };
        bool isReturn = false; ///< of what was in the slot before, not chosen by a hand
    };

    Load byHand (int deck, const KnownPluginEntry&) const;
    void begin (int deck, Load);
    juce::String install (int deck, const Load&);
    void takeOut (int deck);
    void fail (int deck, const Load&, const juce::String& reason);
    void tell (const juce::String& sentence); ///< of all slots
    void tellOfFailure (int deck, const juce::String& pluginName, const juce::String& reason);
    void restore();
    void restoreSlot (int deck, SavedSlot&, const juce::String& blamed);
    void followPlugin (int deck);
    bool mayKeep() const;
    bool updateKept (int deck);
    void keepChanges();
    void assign (int deck, int which, int index);
    void timerCallback() override { serve(); }

    Own& at (int deck) { return slots[static_cast<size_t> (deck)]; }
    const Own& at (int deck) const { return slots[static_cast<size_t> (deck)]; }
    PluginTrial::Request requestOf (const Load&) const;

    const Options options;
    LoadingMarker marker;
    PluginFormats formats;
    std::array<Own, deckCount> slots;
    std::vector<std::pair<int, std::unique_ptr<HostedPlugin>>> leaving; ///< with their slots
    juce::ListenerList<Listener> listeners;
    PluginTrial trial;
    SlotsKeeper keeper;
    SavedSlots kept; ///< as the keeper has them
    int looksUntilKept = 0;

    /** Answers of the worker look here whether this has gone. */
    const std::shared_ptr<const int> lifetime = std::make_shared<const int> (0);
    Worker worker { "PluginTrial" }; ///< last: its jobs use the trial
};
