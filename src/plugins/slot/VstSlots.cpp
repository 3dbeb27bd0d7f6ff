#include "plugins/slot/VstSlots.h"

#include "plugins/scan/IPCPluginScanner.h"
#include "support/language/Translate.h"

#include <algorithm>
#include <cstdlib>
#include <map>
#include <tuple>

namespace
{
constexpr int lookMs = 40;

/** Looks at a plug-in that plays until it is no longer new: two seconds. */
constexpr int looksOfANewOne = 2000 / lookMs;

/** Looks from one search for changes to the next: a second. */
constexpr int looksToKeep = 1000 / lookMs;

std::mutex registryMutex;

std::map<const CPlatterdex*, VstSlots*>& registry()
{
    static std::map<const CPlatterdex*, VstSlots*> all;
    return all;
}

/** A scanner that looks at this system's own plug-in must not fill its slots. */
VstSlots::Options allowed (VstSlots::Options options)
{
    options.keepsSlots = options.keepsSlots && std::getenv ("PLATTERDEX_SCANNER") == nullptr;
    return options;
}
}

VstSlots::VstSlots (CPlatterdex& e, Options o)
    : known (KnownPlugins::of (e.environment.folders.setup().getChildFile ("vst_plugins_list.xml"))),
      engine (e),
      options (allowed (std::move (o))),
      marker (options.keepsSlots ? engine.environment.folders.setup().getChildFile ("vst_loading.txt")
                                 : juce::File(),
              [this] { return mayKeep(); }),
      trial (options.scanner),
      keeper (options.keepsSlots ? engine.environment.folders.setup().getChildFile ("vst_slots.xml")
                                 : juce::File())
{
    {
        const std::scoped_lock lock (registryMutex);
        registry()[&engine] = this;
    }
    SimpleInterprocessConnection::removeLeftovers();
    if (options.keepsSlots)
        restore();
    if (options.hasMessageLoop)
        startTimer (lookMs);
}

VstSlots::~VstSlots()
{
    stopTimer();
    for (auto& own : slots)
        if (own.wish != nullptr)
            *own.wish = true;
    worker.cancel();
    worker.wait();
    save();
    for (int deck = 0; deck < deckCount; ++deck)
    {
        takeOut (deck);
        slot (deck).clear (engine.getCallbackLock());
        marker.set (deck, {});
    }
    leaving.clear();
    const std::scoped_lock lock (registryMutex);
    registry().erase (&engine);
}

VstSlots* VstSlots::of (const CPlatterdex& e)
{
    const std::scoped_lock lock (registryMutex);
    const auto found = registry().find (&e);
    return found != registry().end() ? found->second : nullptr;
}

//======================================================================================================================
// Loading

void VstSlots::loadVstPlugin (int deck, int menuIndex, const std::vector<KnownPluginEntry>& menu)
{
    const auto index = menuIndex - emptyMenuEntries;
    if (index >= 0 && index < static_cast<int> (menu.size()))
        loadVstPlugin (deck, menu[static_cast<size_t> (index)]);
    else
        unload (deck);
}

void VstSlots::loadVstPlugin (int deck, const KnownPluginEntry& entry)
{
    begin (deck, byHand (deck, entry));
}

/** A plug-in that was left out at the start comes back with all that was kept of it. */
VstSlots::Load VstSlots::byHand (int deck, const KnownPluginEntry& entry) const
{
    const auto& saved = kept[static_cast<size_t> (deck)];
    if (at (deck).isAwaited && entry.description.matchesIdentifierString (saved.plugin))
        return { entry, saved.state, saved.paramIndices, true };
    return { entry };
}

PluginTrial::Request VstSlots::requestOf (const Load& load) const
{
    return { load.entry, engine.decks.engineRate, engine.hostBlockSize, load.state.bytes };
}

void VstSlots::begin (int deck, Load load)
{
    auto& own = at (deck);
    if (own.wish != nullptr)
        *own.wish = true;
    const auto wish = std::make_shared<std::atomic<bool>> (false);
    own.wish = wish;
    own.isLoading = true;
    own.isAwaited = false;
    ++own.revision;
    const auto finish = [this, deck, wish, load] (const juce::String& reason)
    {
        if (*wish)
            return;
        at (deck).isLoading = false;
        const auto fault = reason.isEmpty() ? install (deck, load) : reason;
        if (fault.isNotEmpty())
            fail (deck, load, fault);
        ++at (deck).revision;
    };
    if (!options.hasMessageLoop)
        return finish (trial.run (requestOf (load), [] { return false; }));
    worker.post ({ [this, wish, finish, request = requestOf (load),
                    here = std::weak_ptr (lifetime)] (const std::stop_token& stop)
                   {
                       if (*wish || stop.stop_requested())
                           return;
                       const auto reason =
                           trial.run (request, [&] { return *wish || stop.stop_requested(); });
                       juce::MessageManager::callAsync (
                           [here, finish, reason]
                           {
                               if (!here.expired())
                                   finish (reason);
                           });
                   },
                   {} });
}

juce::String VstSlots::loadNow (int deck, const juce::String& pathOrName)
{
    if (pathOrName.equalsIgnoreCase ("Empty"))
    {
        unload (deck);
        return {};
    }
    if (const juce::File file (juce::File::isAbsolutePath (pathOrName) ? pathOrName : juce::String());
        file.exists() && !known->isUpToDate (file))
    {
        IPCPluginScanner::Listener nobody;
        IPCPluginScanner::Options once;
        once.process = options.scanner;
        IPCPluginScanner scanner (*known, nobody, std::move (once));
        scanner.scanFile (file);
        scanner.shutdown();
        if (options.keepsSlots)
            juce::ignoreUnused (known->save()); // unwritten, it is scanned again
    }
    const auto entry = known->find (pathOrName);
    if (!entry)
    {
        unload (deck);
        return tr ("The plug-in %1 is not known; platterdex plugins list shows those that are.",
                   pathOrName.quoted());
    }
    const auto load = byHand (deck, *entry);
    auto fault = trial.run (requestOf (load), [] { return false; });
    if (fault.isEmpty())
        fault = install (deck, load);
    if (fault.isEmpty())
        return {};
    unload (deck);
    return entry->description.name + ": " + fault;
}

juce::String VstSlots::install (int deck, const Load& load)
{
    const auto request = requestOf (load);
    marker.set (deck, load.entry.description.name);
    auto made = formats.create (load.entry, request.rate, request.block);
    std::unique_ptr<HostedPlugin> plugin;
    if (made.instance != nullptr)
    {
        plugin = std::make_unique<HostedPlugin> (std::move (made.instance), request.rate, request.block);
        made.fault = plugin->unfitness();
    }
    takeOut (deck);
    if (made.fault.isNotEmpty() || plugin == nullptr)
    {
        marker.set (deck, {});
        return made.fault.isNotEmpty() ? made.fault : tr ("It could not be loaded.");
    }
    load.state.giveTo (*plugin->processor);

    auto& own = at (deck);
    own.entry = load.entry;
    own.name = load.entry.description.name;
    own.plugin = std::move (plugin);
    own.plugin->processor->addListener (&own.changes);
    own.changes.set();
    own.isAwaited = false;
    own.looksUntilProved = looksOfANewOne;
    slot (deck).put (own.plugin.get(), engine.getCallbackLock());
    for (int which = 0; which < paramsPerSlot; ++which)
        assign (deck, which, load.paramIndices[static_cast<size_t> (which)]);
    ++own.revision;
    return {};
}

void VstSlots::unload (int deck)
{
    auto& own = at (deck);
    if (own.wish != nullptr)
        *own.wish = true;
    own.isLoading = own.isAwaited = false;
    takeOut (deck);
    ++own.revision;
}

void VstSlots::takeOut (int deck)
{
    auto& own = at (deck);
    own.name.clear();
    own.paramIndices = { -1, -1 };
    if (own.plugin == nullptr)
        return;
    listeners.call ([deck] (Listener& listener) { listener.pluginLeaves (deck); });
    slot (deck).put (nullptr, engine.getCallbackLock());
    own.plugin->processor->removeListener (&own.changes);
    leaving.emplace_back (deck, std::move (own.plugin));
}

void VstSlots::fail (int deck, const Load& load, const juce::String& reason)
{
    takeOut (deck); // one that cannot load leaves the slot empty
    at (deck).isAwaited = load.isReturn;
    tellOfFailure (deck, load.entry.description.name, reason);
}

void VstSlots::tellOfFailure (int deck, const juce::String& pluginName, const juce::String& reason)
{
    engine.listeners.postText (
        "*** " + tr ("Error loading the VST plugin") + " ***|" + pluginName + "|" + reason, deck);
}

//======================================================================================================================
// Contents of a slot

juce::String VstSlots::name (int deck) const
{
    return at (deck).plugin != nullptr ? at (deck).name : juce::String ("Empty");
}

juce::AudioProcessor* VstSlots::plugin (int deck) const
{
    return at (deck).plugin != nullptr ? at (deck).plugin->processor.get() : nullptr;
}

int VstSlots::latency (int deck) const
{
    return at (deck).plugin != nullptr ? at (deck).plugin->latency() : 0;
}

int VstSlots::paramIndex (int deck, int which) const
{
    return at (deck).paramIndices[static_cast<size_t> (which)];
}

void VstSlots::setParamIndex (int deck, int which, int index)
{
    assign (deck, which, index);
    ++at (deck).revision;
}

void VstSlots::choosePreset (int deck, int index)
{
    auto* const processor = plugin (deck);
    if (processor == nullptr || index < 0 || index >= processor->getNumPrograms())
        return;
    processor->setCurrentProgram (index);
    at (deck).changes.set(); // plug-ins need not say that it has become another
}

void VstSlots::assign (int deck, int which, int index)
{
    auto& own = at (deck);
    const auto i = static_cast<size_t> (which);
    auto* const processor = plugin (deck);
    auto* const parameter = processor != nullptr ? processor->getParameters()[index] : nullptr;
    own.paramIndices[i] = parameter != nullptr ? index : -1;
    own.seenValues[i] = parameter != nullptr ? parameter->getValue() : 0.0f;
    slot (deck).assign (which, parameter, engine.getCallbackLock());
}

//======================================================================================================================
// The timer's work

void VstSlots::serve()
{
    for (int deck = 0; deck < deckCount; ++deck)
        followPlugin (deck);
    std::erase_if (leaving, [this] (const auto& each)
                   { return !slot (each.first).uses (*each.second, engine.getCallbackLock()); });
    if (--looksUntilKept <= 0)
    {
        looksUntilKept = looksToKeep;
        keepChanges();
        if (keeper.takeFailure())
            tell (tr ("%1 can't be written.", keeper.file.getFileName()));
    }
}

void VstSlots::tell (const juce::String& sentence)
{
    engine.listeners.postText ("*** " + tr ("VST Plugins") + " ***|" + sentence, 0);
}

void VstSlots::followPlugin (int deck)
{
    auto& own = at (deck);
    if (own.plugin == nullptr)
    {
        if (!own.isLoading)
            marker.set (deck, {});
        return;
    }
    auto& processor = *own.plugin->processor;
    if (own.looksUntilProved > 0)
        --own.looksUntilProved;
    else
        marker.set (deck, {});
    if (own.plugin->sampleRate() != engine.decks.engineRate && !own.isLoading)
        // Prepared anew, which a plug-in that plays can't be: another one takes its state and place.
        return begin (deck, { own.entry, PluginState::of (processor), own.paramIndices, true });
    own.plugin->updateLatency();
    for (size_t i = 0; i < own.paramIndices.size(); ++i)
        if (auto* const parameter = processor.getParameters()[own.paramIndices[i]])
            if (const auto value = parameter->getValue(); value != own.seenValues[i])
            {
                own.seenValues[i] = value;
                own.changes.set(); // a knob of the slot says nothing to listeners
                slot (deck).showValue (static_cast<int> (i), static_cast<double> (value));
            }
}

//======================================================================================================================
// The next start

bool VstSlots::updateKept (int deck)
{
    auto& own = at (deck);
    auto& saved = kept[static_cast<size_t> (deck)];
    const auto choices = [&saved]
    { return std::tuple (saved.isOn, saved.isInsert, saved.dryWet, saved.paramIndices, saved.plugin); };
    const auto before = choices();
    saved.isOn = slot (deck).isOn();
    saved.isInsert = slot (deck).isInsert != 0;
    saved.dryWet = slot (deck).dryWet;
    if (own.isLoading || own.isAwaited)
        return choices() != before; // of the plug-in the former one stays kept
    if (own.plugin == nullptr)
    {
        saved.plugin.clear();
        saved.name.clear();
        saved.state = {};
    }
    else
    {
        saved.plugin = own.entry.description.createIdentifierString();
        saved.name = own.name;
    }
    saved.isLeftOut = false;
    saved.paramIndices = own.paramIndices;
    if (own.plugin == nullptr || !own.changes.take())
        return choices() != before;
    saved.state = PluginState::of (*own.plugin->processor);
    return true;
}

bool VstSlots::mayKeep() const
{
    return options.keepsSlots
           && (engine.environment.mayKeepSettings == nullptr || engine.environment.mayKeepSettings());
}

void VstSlots::keepChanges()
{
    if (!mayKeep())
        return;
    auto hasChanged = false;
    for (int deck = 0; deck < deckCount; ++deck)
        hasChanged |= updateKept (deck);
    if (hasChanged)
        keeper.write (kept);
}

void VstSlots::save()
{
    for (auto& own : slots)
        own.changes.set();
    keepChanges();
}

void VstSlots::restore()
{
    const auto blamed = marker.takeBlamed();
    auto found = keeper.read();
    if (found.isDamaged)
        tell (tr ("%1 is damaged and begins anew; the old file is kept as %2.", keeper.file.getFileName(),
                  keeper.damagedFile().getFileName()));
    kept = std::move (found.slots);
    for (int deck = 0; deck < deckCount; ++deck)
        restoreSlot (deck, kept[static_cast<size_t> (deck)], blamed[static_cast<size_t> (deck)]);
    if (blamed != std::array<juce::String, LoadingMarker::slots> {} && mayKeep())
        keeper.write (kept); // the next start leaves them out too
}

void VstSlots::restoreSlot (int deck, SavedSlot& saved, const juce::String& blamed)
{
    slot (deck).dryWet = saved.dryWet;
    slot (deck).isInsert = saved.isInsert ? 1 : 0;
    slot (deck).setOn (saved.isOn);
    auto& own = at (deck);
    saved.isLeftOut |= blamed.isNotEmpty();
    own.isAwaited = saved.isLeftOut;
    if (blamed.isNotEmpty())
        return engine.listeners.postText (
            tr ("*** Plug-in left out ***|The program ended while %1|was being loaded", blamed), deck);
    if (saved.plugin.isEmpty() || own.isAwaited)
        return;
    if (const auto entry = known->find (saved.plugin))
        return begin (deck, { *entry, saved.state, saved.paramIndices, true });
    own.isAwaited = true;
    tellOfFailure (deck, saved.name, tr ("It is not in the list of plug-ins."));
}
